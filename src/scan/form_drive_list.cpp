#include "scan/form_drive_list.h"

#include <QAbstractItemView>
#include <QSignalBlocker>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace scan {

namespace {

constexpr int millisecondsBetweenLooks = 1500;

/// Whether two entries stand for the same drive, whatever medium is in it.
bool sameDrive(const QString& left, const QString& right) {
    return left.section(' ', 0, 0) == right.section(' ', 0, 0);
}

}  // namespace

DriveList::DriveList(QWidget* parent) : QComboBox(parent) {
    auto* watch = new QTimer(this);
    watch->setInterval(millisecondsBetweenLooks);
    connect(watch, &QTimer::timeout, this, [this] {
        // An open list does not change under the pointer.
        if (isVisible() && !view()->isVisible()) {
            refresh();
        }
    });
    watch->start();
    connect(this, &QComboBox::activated, this, [this](int index) {
        if (std::exchange(indexWhenOpened_, -1) != index) {
            return;
        }
        if (otherMedium_) {
            emit currentIndexChanged(index);
        } else if (chosenAgain_) {
            chosenAgain_();
        }
    });
    connect(this, &QComboBox::currentIndexChanged, this, [this] { otherMedium_ = false; });
}

void DriveList::refresh() {
    QStringList entries;
    for (const std::string& entry : source_()) {
        entries.append(QString::fromStdString(entry));
    }
    QString chosen = currentText();
    if (!chosen.isEmpty()) {
        const auto same =
            std::find_if(entries.begin(), entries.end(),
                         [&chosen](const QString& entry) { return sameDrive(entry, chosen); });
        if (same == entries.end()) {
            entries.append(chosen);
            entries.sort(Qt::CaseSensitive);
        } else {
            otherMedium_ = otherMedium_ || chosen != *same;
            chosen = *same;
        }
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
