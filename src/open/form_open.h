#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <string>

#include "base/archive_location.h"

class QGroupBox;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTreeWidget;

namespace base {
class EventBoundary;
class MessageBox;
}  // namespace base

namespace open {

class ArchiveChoice;
class FileDialogs;
class TabStrip;

/// The open-archive window. The user reopens the current archive or one of five recent ones, opens
/// any other, or creates a new one; the choice itself is made by ArchiveChoice. The window is made
/// once and then shown and hidden; hiding keeps what it shows. Its close box hides it and leaves
/// the current archive open, its cancel buttons close the archive.
class FormOpen : public QDialog {
    Q_OBJECT

  public:
    /// All must outlive the window.
    FormOpen(ArchiveChoice& choice, FileDialogs& comDialog, base::MessageBox& messages,
             base::EventBoundary& boundary);

    /// To be called once, when the window has been made: fills it, shows the main window and then
    /// itself, in front.
    void load();

    /// Fills the tab "Recent" from the settings file.
    void setRecent();
    /// Lets the user choose an archive that exists.
    void openExisting();
    /// Lets the user choose name and place of a new archive, until its extension is the right one
    /// or the user gives up.
    void openNew();
    /// Creates the chosen new archive.
    void FileNew();

    /// The row of the recent list that was clicked last, from 1; 0 before the first click.
    std::int16_t recentIndex() const { return recentIndex_; }
    /// What the last file dialog gave.
    const std::string& chosenName() const { return chosen_.name; }
    const std::string& chosenFolder() const { return chosen_.folder; }

  private:
    enum Tab { Recent, Existing, New, TabCount };

    /// The button runs that operation when it is clicked.
    QPushButton* createButton(const char* name, const QString& caption,
                              void (FormOpen::*operation)(), QWidget* parent);
    void createTabs();
    void createRecentFrame();
    void createExistingFrame();
    void createNewFrame();
    QGroupBox* addFrame(Tab tab, const QString& caption);
    void createRecentList(QGroupBox* frame);

    void clickTab(int tab);
    void bringToFront(Tab tab);
    void fillRecentList();
    void clickRow(int position);
    void openRecent();
    void openChosen();
    void createChosen();
    void cancel();
    bool chooseExisting();
    /// One round of the dialog for a new archive.
    enum class NewChoice { Accepted, Refused, AskAgain };
    NewChoice chooseNew();

    ArchiveChoice& choice_;
    FileDialogs& comDialog_;
    base::MessageBox& messages_;
    base::EventBoundary& boundary_;

    std::int16_t recentIndex_ = 0;
    base::ArchiveLocation chosen_;

    TabStrip* tabs_ = nullptr;
    QStackedWidget* frames_ = nullptr;
    QLineEdit* textCurrent_ = nullptr;
    QTreeWidget* listRecent_ = nullptr;
    QPushButton* btnRecentOpen_ = nullptr;
    QLineEdit* textExisting_ = nullptr;
    QPushButton* btnExistOK_ = nullptr;
    QLineEdit* textNew_ = nullptr;
    QPushButton* btnNewOk_ = nullptr;
};

}  // namespace open
