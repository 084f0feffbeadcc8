#include "open/form_open.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <optional>

#include "base/event_boundary.h"
#include "base/failure.h"
#include "base/message_box.h"
#include "controls/bring_to_front.h"
#include "controls/roomy_rows.h"
#include "controls/tip_text.h"
#include "open/archive_choice.h"
#include "open/archive_texts.h"
#include "open/file_dialogs.h"
#include "open/form_tab_strip.h"

namespace open {

namespace {

constexpr std::string_view archiveFilter = "Archives|*.mdb|All Files|*.*";
constexpr std::string_view archiveExtension = ".mdb";
constexpr int smallestWidth = 560;
constexpr int spaceBelowRows = 6;

QLineEdit* createTextBox(const char* name, const QString& accessibleName, QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setReadOnly(true);
    return box;
}

QHBoxLayout* buttonRow(std::initializer_list<QPushButton*> buttons) {
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton* button : buttons) {
        row->addWidget(button);
    }
    return row;
}

/// A tab that asks for a file: what was chosen, the button that asks again, and at the bottom those
/// that end the choice.
void layOutFileFrame(QGroupBox* frame, QLineEdit* text, QPushButton* browse, QHBoxLayout* buttons) {
    auto* choice = new QHBoxLayout;
    choice->addWidget(text);
    choice->addWidget(browse);
    auto* layout = new QVBoxLayout(frame);
    layout->addLayout(choice);
    layout->addStretch();
    layout->addLayout(buttons);
}

QString shown(const std::string& text) { return QString::fromStdString(text); }

/// Texts longer than their box show their beginning, where the archive's name is.
void showText(QLineEdit* box, const std::string& text) {
    box->setText(shown(text));
    box->setCursorPosition(0);
    box->setToolTip(controls::tipText(box->text()));
}

}  // namespace

FormOpen::FormOpen(ArchiveChoice& choice, FileDialogs& comDialog, base::MessageBox& messages,
                   base::EventBoundary& boundary)
    : choice_(choice), comDialog_(comDialog), messages_(messages), boundary_(boundary) {
    setObjectName("form_open");
    setWindowTitle("Open Archive");
    auto* layout = new QVBoxLayout(this);
    // A smallest width of the window itself would take the place of what its controls need.
    layout->addStrut(smallestWidth);
    createTabs();
    layout->addWidget(tabs_);
    layout->setSpacing(0);
    frames_ = new QStackedWidget(this);
    layout->addWidget(frames_);
    createRecentFrame();
    createExistingFrame();
    createNewFrame();
    bringToFront(Recent);
}

QPushButton* FormOpen::createButton(const char* name, const QString& caption,
                                    void (FormOpen::*operation)(), QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this,
            [this, operation] { boundary_.run([this, operation] { (this->*operation)(); }); });
    return button;
}

void FormOpen::createTabs() {
    tabs_ = new TabStrip(this);
    tabs_->setObjectName("TabOpen");
    tabs_->setAccessibleName("Which archive to open");
    tabs_->setExpanding(false);
    tabs_->setUsesScrollButtons(false);
    tabs_->addTab("Recent");
    tabs_->addTab("Existing");
    tabs_->addTab("New");
    tabs_->onClick([this](int tab) { boundary_.run([this, tab] { clickTab(tab); }); });
}

QGroupBox* FormOpen::addFrame(Tab tab, const QString& caption) {
    auto* page = new QWidget(frames_);
    auto* frame = new QGroupBox(caption, page);
    frame->setObjectName("frameOptions");
    frame->setProperty("index", static_cast<int>(tab) + 1);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, layout->contentsMargins().top(), 0, 0);
    layout->addWidget(frame);
    frames_->addWidget(page);
    return frame;
}

void FormOpen::createRecentFrame() {
    QGroupBox* frame = addFrame(Recent, "Current and Recent Archives");
    auto* labelCurrent = new QLabel("Current", frame);
    textCurrent_ = createTextBox("textCurrent", "Current archive", frame);
    auto* labelRecent = new QLabel("Recent", frame);
    createRecentList(frame);
    labelCurrent->setBuddy(textCurrent_);
    labelRecent->setBuddy(listRecent_);
    btnRecentOpen_ = createButton("btnRecentOpen", "Open", &FormOpen::openRecent, frame);
    QPushButton* btnRecentCancel =
        createButton("btnRecentCancel", "Cancel", &FormOpen::cancel, frame);

    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(labelCurrent);
    layout->addWidget(textCurrent_);
    layout->addWidget(labelRecent);
    layout->addWidget(listRecent_);
    layout->addLayout(buttonRow({btnRecentOpen_, btnRecentCancel}));
}

void FormOpen::createRecentList(QGroupBox* frame) {
    listRecent_ = new QTreeWidget(frame);
    listRecent_->setObjectName("listRecent");
    listRecent_->setAccessibleName("Recent archives");
    listRecent_->setHeaderLabels({"File Name", "Path"});
    listRecent_->setRootIsDecorated(false);
    listRecent_->setItemDelegate(new controls::RoomyRows(listRecent_));
    listRecent_->setAllColumnsShowFocus(true);
    listRecent_->setUniformRowHeights(true);
    listRecent_->header()->resizeSection(0, smallestWidth / 3);
    // All rows are seen without scrolling.
    const int rowHeight = controls::RoomyRows::smallestHeight(listRecent_->fontMetrics());
    listRecent_->setMinimumHeight(listRecent_->header()->sizeHint().height() +
                                  ArchiveChoice::rowCount * rowHeight +
                                  2 * listRecent_->frameWidth() + spaceBelowRows);
    // A selection is a click or a move with the keys. The current item alone is not: it is set as
    // soon as the list gets the focus.
    connect(listRecent_, &QTreeWidget::itemSelectionChanged, this, [this] {
        const QList<QTreeWidgetItem*> selected = listRecent_->selectedItems();
        if (!selected.isEmpty()) {
            clickRow(listRecent_->indexOfTopLevelItem(selected.first()) + 1);
        }
    });
    connect(listRecent_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        clickRow(listRecent_->indexOfTopLevelItem(item) + 1);
    });
}

