#include "searchcontrol/search_control.h"

#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "base/event_boundary.h"
#include "controls/status_line.h"
#include "platform/clock.h"
#include "platform/platform.h"
#include "search/copies.h"
#include "search/query_edit.h"
#include "search/query_parser.h"
#include "searchcontrol/column_layout.h"
#include "searchcontrol/details_pane.h"
#include "searchcontrol/duplicates_page.h"
#include "searchcontrol/export_dialog.h"
#include "searchcontrol/facet_panel.h"
#include "searchcontrol/letter_delegate.h"
#include "searchcontrol/query_line.h"
#include "searchcontrol/result_table.h"
#include "searchcontrol/selection_sum.h"
#include "searchcontrol/statistics_page.h"
#include "searchcontrol/syntax_card.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

/// How long columns and selection rest before they are written and told of, in milliseconds.
constexpr int restOfColumns = 800;
constexpr int restOfSelection = 15;
constexpr const char* columnsKey = "columns";

/// True where `line` is `earlier` with something typed into it, at one place.
bool isTypedInto(const QString& earlier, const QString& line) {
    const auto fromStart = std::mismatch(earlier.begin(), earlier.end(), line.begin(), line.end());
    const auto fromEnd =
        std::mismatch(earlier.rbegin(), earlier.rend(), line.rbegin(), line.rend());
    return (fromStart.first - earlier.begin()) + (fromEnd.first - earlier.rbegin()) >=
           earlier.size();
}

}  // namespace

/// One item of the menu of actions.
struct ActionDescription {
    const char* name;  ///< null: a separator
    const char* caption;
    QKeySequence keys;
    void (SearchControl::*handler)();

    static std::vector<ActionDescription> all();
};

std::vector<ActionDescription> ActionDescription::all() {
    using Control = SearchControl;
    const ActionDescription separator{nullptr, nullptr, {}, nullptr};
    return {
        {"actionShow", "&Show in the Main Window", {}, &Control::showInMainWindow},
        {"actionOpen", "&Open", Qt::CTRL | Qt::Key_Return, &Control::open},
        {"actionOpenFolder", "Open Its &Folder", Qt::CTRL | Qt::SHIFT | Qt::Key_Return,
         &Control::openFolder},
        separator,
        {"actionCopyRow", "&Copy Row", Qt::CTRL | Qt::Key_C, &Control::copyRow},
        {"actionCopyPath", "Copy &Path", Qt::CTRL | Qt::SHIFT | Qt::Key_C, &Control::copyPath},
        {"actionCopyName", "Copy &Name", {}, &Control::copyName},
        separator,
        {"actionKeywords", "&Keywords and Notes", Qt::CTRL | Qt::Key_K, &Control::editAnnotations},
        {"actionUndo", "&Undo Keywords and Notes", Qt::CTRL | Qt::Key_Z, &Control::undoAnnotations},
        separator,
        {"actionFindCopies", "Find Cop&ies", Qt::CTRL | Qt::Key_D, &Control::findCopies},
        {"actionExcludeFolder", "Exclude This Fo&lder", {}, &Control::excludeFolder},
        {"actionExcludeExtension", "Exclude This E&xtension", {}, &Control::excludeExtension},
        {"actionExcludeMedium", "Exclude This &Medium", {}, &Control::excludeMedium},
        separator,
        {"actionExport", "&Export", Qt::CTRL | Qt::Key_E, &Control::exportResults},
        {"actionPickList", "Pick Lis&t", Qt::CTRL | Qt::Key_P, &Control::showPickList},
        separator,
        {"actionSaveSearch", "Sa&ve This Search", Qt::CTRL | Qt::Key_S, &Control::saveSearch},
        {"actionQuery", "Go to the &Query", Qt::CTRL | Qt::Key_L, &Control::focusQuery},
        {"actionReload", "&Read the Archive Again", Qt::Key_F5, &Control::reload},
        {"actionSyntax", "&How to Search", Qt::Key_F1, &Control::showSyntax},
    };
}

