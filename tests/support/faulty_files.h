#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/random_access_file.h"

namespace support {

/// Files that live in memory, by their paths, on a disk that fails as told. Every folder exists. A
/// write counts once for each block of `blockSize` bytes that it covers: what real disks do whole.
///
/// What was written and not synced is lost in cutPower(), each block by chance.
class FaultyFiles : public base::FileOpener {
  public:
    static constexpr std::uint64_t never = UINT64_MAX;

    explicit FaultyFiles(std::uint64_t blockSize = 4096) : blockSize_(blockSize) {}

    Opened open(const std::string& path, Mode mode) override;
    void pause(int milliseconds) override { pausedMilliseconds += milliseconds; }

    std::uint64_t blockSize() const { return blockSize_; }
    bool exists(const std::string& path) const { return disks_.contains(path); }
    std::string read(const std::string& path) const;
    /// Puts a file there, all of it on the medium. One that is open keeps its old content.
    void write(const std::string& path, const std::string& content);

    // The faults; all of them off at first. Numbers count from the last heal() on.
    /// Block writes from this one (1 is the first) on fail, syncs too: the process has been
    /// stopped.
    std::uint64_t stopAtWrite = never;
    /// This block write fails, the next one succeeds.
    std::uint64_t failWrite = never;
    /// Block writes from this one on fail; syncs succeed.
    std::uint64_t failWritesFrom = never;
    /// This sync fails.
    std::uint64_t failSync = never;
    /// No more bytes than this go into one write; the rest is left to the caller.
    std::uint64_t longestWrite = never;
    /// This block write stores only its first half, and then fails as the disk does.
    std::uint64_t tearWrite = never;
    /// No file grows beyond this many bytes.
    std::uint64_t capacity = never;
    bool refuseLocks = false;
    std::set<std::string> unwritable;

    /// Takes all faults away and begins to count anew.
    void heal();
    /// What has happened since heal().
    std::uint64_t writes() const { return writes_; }
    std::uint64_t syncs() const { return syncs_; }
    int pausedMilliseconds = 0;

    /// The machine loses power: of what was not synced, each write of each block is kept or lost by
    /// chance. A file may end up shorter. Nothing may be open.
    void cutPower(std::uint64_t seed);

  private:
    struct Write {
        std::uint64_t offset;
        std::string bytes;
    };
    struct Disk {
        std::string content;
        std::string synced;
        std::vector<Write> pending;  ///< since the last sync, block by block
        std::map<const void*, base::RandomAccessFile::Lock> locks;
    };
    class File;

    /// Bytes of one block's write that may go in; throws when the disk fails.
    std::uint64_t admit(const std::string& path, std::uint64_t offset, std::uint64_t count);
    void noteSync(const std::string& path);

    std::uint64_t blockSize_;
    std::uint64_t writes_ = 0;
    std::uint64_t syncs_ = 0;
    bool torn_ = false;
    std::map<std::string, std::shared_ptr<Disk>> disks_;
};

}  // namespace support
