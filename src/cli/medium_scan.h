#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/archive_location.h"
#include "base/program_state.h"
#include "cli/earlier_rows.h"
#include "cli/entry_store.h"
#include "cli/exit_code.h"
#include "cli/listing_watch.h"
#include "cli/medium_rows.h"
#include "cli/progress_line.h"
#include "cli/scan_source.h"
#include "jet/connection.h"

namespace cli {

struct Context;

/// What the user wants scanned, and where it is to go.
struct ScanRequest {
    std::string what;  ///< a drive ("d:") or a folder
    base::ArchiveLocation archive;
    std::string name;                    ///< the user's name for a new medium
    std::optional<std::string> label;    ///< in the place of the drive's own
    std::optional<std::int32_t> update;  ///< replaces the records of this medium
    bool isConfirmed = false;            ///< an update that looks mistaken is meant
    ProgressLine::Shown progress = ProgressLine::Shown::No;
};

/// One scan into an archive, from the drive to the last row.
///
/// The row of the medium is written first, then one row for each entry as the walk finds it, then
/// the medium's count of records. An update leaves the earlier rows until all new ones are stored.
/// Whatever ends the scan early, the rows stored so far are kept and counted.
class MediumScan : private EntryStore::Observer, private ListingObserver {
  public:
    /// `context` must outlive this.
    MediumScan(Context& context, ScanRequest request);

    ExitCode run();

  private:
    void readDrive();
    bool prepareUpdate();
    bool isUpdateConfirmed(const base::MediaInfo& stored);
    void saveNewMedium();
    void storeEntries();
    void walk();
    void removeEarlierRows();
    void finish();
    std::string keepWhatIsStored();
    void letGo();
    ExitCode tellResult() const;
    void tellInterrupted() const;
    std::string storedText() const;

    std::int32_t mediaId() const { return state_.currentMedia.mediaId; }
    std::string shownName(const base::ScanEntry& entry) const;

    void entryLeftOut(const base::ScanEntry& entry, const std::string& reason) override;
    void sizeCut(const base::ScanEntry& entry) override;
    void folderEntered(const std::string& folder) override;
    void folderRefused(const std::string& folder, const std::string& reason) override;

    Context& context_;
    ScanRequest request_;
    base::ProgramState state_;
    jet::Connection connection_;  ///< keeps other programs from writing meanwhile
    ScanSource source_;
    EntryStore store_;
    MediumRows media_;
    EarlierRows earlierRows_;
    ProgressLine progress_;
    std::int64_t refusedFolders_ = 0;
    bool isIncomplete_ = false;  ///< something was left out or is stored inexactly
};

}  // namespace cli
