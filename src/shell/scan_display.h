#pragma once

#include "scan/main_display.h"

namespace shell {

class FormMain;

/// The main window as a scan sees it.
class ScanDisplay : public scan::MainDisplay {
  public:
    /// From now on it is that window, which must outlive this.
    void setWindow(FormMain& window) { window_ = &window; }

    void arrangeScanMain() override;
    void setListColumns(const std::vector<scan::ListColumn>& columns) override;
    void removeAllItems() override;
    void addItems(std::vector<scan::ListItem> items) override;
    void setDisplayDriveInfo(int index, const std::string& text) override;
    void enableSave() override;

  private:
    FormMain* window_ = nullptr;
};

}  // namespace shell
