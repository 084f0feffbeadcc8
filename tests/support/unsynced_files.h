#pragma once

#include <memory>
#include <utility>

#include "base/random_access_file.h"

namespace support {

/// The files of another opener, but nothing waits for the medium: for tests that close archives
/// thousands of times.
class UnsyncedFiles : public base::FileOpener {
  public:
    /// `files` must outlive this.
    explicit UnsyncedFiles(base::FileOpener& files) : files_(files) {}

    Opened open(const std::string& path, Mode mode) override {
        Opened opened = files_.open(path, mode);
        if (opened.file) {
            opened.file = std::make_unique<File>(std::move(opened.file));
        }
        return opened;
    }
    void pause(int milliseconds) override { files_.pause(milliseconds); }

  private:
    class File : public base::RandomAccessFile {
      public:
        explicit File(std::unique_ptr<RandomAccessFile> file) : file_(std::move(file)) {}

        std::size_t readAt(std::uint64_t offset, void* bytes, std::size_t count) override {
            return file_->readAt(offset, bytes, count);
        }
        std::size_t writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
            return file_->writeAt(offset, bytes, count);
        }
        std::uint64_t size() override { return file_->size(); }
        void truncate(std::uint64_t size) override { file_->truncate(size); }
        void sync() override {}
        bool tryLock(Lock lock) override { return file_->tryLock(lock); }
        std::string identity() override { return file_->identity(); }
        bool writable() const override { return file_->writable(); }

      private:
        std::unique_ptr<RandomAccessFile> file_;
    };

    base::FileOpener& files_;
};

}  // namespace support
