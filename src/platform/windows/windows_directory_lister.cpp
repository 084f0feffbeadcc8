#include "platform/windows/windows_directory_lister.h"

#include <array>
#include <utility>

#include "platform/path_rules.h"
#include "platform/windows/native_path.h"
#include "platform/windows/system_failure.h"
#include "platform/windows/wide_text.h"

namespace platform::windows {

namespace {

/// Stands for the reason of a folder in which another volume begins; that is as it should be.
constexpr DWORD anotherVolume = ERROR_NOT_SAME_DEVICE;

/// Owns a running search of the system and ends it.
class FindHandle {
  public:
    FindHandle(const std::wstring& pattern, WIN32_FIND_DATAW& first)
        : handle_(::FindFirstFileW(pattern.c_str(), &first)) {}
    FindHandle(FindHandle&& other) noexcept
        : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    FindHandle& operator=(FindHandle&&) = delete;
    ~FindHandle() {
        if (isOpen()) {
            ::FindClose(handle_);
        }
    }

    bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    bool next(WIN32_FIND_DATAW& data) { return isOpen() && ::FindNextFileW(handle_, &data) != 0; }

  private:
    HANDLE handle_;
};

bool isDotName(std::string_view name) { return name == "." || name == ".."; }

FileTime fileTimeOf(const FILETIME& time) {
    return {static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime};
}

bool isReparsed(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool isVolumeMountPoint(std::wstring folder) {
    folder += L'\\';
    std::array<wchar_t, 64> volume{};
    return ::GetVolumeNameForVolumeMountPointW(folder.c_str(), volume.data(),
                                               static_cast<DWORD>(volume.size())) != 0;
}

/// The attributes as a walk should see them: what only stands for something elsewhere is no folder,
/// unless it is a whole volume.
DWORD shownAttributes(DWORD attributes, DWORD reparseTag, const std::wstring& path) {
    if (!isReparsed(attributes) || !IsReparseTagNameSurrogate(reparseTag) ||
        (reparseTag == IO_REPARSE_TAG_MOUNT_POINT && isVolumeMountPoint(path))) {
        return attributes;
    }
    return attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY);
}

DWORD reparseTagOf(const std::wstring& path) {
    WIN32_FIND_DATAW found{};
    return FindHandle(path, found).isOpen() ? found.dwReserved0 : 0;
}

/// `folder`, which may be the root "D:\", followed by a name.
std::wstring joined(std::wstring folder, std::wstring_view name) {
    if (!folder.ends_with(L'\\')) {
        folder += L'\\';
    }
    return folder.append(name);
}

}  // namespace

/// The listing of one folder. It notes in its lister what it gives out.
class WindowsDirectoryLister::FindListing : public Listing {
  public:
    FindListing(WindowsDirectoryLister& lister, std::string_view folder, std::wstring nativeFolder,
                FindHandle search, const WIN32_FIND_DATAW& first)
        : lister_(lister),
          folder_(folder),
          nativeFolder_(std::move(nativeFolder)),
          search_(std::move(search)),
          found_(first),
          hasNext_(search_.isOpen()) {}

    bool next(FindData& data) override {
        if (!hasNext_) {
            return false;
        }
        data.ftCreationTime = fileTimeOf(found_.ftCreationTime);
        data.ftLastWriteTime = fileTimeOf(found_.ftLastWriteTime);
        data.nFileSizeHigh = found_.nFileSizeHigh;
        data.nFileSizeLow = found_.nFileSizeLow;
        data.cFileName = utf8Text(found_.cFileName);
        noteDelivered(data.cFileName);
        hasNext_ = search_.next(found_);
        return true;
    }

  private:
    void noteDelivered(const std::string& name) {
        const std::wstring native = found_.cFileName;
        Delivered& delivered = lister_.delivered_;
        delivered.path.assign(folder_).append(name);
        const std::wstring path = isReparsed(found_.dwFileAttributes)
                                      ? verbatimPath(joined(nativeFolder_, native))
                                      : std::wstring();
        delivered.attributes = shownAttributes(found_.dwFileAttributes, found_.dwReserved0, path);
        if (wideText(name) != native) {
            lister_.oddNames_[delivered.path] = native;
        }
    }

