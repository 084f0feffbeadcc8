#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jet/format.h"
#include "jet/table_definition.h"

namespace jet {

/// The properties of a table's columns, a byte string in the catalog's column LvProp.
///
///     "MR2\0" (Jet 4) or "KKD\0" (Jet 3), then blocks until the end:
///       u32 length of the block with these six bytes, u16 kind
///       kind 0x80  names, each u16 length in bytes and the name
///       kind 0     properties of the table, kind 1 of a column:
///                  u32 length of the owner's name with this field and the next, u16 length, name;
///                  then entries: u16 length, u8 1 for a property of the definition, u8 data type,
///                  u16 place of its name, u16 length of the value, value
class PropertyBlock {
  public:
    /// AllowZeroLength and Required of every field.
    static std::string build(const Format& format, const TableDefinition& table);
    /// Sets allowZeroLength and required of the fields that the block speaks of. False when the
    /// block is damaged; what was read before the damage is set.
    static bool apply(const Format& format, std::string_view block, TableDefinition& table);
};

}  // namespace jet
