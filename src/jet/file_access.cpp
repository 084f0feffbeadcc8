#include "jet/file_access.h"

#include "base/failure.h"
#include "jet/header_page.h"

namespace jet {

namespace {

using base::EngineFailure;
using base::EngineFault;
using base::FileOpener;

constexpr int lockPauseMilliseconds = 20;
constexpr std::uint32_t leastPages = 3;

[[noreturn]] void refuse(const std::string& path, const FileOpener::Opened& opened) {
    switch (opened.refusal) {
        case FileOpener::Refusal::NotFound:
            throw EngineFailure(EngineFault::NotFound, path + ": there is no such file");
        case FileOpener::Refusal::NotAFile:
            throw EngineFailure(EngineFault::NotADatabase,
                                path + ": this is a folder or device, not a database file");
        default:
            throw EngineFailure(EngineFault::InputOutput,
                                path + ": the file cannot be opened: " + opened.reason);
    }
}

}  // namespace

std::unique_ptr<base::RandomAccessFile> openExisting(FileOpener& files, const std::string& path,
                                                     bool forWriting) {
    FileOpener::Opened opened =
        files.open(path, forWriting ? FileOpener::Mode::ReadWrite : FileOpener::Mode::Read);
    if (opened.refusal == FileOpener::Refusal::NotWritable ||
        (forWriting && opened.refusal == FileOpener::Refusal::NoAccess)) {
        opened = files.open(path, FileOpener::Mode::Read);
    }
    if (opened.file == nullptr) {
        refuse(path, opened);
    }
    return std::move(opened.file);
}

std::vector<std::uint8_t> readStart(base::RandomAccessFile& file, std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    std::size_t total = 0;
    while (total < count) {
        const std::size_t got = file.readAt(total, bytes.data() + total, count - total);
        if (got == 0) {
            break;
        }
        total += got;
    }
    bytes.resize(total);
    return bytes;
}

const Format& recogniseFile(base::RandomAccessFile& file, const std::string& path,
                            FileOpener& files, int lockWaitMilliseconds) {
    const Format& format = HeaderPage::recognise(readStart(file, 0x20), path);
    if (file.size() < leastPages * std::uint64_t{format.pageSize}) {
        throw EngineFailure(EngineFault::Damaged,
                            path + ": the database is damaged: the file is cut after " +
                                std::to_string(file.size()) + " bytes");
    }
    // A writer may be lengthening the file: its size is good only once this lock is held.
    takeLock(file, base::RandomAccessFile::Lock::Shared, path, files, lockWaitMilliseconds);
    return format;
}

void takeLock(base::RandomAccessFile& file, base::RandomAccessFile::Lock lock,
              const std::string& path, FileOpener& files, int waitMilliseconds) {
    for (int waited = 0; !file.tryLock(lock); waited += lockPauseMilliseconds) {
        if (waited >= waitMilliseconds) {
            throw EngineFailure(EngineFault::InUse,
                                path + ": the file is in use by another program");
        }
        files.pause(lockPauseMilliseconds);
    }
}

}  // namespace jet
