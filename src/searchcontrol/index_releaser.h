#pragma once

#include <QObject>
#include <deque>
#include <memory>

#include "search/index_release.h"
#include "searchcontrol/slices.h"

namespace searchcontrol {

/// Gives the memory of indexes that nobody uses any more back between the window's events.
class IndexReleaser : public QObject {
    Q_OBJECT

  public:
    IndexReleaser(base::EventBoundary& boundary, QObject* parent);

    /// The same index for everybody who shows it; the last one to drop it hands it back. When this
    /// has gone by then, its memory goes at once.
    std::shared_ptr<const search::Index> shared(std::shared_ptr<search::Index> index);
    bool isRunning() const { return slices_.isRunning(); }

  private:
    void release(std::shared_ptr<search::Index> index);
    bool releaseOn(const search::Budget& budget);

    std::deque<search::IndexRelease> released_;
    Slices slices_;
};

}  // namespace searchcontrol
