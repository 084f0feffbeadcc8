#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

#include "search/query.h"
#include "search/search_host.h"
#include "searchcontrol/annotation_editor.h"
#include "searchcontrol/archive_reader.h"
#include "searchcontrol/export_task.h"
#include "searchcontrol/hit_counter.h"
#include "searchcontrol/query_history.h"
#include "searchcontrol/result_actions.h"
#include "searchcontrol/saved_searches.h"
#include "searchcontrol/search_task.h"
#include "searchcontrol/settings_section.h"

class QMenu;
class QTabWidget;

namespace controls {
class StatusLine;
}

namespace searchcontrol {

class DetailsPane;
class DuplicatesPage;
class FacetPanel;
class LetterDelegate;
class QueryLine;
class ResultTable;
class StatisticsPage;
class SyntaxCard;
struct ActionDescription;

/// The search component: a query line, what it finds in the archive at `archivePath`, and what can
/// be done with that. Everything that narrows the results stands in the query line, and whatever
/// is clicked only edits it.
///
/// It runs on the window's thread; reading, searching and counting are done piece by piece between
/// the events. Archive and host are only used from here on: the archive's sole changes are the
/// keywords and notes that somebody gives to chosen results.
class SearchControl : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString archivePath READ archivePath WRITE setArchivePath)

  public:
    explicit SearchControl(const search::SearchHost& host);
    ~SearchControl() override;

    /// The full path of the archive; "" for none. Setting it, to the same path as well, looks
    /// whether the archive has changed.
    QString archivePath() const { return reader_.path(); }
    void setArchivePath(const QString& path);
    /// Something is being read, searched, counted or written.
    bool isBusy() const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    friend struct ActionDescription;

    void createWidgets();
    QWidget* createResultsPage();
    QLayout* createTopLine();
    void createActions();
    void connectParts();
    void connectPages();
    template <typename Action>
    auto guarded(Action action);

    search::LocalTime now() const;
    void archiveChanged();
    void takeQuery();
    void searchAnew();
    void showHits();
    void countHits();
    void showCounts();
    void showStatistics();
    void showSelection();
    void showDetails();
    void showStatus();
    QString statusText() const;
    QString hitsText() const;

    ChosenEntries chosen() const;
    ChosenEntries allOrSelected() const;
    void enterList();
    void searchFor(const std::string& query);
    void narrow(const std::string& term);
    void exclude(const std::string& term);
    void orderBy(search::ResultColumn column);
    void showEntry(search::Row row);
    void restoreColumns();
    void saveColumns();
    void fillSavedMenu();

    // The actions of the menu.
    void showInMainWindow();
    void open();
    void openFolder();
    void copyPath();
    void copyName();
    void copyRow();
    void editAnnotations();
    void undoAnnotations();
    void findCopies();
    void excludeFolder();
    void excludeExtension();
    void excludeMedium();
    void exportResults();
    void showPickList();
    void saveSearch();
    void focusQuery();
    void showSyntax();
    void reload();

    search::SearchHost host_;
    SettingsSection settings_;
    QueryHistory history_;
    SavedSearches saved_;
    ArchiveReader reader_;
    SearchTask task_;
    HitCounter counter_;
    Slices copyCounter_;
    Slices selectionSum_;
    ResultActions actions_;
    AnnotationEditor annotations_;
    ExportTask export_;
    QString exported_;  ///< what the last export has come to, until something else is looked for
    search::Query query_;
    QString shownQuery_;
    QString searchedLine_;    ///< the line that query_ was taken from
    bool keepsHits_ = false;  ///< the line cannot be understood; query_ is the one before
    QTimer columnsRest_;
    QTimer selectionRest_;
    bool areColumnsRestored_ = false;

    QueryLine* queryLine_;
    QMenu* menuActions_;
    QMenu* menuSaved_;
    QTabWidget* tabs_;
    FacetPanel* facets_;
    ResultTable* table_;
    LetterDelegate* letters_;
    DetailsPane* details_;
    DuplicatesPage* duplicates_;
    StatisticsPage* statistics_;
    controls::StatusLine* labelStatus_;
    controls::StatusLine* labelSelection_;
    SyntaxCard* syntax_ = nullptr;
};

}  // namespace searchcontrol
