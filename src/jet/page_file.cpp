#include "jet/page_file.h"

#include <algorithm>
#include <cstring>

#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/data_page.h"

namespace jet {

namespace {

constexpr std::size_t transferBytes = 256 * 1024;
constexpr std::size_t minimumFrames = 64;
/// Pages written at one go from which on the medium may begin with them while more are made.
constexpr std::uint64_t pagesWorthBeginning = 512;

}  // namespace

PageFile::PageFile(std::unique_ptr<base::RandomAccessFile> file, const Format& format,
                   std::string path, std::size_t cacheBytes)
    : file_(std::move(file)),
      format_(format),
      path_(std::move(path)),
      capacity_(std::max(minimumFrames, cacheBytes / format.pageSize)) {
    const std::uint64_t size = file_->size();
    const std::uint64_t pages = size / format.pageSize;
    if (pages > format.maximumPages) {
        throw base::EngineFailure(base::EngineFault::Damaged,
                                  path_ + ": the file is larger than the format allows");
    }
    pageCount_ = storedPages_ = static_cast<std::uint32_t>(pages);
    trailingBytes_ = size % format.pageSize;
}

PageFile::~PageFile() = default;

PageHandle PageFile::read(std::uint32_t number) {
    const auto known = byNumber_.find(number);
    if (known != byNumber_.end()) {
        touch(*known->second);
        return PageHandle(known->second);
    }
    if (number >= pageCount_) {
        failDamaged(number, "the file ends before it (" + std::to_string(pageCount_) + " pages)");
    }
    Page& page = takeFrame(number);
    load(page);
    return PageHandle(&page);
}

void PageFile::load(Page& page) {
    const std::uint64_t offset = std::uint64_t{page.number} * format_.pageSize;
    std::size_t got = 0;
    try {
        got =
            page.number < storedPages_ ? readBytes(offset, page.bytes.get(), format_.pageSize) : 0;
    } catch (...) {
        forget(page.number);
        throw;
    }
    // A page may be allocated and lie behind the end until it is written; it is all zeros then.
    std::memset(page.bytes.get() + got, 0, format_.pageSize - got);
}

void PageFile::prefetch(std::uint32_t first, std::uint32_t count) {
    const auto limit = static_cast<std::uint32_t>(transferBytes / format_.pageSize);
    count = std::min({count, limit, static_cast<std::uint32_t>(capacity_ / 4)});
    if (first >= storedPages_) {
        return;
    }
    count = std::min(count, storedPages_ - first);
    transfer_.resize(transferBytes);
    const std::size_t got = readBytes(std::uint64_t{first} * format_.pageSize, transfer_.data(),
                                      std::size_t{count} * format_.pageSize);
    for (std::uint32_t i = 0; i < got / format_.pageSize; ++i) {
        if (byNumber_.contains(first + i)) {
            continue;
        }
        Page* const frame = findEvictable();
        if (frame == nullptr && frames_.size() >= capacity_ && spare_.empty()) {
            return;  // making room would write, and use the transfer buffer
        }
        Page& page = takeFrame(first + i);
        std::memcpy(page.bytes.get(), transfer_.data() + std::size_t{i} * format_.pageSize,
                    format_.pageSize);
    }
}

PageHandle PageFile::create(std::uint32_t number) {
    const auto known = byNumber_.find(number);
    Page& page = known != byNumber_.end() ? *known->second : takeFrame(number);
    PageHandle handle(&page);
    std::memset(page.bytes.get(), 0, format_.pageSize);
    page.squeezePending = false;
    page.liveRows = -1;
    if (number >= fresh_.size()) {
        fresh_.resize(std::max<std::size_t>(number + 1, fresh_.size() + fresh_.size() / 2), false);
    }
    fresh_[number] = true;
    reserve(number);
    changed(page);
    return handle;
}

void PageFile::changed(Page& page) {
    page.version = ++versionCounter_;
    if (!page.dirty) {
        page.dirty = true;
        ++dirtyPages_;
    }
}

void PageFile::markClean(Page& page) {
    if (page.dirty) {
        page.dirty = false;
        --dirtyPages_;
    }
}

void PageFile::forget(std::uint32_t number) {
    const auto known = byNumber_.find(number);
    if (known == byNumber_.end()) {
        return;
    }
    Page& page = *known->second;
    markClean(page);
    page.version = ++versionCounter_;
    if (page.pins == 0) {
        byNumber_.erase(known);
        unlink(page);
        spare_.push_back(&page);
    }
}

Page& PageFile::takeFrame(std::uint32_t number) {
    Page* frame = nullptr;
    if (!spare_.empty()) {
        frame = spare_.back();
        spare_.pop_back();
    } else if (frames_.size() < capacity_) {
        frame = &addFrame();
    } else {
        frame = findEvictable();
        if (frame == nullptr && !growing_) {
            makeRoom();
            frame = findEvictable();
        }
        if (frame == nullptr) {
            frame = &addFrame();
        } else {
            byNumber_.erase(frame->number);
            unlink(*frame);
        }
    }
    frame->number = number;
    frame->version = ++versionCounter_;
    frame->squeezePending = false;
    frame->liveRows = -1;
    byNumber_.emplace(number, frame);
    link(*frame);
    return *frame;
}

Page& PageFile::addFrame() {
    frames_.push_back(std::make_unique<Page>());
    frames_.back()->bytes = std::make_unique<std::uint8_t[]>(format_.pageSize);
    return *frames_.back();
}

/// The page used longest ago that is neither pinned nor changed. Only the far end of the order is
/// looked at: where it is full of changed pages it is time to write them.
Page* PageFile::findEvictable() {
    int steps = 0;
    for (Page* page = oldest_; page != nullptr && steps < 32; page = page->newer, ++steps) {
        if (page->pins == 0 && !page->dirty) {
            return page;
        }
    }
    return nullptr;
}

void PageFile::makeRoom() {
    writeFreshPages();
    if (findEvictable() != nullptr) {
        return;
    }
    if (referencesPending_ && references_ != nullptr) {
        references_->secureReferences();
    }
    writeOldPages();
}

void PageFile::touch(Page& page) {
    if (newest_ != &page) {
        unlink(page);
        link(page);
    }
}

void PageFile::link(Page& page) {
    page.older = newest_;
    page.newer = nullptr;
    (newest_ != nullptr ? newest_->newer : oldest_) = &page;
    newest_ = &page;
}

void PageFile::unlink(Page& page) {
    (page.newer != nullptr ? page.newer->older : newest_) = page.older;
    (page.older != nullptr ? page.older->newer : oldest_) = page.newer;
    page.newer = page.older = nullptr;
}

PageFile::Which PageFile::groupOf(const Page& page) const {
    if (isFresh(page.number) || get32(page.bytes.get() + 4) == longValueOwner) {
        return Which::Fresh;
    }
    const auto kind = static_cast<PageKind>(page.bytes[0]);
    return kind == PageKind::IndexLeaf || kind == PageKind::IndexNode ? Which::Index : Which::Old;
}

void PageFile::writeFreshPages() { writePages(Which::Fresh); }

void PageFile::writeOldPages() {
    writePages(Which::Old);
    const bool indexes = std::any_of(frames_.begin(), frames_.end(), [this](const auto& frame) {
        return frame->dirty && groupOf(*frame) == Which::Index;
    });
    if (indexes) {
        sync();
        writePages(Which::Index);
    }
}

void PageFile::writePages(Which which) {
    if (dirtyPages_ == 0) {
        return;
    }
    std::vector<Page*> pages;
    for (const auto& frame : frames_) {
        if (frame->dirty && groupOf(*frame) == which) {
            pages.push_back(frame.get());
        }
    }
    std::sort(pages.begin(), pages.end(),
              [](const Page* left, const Page* right) { return left->number < right->number; });
    const std::size_t runLimit = transferBytes / format_.pageSize;
    std::uint64_t written = 0;
    for (std::size_t begin = 0; begin < pages.size();) {
        std::size_t end = begin + 1;
        while (end < pages.size() && end - begin < runLimit &&
               pages[end]->number == pages[end - 1]->number + 1) {
            ++end;
        }
        writeRun(pages, begin, end);
        written += end - begin;
        begin = end;
    }
    if (written >= pagesWorthBeginning) {
        const std::uint64_t first = pages.front()->number;
        const std::uint64_t last = pages.back()->number;
        file_->beginSync(first * format_.pageSize, (last - first + 1) * format_.pageSize);
    }
}

/// Neighbouring pages leave in one write.
void PageFile::writeRun(const std::vector<Page*>& pages, std::size_t begin, std::size_t end) {
    transfer_.resize(transferBytes);
    for (std::size_t i = begin; i < end; ++i) {
        if (pages[i]->squeezePending) {
            DataPage(format_, *pages[i]).squeeze();
            pages[i]->version = ++versionCounter_;
        }
        std::memcpy(transfer_.data() + (i - begin) * format_.pageSize, pages[i]->bytes.get(),
                    format_.pageSize);
    }
    writeBytes(std::uint64_t{pages[begin]->number} * format_.pageSize, transfer_.data(),
               (end - begin) * format_.pageSize);
    storedPages_ = std::max(storedPages_, pages[end - 1]->number + 1);
    for (std::size_t i = begin; i < end; ++i) {
        markClean(*pages[i]);
    }
}

void PageFile::writePage(Page& page) { writeRun({&page}, 0, 1); }

void PageFile::writeBytes(std::uint64_t offset, const std::uint8_t* bytes, std::size_t count) {
    while (count > 0) {
        unsynced_ = true;
        const std::size_t written = file_->writeAt(offset, bytes, count);
        if (written == 0) {
            throw base::EngineFailure(base::EngineFault::InputOutput,
                                      path_ + ": the file takes no more bytes");
        }
        offset += written;
        bytes += written;
        count -= written;
    }
}

std::size_t PageFile::readBytes(std::uint64_t offset, std::uint8_t* bytes, std::size_t count) {
    std::size_t total = 0;
    while (total < count) {
        const std::size_t got = file_->readAt(offset + total, bytes + total, count - total);
        if (got == 0) {
            break;
        }
        total += got;
    }
    return total;
}

void PageFile::sync() {
    if (unsynced_) {
        file_->sync();
        unsynced_ = false;
    }
}

void PageFile::settle() {
    std::fill(fresh_.begin(), fresh_.end(), false);
    referencesPending_ = false;
}

}  // namespace jet
