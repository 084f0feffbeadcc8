#include "scan/form_drive_list.h"

#include <QSignalBlocker>
#include <utility>

namespace scan {

DriveList::DriveList(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::activated, this, [this](int index) {
        if (std::exchange(indexWhenOpened_, -1) == index && chosenAgain_) {
            chosenAgain_();
        }
    });
}

void DriveList::refresh() {
    QStringList entries;
    for (const std::string& entry : source_()) {
        entries.append(QString::fromStdString(entry));
    }
    const QString chosen = currentText();
    if (!chosen.isEmpty() && !entries.contains(chosen)) {
        entries.append(chosen);
        entries.sort(Qt::CaseSensitive);
    }
    if (entries == present()) {
        return;
    }
    const QSignalBlocker silence(this);
    clear();
    addItems(entries);
    if (!chosen.isEmpty()) {
        setCurrentText(chosen);
    }
}

QStringList DriveList::present() const {
    QStringList entries;
    for (int index = 0; index < count(); ++index) {
        entries.append(itemText(index));
    }
    return entries;
}

void DriveList::showPopup() {
    refresh();
    indexWhenOpened_ = currentIndex();
    QComboBox::showPopup();
}

}  // namespace scan
