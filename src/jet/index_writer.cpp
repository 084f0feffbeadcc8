#include "jet/index_writer.h"

#include <algorithm>

#include "base/failure.h"
#include "jet/bytes.h"
#include "jet/damage.h"

namespace jet {

namespace {

constexpr int deepest = 16;
constexpr std::size_t rowBytes = 4;
constexpr std::size_t childBytes = 4;

std::uint32_t childOf(std::string_view entry) {
    return get32BigEndian(asBytes(entry).data() + entry.size() - childBytes);
}

}  // namespace

IndexWriter::IndexWriter(PageFile& pages, const Table& table, std::size_t index)
    : pages_(pages), table_(table), root_(table.stored().indexes[index].rootPage) {}

void IndexWriter::readPage(std::uint32_t number, IndexPage& page) const {
    const PageHandle handle = pages_.read(number);
    if (!IndexPage::read(pages_.format(), handle.bytes(), page)) {
        failDamaged(number, "it should be a page of an index of " + table_.stored().name);
    }
}

std::uint32_t IndexWriter::findLeaf(std::string_view entry, IndexPage& leaf) const {
    std::uint32_t number = root_;
    for (int depth = 0;; ++depth) {
        readPage(number, leaf);
        if (leaf.leaf) {
            return number;
        }
        if (depth > deepest) {
            failDamaged(number, "the index of " + table_.stored().name + " has no end");
        }
        const auto child = std::lower_bound(leaf.entries.begin(), leaf.entries.end(), entry);
        number = child == leaf.entries.end() ? leaf.tail : childOf(*child);
    }
}

bool IndexWriter::hasRoom(std::string_view key, std::size_t more) const {
    IndexPage leaf;
    findLeaf(key, leaf);
    leaf.entries.insert(leaf.entries.end(), 1 + more, IndexPage::leafEntry(key, {}));
    return leaf.fits(pages_.format());
}

void IndexWriter::add(std::string_view key, RowPointer row) {
    const std::string entry = IndexPage::leafEntry(key, row);
    IndexPage leaf;
    const std::uint32_t number = findLeaf(entry, leaf);
    leaf.entries.insert(std::lower_bound(leaf.entries.begin(), leaf.entries.end(), entry), entry);
    if (!leaf.fits(pages_.format())) {
        throw base::EngineFailure(base::EngineFault::Full, pages_.path() + ": an index of " +
                                                               table_.stored().name +
                                                               " has no room for another entry");
    }
    const PageHandle page = pages_.read(number);
    leaf.write(pages_.format(), page.bytes());
    pages_.changed(*page);
}

RowSet IndexWriter::rows() const {
    PageSet visited;
    RowSet rows;
    collect(root_, visited, rows);
    return rows;
}

void IndexWriter::collect(std::uint32_t number, PageSet& visited, RowSet& rows) const {
    // Read first: it fails for a number beyond the file, which would make the set a huge one.
    IndexPage page;
    readPage(number, page);
    if (!visited.insert(number)) {
        failDamaged(number, "an index of " + table_.stored().name + " leads to it twice");
    }
    for (const std::string& entry : page.entries) {
        if (page.leaf) {
            const std::uint8_t* const row = asBytes(entry).data() + entry.size() - rowBytes;
            rows.insert({get24BigEndian(row), row[3]});
        } else if (page.level > 0 && page.level <= deepest) {
            collect(childOf(entry), visited, rows);
        }
    }
    if (!page.leaf && page.tail != 0 && page.level > 0 && page.level <= deepest) {
        collect(page.tail, visited, rows);
    }
}

}  // namespace jet
