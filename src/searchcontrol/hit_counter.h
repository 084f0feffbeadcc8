#pragma once

#include <QObject>
#include <memory>
#include <vector>

#include "search/breakdown.h"
#include "searchcontrol/slices.h"

namespace searchcontrol {

/// Counts the hits of a finished search by media, extensions, years, keywords and sizes.
class HitCounter : public QObject {
    Q_OBJECT

  public:
    HitCounter(base::EventBoundary& boundary, QObject* parent);

    void start(std::shared_ptr<const search::Index> index,
               std::shared_ptr<const std::vector<search::Row>> hits);
    void stop();
    bool isRunning() const { return slices_.isRunning(); }
    /// Null until all is counted.
    const search::Breakdown* counts() const { return isRunning() ? nullptr : counts_.get(); }

  signals:
    void counted();

  private:
    std::shared_ptr<const search::Index> index_;
    std::shared_ptr<const std::vector<search::Row>> hits_;
    std::unique_ptr<search::Breakdown> counts_;
    Slices slices_;
};

}  // namespace searchcontrol
