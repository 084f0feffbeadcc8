#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "jet/bytes.h"
#include "jet/format.h"
#include "jet/page_file.h"
#include "jet/page_set.h"

namespace jet {

/// A set of pages as the file keeps it: a bitmap in one row of a data page. The lowest page is bit
/// 0 of the first byte.
///
///     inline    00, u32 first page (a multiple of 8), bitmap to the end of the row
///     indirect  01, then u32 numbers of map pages (05 01 00 00 and a bitmap of the rest of the
///     page);
///               entry k covers pages k*N to k*N+N-1 with N = (page size - 4) * 8; 0: no page
///
/// The map is held in memory and reaches the file with fill() and write(). The map of free pages
/// differs: there a set bit says that the page is free, and pages beyond the end of the bitmap are
/// free.
class UsageMap {
  public:
    enum class Meaning { Used, FreePages };
    using AllocatePage = std::function<std::uint32_t()>;

    UsageMap() = default;
    /// Reads the map that stands at `place`. Pages outside the file are left out. A row that is no
    /// map is a Damaged failure.
    static UsageMap read(PageFile& pages, RowPointer place, Meaning meaning);

    const PageSet& pages() const { return set_; }
    /// For Meaning::FreePages the set holds the pages that are *not* free.
    bool contains(std::uint32_t page) const { return set_.contains(page); }
    void add(std::uint32_t page) { changed_ |= set_.insert(page); }
    void remove(std::uint32_t page) { changed_ |= set_.erase(page); }
    bool isChanged() const { return changed_; }
    RowPointer place() const { return place_; }
    /// Pages that hold the bitmap of an indirect map.
    const std::vector<std::uint32_t>& mapPages() const { return mapPages_; }

    /// Decides how the map will be stored and allocates the map pages that this takes, which
    /// changes the map of free pages: that one is prepared last.
    void prepare(PageFile& pages, const AllocatePage& allocate);
    /// Puts the changed map into its pages in memory. Map pages allocated by prepare() are fresh
    /// pages.
    void fill(PageFile& pages);
    /// Writes the pages that fill() has changed, the row that names the map pages last.
    void write(PageFile& pages);

  private:
    void readInline(ByteSpan row, std::uint32_t pageCount);
    void readIndirect(PageFile& pages, ByteSpan row);
    void addBits(ByteSpan bitmap, std::uint32_t firstPage, std::uint32_t pageCount);
    bool fitsInline(std::size_t rowLength, std::uint32_t& start) const;
    void prepareFreePages(PageFile& pages, const AllocatePage& allocate);
    void becomeIndirect();
    void allocateMapPages(PageFile& pages, const AllocatePage& allocate);
    void fillBitmap(std::uint8_t* bitmap, std::size_t bytes, std::uint32_t firstPage) const;
    void fillMapPages(PageFile& pages);
    void fillRow(PageFile& pages, ByteSpan row) const;

    RowPointer place_;
    Meaning meaning_ = Meaning::Used;
    PageSet set_;
    bool changed_ = false;
    bool filled_ = false;
    bool indirect_ = false;
    std::uint32_t start_ = 0;    ///< first page of an inline map
    std::size_t rowLength_ = 0;  ///< length of the row, as it will be stored
    std::vector<std::uint32_t> mapPages_;
};

}  // namespace jet
