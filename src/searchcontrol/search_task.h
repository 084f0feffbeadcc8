#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <memory>
#include <vector>

#include "search/search_run.h"
#include "searchcontrol/slices.h"

namespace searchcontrol {

/// The search that the query line asks for. A new one ends the one that runs, and looks only
/// through the last hits where that is enough.
class SearchTask : public QObject {
    Q_OBJECT

  public:
    SearchTask(base::EventBoundary& boundary, QObject* parent);

    void start(std::shared_ptr<const search::Index> index, search::Query query);
    void stop();
    bool isRunning() const { return slices_.isRunning(); }
    /// The search that was started last; null before the first and after stop().
    const search::SearchRun* run() const { return run_.get(); }
    /// What there is to show of it: all hits in their order once it is finished, and before that
    /// the first some thousand.
    std::shared_ptr<const std::vector<search::Row>> hits() const;
    /// How long it has taken, in milliseconds, from the key press to its end.
    qint64 milliseconds() const { return milliseconds_; }

  signals:
    /// There are first hits, or more of them.
    void foundMore();
    void finished();

  private:
    bool searchOn(const search::Budget& budget);

    Slices slices_;
    std::unique_ptr<search::SearchRun> run_;
    QElapsedTimer time_;
    QElapsedTimer sinceShown_;
    qint64 milliseconds_ = 0;
    bool hasShown_ = false;
};

}  // namespace searchcontrol
