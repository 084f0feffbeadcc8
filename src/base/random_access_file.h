#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace base {

/// One open file that is read and written at byte offsets. A resource: neither copied nor moved,
/// closed by its destructor. Failures are base::FileFailure with the system's reason, except where
/// a return value says otherwise. Used by one thread.
class RandomAccessFile {
  public:
    enum class Lock { None, Shared, Exclusive };

    RandomAccessFile() = default;
    RandomAccessFile(const RandomAccessFile&) = delete;
    RandomAccessFile& operator=(const RandomAccessFile&) = delete;
    virtual ~RandomAccessFile() = default;

    /// Reads up to `count` bytes at `offset` and returns how many there were (fewer only at the
    /// end).
    virtual std::size_t readAt(std::uint64_t offset, void* bytes, std::size_t count) = 0;
    /// Writes at `offset`, extending the file where needed, and returns how many bytes went in.
    /// Fewer than `count` is no failure: the caller goes on with the rest.
    virtual std::size_t writeAt(std::uint64_t offset, const void* bytes, std::size_t count) = 0;
    virtual std::uint64_t size() = 0;
    virtual void truncate(std::uint64_t size) = 0;
    /// May begin to bring what was written there to the medium, so that sync() finds less to do.
    /// Returns at once and promises nothing.
    virtual void beginSync(std::uint64_t offset, std::uint64_t count) {
        static_cast<void>(offset);
        static_cast<void>(count);
    }
    /// Returns when all that was written is on the medium.
    virtual void sync() = 0;

    /// Changes this file's lock against other processes without waiting; false when another process
    /// stands in the way (the lock held before is kept then). Two objects on one file exclude each
    /// other as two processes do.
    virtual bool tryLock(Lock lock) = 0;

    /// Tells files apart and names the same file the same way whatever path it was opened by.
    virtual std::string identity() = 0;
    virtual bool writable() const = 0;
};

/// Opens files: the one place below the engine that knows paths.
class FileOpener {
  public:
    enum class Mode {
        Read,       ///< must exist
        ReadWrite,  ///< must exist and be writable
        CreateNew,  ///< must not exist
    };
    /// Why an open() gave no file.
    enum class Refusal { None, NotFound, NotAFile, Exists, NotWritable, NoAccess, Other };

    struct Opened {
        std::unique_ptr<RandomAccessFile> file;  ///< null when refused
        Refusal refusal = Refusal::None;
        std::string reason;  ///< the system's words, when refused
    };

    virtual ~FileOpener() = default;
    virtual Opened open(const std::string& path, Mode mode) = 0;
    /// Waits about that long; a test's version need not.
    virtual void pause(int milliseconds) = 0;
};

}  // namespace base
