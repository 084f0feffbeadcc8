#pragma once

#include <cstdint>
#include <string>

namespace base {
struct ProgramState;
}

// keywords: carries the texts that the keywords window has composed into the selected entries of
// the list that the record list shows, and into its rows. Nothing is written to the archive here.

namespace keywords {

/// What a record can be given: its keywords, joined by commas, and its two notes.
struct RecordTexts {
    std::string keywords;
    std::string notes1;
    std::string notes2;

    friend bool operator==(const RecordTexts&, const RecordTexts&) = default;
};

/// The record list's columns of keywords and notes: the fifth to the seventh.
class RecordColumns {
  public:
    virtual ~RecordColumns() = default;
    /// Shows the texts in the row at that position, from 1, of the list as it stands. A row that is
    /// not there is a SubscriptFailure.
    virtual void showTexts(std::int64_t position, const RecordTexts& texts) = 0;
};

/// Puts `texts` in the place of those of every selected entry and shows what the entry then holds;
/// an empty text leaves the entry's as it is. `source` names the list: "scan" the scan list,
/// "archive" archiveFiles; with anything else nothing happens.
///
/// A position of selectedRecords is that of a row and, whatever the order in which the rows are
/// shown, that of the entry as well. One that the list, or the record list, does not have (it may
/// have been cut since the rows were selected) is a SubscriptFailure; the entries before it keep
/// what they were given. Where no row was ever selected there is nothing to do.
void applyKeywords(base::ProgramState& state, RecordColumns& columns, const RecordTexts& texts,
                   const std::string& source);

}  // namespace keywords
