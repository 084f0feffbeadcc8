#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/file_time.h"

namespace platform {

constexpr std::uint32_t fileAttributeDirectory = 0x10;
/// What attributes() answers when the query failed: all bits set, the directory bit among them.
constexpr std::uint32_t invalidFileAttributes = 0xFFFFFFFF;

/// One name of a listing.
struct FindData {
    FileTime ftCreationTime;
    FileTime ftLastWriteTime;
    std::uint32_t nFileSizeHigh = 0;
    std::uint32_t nFileSizeLow = 0;
    std::string cFileName;  ///< UTF-8; may end in NUL characters where the system pads the name
};

/// A running listing of one folder; closing it is its destruction.
class Listing {
  public:
    virtual ~Listing() = default;
    /// The next name in the system's order, "." and ".." included where the system lists them.
    /// False after the last one; `data` is unchanged then.
    virtual bool next(FindData& data) = 0;
};

/// Reads folders for one walk. Paths have the form "d:\dir\sub\name"; the lister turns them into
/// the machine's own. One lister serves one walk and is thrown away with it, so an implementation
/// may remember what it has just read of a folder; it never remembers anything of an earlier walk.
class DirectoryLister {
  public:
    virtual ~DirectoryLister() = default;

    /// Opens a listing of `pattern`, a folder's path with its final "\" followed by a file pattern
    /// such as "*". Null when the folder cannot be listed.
    virtual std::unique_ptr<Listing> findFirst(std::string_view pattern) = 0;
    /// Why the last findFirst() gave no listing, in the system's words; empty where that is as it
    /// should be, as another file system begins there.
    virtual std::string whyNotListed() const { return "the folder cannot be listed"; }
    /// Attribute bits of `path`, links not followed; invalidFileAttributes when it cannot be asked.
    virtual std::uint32_t attributes(std::string_view path) = 0;
    /// Type description of `path` in English, at most 80 characters, possibly padded with NULs.
    virtual std::string typeName(std::string_view path) = 0;
    /// The same moment in local time.
    virtual FileTime fileTimeToLocalFileTime(FileTime time) = 0;
};

}  // namespace platform
