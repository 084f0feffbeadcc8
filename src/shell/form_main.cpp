#include "shell/form_main.h"

#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <exception>
#include <initializer_list>
#include <vector>

#include "base/checked.h"
#include "base/event_boundary.h"
#include "base/program_state.h"
#include "platform/program_file.h"
#include "shell/archive_tree.h"
#include "shell/common_dialog.h"
#include "shell/pictures.h"
#include "shell/workspace.h"

namespace shell {

/// One menu of the menu bar. An item without a caption is a separator, one without a handler is
/// there to be seen and does nothing.
struct MenuDescription {
    struct Item {
        const char* name;
        const char* caption;
        void (FormMain::*handler)();
        std::vector<QKeySequence> shortcuts;
    };

    const char* name;
    const char* caption;
    std::vector<Item> items;

    static std::vector<MenuDescription> all();
};

std::vector<MenuDescription> MenuDescription::all() {
    return {
        {"mnFile",
         "&File",
         {
             {"mnuFileNew", "&New Archive", nullptr, {}},
             {"mnuFileOpen", "&Open Archive", &FormMain::chooseOpen, {Qt::CTRL | Qt::Key_O}},
             {"mnuFileClose", "&Close Archive", nullptr, {}},
             {"mnuFileLine1", nullptr, nullptr, {}},
             {"mnuFileSave", "&Save Archive", nullptr, {}},
             {"mnuFileSaveas", "Save Archive &As", nullptr, {}},
             {"mnuFileLine2", nullptr, nullptr, {}},
             {"mnuFileExit",
              "&Exit",
              &FormMain::chooseExit,
              {Qt::CTRL | Qt::Key_Q, Qt::ALT | Qt::Key_F4}},
         }},
        {"mnuPUList",
         "&Edit Records",
         {
             {"mnuPULKeywords", "&Add Keywords and Notes", &FormMain::addKeywords, {}},
             {"MnuPULLine1", nullptr, nullptr, {}},
             {"mnuPULDelete", "&Delete Record", nullptr, {}},
         }},
        {"mnuArch",
         "&Archive",
         {
             {"mnArchExplore", "&Explore Archive", &FormMain::chooseExplore, {}},
             {"mnuArchLine1", nullptr, nullptr, {}},
             {"mnuArchScan", "Scan for &Archive", &FormMain::chooseScan, {}},
             {"mnuArchSave", "&Save into Archive", &FormMain::chooseSave, {}},
         }},
        {"mnuSearch",
         "&Search",
         {
             {"mnuSearchSearch", "&Search", &FormMain::chooseSearch, {Qt::CTRL | Qt::Key_F}},
         }},
        {"mnuHelp",
         "&Help",
         {
             {"mnuHelpHelp", "&Help Topics", &FormMain::chooseHelp, {Qt::Key_F1}},
             {"mnuHelpLine1", nullptr, nullptr, {}},
             {"mnuHelpAbout", "&About Verdolin", &FormMain::chooseAbout, {}},
         }},
    };
}

namespace {

constexpr QSize firstSize(1000, 660);
constexpr QSize smallestSize(520, 320);

void run(const std::function<void()>& command) {
    if (command) {
        command();
    }
}

}  // namespace

FormMain::FormMain(base::ProgramState& state, platform::ShellServices& shell,
                   base::EventBoundary& boundary, HelpViewer& help, MainCommands commands)
    : state_(state),
      shell_(shell),
      boundary_(boundary),
      commands_(std::move(commands)),
      comDialog_(new CommonDialog(help, this)),
      workspace_(new Workspace(this)),
      expImageList_(new ImageList(this)) {
    setObjectName("form_main");
    setWindowTitle("Verdolin");
    setMinimumSize(smallestSize);
    resize(firstSize.boundedTo(screen()->availableSize()));
    comDialog_->setObjectName("comDialog");
    expImageList_->setObjectName("expImageList");
    setCentralWidget(workspace_);
    createMenus();

    RecordList* listScan = workspace_->list();
    listScan->onColumnClick(
        [this](int column) { boundary_.run([this, column] { listScan_ColumnClick(column); }); });
    listScan->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(listScan, &QWidget::customContextMenuRequested, this, &FormMain::showListMenu);
    workspace_->tree()->setImageList(expImageList_);
    workspace_->tree()->onNodeClick(
        [this](const std::string& key) { boundary_.run([this, &key] { clickNode(key); }); });
    load();
}

void FormMain::createMenus() {
    for (const MenuDescription& description : MenuDescription::all()) {
        menuBar()->addMenu(createMenu(description));
    }
    mnuPUList_ = menuBar()->findChild<QMenu*>("mnuPUList");
}

QMenu* FormMain::createMenu(const MenuDescription& description) {
    auto* menu = new QMenu(description.caption, menuBar());
    menu->setObjectName(description.name);
    for (const MenuDescription::Item& item : description.items) {
        QAction* action =
            item.caption == nullptr ? menu->addSeparator() : menu->addAction(item.caption);
        action->setObjectName(item.name);
        action->setShortcuts(QList<QKeySequence>(item.shortcuts.begin(), item.shortcuts.end()));
        if (item.handler != nullptr) {
            // A failure must not pass through the menu, which would not close properly.
            connect(action, &QAction::triggered, this, [this, handler = item.handler] {
                boundary_.run([this, handler] { (this->*handler)(); });
            });
        }
    }
    return menu;
}

void FormMain::load() {
    InitializeSettings();
    InitializeWorkSpace();
    InitializeLoadForms();
}

void FormMain::InitializeSettings() {}

void FormMain::InitializeWorkSpace() {
    workspace_->hidePanel();
    run(commands_.createSearchWindow);
}

void FormMain::InitializeLoadForms() { run(commands_.createLoadingWindow); }

void FormMain::arrangeWorkspace() { workspace_->arrange(); }

void FormMain::setCaption(const std::string& caption) {
    setWindowTitle(QString::fromStdString(caption));
}

void FormMain::addKeywords() {
    std::int64_t count = 0;
    for (const std::int64_t position : workspace_->list()->selectedPositions()) {
        ++count;
        state_.selectedRecords.growTo(count);
        state_.selectedRecords[count] = base::Int16(position);
    }
    run(commands_.showKeywords);
}

void FormMain::listScan_ColumnClick(int column) {
    using Order = RecordModel::Order;
    sortOrder_ = sortOrder_ == Order::Descending ? Order::Ascending : Order::Descending;
    workspace_->list()->sortBy(column - 1, *sortOrder_);
}

void FormMain::showListMenu(const QPoint& position) {
    mnuPUList_->popup(workspace_->list()->viewport()->mapToGlobal(position));
}

void FormMain::closeEvent(QCloseEvent* event) {
    event->accept();
    boundary_.run([this] { chooseExit(); });
}

void FormMain::chooseOpen() { run(commands_.openArchive); }
void FormMain::chooseExit() { run(commands_.exitProgram); }
void FormMain::chooseExplore() { run(commands_.exploreArchive); }
void FormMain::chooseScan() { run(commands_.scanForArchive); }
void FormMain::chooseSave() { run(commands_.saveIntoArchive); }
void FormMain::chooseSearch() { run(commands_.search); }
void FormMain::chooseAbout() { run(commands_.showAbout); }

void FormMain::clickNode(const std::string& key) {
    if (commands_.clickNode) {
        commands_.clickNode(key);
    }
}

void FormMain::chooseHelp() {
    try {
        comDialog_->setCancelError(true);
        comDialog_->setHelpCommand(CommonDialog::OpenHelpFile);
        comDialog_->setHelpFile(platform::programFile(shell_, {"help", "vdln.hlp"}));
        comDialog_->showHelp();
    } catch (const std::exception&) {
        // Help that cannot be shown is passed over in silence.
    }
}

}  // namespace shell
