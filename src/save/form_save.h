#pragma once

#include <array>
#include <functional>

#include "archive/data.h"
#include "controls/passing_window.h"
#include "save/save_session.h"

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;

namespace controls {
class PlainFrame;
}

namespace save {

/// The save window. The user stores the last scan in the current archive, as a new medium or in the
/// place of one that the archive holds. It is made anew for each opening, and goes when the scan is
/// stored, by Cancel, or by its close box.
///
/// Storing stops for nothing but a failure: Cancel in its middle takes the window away only, and
/// Archive pressed again stores once more.
class FormSave : public controls::PassingWindow, private archive::SaveProgress {
    Q_OBJECT

  public:
    /// `session` is the window's own. `boundary` must outlive the window; `unloaded` is called
    /// once, when the window has gone for good.
    FormSave(SaveSession session, base::EventBoundary& boundary, std::function<void()> unloaded);

    /// To be called once, before the window is shown. A failure of the archive passes.
    void load();

    /// Says that no archive is open.
    void initNoCurrentArchive();
    /// Shows which archive is open and lists its media. A failure while they are listed ends that
    /// in silence, with those listed so far; one of reading them passes.
    void initCurrentArchive();
    /// Reads the archive's media.
    void initMedia();

  private:
    enum Way { New, Update, WayCount };

    void createControls();
    void createWays();
    void createMediaList();
    void createProgress();
    void layOut();
    QPushButton* createButton(const char* name, const QString& caption,
                              void (FormSave::*operation)());

    void chooseWay();
    void clickArchive();
    void clickCancel() { cancel(); }
    /// The row of the list that is selected, from 0; -1 when none is.
    int selectedRow() const;
    void setProgress(std::int64_t entry) override;

    SaveSession session_;

    std::array<QRadioButton*, WayCount> optUpdate_{};
    controls::PlainFrame* frameSave_ = nullptr;
    QListWidget* listMedia_ = nullptr;
    QLabel* displayDrive_ = nullptr;
    QLabel* displayArchiving_ = nullptr;
    QProgressBar* progressArchive_ = nullptr;
    QPushButton* btnArchive_ = nullptr;
    QPushButton* btnCancel_ = nullptr;
};

}  // namespace save
