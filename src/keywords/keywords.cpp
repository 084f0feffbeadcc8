#include "keywords/keywords.h"

#include "base/program_state.h"

namespace keywords {

namespace {

using RecordList = base::NumberedList<base::ScanEntry>;

/// Null where `source` names no list.
RecordList* listOf(base::ProgramState& state, const std::string& source) {
    if (source == "scan") {
        return &state.scanList;
    }
    return source == "archive" ? &state.archiveFiles : nullptr;
}

void replace(std::string& text, const std::string& given) {
    if (!given.empty()) {
        text = given;
    }
}

base::ScanEntry& entryAt(RecordList& list, std::int64_t position) {
    if (list.neverGrown() || position < 1 || position > list.upperBound()) {
        throw base::SubscriptFailure("record " + std::to_string(position) +
                                     " of the selected ones is not in the list any more");
    }
    return list[position];
}

}  // namespace

void applyKeywords(base::ProgramState& state, RecordColumns& columns, const RecordTexts& texts,
                   const std::string& source) {
    RecordList* const list = listOf(state, source);
    if (list == nullptr) {
        return;
    }
    for (const std::int16_t position : state.selectedRecords.elements()) {
        base::ScanEntry& entry = entryAt(*list, position);
        replace(entry.keywords, texts.keywords);
        replace(entry.Notes1, texts.notes1);
        replace(entry.Notes2, texts.notes2);
        columns.showTexts(position, {entry.keywords, entry.Notes1, entry.Notes2});
    }
}

}  // namespace keywords