SearchControl::SearchControl(const search::SearchHost& host)
    : host_(host),
      settings_(host.platform.privateProfile(), host.platform.shell(), "search"),
      history_(settings_),
      saved_(SettingsSection(host.platform.privateProfile(), host.platform.shell(), "searches")),
      reader_(host.engine, host.boundary, this),
      task_(host.boundary, this),
      counter_(host.boundary, this),
      copyCounter_(host.boundary, this),
      selectionSum_(host.boundary, this),
      actions_(host_, this),
      annotations_(host_, this),
      export_(host.boundary, this) {
    setObjectName("search_control");
    setAccessibleName("Search");
    createWidgets();
    createActions();
    connectParts();
    connectPages();
    showStatus();
}

SearchControl::~SearchControl() = default;

/// A handler inside the boundary of the event loop.
template <typename Action>
auto SearchControl::guarded(Action action) {
    return [this, action] { host_.boundary.run([&] { (this->*action)(); }); };
}

void SearchControl::createWidgets() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addLayout(createTopLine());
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName("tabSearch");
    tabs_->setAccessibleName("Results, duplicates and statistics");
    tabs_->setDocumentMode(true);
    tabs_->addTab(createResultsPage(), "&Results");
    duplicates_ = new DuplicatesPage(host_.boundary, this);
    tabs_->addTab(duplicates_, "&Duplicates");
    statistics_ = new StatisticsPage(this);
    tabs_->addTab(statistics_, "S&tatistics");
    layout->addWidget(tabs_, 1);
    labelStatus_ = new controls::StatusLine("", this);
    labelStatus_->setObjectName("labelStatus");
    labelSelection_ = new controls::StatusLine("", this);
    labelSelection_->setObjectName("labelSelection");
    // A long text must not widen the window.
    labelStatus_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    labelSelection_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* bottom = new QHBoxLayout;
    bottom->setContentsMargins(6, 0, 6, 4);
    bottom->addWidget(labelStatus_, 2);
    bottom->addWidget(labelSelection_, 1);
    layout->addLayout(bottom);
    setFocusProxy(queryLine_);
}

QLayout* SearchControl::createTopLine() {
    queryLine_ = new QueryLine(history_, this);
    const auto createButton = [this](const char* name, const char* caption) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setFocusPolicy(Qt::TabFocus);
        return button;
    };
    menuSaved_ = new QMenu(this);
    menuSaved_->setObjectName("menuSaved");
    QPushButton* saved = createButton("btnSaved", "Searches");
    saved->setAccessibleName("Saved searches and earlier ones");
    saved->setMenu(menuSaved_);
    menuActions_ = new QMenu(this);
    menuActions_->setObjectName("menuActions");
    QPushButton* actions = createButton("btnActions", "Actions");
    actions->setAccessibleName("What to do with the chosen results");
    actions->setMenu(menuActions_);
    auto* line = new QHBoxLayout;
    line->setContentsMargins(6, 6, 6, 0);
    line->addWidget(queryLine_, 1);
    line->addWidget(saved);
    line->addWidget(actions);
    return line;
}

QWidget* SearchControl::createResultsPage() {
    facets_ = new FacetPanel(this);
    table_ = new ResultTable(this);
    letters_ = new LetterDelegate(table_);
    table_->setItemDelegate(letters_);
    details_ = new DetailsPane(this);
    auto* right = new QSplitter(Qt::Vertical, this);
    right->addWidget(table_);
    right->addWidget(details_);
    right->setStretchFactor(0, 4);
    right->setStretchFactor(1, 1);
    right->setChildrenCollapsible(false);
    right->setSizes({400, 150});
    auto* page = new QSplitter(Qt::Horizontal, this);
    page->addWidget(facets_);
    page->addWidget(right);
    page->setStretchFactor(0, 0);
    page->setStretchFactor(1, 1);
    page->setSizes({210, 800});
    return page;
}

