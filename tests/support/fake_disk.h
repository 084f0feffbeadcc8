#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/directory_lister.h"

namespace support {

/// One file or folder of a FakeDisk. A test sets its fields freely.
struct FakeEntry {
    std::string name;
    bool folder = false;
    std::uint64_t size = 0;        ///< both halves of the listing come from here
    platform::FileTime created;    ///< UTC
    platform::FileTime lastWrite;  ///< UTC
    std::string typeName;

    std::size_t padding = 0;      ///< NUL characters that follow the name in a listing
    std::string behindPadding;    ///< what stands behind them, as in a fixed field used before
    bool listable = true;         ///< folder: false refuses every listing
    bool attributesKnown = true;  ///< false: attributes() answers invalidFileAttributes
    std::uint32_t extraAttributes = 0;  ///< bits besides the directory bit

    std::vector<std::shared_ptr<FakeEntry>> children;  ///< folder: in listing order
};

/// A tree of folders and files in memory, with paths of the form "d:\dir\name". It outlives the
/// listers that read it. Names compare exactly.
class FakeDisk {
  public:
    /// Adds a folder and those above it that are missing; adding it twice gives the same one.
    FakeEntry& addFolder(std::string_view path);
    /// Adds a file, and the folders above it.
    FakeEntry& addFile(std::string_view path, std::uint64_t size = 0);
    /// Takes an entry with all below it away; a running listing of its folder is not disturbed.
    void remove(std::string_view path);

    /// The entry, or null.
    FakeEntry* find(std::string_view path) const;
    /// The entry; std::out_of_range where there is none.
    FakeEntry& at(std::string_view path) const;

    /// Called before every operation of a lister with its name ("findFirst", "next", "attributes",
    /// "typeName") and the path, so that a test can change the tree in mid-walk.
    std::function<void(std::string_view operation, std::string_view path)> beforeOperation;
    /// Every operation in order, as "findFirst d:\*"; only kept while `recording` is set.
    std::vector<std::string> operations;
    bool recording = false;
    /// How often each pattern was listed, counting the running call: lets beforeOperation tell a
    /// folder's first pass from its second.
    std::map<std::string, int, std::less<>> listings;

    /// Whether listings begin with "." and "..", drive roots included.
    bool listsDotEntries = true;
    /// Local time minus UTC, in the 100-nanosecond steps of a FileTime.
    std::int64_t localOffset = 0;

    void note(std::string_view operation, std::string_view path);

  private:
    std::map<char, std::shared_ptr<FakeEntry>> roots_;
};

/// Reads a FakeDisk.
class FakeDirectoryLister : public platform::DirectoryLister {
  public:
    explicit FakeDirectoryLister(FakeDisk& disk) : disk_(disk) {}

    std::unique_ptr<platform::Listing> findFirst(std::string_view pattern) override;
    std::uint32_t attributes(std::string_view path) override;
    std::string typeName(std::string_view path) override;
    platform::FileTime fileTimeToLocalFileTime(platform::FileTime time) override;

  private:
    FakeDisk& disk_;
};

/// A moment from calendar fields, for tables of files.
platform::FileTime timeOf(int year, int month, int day, int hour = 0, int minute = 0,
                          int second = 0);

}  // namespace support
