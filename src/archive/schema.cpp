#include "archive/schema.h"

#include <string>
#include <utility>

namespace archive {
namespace {

/// Dates and keywords are texts as well. No width is given: the engine's default for a text holds.
jet::Field text(std::string name) {
    jet::Field field;
    field.name = std::move(name);
    field.type = jet::DataType::Text;
    field.allowZeroLength = true;
    return field;
}

jet::Field number(std::string name) {
    jet::Field field;
    field.name = std::move(name);
    field.type = jet::DataType::Long;
    return field;
}

}  // namespace

const jet::TableDefinition& mainTable() {
    static const jet::TableDefinition table{
        "main",
        {text("filename"), text("path"), text("folder"), text("type"), number("size"),
         text("datecreated"), text("datemodified"), text("keywords"), text("notes1"),
         text("notes2"), number("mediaid")},
        {}};
    return table;
}

const jet::TableDefinition& mediaTable() {
    static const jet::TableDefinition table{
        "media",
        {number("mediaid"), text("medialabel"), text("medianame"), number("mediasize"),
         text("mediatype"), number("mediafreespace"), text("archivedate"), text("archiveupdate"),
         number("numberfiles")},
        {}};
    return table;
}

}  // namespace archive
