#pragma once

#include <QWidget>
#include <memory>
#include <span>
#include <string>

#include "search/duplicates.h"
#include "searchcontrol/chosen_entries.h"
#include "searchcontrol/duplicates_model.h"
#include "searchcontrol/slices.h"

class QComboBox;
class QListWidget;
class QTableView;

namespace controls {
class StatusLine;
}

namespace searchcontrol {

/// What there is more than once among the hits of the query: groups with the bytes they waste, and
/// below them the places of the group that is current.
class DuplicatesPage : public QWidget {
    Q_OBJECT

  public:
    DuplicatesPage(base::EventBoundary& boundary, QWidget* parent);

    /// The hits to look through, in any order. They are looked through while the page is visible.
    void setHits(std::shared_ptr<const search::Index> index, std::span<const search::Row> hits);
    bool isRunning() const { return slices_.isRunning(); }

  signals:
    /// A group was chosen, by the query that finds it.
    void queryWanted(const std::string& query);
    /// One place of a group was chosen.
    void entryWanted(search::Row row);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void createWidgets();
    search::SameBy sameBy() const;
    void begin();
    void drop();
    bool lookOn(const search::Budget& budget);
    void showPlaces();
    void chooseGroup();

    ChosenEntries hits_;
    bool isStale_ = false;
    std::unique_ptr<search::DuplicateSearch> search_;
    DuplicatesModel model_;
    Slices slices_;
    QComboBox* comboSame_;
    QTableView* listGroups_;
    QListWidget* listPlaces_;
    controls::StatusLine* labelWasted_;
};

/// The query that finds the entries of a group.
std::string queryOf(const search::Index& index, const search::DuplicateGroup& group,
                    const search::SameBy& sameBy);

}  // namespace searchcontrol
