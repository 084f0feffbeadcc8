#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/folder_contents.h"

namespace platform::posix {

/// The folders on the way from a drive's root to the one that a walk is in, kept open so that each
/// folder is opened from the one above it: that is quicker than from the root, does not mind paths
/// longer than the system takes, and is not led astray by a folder that is moved meanwhile. Links
/// are not followed below the root.
class OpenFolders {
  public:
    /// Tells where the root of a drive lies; none for an unknown letter.
    using RootOf = std::function<std::optional<std::string>(char letter)>;

    explicit OpenFolders(RootOf rootOf) : rootOf_(std::move(rootOf)) {}

    /// Opens "d:\dir\sub\" for reading its names from the first one on; -1 when it cannot be read,
    /// which includes a folder on which another file system is mounted; errno says why then (EXDEV
    /// for such a folder). Good until the next call.
    int open(std::string_view folder);
    /// Hands the folder opened last to somebody who goes on reading it.
    FileDescriptor giveAway();

    /// Notes what only a listing of the folder opened last can know: under which native names the
    /// folders with odd names lie. A folder of very many names comes in parts.
    enum class Part { First, Further };
    void rememberOddFolders(const FolderContents& contents, Part part);

    /// A descriptor of the parent and the native name for asking about "d:\dir\name" without a
    /// listing.
    struct Place {
        FileDescriptor parent;
        std::vector<std::string> names;  ///< to be tried in this order
    };
    std::optional<Place> placeOf(std::string_view path);

  private:
    struct OddFolder {
        std::string shown;
        std::string native;
        bool opened = false;
    };
    struct Level {
        FileDescriptor descriptor;  ///< closed while many folders deeper ones are open
        std::size_t end = 0;        ///< how much of path_ leads here
        std::string native;         ///< the name in the folder above
        std::vector<OddFolder> oddFolders;
    };

    /// Folders kept open at most, besides the root.
    static constexpr std::size_t mostOpen = 64;

    bool openRoot(std::string_view folder);
    std::size_t levelsShared(std::string_view folder) const;
    bool descend(std::string_view name);
    bool reopenTop();
    void push(FileDescriptor descriptor, std::string_view shown, std::string native);
    bool rewind();
    static OddFolder* oddFolder(Level& level, std::string_view shown);
    bool isForeign(int descriptor) const;

    RootOf rootOf_;
    std::string path_;  ///< "d:\dir\sub\" of the last level
    std::vector<Level> levels_;
    std::uint64_t rootDevice_ = 0;
};

}  // namespace platform::posix
