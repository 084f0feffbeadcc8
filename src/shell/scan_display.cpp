#include "shell/scan_display.h"

#include <QAction>
#include <QLabel>
#include <utility>

#include "shell/form_main.h"
#include "shell/record_list.h"
#include "shell/workspace.h"

namespace shell {

void ScanDisplay::arrangeScanMain() { window_->arrangeWorkspace(); }

void ScanDisplay::setListColumns(const std::vector<scan::ListColumn>& columns) {
    RecordList& list = *window_->workspace().list();
    list.records().removeAllColumns();
    for (const scan::ListColumn& column : columns) {
        list.appendColumn(QString::fromStdString(column.heading), column.width);
    }
}

void ScanDisplay::removeAllItems() { window_->workspace().list()->records().removeAllRows(); }

void ScanDisplay::addItems(std::vector<scan::ListItem> items) {
    window_->workspace().list()->records().appendRows(std::move(items));
}

void ScanDisplay::setDisplayDriveInfo(int index, const std::string& text) {
    window_->workspace().status(index)->setText(QString::fromStdString(text));
}

void ScanDisplay::enableSave() { window_->findChild<QAction*>("mnuArchSave")->setEnabled(true); }

}  // namespace shell
