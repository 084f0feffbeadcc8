#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "search/duplicates.h"
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

    using Hits = std::shared_ptr<const std::vector<search::Row>>;

    /// The hits to look through, ascending; null without an index. They are looked through while
    /// the page is visible.
    void setHits(std::shared_ptr<const search::Index> index, Hits hits);
    bool isRunning() const { return slices_.isRunning() || model_.isSorting(); }

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

    std::shared_ptr<const search::Index> index_;
    Hits hits_;
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
