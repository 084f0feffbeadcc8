#pragma once

#include <cstdint>
#include <vector>

#include "search/index.h"

namespace search {

/// One difference between two media, the earlier (left) and the later one (right).
struct Difference {
    enum class Kind {
        Added,    ///< only on the right
        Removed,  ///< only on the left
        Changed,  ///< a file of the same path with another size or date, or file against folder
        Moved,    ///< a file of the same name, size and date, but of another path
    };
    static constexpr Row none = UINT32_MAX;

    Kind kind = Kind::Added;
    Row left = none;   ///< of the left index
    Row right = none;  ///< of the right one
    friend bool operator==(const Difference&, const Difference&) = default;
};

/// One side of a comparison: a medium of an index.
struct ComparedMedium {
    const Index& index;
    std::int32_t mediaId = 0;
};

/// What differs, by path. Paths are compared as they are but for case and the two ways of writing
/// accents; media numbers do not count. The dates of folders say nothing and are not compared.
std::vector<Difference> compareMedia(const ComparedMedium& left, const ComparedMedium& right);

/// The path on its medium, without the number: "\photos\a.jpg".
std::string pathOnMedium(const Index& index, Row row);

}  // namespace search
