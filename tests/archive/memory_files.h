#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/random_access_file.h"

namespace support {

/// Files that live in memory, by their paths. Every folder exists.
class MemoryFiles : public base::FileOpener {
  public:
    Opened open(const std::string& path, Mode mode) override {
        const bool exists = files_.contains(path);
        if (mode == Mode::CreateNew ? exists : !exists) {
            return {nullptr, exists ? Refusal::Exists : Refusal::NotFound,
                    exists ? "the file is there already" : "there is no such file"};
        }
        if (mode != Mode::Read && unwritable.contains(path)) {
            return {nullptr, Refusal::NotWritable, "the file may not be written"};
        }
        std::shared_ptr<Bytes>& bytes = files_[path];
        if (!bytes) {
            bytes = std::make_shared<Bytes>();
        }
        return {std::make_unique<File>(*this, path, bytes, mode != Mode::Read), Refusal::None, {}};
    }
    void pause(int /*milliseconds*/) override {}

    bool exists(const std::string& path) const { return files_.contains(path); }
    void write(const std::string& path, const std::string& content) {
        files_[path] = std::make_shared<Bytes>(content.begin(), content.end());
    }
    std::string read(const std::string& path) const {
        return {files_.at(path)->begin(), files_.at(path)->end()};
    }

    std::set<std::string> unwritable;
    std::uint64_t capacity = UINT64_MAX;  ///< no file can be written beyond this size

  private:
    using Bytes = std::vector<char>;

    class File : public base::RandomAccessFile {
      public:
        File(MemoryFiles& files, std::string path, std::shared_ptr<Bytes> bytes, bool writable)
            : files_(files),
              path_(std::move(path)),
              bytes_(std::move(bytes)),
              writable_(writable) {}

        std::size_t readAt(std::uint64_t offset, void* bytes, std::size_t count) override {
            if (offset >= bytes_->size()) {
                return 0;
            }
            const std::size_t there = std::min<std::size_t>(count, bytes_->size() - offset);
            std::memcpy(bytes, bytes_->data() + offset, there);
            return there;
        }
        std::size_t writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
            if (offset + count > files_.capacity) {
                throw base::FileFailure(path_ + ": no space left on the device");
            }
            if (bytes_->size() < offset + count) {
                bytes_->resize(offset + count);
            }
            std::memcpy(bytes_->data() + offset, bytes, count);
            return count;
        }
        std::uint64_t size() override { return bytes_->size(); }
        void truncate(std::uint64_t size) override { bytes_->resize(size); }
        void sync() override {}
        bool tryLock(Lock /*lock*/) override { return true; }
        std::string identity() override { return path_; }
        bool writable() const override { return writable_; }

      private:
        MemoryFiles& files_;
        std::string path_;
        std::shared_ptr<Bytes> bytes_;
        bool writable_;
    };

    std::map<std::string, std::shared_ptr<Bytes>> files_;
};

}  // namespace support
