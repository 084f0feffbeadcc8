#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/checked.h"
#include "base/media_info.h"
#include "base/scan_entry.h"
#include "platform/directory_lister.h"
#include "scan/scan_destination.h"
#include "scan/scan_progress.h"
#include "scan/scandriveapi_support.h"
#include "scan/widening_total.h"

// scandriveapi: the walk over all folders and files of a drive. The scan window and the companion
// start it, each with its own destination for the entries and its own progress.

namespace scan {

/// What becomes of numbers that leave the range of the desktop's scan.
enum class WalkLimits {
    /// They fail the walk with an OverflowFailure: a size whose low minus high half leaves 32 bits,
    /// a high half of -2^31, the 32,768th subfolder of one folder.
    Checked,
    /// Such a size is stored as its low 32 bits; it and every other one of 4 GiB or more, which the
    /// size rule changes, is reported as SizeFit::Cut. A folder may have any number of subfolders.
    Lifted,
};

/// Walks one drive, once. Paths are "d:\dir\sub\name"; a folder that cannot be listed has no
/// entries, which is no failure.
///
/// The order of the entries is: for each folder first its subfolders, then its files, each in the
/// order of the listing, then the contents of each subfolder by the same rule.
///
/// `currentMedia` gives each entry its id and its path; it is looked at anew for each entry, as
/// pending events, which the progress lets run, may change it. They may also start another walk,
/// which has a walker and a lister of its own.
class Walker {
  public:
    /// All four must outlive this.
    Walker(const base::MediaInfo& currentMedia, platform::DirectoryLister& lister,
           ScanDestination& destination, ScanProgress& progress, WalkLimits limits)
        : currentMedia_(currentMedia),
          lister_(lister),
          destination_(destination),
          progress_(progress),
          limits_(limits) {}

    /// Walks the whole of `drive`, such as "d:". A failure of an entry, of the destination or of
    /// the progress ends the walk and passes.
    void scanDrive(std::string_view drive);

    /// Walks one folder and all below it. Subfolders are followed whatever their names, files are
    /// those that match `pattern`. Raises both counts, and returns the sum of the sizes of the
    /// files, each counted as low minus high half.
    WideningTotal walkFolder(std::string path, std::string_view pattern, base::Int32& fileCount,
                             base::Int32& folderCount);

  private:
    enum class Kind { Folder, File };
    using ToEntryPath = std::string (*)(std::string_view, const base::MediaInfo&);

    /// The entry path of the folder being listed, worked out again only when the medium has
    /// changed.
    class EntryPath {
      public:
        EntryPath(const std::string& folder, ToEntryPath convert)
            : folder_(folder), convert_(convert) {}
        const std::string& of(const base::MediaInfo& media);

      private:
        const std::string& folder_;
        ToEntryPath convert_;
        bool known_ = false;
        std::int32_t mediaId_ = 0;
        std::string driveLetter_;
        std::string text_;
    };

    NameList visitFolders(const std::string& folder, base::Int32& folderCount);
    WideningTotal visitFiles(const std::string& folder, std::string_view pattern,
                             base::Int32& fileCount);
    std::unique_ptr<platform::Listing> findFirst(const std::string& folder,
                                                 std::string_view pattern);
    bool isDirectory() const;

    void countSubfolder(const std::string& folder, std::int64_t& count) const;
    void addSize(WideningTotal& total) const;
    [[noreturn]] void failSize() const;

    void storeEntry(std::string_view name, Kind kind, EntryPath& path);
    SizeFit fillEntry(std::string_view name, Kind kind, EntryPath& path);
    SizeFit fillSize();
    void setLocalDateText(std::string& text, platform::FileTime time) const;

    const base::MediaInfo& currentMedia_;
    platform::DirectoryLister& lister_;
    ScanDestination& destination_;
    ScanProgress& progress_;
    WalkLimits limits_;

    // Of the name in hand; their memory serves all names.
    platform::FindData found_;
    std::string itemPath_;
    base::ScanEntry entry_;
};

}  // namespace scan
