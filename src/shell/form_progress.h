#pragma once

#include <QWidget>
#include <cstdint>
#include <string>

class QLabel;
class QProgressBar;

namespace shell {

/// Shows how far a long operation is. It has nothing to do of its own: its owner sets bar and text
/// and shows and hides it.
class FormProgress : public QWidget {
  public:
    FormProgress();

    void setRange(std::int64_t minimum, std::int64_t maximum);
    void setPosition(std::int64_t position);
    void setText(const std::string& text);

  private:
    QProgressBar* progressInit_;
    QLabel* displayProgress_;
};

}  // namespace shell
