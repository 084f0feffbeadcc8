#include "tests/support/faulty_files.h"

#include <algorithm>
#include <cstring>
#include <random>

#include "base/failure.h"

namespace support {

namespace {

[[noreturn]] void fail(const std::string& path, const std::string& why) {
    throw base::FileFailure(path + ": " + why);
}

void place(std::string& content, std::uint64_t offset, std::string_view bytes) {
    if (content.size() < offset + bytes.size()) {
        content.resize(offset + bytes.size(), '\0');
    }
    content.replace(offset, bytes.size(), bytes);
}

}  // namespace

class FaultyFiles::File : public base::RandomAccessFile {
  public:
    File(FaultyFiles& files, std::string path, std::shared_ptr<Disk> disk, bool writable)
        : files_(files), path_(std::move(path)), disk_(std::move(disk)), writable_(writable) {}
    ~File() override { disk_->locks.erase(this); }

    std::size_t readAt(std::uint64_t offset, void* bytes, std::size_t count) override {
        const std::string& content = disk_->content;
        if (offset >= content.size()) {
            return 0;
        }
        const std::size_t there = std::min<std::size_t>(count, content.size() - offset);
        std::memcpy(bytes, content.data() + offset, there);
        return there;
    }

    std::size_t writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
        const std::string_view all(static_cast<const char*>(bytes),
                                   std::min<std::uint64_t>(count, files_.longestWrite));
        std::size_t done = 0;
        while (done < all.size()) {
            const std::uint64_t at = offset + done;
            const std::uint64_t room = files_.blockSize_ - at % files_.blockSize_;
            const std::string_view block = all.substr(done, room);
            const std::string_view part = block.substr(0, files_.admit(path_, at, block.size()));
            place(disk_->content, at, part);
            disk_->pending.push_back({at, std::string(part)});
            done += part.size();
            if (part.size() < block.size()) {
                break;
            }
        }
        return done;
    }

    std::uint64_t size() override { return disk_->content.size(); }
    void truncate(std::uint64_t size) override {
        files_.admit(path_, 0, 0);
        disk_->content.resize(size, '\0');
        disk_->synced.resize(std::min<std::uint64_t>(size, disk_->synced.size()));
    }
    void sync() override {
        files_.noteSync(path_);
        disk_->synced = disk_->content;
        disk_->pending.clear();
    }

    bool tryLock(Lock lock) override {
        if (lock != Lock::None && files_.refuseLocks) {
            return false;
        }
        for (const auto& [holder, held] : disk_->locks) {
            if (holder != this && lock != Lock::None &&
                (lock == Lock::Exclusive || held == Lock::Exclusive)) {
                return false;
            }
        }
        disk_->locks.erase(this);
        if (lock != Lock::None) {
            disk_->locks[this] = lock;
        }
        return true;
    }

    std::string identity() override { return path_; }
    bool writable() const override { return writable_; }

  private:
    FaultyFiles& files_;
    std::string path_;
    std::shared_ptr<Disk> disk_;
    bool writable_;
};

base::FileOpener::Opened FaultyFiles::open(const std::string& path, Mode mode) {
    const bool there = exists(path);
    if (mode == Mode::CreateNew ? there : !there) {
        return {nullptr, there ? Refusal::Exists : Refusal::NotFound,
                there ? "the file is there already" : "there is no such file"};
    }
    if (mode != Mode::Read && unwritable.contains(path)) {
        return {nullptr, Refusal::NotWritable, "the file may not be written"};
    }
    std::shared_ptr<Disk>& disk = disks_[path];
    if (disk == nullptr) {
        disk = std::make_shared<Disk>();
    }
    return {std::make_unique<File>(*this, path, disk, mode != Mode::Read), Refusal::None, {}};
}

std::string FaultyFiles::read(const std::string& path) const { return disks_.at(path)->content; }

void FaultyFiles::write(const std::string& path, const std::string& content) {
    auto disk = std::make_shared<Disk>();
    disk->content = disk->synced = content;
    disks_[path] = std::move(disk);
}

std::uint64_t FaultyFiles::admit(const std::string& path, std::uint64_t offset,
                                 std::uint64_t count) {
    const std::uint64_t number = ++writes_;
    if (number >= stopAtWrite || number >= failWritesFrom || number == failWrite || torn_) {
        fail(path, "input/output error");
    }
    if (number == tearWrite) {
        torn_ = true;
        return count / 2;
    }
    if (offset + count > capacity) {
        if (offset >= capacity) {
            fail(path, "no space left on device");
        }
        return capacity - offset;
    }
    return count;
}

void FaultyFiles::noteSync(const std::string& path) {
    if (++syncs_ == failSync || writes_ >= stopAtWrite || torn_) {
        fail(path, "input/output error");
    }
}

void FaultyFiles::heal() {
    stopAtWrite = failWrite = failWritesFrom = failSync = longestWrite = tearWrite = capacity =
        never;
    refuseLocks = false;
    torn_ = false;
    writes_ = syncs_ = 0;
    pausedMilliseconds = 0;
}

void FaultyFiles::cutPower(std::uint64_t seed) {
    std::mt19937_64 chance(seed);
    for (auto& [path, disk] : disks_) {
        // Some cuts lose nearly everything, some nearly nothing.
        const std::uint64_t kept = chance() % 101;
        for (const Write& write : disk->pending) {
            if (chance() % 100 < kept) {
                place(disk->synced, write.offset, write.bytes);
            }
        }
        disk->content = disk->synced;
        disk->pending.clear();
    }
}

}  // namespace support
