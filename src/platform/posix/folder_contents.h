#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_time.h"

namespace platform::posix {

enum class EntryKind : std::uint8_t { Folder, File, Link, Unknown };

/// One name of a folder. Its texts lie in the FolderContents that it came from.
struct FolderEntry {
    std::uint64_t size = 0;  ///< bytes; 0 for folders
    FileTime created;
    FileTime lastWrite;
    std::uint32_t nameStart = 0;
    std::uint16_t nameLength = 0;
    EntryKind kind = EntryKind::Unknown;
    bool odd = false;  ///< the native name is not the one shown
};

/// The names of one folder, or of a part of a very large one, with what the walk asks of each. Made
/// to be filled again and again without giving memory back.
class FolderContents {
  public:
    /// Forgets the names and takes up those of another folder ("d:\dir\").
    void startFolder(std::string_view folder);
    /// Forgets the names, for the next part of the same folder.
    void clearNames();

    /// Adds a name; `entry` brings everything but its texts.
    void add(std::string_view nativeName, FolderEntry entry);

    const std::string& folder() const { return folder_; }
    std::size_t size() const { return entries_.size(); }
    const FolderEntry& entry(std::size_t index) const { return entries_[index]; }
    std::string_view shownName(const FolderEntry& entry) const {
        return std::string_view(names_).substr(entry.nameStart, entry.nameLength);
    }

    /// The entry of that shown name: the one last delivered where that fits, since the walk asks
    /// about the name that it has just been given; null where there is none.
    const FolderEntry* find(std::string_view shownName);
    void delivered(std::size_t index) { lastDelivered_ = index; }

    /// The native name of an odd entry.
    const std::string& nativeName(const FolderEntry& entry) const;

    bool complete = false;  ///< these are all names of the folder
    bool repeated = false;  ///< the second listing has been answered from here
    bool anyOdd = false;

  private:
    struct OddName {
        std::uint32_t nameStart;
        std::string native;
    };

    void sortIndex();

    std::string folder_;
    std::string names_;  ///< the shown names, one behind the other
    std::vector<FolderEntry> entries_;
    std::vector<OddName> oddNames_;
    std::vector<std::uint32_t>
        byName_;  ///< entry numbers in the order of their names; made when asked
    std::size_t lastDelivered_ = 0;
};

}  // namespace platform::posix
