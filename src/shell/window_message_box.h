#pragma once

#include "base/message_box.h"

namespace shell {

/// Message boxes as modal windows: no icon, exactly the named buttons, Escape is Cancel, or OK
/// where that is the only button. Texts are shown as they are, whatever they hold.
class WindowMessageBox : public base::MessageBox {
  public:
    base::MessageAnswer show(const base::Message& message) override;
};

}  // namespace shell
