#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet/data_type.h"

namespace jet {

/// One column of a table: a value.
struct Field {
    std::string name;
    DataType type = DataType::Text;
    /// Text: characters; Binary: bytes; 0 takes the engine's default of 255. Other types: ignored
    /// when creating, the stored size in bytes when read.
    int size = 0;
    bool allowZeroLength = false;  ///< texts only: may the column hold ""
    bool required = false;         ///< may the column not be NULL
    bool autoNumber = false;
    std::uint8_t precision = 0;  ///< Numeric only
    std::uint8_t scale = 0;      ///< Numeric only

    friend bool operator==(const Field&, const Field&) = default;
};

/// Name and columns of a table, in order: what Database::append() creates and what an open table
/// says of itself.
struct TableDefinition {
    std::string name;
    std::vector<Field> fields;
    std::vector<std::string> indexes;  ///< names of the indexes; never created by this engine

    /// Position (from 0) of the field of that name, letter case ignored; -1 when there is none.
    int find(std::string_view fieldName) const;
};

}  // namespace jet