void SearchControl::createActions() {
    for (const ActionDescription& description : ActionDescription::all()) {
        if (description.name == nullptr) {
            menuActions_->addSeparator();
            continue;
        }
        QAction* action = menuActions_->addAction(description.caption);
        action->setObjectName(description.name);
        action->setShortcut(description.keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        // Keys that are held down would open the same file again and again.
        action->setAutoRepeat(false);
        connect(action, &QAction::triggered, this, guarded(description.handler));
        addAction(action);
    }
    auto* undo = findChild<QAction*>("actionUndo");
    undo->setEnabled(false);
    connect(&annotations_, &AnnotationEditor::changed, this,
            [this, undo] { undo->setEnabled(annotations_.canUndo()); });
}

void SearchControl::connectParts() {
    connect(queryLine_, &QLineEdit::textChanged, this, guarded(&SearchControl::searchAnew));
    connect(queryLine_, &QueryLine::leftDownwards, this, &SearchControl::enterList);
    connect(queryLine_, &QueryLine::entered, this, guarded(&SearchControl::showInMainWindow));
    connect(&reader_, &ArchiveReader::indexChanged, this, guarded(&SearchControl::archiveChanged));
    connect(&reader_, &ArchiveReader::progressed, this, &SearchControl::showStatus);
    connect(&task_, &SearchTask::foundMore, this, &SearchControl::showHits);
    connect(&task_, &SearchTask::finished, this, [this] {
        showHits();
        countHits();
    });
    connect(&counter_, &HitCounter::counted, this, &SearchControl::showCounts);
    connect(&export_, &ExportTask::progressed, this, &SearchControl::showStatus);
    connect(&export_, &ExportTask::finished, this, [this] {
        exported_ = countText(static_cast<std::int64_t>(export_.expected()), "entry", "entries") +
                    " exported to " + export_.fileName();
        showStatus();
    });
    connect(table_, &ResultTable::typed, this, [this](const QString& typed) {
        queryLine_->setFocus();
        queryLine_->type(typed);
    });
    connect(table_, &ResultTable::leftUpwards, queryLine_, [this] { queryLine_->setFocus(); });
    connect(table_, &ResultTable::entered, this, guarded(&SearchControl::showInMainWindow));
    connect(table_, &ResultTable::orderWanted, this, &SearchControl::orderBy);
    connect(table_, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
        menuActions_->popup(table_->viewport()->mapToGlobal(place));
    });
    selectionRest_.setSingleShot(true);
    selectionRest_.setInterval(restOfSelection);
    selectionRest_.callOnTimeout(this, guarded(&SearchControl::showSelection));
    connect(table_, &ResultTable::selectionMoved, this, [this] { selectionRest_.start(); });
    columnsRest_.setSingleShot(true);
    columnsRest_.setInterval(restOfColumns);
    columnsRest_.callOnTimeout(this, guarded(&SearchControl::saveColumns));
    connect(table_, &ResultTable::columnsChanged, this, [this] { columnsRest_.start(); });
    connect(menuSaved_, &QMenu::aboutToShow, this, guarded(&SearchControl::fillSavedMenu));
}

void SearchControl::connectPages() {
    connect(facets_, &FacetPanel::narrowed, this, &SearchControl::narrow);
    connect(facets_, &FacetPanel::excluded, this, &SearchControl::exclude);
    connect(details_, &DetailsPane::entryWanted, this, &SearchControl::showEntry);
    connect(duplicates_, &DuplicatesPage::queryWanted, this, &SearchControl::searchFor);
    connect(duplicates_, &DuplicatesPage::entryWanted, this, &SearchControl::showEntry);
    connect(statistics_, &StatisticsPage::narrowed, this, &SearchControl::narrow);
    connect(tabs_, &QTabWidget::currentChanged, this, &SearchControl::showStatistics);
    connect(&annotations_, &AnnotationEditor::changed, this, [this] {
        if (!reader_.path().isEmpty()) {
            reader_.reload();
        }
    });
}

search::LocalTime SearchControl::now() const {
    const platform::SystemTime now = host_.platform.clock().localNow();
    return search::localTime(
        {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond});
}

void SearchControl::setArchivePath(const QString& path) {
    host_.boundary.run([&] { reader_.setPath(path); });
}

bool SearchControl::isBusy() const {
    return reader_.isReading() || task_.isRunning() || counter_.isRunning() ||
           copyCounter_.isRunning() || duplicates_->isRunning() || export_.isRunning() ||
           selectionRest_.isActive() || selectionSum_.isRunning();
}

void SearchControl::archiveChanged() {
    queryLine_->setIndex(reader_.index());
    copyCounter_.stop();
    searchAnew();
    if (reader_.index() == nullptr) {
        return;
    }
    copyCounter_.start([this, index = reader_.index()](const search::Budget& budget) {
        while (!index->copies().advance()) {
            if (budget.isSpent()) {
                return false;
            }
        }
        table_->results().copiesCounted();
        selectionRest_.start();
        return true;
    });
}

