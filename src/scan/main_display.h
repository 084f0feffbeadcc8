#pragma once

#include <string>
#include <vector>

namespace scan {

/// One column of the main window's list.
struct ListColumn {
    std::string heading;
    double width;  ///< as a fraction of the list's width
};

/// An item of the list: its text and its sub-items.
using ListItem = std::vector<std::string>;

/// The main window as a scan sees it: where its result is shown.
class MainDisplay {
  public:
    virtual ~MainDisplay() = default;

    /// Enables and shows the panel with list and status lines, and lays it out.
    virtual void arrangeScanMain() = 0;
    /// Gives the list exactly these columns.
    virtual void setListColumns(const std::vector<ListColumn>& columns) = 0;
    virtual void removeAllItems() = 0;
    virtual void addItems(std::vector<ListItem> items) = 0;
    /// Status line 0 or 1.
    virtual void setDisplayDriveInfo(int index, const std::string& text) = 0;
    /// Sets the menu item with which a scan is saved enabled.
    virtual void enableSave() = 0;
};

}  // namespace scan
