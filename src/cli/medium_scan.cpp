#include "cli/medium_scan.h"

#include <bit>
#include <utility>

#include "archive/data.h"
#include "base/failure.h"
#include "base/pending_events.h"
#include "cli/archive_files.h"
#include "cli/checked_output.h"
#include "cli/context.h"
#include "cli/interruption.h"
#include "cli/messages.h"
#include "cli/terminal_question.h"
#include "platform/platform.h"
#include "scan/driveinfoapi.h"
#include "scan/scandriveapi.h"

namespace cli {
namespace {

class NoEvents : public base::PendingEvents {
  public:
    void runPendingEvents() override {}
};

/// The archive must exist before anything else is looked at, and stay open from then on.
jet::Connection& opened(jet::Connection& connection, const base::ArchiveLocation& archive) {
    openExisting(connection, archive);
    return connection;
}

/// Progress that can also be interrupted.
class InterruptibleProgress : public scan::ScanProgress {
  public:
    InterruptibleProgress(scan::ScanProgress& shown, const Interruption& interruption)
        : shown_(shown), interruption_(interruption) {}

    void showScanProgress(std::int64_t count) override {
        throwIfRequested(interruption_);
        shown_.showScanProgress(count);
    }

  private:
    scan::ScanProgress& shown_;
    const Interruption& interruption_;
};

}  // namespace

MediumScan::MediumScan(Context& context, ScanRequest request)
    : context_(context),
      request_(std::move(request)),
      connection_(context.engine),
      source_((opened(connection_, request_.archive), context.platform), request_.what),
      store_(context.engine, request_.archive, *this),
      media_(context.engine, request_.archive),
      progress_(context.messages, request_.progress, std::chrono::steady_clock::now) {
    state_.archiveFolder = request_.archive.folder;
    state_.archiveName = request_.archive.name;
}

ExitCode MediumScan::run() {
    source_.requireReadable();
    if (request_.update) {
        readDrive();
        if (!prepareUpdate()) {
            return ExitCode::Failed;
        }
    } else {
        // Before the next free number is looked up, so that no other program can take the same.
        store_.begin();
        readDrive();
        saveNewMedium();
    }
    try {
        storeEntries();
    } catch (const Interrupted&) {
        tellInterrupted();
        return ExitCode::Failed;
    }
    return tellResult();
}

void MediumScan::readDrive() {
    scan::DriveInfo info(state_, context_.engine, context_.platform.drives(),
                         context_.platform.clock());
    if (!info.readDriveInfo(source_.drive())) {
        // The reading keeps its reason to itself; what can be at fault is asked again.
        info.nextMediaId();
        source_.requireReadable();
        throw base::FileFailure(request_.what + ": its size and free space cannot be read");
    }
    state_.currentMedia.mediaName = request_.name;
    if (request_.label) {
        state_.currentMedia.mediaLabel = *request_.label;
    }
}

void MediumScan::saveNewMedium() {
    NoEvents events;
    TerminalQuestion question(context_.in, context_.messages);
    archive::Data(state_, context_.engine, events)
        .saveMedia(state_.currentMedia, archive::MediaSave::New, question);
}

/// False when the user does not want the update; nothing has been changed then.
bool MediumScan::prepareUpdate() {
    const std::int32_t mediaId = *request_.update;
    const auto stored = media_.find(mediaId);
    if (!stored) {
        throw base::FileFailure(request_.archive.fullPath() + ": there is no medium " +
                                std::to_string(mediaId) + "; \"vdln media\" lists them");
    }
    if (!isUpdateConfirmed(*stored)) {
        return false;
    }
    store_.begin();
    earlierRows_.collect(store_.connection(), mediaId);
    // Until the new rows are there the medium has as many as it had.
    state_.currentMedia.numberFiles = stored->numberFiles;
    state_.currentMedia.mediaId = mediaId;
    NoEvents events;
    TerminalQuestion question(context_.in, context_.messages);
    archive::Data(state_, context_.engine, events)
        .saveMedia(archive::mediaForUpdate(*stored, state_.currentMedia),
                   archive::MediaSave::Update, question);
    return true;
}

bool MediumScan::isUpdateConfirmed(const base::MediaInfo& stored) {
    const auto question = archive::updateQuestion(stored, state_.currentMedia);
    if (!question || request_.isConfirmed) {
        return true;
    }
    const std::string unchanged =
        "medium " + std::to_string(stored.mediaId) + ": nothing was changed: ";
    if (!context_.inIsTerminal || !context_.messages.isTerminal()) {
        context_.messages.report(unchanged +
                                 "the drive's label, type or size is not the stored one, and there "
                                 "is no terminal to ask on; --yes updates it");
        return false;
    }
    TerminalQuestion terminal(context_.in, context_.messages);
    if (terminal.show(*question) == base::MessageAnswer::Yes) {
        return true;
    }
    context_.messages.report(unchanged + "the update was not confirmed");
    return false;
}

void MediumScan::storeEntries() {
    context_.interruption.watch();
    try {
        walk();
        removeEarlierRows();
        finish();
    } catch (const base::Failure& failure) {
        progress_.clear();
        throw base::FileFailure(failure.text() + keepWhatIsStored());
    } catch (const Interrupted&) {
        progress_.clear();
        finish();
        throw;
    }
}

void MediumScan::walk() {
    const auto lister = context_.platform.createDirectoryLister();
    ListingWatch watch(*lister, *this);
    InterruptibleProgress progress(progress_, context_.interruption);
    scan::Walker(state_.currentMedia, watch, store_, progress, scan::WalkLimits::Lifted)
        .scanDrive(source_.drive());
    // A drive that has gone looks like one whose folders are empty.
    source_.requireReadable();
    progress_.clear();
}

void MediumScan::removeEarlierRows() {
    if (earlierRows_.count() > 0) {
        store_.flush();
        earlierRows_.remove(store_.connection(), mediaId(), context_.interruption);
    }
}

/// The count is set while the rows still keep the archive, so that nobody comes in between.
void MediumScan::finish() {
    media_.setNumberFiles(mediaId(), store_.count() + earlierRows_.count());
    store_.close();
    connection_.close();
}

/// The same after a failure, which may have been one of the archive's disk: some of the rows are
/// then not in the file, and the engine's pages no longer of use. Returns what is to be told behind
/// the failure.
std::string MediumScan::keepWhatIsStored() {
    try {
        finish();
        return "; " + storedText();
    } catch (const base::Failure&) {
        letGo();
    }
    try {
        const std::int64_t kept = media_.countAnew(mediaId());
        return "; medium " + std::to_string(mediaId()) + " now has " + std::to_string(kept) +
               " entries";
    } catch (const base::Failure&) {
        return {};
    }
}

/// Closes the archive without a word about what could not be stored.
void MediumScan::letGo() {
    try {
        store_.close();
    } catch (const base::Failure&) {
        // It has been told already.
    }
    try {
        connection_.close();
    } catch (const base::Failure&) {
    }
}

ExitCode MediumScan::tellResult() const {
    writeChecked(context_.out, "medium " + std::to_string(mediaId()) + ": " +
                                   std::to_string(store_.count()) + " entries (" +
                                   std::to_string(store_.folders()) + " folders, " +
                                   std::to_string(store_.files()) + " files)\n");
    return isIncomplete_ ? ExitCode::Incomplete : ExitCode::Done;
}

void MediumScan::tellInterrupted() const {
    context_.messages.report(request_.what + ": the scan was interrupted; " + storedText());
}

std::string MediumScan::storedText() const {
    std::string text = "medium " + std::to_string(mediaId()) + " keeps the " +
                       std::to_string(store_.count()) + " entries stored so far";
    if (earlierRows_.count() > 0) {
        text += " beside " + std::to_string(earlierRows_.count()) +
                " earlier ones; the same update again replaces them all";
    }
    return text;
}

/// A stored path begins with the medium's number where a walk's has the drive's letter.
std::string MediumScan::shownName(const base::ScanEntry& entry) const {
    const std::size_t colon = entry.path.find(':');
    const std::string folder = colon == std::string::npos ? "" : entry.path.substr(colon + 1);
    return source_.shownPath(source_.drive() + folder + "\\" + entry.FileName);
}

void MediumScan::entryLeftOut(const base::ScanEntry& entry, const std::string& reason) {
    isIncomplete_ = true;
    context_.messages.report(shownName(entry) + ": left out: " + reason);
}

void MediumScan::sizeCut(const base::ScanEntry& entry) {
    isIncomplete_ = true;
    context_.messages.report(shownName(entry) +
                             ": its size does not fit the archive and is stored as " +
                             std::to_string(entry.Size));
}

void MediumScan::folderEntered(const std::string& folder) {
    throwIfRequested(context_.interruption);
    progress_.setFolder(source_.shownPath(folder));
}

void MediumScan::folderRefused(const std::string& folder, const std::string& reason) {
    // One folder or the whole drive? Asked ever more rarely: a drive may have thousands of them.
    if (std::has_single_bit(static_cast<std::uint64_t>(++refusedFolders_))) {
        source_.requireReadable();
    }
    isIncomplete_ = true;
    context_.messages.report(source_.shownPath(folder) + ": what is in it was left out: " + reason);
}

}  // namespace cli