void FormOpen::createExistingFrame() {
    QGroupBox* frame = addFrame(Existing, "Existing Archives");
    textExisting_ = createTextBox("textExisting", "Chosen archive", frame);
    textExisting_->setText("none selected");
    QPushButton* btnExistingBrowse =
        createButton("btnExistingBrowse", "Browse", &FormOpen::openExisting, frame);
    btnExistOK_ = createButton("btnExistOK", "OK", &FormOpen::openChosen, frame);
    QPushButton* btnExistCancel =
        createButton("btnExistCancel", "Cancel", &FormOpen::cancel, frame);
    layOutFileFrame(frame, textExisting_, btnExistingBrowse,
                    buttonRow({btnExistOK_, btnExistCancel}));
}

void FormOpen::createNewFrame() {
    QGroupBox* frame = addFrame(New, "New Archives");
    textNew_ = createTextBox("textNew", "Chosen new archive", frame);
    QPushButton* btnNewBrowse = createButton("btnNewBrowse", "Save As", &FormOpen::openNew, frame);
    btnNewOk_ = createButton("btnNewOk", "OK", &FormOpen::createChosen, frame);
    QPushButton* btnNewCacnel = createButton("btnNewCacnel", "Cancel", &FormOpen::cancel, frame);
    layOutFileFrame(frame, textNew_, btnNewBrowse, buttonRow({btnNewOk_, btnNewCacnel}));
}

void FormOpen::load() {
    setRecent();
    if (choice_.commands().showMainWindow) {
        choice_.commands().showMainWindow();
    }
    controls::bringToFront(*this);
}

void FormOpen::clickTab(int tab) {
    bringToFront(static_cast<Tab>(tab));
    switch (tab) {
        case Recent:
            setRecent();
            break;
        case Existing:
            openExisting();
            break;
        case New:
            openNew();
            break;
        default:
            break;
    }
}

void FormOpen::bringToFront(Tab tab) {
    frames_->setCurrentIndex(tab);
    QPushButton* const confirming[TabCount] = {btnRecentOpen_, btnExistOK_, btnNewOk_};
    confirming[tab]->setDefault(true);
}

void FormOpen::setRecent() {
    bringToFront(Recent);
    choice_.loadSettings();
    showText(textCurrent_, foundAtText(choice_.currentArchive()));
    fillRecentList();
}

void FormOpen::fillRecentList() {
    const QSignalBlocker silence(listRecent_);
    listRecent_->clear();
    for (int position = 1; position <= ArchiveChoice::rowCount; ++position) {
        const base::ArchiveLocation archive = choice_.row(position);
        auto* item = new QTreeWidgetItem({shown(archive.name), shown(archive.folder)});
        item->setToolTip(1, controls::tipText(item->text(1)));
        listRecent_->addTopLevelItem(item);
    }
    // The row that "Open" will take stays visibly chosen.
    if (recentIndex_ > 0) {
        listRecent_->setCurrentItem(listRecent_->topLevelItem(recentIndex_ - 1));
    }
}

void FormOpen::clickRow(int position) {
    recentIndex_ = static_cast<std::int16_t>(position);
    showText(textCurrent_, foundAtText(choice_.row(position)));
}

void FormOpen::openRecent() {
    choice_.openRecent(recentIndex_);
    hide();
}

void FormOpen::openChosen() {
    choice_.openExisting(chosen_);
    hide();
}

void FormOpen::createChosen() {
    FileNew();
    hide();
}

void FormOpen::cancel() {
    choice_.closeArchive();
    hide();
}

void FormOpen::openExisting() {
    btnExistOK_->setEnabled(false);
    try {
        btnExistOK_->setEnabled(chooseExisting());
    } catch (const base::Failure&) {
        // A dialog that fails is one that was cancelled.
    }
}

bool FormOpen::chooseExisting() {
    const std::optional<std::string> path =
        comDialog_.showOpen({archiveFilter, choice_.dialogFolder(), archiveExtension});
    if (!path) {
        return false;
    }
    chosen_ = base::splitArchivePath(*path);
    showText(textExisting_, foundAtText(chosen_));
    return true;
}

void FormOpen::openNew() {
    btnNewOk_->setEnabled(false);
    try {
        NewChoice choice = NewChoice::AskAgain;
        while (choice == NewChoice::AskAgain) {
            choice = chooseNew();
        }
        btnNewOk_->setEnabled(choice == NewChoice::Accepted);
    } catch (const base::Failure&) {
        // A dialog that fails is one that was cancelled.
    }
}

FormOpen::NewChoice FormOpen::chooseNew() {
    const std::optional<std::string> path =
        comDialog_.showSave({archiveFilter, choice_.dialogFolder(), archiveExtension});
    if (!path) {
        return NewChoice::Refused;
    }
    chosen_ = base::splitArchivePath(*path);
    showText(textNew_, newPathText(chosen_));
    const std::optional<base::Message> question = extensionQuestion(chosen_.name);
    if (!question) {
        return NewChoice::Accepted;
    }
    return messages_.show(*question) == base::MessageAnswer::Ok ? NewChoice::AskAgain
                                                                : NewChoice::Refused;
}

void FormOpen::FileNew() { choice_.createNew(chosen_); }

}  // namespace open
