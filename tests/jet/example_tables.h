#pragma once

#include <string>

#include "jet/table_definition.h"

namespace jet_test {

inline jet::Field textField(const std::string& name, int size = 0) {
    jet::Field field;
    field.name = name;
    field.type = jet::DataType::Text;
    field.size = size;
    field.allowZeroLength = true;
    return field;
}

inline jet::Field fieldOf(const std::string& name, jet::DataType type) {
    jet::Field field;
    field.name = name;
    field.type = type;
    return field;
}

inline jet::Field longField(const std::string& name) { return fieldOf(name, jet::DataType::Long); }

/// The two tables of the worked examples.
inline jet::TableDefinition mainTable() {
    return {"main",
            {textField("filename"), textField("path"), textField("folder"), textField("type"),
             longField("size"), textField("datecreated"), textField("datemodified"),
             textField("keywords"), textField("notes1"), textField("notes2"), longField("mediaid")},
            {}};
}

inline jet::TableDefinition mediaTable() {
    return {"media",
            {longField("mediaid"), textField("medialabel"), textField("medianame"),
             longField("mediasize"), textField("mediatype"), longField("mediafreespace"),
             textField("archivedate"), textField("archiveupdate"), longField("numberfiles")},
            {}};
}

/// A column of every type. Memo and LongBinary come last.
inline jet::TableDefinition allTypesTable() {
    jet::Field numeric = fieldOf("decimal", jet::DataType::Numeric);
    numeric.precision = 18;
    numeric.scale = 4;
    jet::Field binary = fieldOf("bytes", jet::DataType::Binary);
    binary.size = 100;
    jet::Field memo = fieldOf("memo", jet::DataType::Memo);
    memo.allowZeroLength = true;
    return {"everything",
            {longField("id"), fieldOf("truth", jet::DataType::Boolean),
             fieldOf("small", jet::DataType::Byte), fieldOf("medium", jet::DataType::Integer),
             fieldOf("money", jet::DataType::Currency), fieldOf("single", jet::DataType::Single),
             fieldOf("double", jet::DataType::Double), fieldOf("moment", jet::DataType::Date),
             binary, textField("label"), fieldOf("identity", jet::DataType::Guid), numeric, memo,
             fieldOf("object", jet::DataType::LongBinary)},
            {}};
}

}  // namespace jet_test
