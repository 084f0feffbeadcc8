#include "scan/form_scan.h"

#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/message_box.h"
#include "controls/progress_line.h"
#include "controls/status_line.h"
#include "scan/form_drive_list.h"

namespace scan {

namespace {

constexpr int smallestWidth = 480;

QString shown(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

FormScan::FormScan(DesktopScan& scan, base::MessageBox& messages, base::EventBoundary& boundary,
                   std::function<void()> unloaded)
    : PassingWindow(boundary, std::move(unloaded)), scan_(scan), messages_(messages) {
    setObjectName("form_scan");
    setWindowTitle("Scan for Archive");
    createControls();
}

void FormScan::createControls() {
    auto* frame = new QGroupBox("Medium", this);
    frame->setObjectName("frameScan");
    displayArchiveName_ = createLabel("displayArchiveName");
    displayArchiveName_->setElideMode(Qt::ElideMiddle);
    driveScan_ = new DriveList(frame);
    driveScan_->setObjectName("driveScan");
    driveScan_->setAccessibleName("Drive");
    driveScan_->setSource([this] { return scan_.driveEntries(); });
    inputMediaName_ = new QLineEdit(frame);
    inputMediaName_->setObjectName("inputMediaName");
    inputMediaName_->setAccessibleName("Name of the medium");
    createDriveInfo();
    progress_ = new controls::ProgressLine("displayProgress", frame);
    btnScan_ = createButton("btnScan", "Scan", &FormScan::scanDrive);
    btnScan_->setDefault(true);
    btnCancel_ = createButton("btnCancel", "Cancel", &FormScan::clickCancel);
    btnCancel_->setAutoDefault(false);
    layOut(frame);

    connect(driveScan_, &QComboBox::currentIndexChanged, this,
            [this] { handle([this] { readDrive(); }); });
    driveScan_->onChosenAgain([this] { handle([this] { chooseDriveAgain(); }); });
    connect(inputMediaName_, &QLineEdit::textChanged, this,
            [this] { handle([this] { changeMediaName(); }); });
}

void FormScan::createDriveInfo() {
    displayMediaId_ = createLabel("displayMediaId");
    for (int index = 0; index < DesktopScan::driveInfoCount; ++index) {
        QLabel* label = createLabel("displayDriveInfo");
        label->setProperty("index", index);
        displayDriveInfo_[static_cast<std::size_t>(index)] = label;
    }
}

controls::StatusLine* FormScan::createLabel(const char* name) {
    auto* label = new controls::StatusLine({}, this);
    label->setObjectName(name);
    label->setMargin(0);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return label;
}

QPushButton* FormScan::createButton(const char* name, const QString& caption,
                                    void (FormScan::*operation)()) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this,
            [this, operation] { handle([this, operation] { (this->*operation)(); }); });
    return button;
}

void FormScan::layOut(QGroupBox* frame) {
    auto* fields = new QFormLayout;
    fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    fields->addRow("&Drive:", driveScan_);
    fields->addRow("&Name:", inputMediaName_);
    auto* inside = new QVBoxLayout(frame);
    inside->addLayout(fields);
    inside->addSpacing(inside->spacing());
    for (QLabel* label : displayDriveInfo_) {
        inside->addWidget(label);
    }
    inside->addWidget(displayMediaId_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnScan_);
    buttons->addWidget(btnCancel_);
    auto* layout = new QVBoxLayout(this);
    layout->addStrut(smallestWidth);
    layout->addWidget(displayArchiveName_);
    layout->addWidget(frame);
    layout->addWidget(progress_);
    layout->addStretch();
    layout->addLayout(buttons);
}

void FormScan::load() {
    whileInUse([this] {
        btnScan_->setEnabled(false);
        progress_->setText("Select Drive and Enter User Defined Name above.");
        driveScan_->refresh();
        readDrive();
        displayArchiveName_->setText(shown(scan_.archiveText()));
        driveScan_->setEnabled(scan_.hasCurrentArchive());
    });
}

void FormScan::readDrive() {
    driveReady_ = scan_.readDriveInfo(driveScan_->currentEntry());
    if (!driveReady_) {
        driveNotReady();
    }
    showDriveInfo();
}

/// No change, so what is known is not read again; but a drive that was not ready may be so now.
void FormScan::chooseDriveAgain() {
    if (!driveReady_) {
        readDrive();
    }
}

void FormScan::changeMediaName() {
    btnScan_->setEnabled(true);
    progress_->setText("Ready to Scan. . .");
    scan_.setMediaName(inputMediaName_->text().toStdString());
}

void FormScan::driveNotReady() {
    messages_.show({"Drive Not Ready", "Drive is not ready.", base::MessageButtons::Ok});
    btnScan_->setEnabled(false);
    showDriveInfoTexts(DesktopScan::driveInfoCaptions());
}

void FormScan::showDriveInfo() {
    showDriveInfoTexts(scan_.driveInfoTexts(QLocale().groupSeparator().toStdString()));
    displayMediaId_->setText(shown(scan_.mediaIdText()));
}

void FormScan::showDriveInfoTexts(const DesktopScan::DriveInfoTexts& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        displayDriveInfo_[i]->setText(shown(texts[i]));
    }
}

void FormScan::scanDrive() {
    walk();
    setScanMain();
    fillScanList();
    showDriveInfoInDisplay();
    scan_.offerSaving();
    hide();
}

void FormScan::walk() {
    struct Run {
        controls::ProgressLine& line;
        ~Run() { line.endRun(); }
    } const run{*progress_};
    scan_.scanDrive(driveScan_->currentEntry(), *this);
}

void FormScan::setDisplayProgress(const std::string& caption) {
    progress_->setRunningText(shown(caption));
}

void FormScan::setScanMain() { scan_.setScanMain(); }
void FormScan::fillScanList() { scan_.fillScanList(); }
void FormScan::showDriveInfoInDisplay() { scan_.showDriveInfoInDisplay(); }

void FormScan::changeEvent(QEvent* event) {
    PassingWindow::changeEvent(event);
    // Whoever comes back to the window may have put a medium in meanwhile.
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        handle([this] { driveScan_->refresh(); });
    }
}

}  // namespace scan
