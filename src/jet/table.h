#pragma once

#include <cstdint>
#include <vector>

#include "jet/bytes.h"
#include "jet/data_page.h"
#include "jet/long_values.h"
#include "jet/page_file.h"
#include "jet/stored_table.h"
#include "jet/usage_map.h"

namespace jet {

class DatabaseFile;

/// The rows of one table in one open file; every recordset on the table works on the one object.
/// Rows are bytes here; what they mean is the business of RowView and RowBuilder.
///
/// A row is named by its home place, which never changes. A row that no longer fits its page is
/// stored on another one and its home place keeps a pointer.
class Table {
  public:
    Table(DatabaseFile& file, StoredTable stored);
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    const StoredTable& stored() const { return stored_; }
    LongValues& longValues() { return longValues_; }
    bool hasIndexes() const { return !stored_.indexes.empty(); }
    /// Rows as the table counts them; counted anew where a program ended in the middle of a change.
    std::int64_t rowCount();

    /// The first page of the table from `from` on; PageSet::none after the last.
    std::uint32_t nextPage(std::uint32_t from) const { return owned_.pages().next(from); }
    bool ownsPage(std::uint32_t page) const { return owned_.contains(page); }
    /// Pages in a row that the table owns from `page` on, at most `limit`.
    std::uint32_t runLength(std::uint32_t page, std::uint32_t limit) const;
    /// Finds the bytes of the row whose home is `home`: `page` pins them. False when there is no
    /// such row (any more).
    bool locate(RowPointer home, PageHandle& page, ByteSpan& row) const;

    /// Must precede the first change: takes the lock, refuses read-only files and tables with
    /// indexes (unless `keepsIndexes`), and mends what an interrupted change has left behind.
    void beginChange(bool keepsIndexes = false);
    RowPointer insert(ByteSpan row);
    void update(RowPointer home, ByteSpan row);
    void erase(RowPointer home);
    std::uint32_t nextAutoNumber() { return ++stored_.lastAutoNumber; }
    void noteAutoNumber(std::uint32_t number);
    /// One key more in an index, for its counter.
    void noteIndexEntry(std::size_t index) { ++stored_.indexes[index].entriesEver; }

    // The steps of a flush; see DatabaseFile.
    template <typename Function>
    void forEachMap(Function function) {
        function(owned_);
        function(freeSpace_);
        longValues_.forEachMap(function);
    }
    void applyDeferredErases();
    /// Puts row count and counters into the definition's first page and writes it. With `finished`
    /// the mark of an interrupted change goes too.
    void writeDefinition(bool finished);
    bool isChanging() const { return changing_; }
    /// True when the definition bears the mark of an interrupted change.
    bool wasInterrupted() const { return interrupted_; }
    /// True when a change of the table was cut short: the mark says so, or, in Jet 3, the count of
    /// rows.
    bool wasCutShort() { return interrupted_ || (!changing_ && countRows() != stored_.rowCount); }
    /// Whether the first page of a definition bears that mark.
    static bool bearsMark(const Format& format, const std::uint8_t* definition);
    /// Counts the rows, finds the last autonumber and removes moved rows that nothing refers to.
    void mend();
    void loadMaps() { longValues_.loadMaps(); }

  private:
    static constexpr std::uint32_t markOffset = 28;  ///< Jet 4: twelve bytes that nobody reads

    std::int64_t countRows() const;
    void setMark(bool on);
    void noteAutoNumber(ByteSpan row, const StoredColumn& numbers);
    PageHandle readDataPage(std::uint32_t number) const;
    PageHandle choosePage(std::size_t length);
    PageHandle chooseFreshPage(std::size_t length);
    PageHandle addPage();
    void move(RowPointer home, PageHandle& homePage, ByteSpan row);
    void eraseAt(RowPointer place);
    void releaseIfEmpty(PageHandle& page);

    DatabaseFile& file_;
    StoredTable stored_;
    UsageMap owned_;
    UsageMap freeSpace_;
    LongValues longValues_;
    std::uint32_t insertPage_ = 0;
    std::uint64_t insertVersion_ = 0;  ///< of that page after the last insert
    std::vector<RowPointer> deferredErases_;
    bool changing_ = false;
    bool interrupted_ = false;
};

}  // namespace jet
