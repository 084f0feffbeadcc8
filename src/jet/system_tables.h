#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "jet/format.h"
#include "jet/stored_table.h"

namespace jet {

/// The four tables that the engine keeps in every database, as it creates them: columns and
/// indexes, without places in the file.
std::vector<StoredTable> systemTables(const Format& format);

/// Positions of the columns of MSysObjects and MSysACEs, which are their numbers.
namespace objects {
enum Column : std::size_t {
    Id = 0,
    ParentId = 1,
    Name = 2,
    Type = 3,
    DateCreate = 4,
    DateUpdate = 5,
    Owner = 6,
    Flags = 7,
    LvProp = 14,
};
}
namespace aces {
enum Column : std::size_t { ObjectId = 0, Sid = 1, Acm = 2, Inheritable = 3 };
}

/// Ids of the catalog's containers.
constexpr std::int32_t rootContainer = 0x0F000000;
constexpr std::int32_t tablesContainer = 0x0F000001;
constexpr std::int32_t databasesContainer = 0x0F000002;
constexpr std::int32_t relationshipsContainer = 0x0F000003;
constexpr std::int32_t databaseObject = 0x10000000;

/// Security ids, plain.
constexpr std::string_view engineId{"\x02\x03", 2};
constexpr std::string_view adminId{"\x03\x01", 2};
constexpr std::string_view usersId{"\x02\x01", 2};
constexpr std::string_view creatorId{"\x02\x04", 2};

/// Rights of a group over tables that were created in the present or an earlier format.
inline std::uint32_t tableRightsOfUsers(const Format& format) {
    return format.isJet4() ? 0x000FFEFF : 0x000FFFFF;
}
constexpr std::uint32_t tableRightsOfOwner = 0x000F00FE;

}  // namespace jet