/// A line into which something is typed that cannot be understood yet, such as a regular expression
/// with a parenthesis open, finds what it found before that.
void SearchControl::takeQuery() {
    search::Query query = search::parseQuery(queryLine_->query(), now());
    const bool isInvalid = std::ranges::any_of(query.notices, [](const search::Notice& notice) {
        return notice.kind == search::Notice::Kind::Invalid;
    });
    keepsHits_ = isInvalid && isTypedInto(searchedLine_, queryLine_->text());
    if (keepsHits_) {
        query_.notices = std::move(query.notices);
    } else {
        query_ = std::move(query);
        searchedLine_ = queryLine_->text();
    }
}

void SearchControl::searchAnew() {
    exported_.clear();
    takeQuery();
    if (reader_.index() != nullptr && keepsHits_ && task_.run() != nullptr &&
        task_.run()->sharedIndex() == reader_.index()) {
        showStatus();
        return;
    }
    counter_.stop();
    if (reader_.index() == nullptr) {
        task_.stop();
        table_->show(nullptr, {});
        facets_->show(nullptr);
        statistics_->show(nullptr);
        duplicates_->setHits(nullptr, {});
    } else {
        task_.start(reader_.index(), query_);
    }
    showStatus();
}

/// The entry that is current, and the place in the list, stay where only more is shown, or the same
/// is read anew.
void SearchControl::showHits() {
    letters_->setQuery(query_);
    const bool isSameQuery = shownQuery_ == queryLine_->text();
    const bool hasCurrent = isSameQuery && table_->currentIndex().isValid();
    const search::Row current =
        hasCurrent ? table_->results().hit(table_->currentIndex().row()) : 0;
    const int scrolled = table_->verticalScrollBar()->value();
    table_->show(task_.run()->sharedIndex(), task_.hits());
    if (isSameQuery) {
        table_->verticalScrollBar()->setValue(scrolled);
    }
    const int place = hasCurrent ? table_->results().placeOf(current) : -1;
    if (place >= 0) {
        table_->setCurrentIndex(
            table_->model()->index(place, table_->horizontalHeader()->logicalIndex(0)));
    }
    shownQuery_ = queryLine_->text();
    const bool isOrdered = !query_.sort.empty();
    table_->showOrder(isOrdered ? static_cast<int>(query_.sort.front().column) : -1,
                      isOrdered && query_.sort.front().isDescending);
    showStatus();
}

void SearchControl::countHits() {
    counter_.start(task_.run()->sharedIndex(), task_.run()->sharedHits());
    duplicates_->setHits(task_.run()->sharedIndex(), task_.run()->ascendingHits());
}

/// Its tables are made where somebody sees them.
void SearchControl::showStatistics() {
    if (tabs_->currentWidget() == statistics_) {
        statistics_->show(counter_.counts());
    }
}

void SearchControl::showCounts() {
    facets_->show(counter_.counts());
    showStatistics();
    showStatus();
}

void SearchControl::showSelection() {
    showDetails();
    const auto sum = std::make_shared<SelectionSum>(
        table_->results().index(), table_->results().sharedHits(), table_->selectedStretches());
    selectionSum_.startNow([this, sum](const search::Budget& budget) {
        if (!sum->run(budget)) {
            return false;
        }
        labelSelection_->setText(sum->text());
        return true;
    });
}

void SearchControl::showDetails() {
    const QModelIndex current = table_->currentIndex();
    const auto& index = table_->results().index();
    if (!current.isValid() || index == nullptr) {
        details_->clear();
    } else {
        details_->show(*index, table_->results().hit(current.row()));
    }
}

void SearchControl::showStatus() { labelStatus_->setText(statusText()); }

