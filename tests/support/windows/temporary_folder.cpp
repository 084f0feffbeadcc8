#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <stdexcept>

#include "base/file_path.h"
#include "platform/windows/handle.h"
#include "platform/windows/native_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace support {

namespace {

using platform::windows::Handle;

constexpr std::int64_t unixEpochSeconds = 11'644'473'600;  // since 1601

void require(BOOL done, const std::string& path) {
    if (done == FALSE) {
        throw std::runtime_error(path + ": error " + std::to_string(::GetLastError()));
    }
}

void removeContents(const std::wstring& folder);

Handle openedForChange(const std::string& path) {
    Handle file(::CreateFileW(platform::windows::wideText(path).c_str(), GENERIC_WRITE,
                              FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    require(file.isOpen(), path);
    return file;
}

/// The library's own way does not know paths of any length.
void removeTree(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return;
    }
    ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        ::DeleteFileW(path.c_str());
        return;
    }
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        removeContents(path);
    }
    ::RemoveDirectoryW(path.c_str());
}

void removeContents(const std::wstring& folder) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L"..") {
            removeTree(folder + L'\\' + found.cFileName);
        }
    } while (::FindNextFileW(search, &found) != FALSE);
    ::FindClose(search);
}

}  // namespace

std::string TemporaryFolder::madeFolder() {
    static unsigned count = 0;
    for (;;) {
        const std::filesystem::path path =
            std::filesystem::temp_directory_path() /
            ("verdolin-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++count));
        if (std::filesystem::create_directory(path)) {
            return base::pathText(path);
        }
    }
}

void TemporaryFolder::removeAll(const std::string& path) {
    removeTree(platform::windows::verbatimPath(platform::windows::wideText(path)));
}

std::string TemporaryFolder::makeSparseFile(std::string_view name, std::uint64_t size) {
    std::string path = makeFile(name);
    const Handle file = openedForChange(path);
    DWORD none = 0;
    // A hint: where the file system knows no such files, the size below decides.
    ::DeviceIoControl(file.get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &none, nullptr);
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    require(::SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN), path);
    require(::SetEndOfFile(file.get()), path);
    return path;
}

void TemporaryFolder::setModified(std::string_view name, std::int64_t seconds) {
    const std::string path = pathOf(name);
    const auto ticks = static_cast<std::uint64_t>((seconds + unixEpochSeconds) * 10'000'000);
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    require(::SetFileTime(openedForChange(path).get(), nullptr, nullptr, &time), path);
}

}  // namespace support
