#include "save/form_save.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionProgressBar>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>
#include <string>

#include "base/failure.h"
#include "controls/plain_frame.h"
#include "controls/roomy_rows.h"
#include "controls/status_line.h"

namespace save {

namespace {

constexpr int smallestWidth = 480;
constexpr int shownRows = 6;

QString shown(const std::string& text) { return QString::fromStdString(text); }

/// The bar's numbers are narrower than the count of entries may be.
int barNumber(std::int64_t number) {
    return static_cast<int>(std::min<std::int64_t>(number, std::numeric_limits<int>::max()));
}

/// A bar that stands still and empty where there is nothing to count. Styles take a range without
/// any numbers for work of unknown length, and have something run to and fro.
class StillBar : public QProgressBar {
  public:
    using QProgressBar::QProgressBar;

  protected:
    void initStyleOption(QStyleOptionProgressBar* option) const override {
        QProgressBar::initStyleOption(option);
        if (option->maximum <= option->minimum) {
            option->maximum = option->minimum + 1;
            option->progress = option->minimum;
        }
    }
};

QLabel* createLine(const char* name, const QString& text, QWidget* parent) {
    auto* label = new controls::StatusLine(text, parent);
    label->setObjectName(name);
    label->setMargin(0);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return label;
}

}  // namespace

FormSave::FormSave(SaveSession session, base::EventBoundary& boundary,
                   std::function<void()> unloaded)
    : PassingWindow(boundary, std::move(unloaded)), session_(std::move(session)) {
    setObjectName("form_save");
    setWindowTitle("Save to Archive");
    createControls();
    layOut();
}

void FormSave::createControls() {
    displayDrive_ = createLine("displayDrive", {}, this);
    frameSave_ = new controls::PlainFrame(this);
    frameSave_->setObjectName("frameSave");
    frameSave_->setCaption("Current Archive");
    createWays();
    createMediaList();
    displayArchiving_ = createLine("displayArchiving", "Ready to Archive", this);
    createProgress();
    btnArchive_ = createButton("btnArchive", "Archive", &FormSave::clickArchive);
    btnArchive_->setDefault(true);
    btnCancel_ = createButton("btnCancel", "Cancel", &FormSave::clickCancel);
    btnCancel_->setAutoDefault(false);
}

void FormSave::createWays() {
    const char* const captions[] = {"New Media Save", "Update Existing Media"};
    for (const Way way : {New, Update}) {
        auto* option = new QRadioButton(captions[way], frameSave_);
        option->setObjectName("optUpdate");
        option->setProperty("index", static_cast<int>(way));
        connect(option, &QRadioButton::toggled, this, [this] { handle([this] { chooseWay(); }); });
        optUpdate_[way] = option;
    }
}

void FormSave::createMediaList() {
    listMedia_ = new QListWidget(frameSave_);
    listMedia_->setObjectName("listMedia");
    listMedia_->setAccessibleName("Media of the archive");
    listMedia_->setUniformItemSizes(true);
    listMedia_->setItemDelegate(new controls::RoomyRows(listMedia_));
    listMedia_->setTextElideMode(Qt::ElideMiddle);
    listMedia_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    listMedia_->setMinimumHeight(shownRows * controls::RoomyRows::smallestHeight(fontMetrics()) +
                                 2 * listMedia_->frameWidth());
}

void FormSave::createProgress() {
    progressArchive_ = new StillBar(this);
    progressArchive_->setObjectName("progressArchive");
    progressArchive_->setAccessibleName("Progress");
    // Its place stays free for it.
    QSizePolicy policy = progressArchive_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    progressArchive_->setSizePolicy(policy);
}

QPushButton* FormSave::createButton(const char* name, const QString& caption,
                                    void (FormSave::*operation)()) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this,
            [this, operation] { handle([this, operation] { (this->*operation)(); }); });
    return button;
}

void FormSave::layOut() {
    auto* inside = new QVBoxLayout(frameSave_);
    inside->addWidget(optUpdate_[New]);
    inside->addWidget(optUpdate_[Update]);
    inside->addWidget(listMedia_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnArchive_);
    buttons->addWidget(btnCancel_);
    auto* layout = new QVBoxLayout(this);
    layout->addStrut(smallestWidth);
    layout->addWidget(displayDrive_);
    layout->addWidget(frameSave_, 1);
    layout->addWidget(displayArchiving_);
    layout->addWidget(progressArchive_);
    layout->addLayout(buttons);
}

void FormSave::load() {
    progressArchive_->setRange(0, barNumber(session_.entryCount()));
    progressArchive_->setValue(1);
    progressArchive_->hide();
    displayDrive_->setText(shown(session_.scannedMediaText()));
    if (session_.hasCurrentArchive()) {
        initCurrentArchive();
    } else {
        initNoCurrentArchive();
    }
    listMedia_->setEnabled(false);
    optUpdate_[New]->setChecked(true);
}

void FormSave::initNoCurrentArchive() {
    frameSave_->setCaption(shown(SaveSession::noCurrentArchiveText()));
}

void FormSave::initCurrentArchive() {
    frameSave_->setCaption(shown(session_.currentArchiveText()));
    initMedia();
    listMedia_->clear();
    try {
        for (std::int64_t number = 1; number <= session_.lastMedium(); ++number) {
            listMedia_->addItem(shown(session_.mediumText(number)));
        }
    } catch (const base::Failure&) {
        // An archive without media has nothing to list.
    }
}

void FormSave::initMedia() { session_.initMedia(); }

void FormSave::chooseWay() { listMedia_->setEnabled(!optUpdate_[New]->isChecked()); }

void FormSave::clickArchive() {
    progressArchive_->show();
    displayArchiving_->setText("Archiving . . .");
    if (optUpdate_[New]->isChecked()) {
        session_.saveNew(*this);
    } else if (const int row = selectedRow(); row < 0) {
        session_.requireSelection();
        return;
    } else {
        session_.saveUpdate(row + 1, *this);
    }
    unload();
}

/// Selected, not current: the first row is current as soon as the list gets the focus.
int FormSave::selectedRow() const {
    const QList<QListWidgetItem*> selected = listMedia_->selectedItems();
    return selected.isEmpty() ? -1 : listMedia_->row(selected.first());
}

void FormSave::setProgress(std::int64_t entry) { progressArchive_->setValue(barNumber(entry)); }

}  // namespace save
