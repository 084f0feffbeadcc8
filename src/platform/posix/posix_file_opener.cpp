#include "platform/posix/posix_file_opener.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <optional>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/system_failure.h"

namespace platform::posix {

namespace {

/// Repeats a call that a signal broke off.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

std::string folderOf(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    if (separator == std::string::npos) {
        return ".";
    }
    return separator == 0 ? "/" : path.substr(0, separator);
}

class PosixFile : public base::RandomAccessFile {
  public:
    PosixFile(FileDescriptor descriptor, std::string path, base::FileOpener::Mode mode)
        : descriptor_(std::move(descriptor)),
          path_(std::move(path)),
          writable_(mode != base::FileOpener::Mode::Read),
          nameIsNew_(mode == base::FileOpener::Mode::CreateNew) {}

    std::size_t readAt(std::uint64_t offset, void* bytes, std::size_t count) override;
    std::size_t writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override;
    std::uint64_t size() override { return static_cast<std::uint64_t>(status().st_size); }
    void truncate(std::uint64_t size) override;
    void beginSync(std::uint64_t offset, std::uint64_t count) override;
    void sync() override;
    bool tryLock(Lock lock) override;
    std::string identity() override;
    bool writable() const override { return writable_; }

  private:
    template <typename Result>
    Result checked(Result result) const {
        if (result < 0) {
            failWith(path_, errno);
        }
        return result;
    }
    struct stat status() const {
        struct stat facts {};
        checked(::fstat(descriptor_.number(), &facts));
        return facts;
    }
    void syncFolder() const;

    FileDescriptor descriptor_;
    std::string path_;
    bool writable_;
    bool nameIsNew_;  ///< the folder's entry for this file is not yet known to be on the disk
};

std::size_t PosixFile::readAt(std::uint64_t offset, void* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = checked(uninterrupted([&] {
            return ::pread(descriptor_.number(), static_cast<char*>(bytes) + done, count - done,
                           static_cast<off_t>(offset + done));
        }));
        if (got == 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    return done;
}

std::size_t PosixFile::writeAt(std::uint64_t offset, const void* bytes, std::size_t count) {
    return static_cast<std::size_t>(checked(uninterrupted(
        [&] { return ::pwrite(descriptor_.number(), bytes, count, static_cast<off_t>(offset)); })));
}

void PosixFile::truncate(std::uint64_t size) {
    checked(
        uninterrupted([&] { return ::ftruncate(descriptor_.number(), static_cast<off_t>(size)); }));
}

void PosixFile::beginSync([[maybe_unused]] std::uint64_t offset,
                          [[maybe_unused]] std::uint64_t count) {
#ifdef SYNC_FILE_RANGE_WRITE
    // A hint: where it fails, sync() has the more to do.
    ::sync_file_range(descriptor_.number(), static_cast<off_t>(offset), static_cast<off_t>(count),
                      SYNC_FILE_RANGE_WRITE);
#endif
}

void PosixFile::sync() {
    // The file's size is brought along; its times need not be.
    checked(uninterrupted([&] { return ::fdatasync(descriptor_.number()); }));
    if (nameIsNew_) {
        syncFolder();
        nameIsNew_ = false;
    }
}

void PosixFile::syncFolder() const {
    const FileDescriptor folder(
        ::open(folderOf(path_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems (and folders that may not be read) refuse; the file itself is safe then.
    if (folder.isOpen()) {
        uninterrupted([&] { return ::fsync(folder.number()); });
    }
}

bool PosixFile::tryLock(Lock lock) {
    struct flock request {};
    request.l_type = lock == Lock::None ? F_UNLCK : lock == Lock::Shared ? F_RDLCK : F_WRLCK;
    request.l_whence = SEEK_SET;
    // Locks of the open file, not of the process: two objects on one file exclude each other, and
    // closing one does not take the lock of the other.
    const int result =
        uninterrupted([&] { return ::fcntl(descriptor_.number(), F_OFD_SETLK, &request); });
    if (result < 0 && (errno == EAGAIN || errno == EACCES)) {
        return false;
    }
    checked(result);
    return true;
}

std::string PosixFile::identity() {
    const struct stat facts = status();
    return std::to_string(facts.st_dev) + ":" + std::to_string(facts.st_ino);
}

using Refusal = base::FileOpener::Refusal;

base::FileOpener::Opened refused(Refusal refusal, int errorNumber) {
    return {nullptr, refusal, systemReason(errorNumber)};
}

/// Whether a file that may not be opened for writing may at least be read.
bool isReadable(const std::string& path) {
    return ::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

Refusal refusalOf(int errorNumber, const std::string& path, base::FileOpener::Mode mode) {
    switch (errorNumber) {
        case ENOENT:
        case ENOTDIR:
            return Refusal::NotFound;
        case EISDIR:
        case ENXIO:
        case ENODEV:
            return Refusal::NotAFile;
        case EEXIST:
            return Refusal::Exists;
        case EROFS:
        case ETXTBSY:
            return Refusal::NotWritable;
        case EACCES:
        case EPERM:
            return mode == base::FileOpener::Mode::ReadWrite && isReadable(path)
                       ? Refusal::NotWritable
                       : Refusal::NoAccess;
        default:
            return Refusal::Other;
    }
}

int openFlags(base::FileOpener::Mode mode) {
    switch (mode) {
        case base::FileOpener::Mode::Read:
            return O_RDONLY;
        case base::FileOpener::Mode::ReadWrite:
            return O_RDWR;
        case base::FileOpener::Mode::CreateNew:
            return O_RDWR | O_CREAT | O_EXCL;
    }
    return O_RDONLY;
}

base::FileOpener::Opened notAFile(mode_t kind) {
    return {nullptr, Refusal::NotAFile, S_ISDIR(kind) ? "it is a folder" : "it is not a file"};
}

/// Refuses what is no regular file before it is opened; none where open() should decide.
std::optional<base::FileOpener::Opened> refusedByKind(const std::string& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0 || S_ISREG(facts.st_mode)) {
        return std::nullopt;
    }
    return notAFile(facts.st_mode);
}

}  // namespace

base::FileOpener::Opened PosixFileOpener::open(const std::string& path, Mode mode) {
    if (path.find('\0') != std::string::npos) {
        return refused(Refusal::NotFound, ENOENT);
    }
    if (mode != Mode::CreateNew) {
        if (auto refusal = refusedByKind(path)) {
            return std::move(*refusal);
        }
    }
    const int flags = openFlags(mode) | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    FileDescriptor descriptor(uninterrupted([&] { return ::open(path.c_str(), flags, 0666); }));
    if (!descriptor.isOpen()) {
        const int errorNumber = errno;
        return refused(refusalOf(errorNumber, path, mode), errorNumber);
    }
    struct stat facts {};
    if (::fstat(descriptor.number(), &facts) == 0 && !S_ISREG(facts.st_mode)) {
        return notAFile(facts.st_mode);
    }
    return {std::make_unique<PosixFile>(std::move(descriptor), path, mode), Refusal::None, {}};
}

void PosixFileOpener::pause(int milliseconds) {
    if (milliseconds <= 0) {
        return;
    }
    timespec rest{milliseconds / 1000, (milliseconds % 1000) * 1'000'000L};
    while (::nanosleep(&rest, &rest) != 0 && errno == EINTR) {
    }
}

}  // namespace platform::posix
