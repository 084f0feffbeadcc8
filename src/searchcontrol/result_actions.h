#pragma once

#include <QObject>
#include <functional>
#include <string>

#include "search/result_column.h"
#include "search/search_host.h"
#include "searchcontrol/chosen_entries.h"

class QMenu;
class QWidget;

namespace searchcontrol {

/// What can be done with chosen results outside of the archive: show, open, copy as text, put on a
/// pick list; and the queries that lead on from them.
class ResultActions : public QObject {
    Q_OBJECT

  public:
    /// `host` must outlive this; windows come up in front of `window`.
    ResultActions(const search::SearchHost& host, QWidget* window);

    /// Shows the first of them in the main window.
    void showInMainWindow(const ChosenEntries& chosen);
    /// Opens the first of them, or the folder that holds it, where its medium is mounted; else says
    /// which medium to fetch.
    void open(const ChosenEntries& chosen);
    void openFolder(const ChosenEntries& chosen);
    static void copyPaths(const ChosenEntries& chosen);
    static void copyNames(const ChosenEntries& chosen);
    /// The rows as lines of cells with tabs between.
    static void copyRows(const ChosenEntries& chosen,
                         const std::vector<search::ResultColumn>& columns);
    void showPickList(const ChosenEntries& chosen);

  private:
    std::string placeOrMessage(const ChosenEntries& chosen);

    const search::SearchHost& host_;
    QWidget* window_;
};

/// The query that finds the copies of an entry.
std::string copiesQuery(const search::Index& index, search::Row row);
// Terms that take in the entry's folder, extension ("" where it has none) and medium.
std::string folderTerm(const search::Index& index, search::Row row);
std::string extensionTerm(const search::Index& index, search::Row row);
std::string mediumTerm(const search::Index& index, search::Row row);

}  // namespace searchcontrol