QString SearchControl::statusText() const {
    if (export_.isRunning()) {
        return "Exporting: " + countText(static_cast<std::int64_t>(export_.done())) + " of " +
               countText(static_cast<std::int64_t>(export_.expected()));
    }
    if (!exported_.isEmpty()) {
        return exported_;
    }
    if (!reader_.obstacle().isEmpty()) {
        return "The archive cannot be read: " + reader_.obstacle();
    }
    if (reader_.path().isEmpty()) {
        return "No archive is open";
    }
    if (reader_.index() == nullptr) {
        return "Reading the archive: " + countText(reader_.done()) + " of about " +
               countText(reader_.expected());
    }
    QString status;
    for (const search::Notice& notice : query_.notices) {
        status += text(notice.text) + ". ";
    }
    return status + hitsText();
}

QString SearchControl::hitsText() const {
    if (task_.run() == nullptr) {
        return {};
    }
    const auto found = static_cast<std::int64_t>(task_.run()->found());
    QString hits = countText(found, "hit", "hits");
    if (task_.isRunning()) {
        return hits + ", searching";
    }
    const auto shown = static_cast<std::int64_t>(task_.run()->hits().size());
    if (shown < found) {
        hits += ", the first " + countText(shown) + " shown";
    }
    if (const search::Breakdown* counts = counter_.counts()) {
        hits += ", " + sizeText(counts->total().bytes, counts->total().isExact) + " on " +
                countText(static_cast<std::int64_t>(counts->mediaTouched()), "medium", "media");
    }
    return hits + ", " + countText(task_.milliseconds()) + " ms";
}

ChosenEntries SearchControl::chosen() const {
    ChosenEntries entries{table_->results().index(), table_->chosen()};
    if (entries.isEmpty() && !table_->results().hits().empty() && !table_->hasFocus()) {
        entries.rows.push_back(table_->results().hit(0));
    }
    return entries;
}

ChosenEntries SearchControl::allOrSelected() const {
    ChosenEntries entries{table_->results().index(), table_->selected()};
    if (entries.size() < 2) {
        entries.rows = table_->results().hits();
    }
    return entries;
}

void SearchControl::enterList() {
    tabs_->setCurrentIndex(0);
    if (!table_->selectionModel()->hasSelection() && table_->model()->rowCount() > 0) {
        table_->selectRow(std::max(0, table_->currentIndex().row()));
    }
    table_->setFocus();
}

void SearchControl::searchFor(const std::string& query) {
    tabs_->setCurrentIndex(0);
    queryLine_->setQuery(query);
    queryLine_->remember();
}

void SearchControl::narrow(const std::string& term) {
    searchFor(search::lineWith(queryLine_->query(), term));
}

void SearchControl::exclude(const std::string& term) {
    searchFor(search::lineWithout(queryLine_->query(), term));
}

/// Upwards, then downwards, then by rank again.
void SearchControl::orderBy(search::ResultColumn column) {
    std::string key(search::columnKey(column));
    if (!query_.sort.empty() && query_.sort.front().column == column) {
        key = query_.sort.front().isDescending ? "" : "-" + key;
    }
    queryLine_->setQuery(search::lineSortedBy(queryLine_->query(), key));
}

/// An entry of the index whose rows are shown.
void SearchControl::showEntry(search::Row row) {
    host_.boundary.run([&] { actions_.showInMainWindow({table_->results().index(), {row}}); });
}

void SearchControl::showInMainWindow() {
    queryLine_->remember();
    actions_.showInMainWindow(chosen());
}
void SearchControl::open() {
    queryLine_->remember();
    actions_.open(chosen());
}
void SearchControl::openFolder() { actions_.openFolder(chosen()); }
void SearchControl::copyPath() { ResultActions::copyPaths(chosen()); }
void SearchControl::copyName() { ResultActions::copyNames(chosen()); }
void SearchControl::copyRow() { ResultActions::copyRows(chosen(), table_->shownColumns()); }

void SearchControl::editAnnotations() {
    annotations_.edit(base::splitArchivePath(reader_.path().toStdString()), chosen());
}

void SearchControl::undoAnnotations() { annotations_.undo(); }

void SearchControl::findCopies() {
    const ChosenEntries entries = chosen();
    if (!entries.isEmpty()) {
        searchFor(copiesQuery(*entries.index, entries.rows.front()));
    }
}

void SearchControl::excludeFolder() {
    const ChosenEntries entries = chosen();
    if (!entries.isEmpty()) {
        exclude(folderTerm(*entries.index, entries.rows.front()));
    }
}

