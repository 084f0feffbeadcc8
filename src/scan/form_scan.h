#pragma once

#include <array>
#include <functional>
#include <string>

#include "controls/passing_window.h"
#include "scan/adjustpaths.h"
#include "scan/desktop_scan.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace base {
class EventBoundary;
class MessageBox;
}  // namespace base
namespace controls {
class ProgressLine;
class StatusLine;
}  // namespace controls

namespace scan {

class DriveList;

/// The scan window. The user chooses a drive, types a name for its medium and has it walked; the
/// result is shown in the main window and is saved by another window. The window hides itself after
/// a scan, Cancel unloads it; one that is to be seen again is made anew, so that drive and archive
/// are read again.
///
/// A walk stops for nothing but a failure: Cancel in its middle takes the window away only, and a
/// second Scan walks again inside the first.
class FormScan : public controls::PassingWindow, private ProgressDisplay {
    Q_OBJECT

  public:
    /// All must outlive the window. `unloaded` is called once, when the window has gone for good.
    FormScan(DesktopScan& scan, base::MessageBox& messages, base::EventBoundary& boundary,
             std::function<void()> unloaded);

    /// To be called once, before the window is shown: reads the first drive and says what is
    /// missing.
    void load();

    /// Says that the drive is not ready, disables scanning and leaves the captions only.
    void driveNotReady();
    /// Shows what is known of the medium.
    void showDriveInfo();
    /// Prepares the main window's panel and list.
    void setScanMain();
    /// Puts the scan list into the main window's list.
    void fillScanList();
    /// Puts the summary into the main window's status lines.
    void showDriveInfoInDisplay();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void createControls();
    void createDriveInfo();
    void layOut(QGroupBox* frame);
    controls::StatusLine* createLabel(const char* name);
    QPushButton* createButton(const char* name, const QString& caption,
                              void (FormScan::*operation)());

    void readDrive();
    void chooseDriveAgain();
    void changeMediaName();
    void scanDrive();
    void walk();
    void clickCancel() { cancel(); }
    void showDriveInfoTexts(const DesktopScan::DriveInfoTexts& texts);
    void setDisplayProgress(const std::string& caption) override;

    DesktopScan& scan_;
    base::MessageBox& messages_;
    bool driveReady_ = false;  // at its last reading

    DriveList* driveScan_ = nullptr;
    QLineEdit* inputMediaName_ = nullptr;
    QPushButton* btnScan_ = nullptr;
    QPushButton* btnCancel_ = nullptr;
    controls::StatusLine* displayArchiveName_ = nullptr;
    controls::ProgressLine* progress_ = nullptr;
    QLabel* displayMediaId_ = nullptr;
    std::array<QLabel*, DesktopScan::driveInfoCount> displayDriveInfo_{};
};

}  // namespace scan
