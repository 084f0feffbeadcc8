#pragma once

#include <QWidget>
#include <memory>

#include "search/query.h"
#include "search/search_host.h"
#include "searchcontrol/archive_reader.h"
#include "searchcontrol/query_history.h"
#include "searchcontrol/search_task.h"

class QTabWidget;

namespace controls {
class StatusLine;
}

namespace searchcontrol {

class QueryLine;
class ResultTable;

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

    /// Something is being read, searched or counted.
    bool isBusy() const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void createWidgets();
    void connectParts();
    search::LocalTime now() const;
    void searchAnew();
    void showHits();
    void showStatus();
    QString statusText() const;

    search::SearchHost host_;
    ArchiveReader reader_;
    SearchTask task_;
    QueryHistory history_;
    search::Query query_;

    QueryLine* queryLine_;
    QTabWidget* tabs_;
    ResultTable* table_;
    controls::StatusLine* labelStatus_;
    controls::StatusLine* labelSelection_;
};

}  // namespace searchcontrol
