#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "search/index.h"

namespace search {

/// Gives the memory of an index back in steps: a gigabyte at once would keep a window waiting.
class IndexRelease {
  public:
    /// Nobody else may have the index any more.
    explicit IndexRelease(std::shared_ptr<Index> index) : index_(std::move(index)) {}

    /// Lets go of one of its columns; true when nothing is left.
    bool advance();

  private:
    std::shared_ptr<Index> index_;
    std::size_t next_ = 0;
};

}  // namespace search
