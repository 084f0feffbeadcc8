#pragma once

#include <QMainWindow>
#include <optional>
#include <string>

#include "shell/main_commands.h"
#include "shell/record_list.h"

class QMenu;

namespace base {
class EventBoundary;
struct ProgramState;
}  // namespace base
namespace platform {
class ShellServices;
}

namespace shell {

class CommonDialog;
class HelpViewer;
class ImageList;
class Workspace;
struct MenuDescription;

/// The main window: the menus from which every other window is opened, and the workspace with the
/// archive's tree and the record list. It only collects what is selected, sorts, and shows help;
/// everything else its menus set off is done by the commands it is given. Closing it ends the
/// program.
class FormMain : public QMainWindow {
  public:
    /// All must outlive the window.
    FormMain(base::ProgramState& state, platform::ShellServices& shell,
             base::EventBoundary& boundary, HelpViewer& help, MainCommands commands);

    /// Does nothing; the place for what the program may have to prepare one day.
    void InitializeSettings();
    /// Hides the workspace and makes the search window, which stays hidden.
    void InitializeWorkSpace();
    /// Makes the loading window, so that a long operation can show it at once.
    void InitializeLoadForms();
    /// Collects the positions of the selected rows in `selectedRecords` and opens the keywords
    /// window. Without a selected row the positions of the call before stay.
    void addKeywords();
    /// A click on the header of `column`, from 1: the list is sorted by that column's texts. The
    /// first click sorts downwards, and each later one turns the direction, whatever the column.
    void listScan_ColumnClick(int column);

    /// Enables, shows and lays out the workspace.
    void arrangeWorkspace();
    Workspace& workspace() { return *workspace_; }
    void setCaption(const std::string& caption);

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void load();
    void createMenus();
    QMenu* createMenu(const MenuDescription& description);
    void showListMenu(const QPoint& position);

    void clickNode(const std::string& key);
    void chooseOpen();
    void chooseExit();
    void chooseExplore();
    void chooseScan();
    void chooseSave();
    void chooseSearch();
    void chooseHelp();
    void chooseAbout();

    friend struct MenuDescription;

    base::ProgramState& state_;
    platform::ShellServices& shell_;
    base::EventBoundary& boundary_;
    MainCommands commands_;

    CommonDialog* comDialog_;
    Workspace* workspace_;
    ImageList* expImageList_;
    QMenu* mnuPUList_ = nullptr;
    std::optional<RecordModel::Order> sortOrder_;  // one direction for all columns
};

}  // namespace shell
