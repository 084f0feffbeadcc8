#include "keywords/initkeywords.h"

#include <string>
#include <string_view>

#include "archive/archive_table.h"
#include "base/pending_events.h"
#include "base/program_state.h"
#include "keywords/collection_failures.h"
#include "keywords/collection_progress.h"
#include "keywords/distinct_texts.h"

namespace keywords {

namespace {

constexpr char separator = ',';

std::string progressText(std::int64_t record, std::int64_t records) {
    return "Initializing Keywords and Notes.  Record " + std::to_string(record) + " of " +
           std::to_string(records);
}

/// The texts of the records read so far.
class Collection {
  public:
    explicit Collection(const jet::Recordset& rows)
        : rows_(rows),
          notes1_(rows.field("Notes1")),
          notes2_(rows.field("Notes2")),
          keywordsField_(rows.field("keywords")) {}

    void collectRow() {
        collectNote(notes1_);
        collectNote(notes2_);
        readRow(keywordsField_);
        if (!text_.empty()) {
            collectPieces(text_);
        }
    }

    const DistinctTexts& notes() const { return notes_; }
    const DistinctTexts& keywords() const { return keywords_; }

  private:
    void collectNote(int field) {
        readRow(field);
        if (!text_.empty()) {
            notes_.append(text_);
        }
    }

    void collectPieces(std::string_view pieces) {
        for (std::size_t comma = pieces.rfind(separator); comma != std::string_view::npos;
             comma = pieces.rfind(separator)) {
            keywords_.append(pieces.substr(comma + 1));
            pieces = pieces.substr(0, comma);
        }
        keywords_.append(pieces);
    }

    /// Events may have deleted the row that is about to be read.
    void readRow(int field) {
        try {
            rows_.readText(field, text_);
        } catch (const base::EngineFailure& failure) {
            if (failure.fault() != base::EngineFault::NoCurrentRow) {
                throw;
            }
            text_.clear();
        }
    }

    const jet::Recordset& rows_;
    int notes1_;
    int notes2_;
    int keywordsField_;
    DistinctTexts notes_;
    DistinctTexts keywords_;
    std::string text_;  // its memory is used again for every field
};

void collectAll(jet::Recordset& rows, Collection& collection, std::int64_t records,
                base::PendingEvents& events, CollectionProgress& progress) {
    for (std::int64_t i = 1; !rows.endOfFile(); ++i) {
        collection.collectRow();
        rows.moveNext();
        progress.setText(progressText(i, records));
        progress.setPosition(i);
        events.runPendingEvents();
    }
}

void rebuild(base::NumberedList<base::KeywordEntry>& list, const DistinctTexts& texts,
             const char* nothingCollected) {
    if (texts.texts().empty()) {
        throw NothingCollectedFailure(nothingCollected);
    }
    list.growTo(static_cast<std::int64_t>(texts.texts().size()));
    std::int64_t number = 0;
    for (const std::string& text : texts.texts()) {
        list[++number] = {text, "archive"};
    }
}

void publish(base::ProgramState& state, const Collection& collection) {
    const DistinctTexts& notes = collection.notes();
    const DistinctTexts& keywords = collection.keywords();
    state.keywordCount = keywords.appended();
    state.noteCount = countOfNotes(notes.appended());
    rebuild(state.archiveNotes, notes,
            keywords.texts().empty() ? "the archive holds no notes or keywords yet"
                                     : "the archive holds no notes yet");
    rebuild(state.archiveKeywords, keywords, "the archive holds no keywords yet");
}

void requireArchive(const base::ArchiveLocation& archive) {
    if (archive.fullPath().empty()) {
        throw base::EngineFailure(base::EngineFault::NotFound, "no archive is open");
    }
}

}  // namespace

void initKeywords(base::ProgramState& state, jet::Engine& engine, base::PendingEvents& events,
                  CollectionProgress& progress) {
    requireArchive(state.currentArchive());
    archive::ArchiveTable table(engine, state.currentArchive(), "main", jet::LockType::ReadOnly);
    jet::Recordset& rows = table.rows();
    const std::int64_t records = rows.recordCount();
    if (records < 1) {
        table.close();
        return;
    }
    progress.setText(progressText(1, records));
    progress.setRange(1, records);
    progress.setPosition(1);
    progress.showProgress();
    Collection collection(rows);
    collectAll(rows, collection, records, events, progress);
    table.close();
    publish(state, collection);
}

}  // namespace keywords
