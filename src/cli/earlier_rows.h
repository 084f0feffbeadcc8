#pragma once

#include <bitset>
#include <cstdint>
#include <deque>

#include "jet/recordset.h"

namespace jet {
class Connection;
}

namespace cli {

class Interruption;

/// The rows that a medium had in table `main` before an update, which go when all new ones are
/// stored.
///
/// Old and new rows look alike: the same medium, often the same names. Neither do they lie apart,
/// because the engine puts new rows wherever a page has room. What tells them apart is the place: a
/// row keeps its place as long as it lives, and no new row can be given the place of one that still
/// lives. So the places of the old rows are noted before the first new one is stored; one bit a
/// row, at most some 20 MB for the largest file that the format allows.
///
/// The archive must not be written by others between collect() and remove(). An update that ends in
/// between leaves old and new rows; the next one finds them all as its old rows and removes them.
class EarlierRows {
  public:
    /// Notes every row of that medium.
    void collect(jet::Connection& connection, std::int32_t mediaId);
    /// Deletes them, and forgets each when it is gone; Interrupted ends it between two rows.
    void remove(jet::Connection& connection, std::int32_t mediaId,
                const Interruption& interruption);

    /// Rows that are still there.
    std::int64_t count() const { return count_; }

  private:
    struct PageRows {
        std::uint32_t page = 0;
        std::bitset<256> slots;
    };

    void note(jet::RowPlace place);
    bool holds(jet::RowPlace place) const;

    std::deque<PageRows> pages_;  ///< ascending
    std::int64_t count_ = 0;
};

}  // namespace cli
