#include "cli/index_scan.h"

#include <chrono>

#include "base/media_info.h"
#include "cli/context.h"
#include "cli/interruption.h"
#include "cli/listing_watch.h"
#include "cli/messages.h"
#include "cli/scan_source.h"
#include "platform/directory_lister.h"
#include "platform/platform.h"
#include "scan/scandriveapi.h"
#include "search/index_builder.h"

namespace cli {
namespace {

class IndexDestination : public scan::ScanDestination {
  public:
    std::int64_t store(const base::ScanEntry& entry, scan::SizeFit /*fit*/) override {
        builder_.addEntry(entry, {});
        return builder_.count();
    }
    std::shared_ptr<const search::Index> build() { return builder_.build(); }

  private:
    search::IndexBuilder builder_;
};

class SilentProgress : public scan::ScanProgress {
  public:
    explicit SilentProgress(const Interruption& interruption) : interruption_(interruption) {}
    void showScanProgress(std::int64_t /*count*/) override { throwIfRequested(interruption_); }

  private:
    const Interruption& interruption_;
};

class RefusedFolders : public ListingObserver {
  public:
    RefusedFolders(Context& context, const ScanSource& source)
        : context_(context), source_(source) {}
    void folderEntered(const std::string& /*folder*/) override {}
    void folderRefused(const std::string& folder, const std::string& reason) override {
        any_ = true;
        context_.messages.report(source_.shownPath(folder) +
                                 ": what is in it was left out: " + reason);
    }
    bool any() const { return any_; }

  private:
    Context& context_;
    const ScanSource& source_;
    bool any_ = false;
};

}  // namespace

ScannedIndex scanIndex(Context& context, const std::string& what) {
    const ScanSource source(context.platform, what);
    source.requireReadable();
    base::MediaInfo medium;
    // A capital, as drives report theirs: the walk's own small letter would be taken for part of
    // the path.
    medium.driveLetter = static_cast<char>(source.drive().front() - 'a' + 'A');
    IndexDestination destination;
    SilentProgress progress(context.interruption);
    RefusedFolders refused(context, source);
    const auto lister = context.platform.createDirectoryLister();
    ListingWatch watch(*lister, refused);
    scan::Walker(medium, watch, destination, progress, scan::WalkLimits::Lifted)
        .scanDrive(source.drive());
    source.requireReadable();
    return {destination.build(), refused.any()};
}

}  // namespace cli
