#include "platform/posix/open_folders.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <tuple>
#include <utility>

#include "platform/path_rules.h"
#include "platform/posix/file_status.h"

namespace platform::posix {

namespace {

constexpr int reading = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
constexpr int passing = O_PATH | O_DIRECTORY | O_CLOEXEC;

FileDescriptor openFolder(int parent, const std::string& name, int flags) {
    return FileDescriptor(::openat(parent, name.c_str(), flags));
}

FileDescriptor openBelow(int parent, const std::string& name, int flags) {
    return openFolder(parent, name, flags | O_NOFOLLOW);
}

/// Opens the folder that is shown under a name: mostly that is its native name, so the others are
/// tried only where it is not there.
std::pair<FileDescriptor, std::string> openShownBelow(int parent, std::string_view shown,
                                                      int flags) {
    std::string native(shown);
    FileDescriptor descriptor = openBelow(parent, native, flags);
    if (descriptor.isOpen() || errno != ENOENT) {
        return {std::move(descriptor), std::move(native)};
    }
    for (std::string& other : nativeNames(shown)) {
        descriptor = openBelow(parent, other, flags);
        if (descriptor.isOpen()) {
            return {std::move(descriptor), std::move(other)};
        }
    }
    return {};
}

}  // namespace

int OpenFolders::open(std::string_view folder) {
    const std::size_t shared = levelsShared(folder);
    if (shared == 0 && !openRoot(folder)) {
        return -1;
    }
    if (shared > 0) {
        levels_.resize(shared);
        path_.resize(levels_.back().end);
    }
    const std::vector<std::string_view> rest =
        pathComponents(folder.substr(std::min(path_.size(), folder.size())));
    if (rest.empty()) {
        return shared == 0 || rewind() ? levels_.back().descriptor.number() : -1;
    }
    if (!levels_.back().descriptor.isOpen() && !reopenTop()) {
        return -1;
    }
    const bool reached = std::ranges::all_of(rest, [&](auto name) { return descend(name); });
    return reached ? levels_.back().descriptor.number() : -1;
}

std::size_t OpenFolders::levelsShared(std::string_view folder) const {
    std::size_t count = 0;
    while (count < levels_.size() && levels_[count].end <= folder.size() &&
           folder.substr(0, levels_[count].end) ==
               std::string_view(path_).substr(0, levels_[count].end)) {
        ++count;
    }
    return count;
}

bool OpenFolders::openRoot(std::string_view folder) {
    levels_.clear();
    path_.clear();
    const auto letter = driveLetterOf(folder);
    const auto root = letter ? rootOf_(*letter) : std::nullopt;
    if (!root) {
        errno = ENODEV;
        return false;
    }
    FileDescriptor descriptor = openFolder(AT_FDCWD, *root, reading);
    if (!descriptor.isOpen()) {
        return false;
    }
    rootDevice_ = statusOf(descriptor.number()).device;
    push(std::move(descriptor), folder.substr(0, 2), *root);
    return true;
}

void OpenFolders::push(FileDescriptor descriptor, std::string_view shown, std::string native) {
    path_ += shown;
    path_ += '\\';
    Level level;
    level.descriptor = std::move(descriptor);
    level.end = path_.size();
    level.native = std::move(native);
    levels_.push_back(std::move(level));
    if (levels_.size() > mostOpen + 1) {
        levels_[levels_.size() - 1 - mostOpen].descriptor = FileDescriptor();
    }
}

bool OpenFolders::descend(std::string_view name) {
    const int parent = levels_.back().descriptor.number();
    FileDescriptor descriptor;
    std::string native;
    if (OddFolder* const odd = oddFolder(levels_.back(), name)) {
        odd->opened = true;
        native = odd->native;
        descriptor = openBelow(parent, native, reading);
    } else {
        std::tie(descriptor, native) = openShownBelow(parent, name, reading);
    }
    if (!descriptor.isOpen()) {
        return false;
    }
    if (isForeign(descriptor.number())) {
        errno = EXDEV;
        return false;
    }
    push(std::move(descriptor), name, std::move(native));
    return true;
}

bool OpenFolders::isForeign(int descriptor) const {
    const FileStatus status = statusOf(descriptor);
    return status.errorNumber != 0 || (status.mountRoot && status.device != rootDevice_);
}

/// Opens the last folder once more, so that its names are read from the beginning.
bool OpenFolders::rewind() {
    if (!levels_.back().descriptor.isOpen() && !reopenTop()) {
        return false;
    }
    FileDescriptor again = openFolder(levels_.back().descriptor.number(), ".", reading);
    if (!again.isOpen()) {
        return false;
    }
    levels_.back().descriptor = std::move(again);
    return true;
}

/// Opens the last folder, and those just above it, which were closed on the way down.
bool OpenFolders::reopenTop() {
    std::size_t from = levels_.size() - 1;
    while (!levels_[from].descriptor.isOpen()) {  // the root always is
        --from;
    }
    for (std::size_t index = from + 1; index < levels_.size(); ++index) {
        Level& level = levels_[index];
        level.descriptor = openBelow(levels_[index - 1].descriptor.number(), level.native, passing);
        if (!level.descriptor.isOpen()) {
            return false;
        }
        if (index > 1 && levels_.size() - index >= mostOpen) {
            levels_[index - 1].descriptor = FileDescriptor();
        }
    }
    return levels_.back().descriptor.isOpen();
}

FileDescriptor OpenFolders::giveAway() {
    FileDescriptor stays = openFolder(levels_.back().descriptor.number(), ".", passing);
    return std::exchange(levels_.back().descriptor, std::move(stays));
}

void OpenFolders::rememberOddFolders(const FolderContents& contents, Part part) {
    if (levels_.empty() || path_ != contents.folder()) {
        return;
    }
    std::vector<OddFolder>& oddFolders = levels_.back().oddFolders;
    if (part == Part::First) {
        oddFolders.clear();
    }
    if (!contents.anyOdd) {
        return;
    }
    const auto isOddName = [&](std::string_view shown) {
        return std::ranges::find(oddFolders, shown, &OddFolder::shown) != oddFolders.end();
    };
    for (std::size_t index = 0; index < contents.size(); ++index) {
        const FolderEntry& entry = contents.entry(index);
        if (entry.odd && entry.kind == EntryKind::Folder) {
            oddFolders.push_back(
                {std::string(contents.shownName(entry)), contents.nativeName(entry)});
        }
    }
    // A plain name that looks like an odd one has to be told apart from it, too.
    const std::size_t oddCount = oddFolders.size();
    for (std::size_t index = 0; index < contents.size() && oddCount > 0; ++index) {
        const FolderEntry& entry = contents.entry(index);
        const std::string_view shown = contents.shownName(entry);
        if (!entry.odd && entry.kind == EntryKind::Folder && isOddName(shown)) {
            oddFolders.push_back({std::string(shown), std::string(shown)});
        }
    }
}

/// The folder with an odd name that is shown so; null where there is none. Of several that are
/// shown alike it is the first that was not opened yet, as a walk meets that name once for each.
OpenFolders::OddFolder* OpenFolders::oddFolder(Level& level, std::string_view shown) {
    OddFolder* found = nullptr;
    for (OddFolder& folder : level.oddFolders) {
        if (folder.shown == shown) {
            found = &folder;
            if (!folder.opened) {
                break;
            }
        }
    }
    return found;
}

std::optional<OpenFolders::Place> OpenFolders::placeOf(std::string_view path) {
    const SplitPath split = splitPath(path);
    const auto letter = driveLetterOf(path);
    const auto root = letter ? rootOf_(*letter) : std::nullopt;
    if (!root) {
        return std::nullopt;
    }
    Place place;
    place.parent = openFolder(AT_FDCWD, *root, passing);
    for (const std::string_view name : pathComponents(split.folder)) {
        place.parent = openShownBelow(place.parent.number(), name, passing).first;
    }
    if (!place.parent.isOpen()) {
        return std::nullopt;
    }
    place.names = split.name.empty() ? std::vector<std::string>{"."} : nativeNames(split.name);
    return place;
}

}  // namespace platform::posix