void SearchControl::excludeExtension() {
    const ChosenEntries entries = chosen();
    const std::string term =
        entries.isEmpty() ? "" : extensionTerm(*entries.index, entries.rows.front());
    if (!term.empty()) {
        exclude(term);
    }
}

void SearchControl::excludeMedium() {
    const ChosenEntries entries = chosen();
    if (!entries.isEmpty()) {
        exclude(mediumTerm(*entries.index, entries.rows.front()));
    }
}

void SearchControl::exportResults() {
    const auto& results = table_->results();
    if (results.hits().empty()) {
        return;
    }
    const ChosenEntries selected{results.index(), table_->selected()};
    const ChosenEntries all{results.index(), results.hits()};
    ExportDialog dialog(all.size(), selected.size(), this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    search::ExportOptions options;
    if (dialog.onlyShownColumns()) {
        options.columns = table_->shownColumns();
    }
    options.neutralisesFormulas = dialog.neutralisesFormulas();
    export_.start(dialog.file(), dialog.onlySelected() ? selected : all, dialog.format(),
                  std::move(options));
    showStatus();
}

void SearchControl::showPickList() { actions_.showPickList(allOrSelected()); }

void SearchControl::saveSearch() {
    bool isAccepted = false;
    const QString name =
        QInputDialog::getText(this, "Save This Search", "Name of the search:", QLineEdit::Normal,
                              queryLine_->text(), &isAccepted);
    if (isAccepted) {
        saved_.save(name, queryLine_->text());
    }
}

void SearchControl::fillSavedMenu() {
    constexpr int shownHistory = 15;
    const auto addQuery = [this](QMenu* menu, const QString& caption, const QString& query) {
        QAction* action = menu->addAction(QString(caption).replace('&', "&&"));
        connect(action, &QAction::triggered, this,
                [this, query] { searchFor(query.toStdString()); });
    };
    menuSaved_->clear();
    menuSaved_->addAction(findChild<QAction*>("actionSaveSearch"));
    QMenu* forget = menuSaved_->addMenu("&Forget");
    forget->setObjectName("menuForget");
    forget->setEnabled(!saved_.all().empty());
    menuSaved_->addSeparator();
    for (const SavedSearches::Search& each : saved_.all()) {
        addQuery(menuSaved_, each.name, each.query);
        connect(forget->addAction(QString(each.name).replace('&', "&&")), &QAction::triggered, this,
                [this, name = each.name] { host_.boundary.run([&] { saved_.forget(name); }); });
    }
    menuSaved_->addSeparator();
    for (int i = 0; i < std::min(history_.size(), shownHistory); ++i) {
        addQuery(menuSaved_, history_.at(i), history_.at(i));
    }
}

void SearchControl::focusQuery() {
    queryLine_->setFocus();
    queryLine_->selectAll();
}

void SearchControl::showSyntax() {
    if (syntax_ == nullptr) {
        syntax_ = new SyntaxCard(this);
        connect(syntax_, &SyntaxCard::exampleChosen, this, &SearchControl::searchFor);
    }
    syntax_->show(reader_.index().get());
}

void SearchControl::reload() { reader_.reload(); }

void SearchControl::restoreColumns() {
    if (areColumnsRestored_) {
        return;
    }
    areColumnsRestored_ = true;
    QHeaderView& header = *table_->horizontalHeader();
    setColumnLayout(header, usualColumnLayout(fontMetrics().averageCharWidth()));
    setColumnLayout(header, settings_.read(columnsKey));
    columnsRest_.stop();
}

void SearchControl::saveColumns() {
    columnsRest_.stop();
    settings_.write(columnsKey, columnLayout(*table_->horizontalHeader()));
}

void SearchControl::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    host_.boundary.run([this] { restoreColumns(); });
}

void SearchControl::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    host_.boundary.run([this] {
        queryLine_->remember();
        if (columnsRest_.isActive()) {
            saveColumns();
        }
    });
}

void SearchControl::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !queryLine_->text().isEmpty()) {
        queryLine_->setQuery("");
        queryLine_->setFocus();
        return;
    }
    // Without a query Escape is the window's, which closes.
    QWidget::keyPressEvent(event);
}

}  // namespace searchcontrol
