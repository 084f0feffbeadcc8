#include "platform/windows/windows_file_opener.h"

#include <algorithm>
#include <utility>

#include "platform/windows/file_locks.h"
#include "platform/windows/handle.h"
#include "platform/windows/native_path.h"
#include "platform/windows/system_failure.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {

namespace {

OVERLAPPED placeOf(std::uint64_t offset) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

/// What one call takes at most.
DWORD oneTurn(std::size_t count) {
    constexpr std::size_t mostBytes = std::size_t{1} << 30;
    return static_cast<DWORD>(std::min(count, mostBytes));
}

class WindowsFile : public base::RandomAccessFile {
  public:
    WindowsFile(Handle handle, std::string path, bool writable)
        : handle_(std::move(handle)),
          locks_(handle_.get()),
          path_(std::move(path)),
          writable_(writable) {}

    std::size_t readAt(std::uint64_t offset, void* bytes, std::size_t count) override;
    std::size_t writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override;
    std::uint64_t size() override;
    void truncate(std::uint64_t size) override;
    void sync() override { require(::FlushFileBuffers(handle_.get())); }
    bool tryLock(Lock lock) override;
    std::string identity() override;
    bool writable() const override { return writable_; }

  private:
    void require(BOOL done) const {
        if (done == FALSE) {
            failWith(path_, ::GetLastError());
        }
    }

    Handle handle_;
    FileLocks locks_;
    std::string path_;
    bool writable_;
};

std::size_t WindowsFile::readAt(std::uint64_t offset, void* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        OVERLAPPED place = placeOf(offset + done);
        DWORD got = 0;
        if (::ReadFile(handle_.get(), static_cast<char*>(bytes) + done, oneTurn(count - done), &got,
                       &place) == FALSE &&
            ::GetLastError() != ERROR_HANDLE_EOF) {
            failWith(path_, ::GetLastError());
        }
        if (got == 0) {
            break;
        }
        done += got;
    }
    return done;
}

std::size_t WindowsFile::writeAt(std::uint64_t offset, const void* bytes, std::size_t count) {
    OVERLAPPED place = placeOf(offset);
    DWORD done = 0;
    require(::WriteFile(handle_.get(), bytes, oneTurn(count), &done, &place));
    return done;
}

std::uint64_t WindowsFile::size() {
    LARGE_INTEGER size{};
    require(::GetFileSizeEx(handle_.get(), &size));
    return static_cast<std::uint64_t>(size.QuadPart);
}

void WindowsFile::truncate(std::uint64_t size) {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    require(::SetFilePointerEx(handle_.get(), end, nullptr, FILE_BEGIN));
    require(::SetEndOfFile(handle_.get()));
}

bool WindowsFile::tryLock(Lock lock) {
    if (locks_.tryChange(lock)) {
        return true;
    }
    require(::GetLastError() == ERROR_SUCCESS);
    return false;
}

std::string WindowsFile::identity() {
    BY_HANDLE_FILE_INFORMATION facts{};
    require(::GetFileInformationByHandle(handle_.get(), &facts));
    return std::to_string(facts.dwVolumeSerialNumber) + ":" + std::to_string(facts.nFileIndexHigh) +
           ":" + std::to_string(facts.nFileIndexLow);
}

using Mode = base::FileOpener::Mode;
using Refusal = base::FileOpener::Refusal;

base::FileOpener::Opened refused(Refusal refusal, DWORD errorNumber) {
    return {nullptr, refusal, systemReason(errorNumber)};
}

Handle opened(const std::wstring& path, Mode mode) {
    const DWORD access = mode == Mode::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    const DWORD disposition = mode == Mode::CreateNew ? CREATE_NEW : OPEN_EXISTING;
    return Handle(::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

Refusal refusalOf(DWORD errorNumber, const std::wstring& path, Mode mode) {
    switch (errorNumber) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_INVALID_DRIVE:
            return Refusal::NotFound;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return Refusal::Exists;
        case ERROR_WRITE_PROTECT:
            return Refusal::NotWritable;
        case ERROR_ACCESS_DENIED:
            return mode == Mode::ReadWrite && opened(path, Mode::Read).isOpen()
                       ? Refusal::NotWritable
                       : Refusal::NoAccess;
        default:
            return Refusal::Other;
    }
}

bool isFolder(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

base::FileOpener::Opened WindowsFileOpener::open(const std::string& path, Mode mode) {
    if (path.empty() || path.find('\0') != std::string::npos) {
        return refused(Refusal::NotFound, ERROR_FILE_NOT_FOUND);
    }
    const std::wstring native = nativePath(path);
    if (isFolder(native)) {
        return mode == Mode::CreateNew ? refused(Refusal::Exists, ERROR_FILE_EXISTS)
                                       : Opened{nullptr, Refusal::NotAFile, "it is a folder"};
    }
    Handle handle = opened(native, mode);
    if (!handle.isOpen()) {
        const DWORD errorNumber = ::GetLastError();
        return refused(refusalOf(errorNumber, native, mode), errorNumber);
    }
    if (::GetFileType(handle.get()) != FILE_TYPE_DISK) {
        return {nullptr, Refusal::NotAFile, "it is not a file"};
    }
    return {std::make_unique<WindowsFile>(std::move(handle), path, mode != Mode::Read),
            Refusal::None,
            {}};
}

void WindowsFileOpener::pause(int milliseconds) {
    if (milliseconds > 0) {
        ::Sleep(static_cast<DWORD>(milliseconds));
    }
}

}  // namespace platform::windows
