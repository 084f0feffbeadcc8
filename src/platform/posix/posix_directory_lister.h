#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/directory_lister.h"
#include "platform/posix/folder_contents.h"
#include "platform/posix/folder_reader.h"
#include "platform/posix/local_time.h"
#include "platform/posix/open_folders.h"

namespace platform::posix {

class TypeNames;

/// Reads folders with one pass over the names and one status query for each.
///
/// A walk lists every folder twice and asks the attributes and type of each name that it was given.
/// The lister therefore keeps what it has just read of one folder and answers from it: the next
/// listing of the same folder, once, and the questions about its names. A folder of very many names
/// is read in parts, each time anew, so that memory does not grow with it.
///
/// A name that is gone before its status was asked is left out. Where the status of a name is
/// refused (a folder that may be listed but not entered), its kind is the one that the listing
/// told, its size and times are 0. The names "." and ".." come without times.
class PosixDirectoryLister : public DirectoryLister {
  public:
    /// Names kept of one folder at most, some 70 bytes each.
    static constexpr std::size_t mostKept = 131'072;

    PosixDirectoryLister(OpenFolders::RootOf rootOf, TypeNames& typeNames,
                         std::size_t keptNames = mostKept);

    std::unique_ptr<Listing> findFirst(std::string_view pattern) override;
    std::string whyNotListed() const override;
    std::uint32_t attributes(std::string_view path) override;
    std::string typeName(std::string_view path) override;
    FileTime fileTimeToLocalFileTime(FileTime time) override;

  private:
    std::unique_ptr<Listing> listAnew(std::string_view folder, std::string_view pattern);
    FolderContents& contentsToFill();
    const FolderEntry* keptEntry(std::string_view path) const;
    EntryKind kindOf(std::string_view path);

    OpenFolders folders_;
    TypeNames& typeNames_;
    std::size_t keptNames_;
    LocalTime localTime_;
    std::shared_ptr<FolderContents> kept_;  ///< of the folder listed last
    FolderReader reader_;
    int refusal_ = 0;  ///< the system's number of why the last listing was refused
};

}  // namespace platform::posix
