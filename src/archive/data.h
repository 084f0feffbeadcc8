#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/archive_location.h"
#include "base/media_info.h"
#include "base/message_box.h"
#include "base/pending_events.h"
#include "base/program_state.h"

namespace jet {
class Engine;
}

// data: all reading and writing of an archive's rows. The save window and the companion drive the
// writing operations, the archive tree and its record list the reading ones; what is read lands in
// the shared lists of base::ProgramState, what is written in the tables `main` and `media`.

namespace archive {

/// The text by which the engine finds the archive:
/// "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" and the archive's full path.
std::string connectionString(const base::ArchiveLocation& archive);

/// Told which entry has just been stored, numbered from 1.
class SaveProgress {
  public:
    virtual ~SaveProgress() = default;
    virtual void setProgress(std::int64_t entry) = 0;
};

/// What a MediaInfo that is saved stands for.
enum class MediaSave {
    New,     ///< a medium that is archived for the first time
    Update,  ///< the stored medium of the same id
};

/// What an update of `stored` asks before it goes on, because the two look like different media:
/// label, type or size differ. None where there is nothing to ask.
std::optional<base::Message> updateQuestion(const base::MediaInfo& stored,
                                            const base::MediaInfo& media);

/// The stored record of a medium as an update hands it to Data::saveMedia(): `archiveUpdate` and
/// `numberFiles` come from the scan, everything else stays as stored.
base::MediaInfo mediaForUpdate(base::MediaInfo stored, const base::MediaInfo& scanned);

/// The operations on an archive's rows. Each opens a connection of its own and closes it before it
/// returns; none traps a failure, so an engine failure ends the operation and passes to the caller,
/// and rows stored or deleted before it stay so.
///
/// Where an operation lets pending events run they may do anything, the same operation included.
/// The lists are looked at anew for each element, and one that has been cut below the number an
/// operation set out to reach ends it with a SubscriptFailure.
///
/// A shared list that was never grown counts as a list without entries here: nothing is written,
/// rewritten or sorted, and that is no failure.
class Data {
  public:
    /// All three must outlive this.
    Data(base::ProgramState& state, jet::Engine& engine, base::PendingEvents& events)
        : state_(state), engine_(engine), events_(events) {}

    /// Adds one row of `main`, with the id of `media`, for every entry of the scan list (all of the
    /// list, whatever scanCount says). `progress` is told after each row, then events run.
    void saveRecords(const base::MediaInfo& media, SaveProgress& progress);

    /// Deletes every row of `main` of that medium; a medium without rows is no failure.
    void deleteRecords(std::int32_t mediaId);

    /// Puts the id of `media` in the place of what stands before the first ":" of every path of the
    /// scan list; a path without ":" is kept whole behind the id.
    void adjustRecordPaths(const base::MediaInfo& media);

    /// Fills archiveFolders with the medium's folder rows and sorts it by level. The first row that
    /// is found cuts the list; a medium without any leaves the earlier entries as they are, but
    /// sorts them. Events run after each row. Always true.
    bool loadFolders(const base::ArchiveLocation& archive, std::int32_t mediaId);

    /// Fills archiveFiles with the medium's file rows, in the order of the table; otherwise as
    /// loadFolders(). Always true.
    bool loadFiles(const base::ArchiveLocation& archive, std::int32_t mediaId);

    /// Sets the level of every entry of archiveFolders, the number of "\" in its path plus one
    /// (OverflowFailure beyond 16 bits), and brings them into the order of ExchangeOrder. Events
    /// run after each entry, in both steps. The list is rearranged in one piece at the end, so
    /// events find it unsorted or sorted, never in between.
    void sortFoldersByLevel();

    /// Fills mediaList with the rows of `media`, no medium marked as loaded. The first row cuts the
    /// list; a table without rows leaves it as it was. The 32,768th row is an OverflowFailure.
    void loadMedia(const base::ArchiveLocation& archive);

    /// New: adds a row with every field of `media`. Update: finds the row of the same id, asks
    /// `box` to confirm where label, type or size differ from `media`, and rewrites the row (all
    /// but `archiveDate` and `mediaFreeSpace`). An answer other than Yes leaves the row as it is,
    /// which is not told to the caller. No row of that id is an EngineFailure (NoCurrentRow).
    void saveMedia(base::MediaInfo media, MediaSave save, base::MessageBox& box);

  private:
    void loadRecords(const base::ArchiveLocation& archive, const std::string& filter,
                     base::NumberedList<base::ScanEntry>& list);
    void setFolderLevels();
    void orderFolders();

    base::ProgramState& state_;
    jet::Engine& engine_;
    base::PendingEvents& events_;
};

}  // namespace archive
