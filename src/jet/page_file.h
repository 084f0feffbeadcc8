#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/random_access_file.h"
#include "jet/format.h"

namespace jet {

/// One page in memory. Its bytes stay where they are as long as a PageHandle pins it.
struct Page {
    std::uint32_t number = 0;
    std::unique_ptr<std::uint8_t[]> bytes;
    std::uint64_t version = 0;    ///< differs after every change, so that a cursor notices
    bool dirty = false;           ///< to be written
    bool squeezePending = false;  ///< deleted rows still hold space on this data page
    std::int32_t liveRows = -1;   ///< rows that are not deleted; -1: not counted yet
    std::uint32_t pins = 0;
    Page* newer = nullptr;  ///< order of use
    Page* older = nullptr;
};

/// Pins a page in memory. Movable; empty after a move and by default.
class PageHandle {
  public:
    PageHandle() = default;
    explicit PageHandle(Page* page) : page_(page) { ++page_->pins; }
    PageHandle(PageHandle&& other) noexcept : page_(std::exchange(other.page_, nullptr)) {}
    PageHandle& operator=(PageHandle&& other) noexcept {
        std::swap(page_, other.page_);
        return *this;
    }
    ~PageHandle() { release(); }

    void release() {
        if (page_ != nullptr) {
            --page_->pins;
            page_ = nullptr;
        }
    }
    explicit operator bool() const { return page_ != nullptr; }
    Page& operator*() const { return *page_; }
    Page* operator->() const { return page_; }
    std::uint8_t* bytes() const { return page_->bytes.get(); }

  private:
    Page* page_ = nullptr;
};

/// The pages of one file through a cache of bounded size.
///
/// Every change of a page is made in memory and written later, in an order that keeps the file
/// sound whenever the process ends. For that the cache tells two kinds of changed pages apart.
/// *Fresh* pages were allocated since the last flush: nothing in the file refers to them, so they
/// may be written at any time. *Old* pages are part of the file's structure; they may be written at
/// any time as well, unless a row on one of them refers to a row on a fresh page (a moved row, a
/// long value). Pages of long values go with the fresh ones, because rows refer to them and they to
/// nothing.
class PageFile {
  public:
    /// Asked by the cache when old pages must be written that refer to fresh ones: must write the
    /// fresh pages and the maps that make them part of the file.
    class References {
      public:
        virtual ~References() = default;
        virtual void secureReferences() = 0;
    };

    PageFile(std::unique_ptr<base::RandomAccessFile> file, const Format& format, std::string path,
             std::size_t cacheBytes);
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;
    ~PageFile();

    const Format& format() const { return format_; }
    const std::string& path() const { return path_; }
    base::RandomAccessFile& file() { return *file_; }
    void setReferences(References* references) { references_ = references; }

    /// Pages of the file, those included that have not been written yet.
    std::uint32_t pageCount() const { return pageCount_; }
    /// Bytes at the end of the file that make no whole page: the trace of a write that was cut
    /// short.
    std::uint64_t trailingBytes() const { return trailingBytes_; }

    /// The page of that number; a number outside the file is a Damaged failure.
    PageHandle read(std::uint32_t number);
    /// Reads up to `count` pages from `first` on in one go, as far as they are not in memory yet.
    void prefetch(std::uint32_t first, std::uint32_t count);
    /// A page of zeros that takes the place of whatever the file holds there; `number` may be the
    /// one just after the end. It counts as fresh.
    PageHandle create(std::uint32_t number);
    /// Lengthens the file, so that its last page is this one at least. It is all zeros until it is
    /// written.
    void reserve(std::uint32_t number) { pageCount_ = std::max(pageCount_, number + 1); }
    /// Must be called after each change of a page's bytes (before the next page is asked for).
    void changed(Page& page);
    /// Forgets a page that is no longer part of anything, without writing it.
    void forget(std::uint32_t number);
    bool isFresh(std::uint32_t number) const { return number < fresh_.size() && fresh_[number]; }
    /// Says that a row on an old page refers to a fresh page.
    void noteReference() { referencesPending_ = true; }

    void writeFreshPages();
    /// Index pages go last, when the rows that they name are on the medium.
    void writeOldPages();
    /// Writes one page now.
    void writePage(Page& page);
    /// What was written so far is on the medium afterwards. Does nothing when nothing was written.
    void sync();
    /// All pages are part of the file's structure from now on.
    void settle();
    /// While set, the cache grows rather than writing changed pages out of the order of a flush.
    void setGrowing(bool growing) { growing_ = growing; }
    bool hasChanges() const { return dirtyPages_ != 0; }
    bool hasUnsyncedWrites() const { return unsynced_; }

  private:
    Page& takeFrame(std::uint32_t number);
    Page& addFrame();
    Page* findEvictable();
    void makeRoom();
    void load(Page& page);
    void touch(Page& page);
    void link(Page& page);
    void unlink(Page& page);
    enum class Which { Fresh, Old, Index };
    Which groupOf(const Page& page) const;
    void writePages(Which which);
    void writeRun(const std::vector<Page*>& pages, std::size_t begin, std::size_t end);
    void writeBytes(std::uint64_t offset, const std::uint8_t* bytes, std::size_t count);
    void markClean(Page& page);
    std::size_t readBytes(std::uint64_t offset, std::uint8_t* bytes, std::size_t count);

    std::unique_ptr<base::RandomAccessFile> file_;
    const Format& format_;
    std::string path_;
    std::size_t capacity_;
    References* references_ = nullptr;
    std::uint32_t pageCount_ = 0;
    std::uint32_t storedPages_ = 0;
    std::uint64_t trailingBytes_ = 0;
    std::vector<std::unique_ptr<Page>> frames_;
    std::vector<Page*> spare_;
    std::unordered_map<std::uint32_t, Page*> byNumber_;
    Page* newest_ = nullptr;
    Page* oldest_ = nullptr;
    std::vector<bool> fresh_;
    std::size_t dirtyPages_ = 0;
    std::uint64_t versionCounter_ = 0;
    bool referencesPending_ = false;
    bool unsynced_ = false;
    bool growing_ = false;
    std::vector<std::uint8_t> transfer_;
};

}  // namespace jet
