#include "keywords/keyword_choice.h"

#include "base/failure.h"
#include "base/program_state.h"
#include "keywords/collection_failures.h"

namespace keywords {

namespace {

using KnownList = base::NumberedList<base::KeywordEntry>;

constexpr const char* addedSource = "current";
constexpr const char* lineEnd = "\r\n";

std::vector<std::string> textsOf(const KnownList& list, Listed listed) {
    std::vector<std::string> texts;
    try {
        const std::int64_t last = list.upperBound();
        for (std::int64_t i = 1; i <= last; ++i) {
            if (listed == Listed::All || list[i].source == addedSource) {
                texts.push_back(list[i].text);
            }
        }
    } catch (const base::Failure&) {
        // Above all a list that never held anything. What was found so far is listed.
    }
    return texts;
}

std::int64_t nextNumber(const KnownList& list, std::int64_t count) {
    if (count < 1) {
        return 1;
    }
    if (list.neverGrown()) {
        throw NothingToAddToFailure(
            "the known keywords and notes could not be collected when the archive was opened");
    }
    return list.upperBound() + 1;
}

void put(KnownList& list, std::int64_t number, const std::string& text) {
    list.growTo(number);
    list[number] = {text, addedSource};
}

}  // namespace

std::vector<std::string> KeywordChoice::keywords(Listed listed) const {
    return textsOf(state_.archiveKeywords, listed);
}

std::vector<std::string> KeywordChoice::notes(Listed listed) const {
    return textsOf(state_.archiveNotes, listed);
}

void KeywordChoice::addKeyword(const std::string& text) {
    const std::int64_t number = nextNumber(state_.archiveKeywords, state_.keywordCount);
    state_.keywordCount = number;
    put(state_.archiveKeywords, number, text);
}

void KeywordChoice::addNote(const std::string& text) {
    const std::int64_t number = nextNumber(state_.archiveNotes, state_.noteCount);
    state_.noteCount = countOfNotes(number);
    put(state_.archiveNotes, number, text);
}

void KeywordChoice::selectKeyword(const std::string& text) {
    selectedKeywords_ = selectedKeywords_.empty() ? text : selectedKeywords_ + "," + text;
}

void KeywordChoice::selectNote(const std::string& text, NoteTargets targets) {
    if (targets.notes1) {
        selectedNote1_ = text;
    }
    if (targets.notes2) {
        selectedNote2_ = text;
    }
}

bool KeywordChoice::recordsEverSelected() const { return !state_.selectedRecords.neverGrown(); }

std::int64_t KeywordChoice::recordCount() const {
    return recordsEverSelected() ? state_.selectedRecords.upperBound() : 0;
}

std::string KeywordChoice::openingInfo() const {
    return "Select and/or Add Keywords to be applied to the selected records (qty: " +
           std::to_string(recordCount()) + ")";
}

std::string KeywordChoice::info() const {
    return "Keywords: " + selectedKeywords_ + lineEnd + "Note1: " + selectedNote1_ + lineEnd +
           "Note2: " + selectedNote2_ + lineEnd +
           "to be applied to the selected records (qty: " + std::to_string(recordCount()) + ")";
}

void KeywordChoice::apply(RecordColumns& columns) {
    applyKeywords(state_, columns, selected(), state_.viewMode);
}

}  // namespace keywords