    WindowsDirectoryLister& lister_;
    std::string folder_;
    std::wstring nativeFolder_;
    FindHandle search_;
    WIN32_FIND_DATAW found_;
    bool hasNext_;
};

std::unique_ptr<Listing> WindowsDirectoryLister::findFirst(std::string_view pattern) {
    const SplitPath split = splitPath(pattern);
    const std::wstring folder = nativeFolderOf(split.folder);
    if (folder.empty()) {
        return refuse(ERROR_INVALID_DRIVE);
    }
    const std::wstring path = verbatimPath(folder);
    const bool isRoot = pathComponents(split.folder).empty();
    if (!isRoot && isReparsed(::GetFileAttributesW(path.c_str()))) {
        const DWORD tag = reparseTagOf(path);
        if (IsReparseTagNameSurrogate(tag)) {
            return refuse(tag == IO_REPARSE_TAG_MOUNT_POINT && isVolumeMountPoint(path)
                              ? anotherVolume
                              : ERROR_DIRECTORY);
        }
    }
    WIN32_FIND_DATAW first{};
    FindHandle search(joined(path, wideText(split.name)), first);
    // An empty root lists nothing at all, and a pattern may fit no name; the folder is there.
    if (!search.isOpen() && ::GetLastError() != ERROR_FILE_NOT_FOUND) {
        return refuse(::GetLastError());
    }
    return std::make_unique<FindListing>(*this, split.folder, folder, std::move(search), first);
}

std::unique_ptr<Listing> WindowsDirectoryLister::refuse(DWORD reason) {
    refusal_ = reason;
    return nullptr;
}

std::string WindowsDirectoryLister::whyNotListed() const {
    return refusal_ == anotherVolume ? std::string() : systemReason(refusal_);
}

std::optional<std::wstring> WindowsDirectoryLister::rootFolderOf(std::string_view path) {
    const auto letter = driveLetterOf(path);
    if (!letter) {
        return std::nullopt;
    }
    const auto known = roots_.find(*letter);
    if (known != roots_.end()) {
        return known->second;
    }
    const auto root = rootOf_(*letter);
    if (!root) {
        return std::nullopt;
    }
    return roots_[*letter] = fullFolderPath(*root);
}

std::wstring WindowsDirectoryLister::nativeFolderOf(std::string_view folder) {
    if (!folder_.empty() && folder_ == folder) {
        return nativeFolder_;
    }
    const auto root = rootFolderOf(folder);
    if (!root) {
        return {};
    }
    std::wstring native = *root;
    for (const std::string_view name : pathComponents(folder)) {
        const auto end = static_cast<std::size_t>(name.data() + name.size() - folder.data());
        const auto odd =
            oddNames_.empty() ? oddNames_.end() : oddNames_.find(folder.substr(0, end));
        native = joined(std::move(native), odd == oddNames_.end() ? wideText(name) : odd->second);
    }
    folder_ = folder;
    nativeFolder_ = native;
    return native;
}

std::wstring WindowsDirectoryLister::nativePathOf(std::string_view path) {
    const SplitPath split = splitPath(path);
    std::wstring folder = nativeFolderOf(split.folder);
    if (folder.empty() || split.name.empty()) {
        return folder;
    }
    const auto odd = oddNames_.find(path);
    return joined(std::move(folder), odd == oddNames_.end() ? wideText(split.name) : odd->second);
}

DWORD WindowsDirectoryLister::askedAttributes(std::string_view path) {
    const std::wstring native = nativePathOf(path);
    if (native.empty()) {
        return INVALID_FILE_ATTRIBUTES;
    }
    const std::wstring verbatim = verbatimPath(native);
    const DWORD attributes = ::GetFileAttributesW(verbatim.c_str());
    return isReparsed(attributes) ? shownAttributes(attributes, reparseTagOf(verbatim), verbatim)
                                  : attributes;
}

std::uint32_t WindowsDirectoryLister::attributes(std::string_view path) {
    if (!path.empty() && path == delivered_.path) {
        return delivered_.attributes;
    }
    // In the form that is taken as it stands these names would mean nothing.
    return isDotName(splitPath(path).name) ? fileAttributeDirectory : askedAttributes(path);
}

std::string WindowsDirectoryLister::typeName(std::string_view path) {
    return typeNames_.of(nativePathOf(path), attributes(path));
}

FileTime WindowsDirectoryLister::fileTimeToLocalFileTime(FileTime time) {
    const FILETIME utc{static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
    FILETIME local{};
    return ::FileTimeToLocalFileTime(&utc, &local) != 0 ? fileTimeOf(local) : time;
}

}  // namespace platform::windows
