#include "jet/stored_table.h"

#include <algorithm>
#include <cstring>

#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

constexpr std::uint32_t chainHeader = 8;
constexpr std::uint8_t fixedFlag = 0x01;
constexpr std::uint8_t autoNumberFlag = 0x04;
constexpr std::uint8_t compressedFlag = 0x01;
constexpr std::uint16_t noColumn = 0xFFFF;
constexpr std::uint32_t indexColumns = 10;
constexpr std::uint16_t maximumColumns = 255;
constexpr std::uint32_t maximumIndexes = 1000;
constexpr std::uint16_t generalLanguage = 0x0409;
constexpr std::uint16_t westernCodePage = 1252;
constexpr std::uint32_t definitionMark = 0x0659;
constexpr std::uint32_t realIndexMark = 0x0783;

/// Collects the byte string of a definition and the numbers of its pages.
std::vector<std::uint8_t> readChain(PageFile& pages, std::uint32_t first,
                                    std::vector<std::uint32_t>& chain) {
    std::vector<std::uint8_t> bytes;
    const std::uint32_t pageSize = pages.format().pageSize;
    for (std::uint32_t number = first; number != 0;) {
        if (std::find(chain.begin(), chain.end(), number) != chain.end()) {
            failDamaged(number, "the pages of a table definition form a loop");
        }
        const PageHandle page = pages.read(number);
        if (get16(page.bytes()) != 0x0102) {
            failDamaged(number, "it should hold a table definition");
        }
        const std::uint32_t skip = chain.empty() ? 0 : chainHeader;
        bytes.insert(bytes.end(), page.bytes() + skip, page.bytes() + pageSize);
        chain.push_back(number);
        number = get32(page.bytes() + 4);
        if (bytes.size() > StoredTable::maximumBytes) {
            failDamaged(first, "the table definition is longer than any can be");
        }
    }
    return bytes;
}

/// Parses the byte string of a definition; one function for each of its sections.
class DefinitionReader {
  public:
    DefinitionReader(const Format& format, ByteSpan bytes, StoredTable& table)
        : format_(format), bytes_(bytes), reader_(bytes), table_(table) {}

    void readAll() {
        readHeader();
        readCounters();
        readDescriptors();
        for (StoredColumn& column : table_.columns) {
            column.field.name = readName();
        }
        readRealIndexes();
        readLogicalIndexes();
        for (StoredIndexName& index : table_.indexNames) {
            index.name = readName();
        }
        readLongValueMaps();
        if (reader_.failed()) {
            fail("the table definition ends too early");
        }
        std::sort(table_.columns.begin(), table_.columns.end(),
                  [](const auto& left, const auto& right) { return left.number < right.number; });
        check();
    }

  private:
    [[noreturn]] void fail(const std::string& cause) const { failDamaged(table_.page(), cause); }

    void readHeader() {
        const std::uint8_t* const at = bytes_.data();
        const std::uint32_t length = get32(at + chainHeader);
        if (length > bytes_.size() || length < format_.definitionHeader) {
            fail("the table definition says it is " + std::to_string(length) + " bytes long");
        }
        reader_ = ByteReader(bytes_.first(length));
        table_.rowCount = get32(at + format_.rowCountOffset);
        table_.lastAutoNumber = get32(at + format_.autoNumberOffset);
        reader_.skip(format_.tableTypeOffset);
        table_.type = reader_.u8();
        table_.columnsEver = reader_.u16();
        table_.variableEver = reader_.u16();
        columnCount_ = reader_.u16();
        logicalCount_ = reader_.u32();
        realCount_ = reader_.u32();
        table_.ownedMap = RowPointer::fromStored(reader_.u32());
        table_.freeMap = RowPointer::fromStored(reader_.u32());
        if (columnCount_ > maximumColumns || realCount_ > maximumIndexes ||
            logicalCount_ > maximumIndexes) {
            fail("the table definition has more columns or indexes than any can have");
        }
    }

    void readCounters() {
        for (std::uint32_t i = 0; i < realCount_; ++i) {
            ByteReader counter(reader_.take(format_.indexCounter));
            counter.skip(4);
            table_.indexes.push_back({});
            table_.indexes.back().entriesEver = counter.u32();
        }
    }

    void readDescriptors() {
        for (std::uint32_t i = 0; i < columnCount_; ++i) {
            const ByteSpan descriptor = reader_.take(format_.columnDescriptor);
            if (descriptor.empty()) {
                return;
            }
            table_.columns.push_back(format_.isJet4() ? jet4Column(descriptor.data())
                                                      : jet3Column(descriptor.data()));
        }
    }

    static StoredColumn jet3Column(const std::uint8_t* at) {
        StoredColumn column;
        column.number = get16(at + 1);
        column.variableIndex = get16(at + 3);
        column.flags = at[13];
        column.fixedOffset = get16(at + 14);
        column.length = get16(at + 16);
        describe(column, at[0], column.length, at[11], at[12]);
        return column;
    }

    static StoredColumn jet4Column(const std::uint8_t* at) {
        StoredColumn column;
        column.number = get16(at + 5);
        column.variableIndex = get16(at + 7);
        column.flags = at[15];
        column.compressed = (at[16] & compressedFlag) != 0;
        column.fixedOffset = get16(at + 21);
        column.length = get16(at + 23);
        const int halves = at[0] == static_cast<int>(DataType::Text) ? 2 : 1;
        describe(column, at[0], column.length / halves, at[11], at[12]);
        return column;
    }

    static void describe(StoredColumn& column, std::uint8_t type, int size, std::uint8_t precision,
                         std::uint8_t scale) {
        column.fixed = (column.flags & fixedFlag) != 0;
        column.field.type = static_cast<DataType>(type);
        column.field.size = size;
        column.field.autoNumber = (column.flags & autoNumberFlag) != 0;
        if (column.field.type == DataType::Numeric) {
            column.field.precision = precision;
            column.field.scale = scale;
        }
    }

    std::string readName() {
        const std::size_t length = format_.isJet4() ? reader_.u16() : reader_.u8();
        return decodedName(format_, asText(reader_.take(length)));
    }

    void readRealIndexes() {
        for (StoredIndex& index : table_.indexes) {
            reader_.skip(format_.isJet4() ? 4 : 0);
            for (std::uint32_t i = 0; i < indexColumns; ++i) {
                const std::uint16_t number = reader_.u16();
                const bool ascending = reader_.u8() == 1;
                if (number != noColumn) {
                    index.columns.emplace_back(number, ascending);
                }
            }
            index.map = RowPointer::fromStored(reader_.u32());
            index.rootPage = reader_.u32();
            reader_.skip(format_.isJet4() ? 4 : 0);
            index.flags = reader_.u8();
            reader_.skip(format_.isJet4() ? 5 : 0);
        }
    }

    void readLogicalIndexes() {
        for (std::uint32_t i = 0; i < logicalCount_; ++i) {
            reader_.skip(format_.isJet4() ? 4 : 0);
            StoredIndexName index;
            index.number = reader_.u32();
            index.realIndex = reader_.u32();
            reader_.skip(11);
            index.kind = reader_.u8();
            reader_.skip(format_.isJet4() ? 4 : 0);
            table_.indexNames.push_back(std::move(index));
        }
    }

    void readLongValueMaps() {
        while (!reader_.failed()) {
            const std::uint16_t number = reader_.u16();
            if (number == noColumn) {
                return;
            }
            const RowPointer owned = RowPointer::fromStored(reader_.u32());
            const RowPointer free = RowPointer::fromStored(reader_.u32());
            for (StoredColumn& column : table_.columns) {
                if (column.number == number) {
                    column.ownedMap = owned;
                    column.freeMap = free;
                }
            }
        }
    }

    void check() const {
        for (std::size_t i = 0; i < table_.columns.size(); ++i) {
            const StoredColumn& column = table_.columns[i];
            if (i > 0 && table_.columns[i - 1].number == column.number) {
                fail("two columns have the number " + std::to_string(column.number));
            }
            if (column.number >= table_.columnsEver || column.number >= maximumColumns) {
                fail("column " + column.field.name + " has the number " +
                     std::to_string(column.number));
            }
            if (!column.fixed && column.field.type != DataType::Boolean &&
                column.variableIndex >= table_.variableEver) {
                fail("column " + column.field.name + " has no place in the rows");
            }
            const DataType type = column.field.type;
            const std::uint16_t size = fixedSizeOf(type);
            if (column.fixed && type != DataType::Boolean &&
                (isLongValue(type) || (size != 0 && column.length != size))) {
                fail("column " + column.field.name + " has a length of " +
                     std::to_string(column.length) + " bytes");
            }
            if (column.fixed && column.fixedOffset + column.length > format_.pageSize) {
                fail("column " + column.field.name + " lies outside the rows");
            }
        }
    }

    const Format& format_;
    ByteSpan bytes_;
    ByteReader reader_;
    StoredTable& table_;
    std::uint32_t columnCount_ = 0;
    std::uint32_t logicalCount_ = 0;
    std::uint32_t realCount_ = 0;
};

/// The other direction, section by section.
class DefinitionWriter {
  public:
    DefinitionWriter(const Format& format, const StoredTable& table,
                     const std::vector<std::size_t>& order)
        : format_(format), table_(table), order_(order) {}

    std::string writeAll() {
        writeHeader();
        for (const StoredIndex& index : table_.indexes) {
            out_.u32(0).u32(index.entriesEver).zeros(format_.indexCounter - 8);
        }
        for (const std::size_t position : order_) {
            writeDescriptor(table_.columns[position]);
        }
        for (const std::size_t position : order_) {
            writeName(table_.columns[position].field.name);
        }
        for (const StoredIndex& index : table_.indexes) {
            writeRealIndex(index);
        }
        for (const StoredIndexName& index : table_.indexNames) {
            writeLogicalIndex(index);
        }
        for (const StoredIndexName& index : table_.indexNames) {
            writeName(index.name);
        }
        writeLongValueMaps();
        out_.u16(noColumn);
        put32(reinterpret_cast<std::uint8_t*>(out_.bytes().data()) + chainHeader,
              static_cast<std::uint32_t>(out_.size()));
        return std::move(out_.bytes());
    }

  private:
    bool isSystem() const { return table_.type == StoredTable::systemTable; }

    void writeHeader() {
        out_.zeros(chainHeader).u32(0);
        if (format_.isJet4()) {
            out_.u32(definitionMark);
        }
        out_.u32(table_.rowCount).u32(table_.lastAutoNumber);
        if (format_.isJet4()) {
            out_.u32(1).zeros(12);
        }
        out_.u8(table_.type).u16(table_.columnsEver).u16(table_.variableEver);
        out_.u16(static_cast<std::uint32_t>(table_.columns.size()));
        out_.u32(static_cast<std::uint32_t>(table_.indexNames.size()));
        out_.u32(static_cast<std::uint32_t>(table_.indexes.size()));
        out_.u32(table_.ownedMap.stored()).u32(table_.freeMap.stored());
    }

    void writeDescriptor(const StoredColumn& column) {
        const bool jet4 = format_.isJet4();
        const std::uint32_t position = isSystem() ? 0 : column.number;
        out_.u8(static_cast<std::uint32_t>(column.field.type));
        if (jet4) {
            out_.u32(definitionMark);
        }
        out_.u16(column.number).u16(column.variableIndex).u16(position);
        if (!jet4) {
            out_.u16(0);
        }
        const bool numeric = column.field.type == DataType::Numeric;
        const std::uint32_t places = column.field.precision | column.field.scale << 8;
        out_.u16(numeric && jet4 ? places : generalLanguage);
        out_.u16(numeric && !jet4 ? places : jet4 ? 0u : westernCodePage);
        out_.u8(column.flags);
        if (jet4) {
            out_.u8(column.compressed ? compressedFlag : 0u).u32(0);
        }
        out_.u16(column.fixedOffset).u16(column.length);
    }

    void writeName(const std::string& name) {
        const std::string stored = encodedName(format_, name);
        const auto length = static_cast<std::uint32_t>(stored.size());
        format_.isJet4() ? out_.u16(length) : out_.u8(length);
        out_.raw(stored);
    }

    void writeRealIndex(const StoredIndex& index) {
        const bool jet4 = format_.isJet4();
        if (jet4) {
            out_.u32(realIndexMark);
        }
        for (std::uint32_t i = 0; i < indexColumns; ++i) {
            const bool used = i < index.columns.size();
            out_.u16(used ? index.columns[i].first : noColumn);
            out_.u8(used && index.columns[i].second ? 1 : 0);
        }
        out_.u32(index.map.stored()).u32(index.rootPage).zeros(jet4 ? 4 : 0);
        out_.u8(index.flags).zeros(jet4 ? 5 : 0);
    }

    void writeLogicalIndex(const StoredIndexName& index) {
        const bool jet4 = format_.isJet4();
        if (jet4) {
            out_.u32(definitionMark);
        }
        out_.u32(index.number).u32(index.realIndex);
        out_.u8(0).u32(0xFFFFFFFF).u32(0).u8(4).u8(4).u8(index.kind);
        out_.zeros(jet4 ? 4 : 0);
    }

    /// They stand in the order of the column names.
    void writeLongValueMaps() {
        std::vector<const StoredColumn*> columns;
        for (const StoredColumn& column : table_.columns) {
            if (isLongValue(column.field.type)) {
                columns.push_back(&column);
            }
        }
        std::sort(columns.begin(), columns.end(), [](const auto* left, const auto* right) {
            return left->field.name < right->field.name;
        });
        for (const StoredColumn* column : columns) {
            out_.u16(column->number).u32(column->ownedMap.stored()).u32(column->freeMap.stored());
        }
    }

    const Format& format_;
    const StoredTable& table_;
    const std::vector<std::size_t>& order_;
    ByteWriter out_;
};

}  // namespace

std::uint32_t StoredTable::fixedAreaSize() const {
    std::uint32_t size = 0;
    for (const StoredColumn& column : columns) {
        if (column.fixed && column.field.type != DataType::Boolean) {
            size = std::max<std::uint32_t>(size, column.fixedOffset + column.length);
        }
    }
    return size;
}

TableDefinition StoredTable::definition() const {
    TableDefinition definition;
    definition.name = name;
    for (const StoredColumn& column : columns) {
        definition.fields.push_back(column.field);
    }
    for (const StoredIndexName& index : indexNames) {
        definition.indexes.push_back(index.name);
    }
    return definition;
}

StoredTable StoredTable::read(PageFile& pages, std::uint32_t page, const std::string& name) {
    StoredTable table;
    table.name = name;
    const std::vector<std::uint8_t> bytes = readChain(pages, page, table.pages);
    if (table.pages.empty()) {
        failDamaged(page, "it should hold a table definition");
    }
    DefinitionReader(pages.format(), bytes, table).readAll();
    return table;
}

std::string StoredTable::build(const Format& format, const std::vector<std::size_t>& order) const {
    return DefinitionWriter(format, *this, order).writeAll();
}

void StoredTable::fillPage(const Format& format, std::uint8_t* page, std::string_view part,
                           bool first, std::uint32_t next) {
    const std::size_t skip = first ? 0 : chainHeader;
    std::memset(page, 0, format.pageSize);
    std::memcpy(page + skip, part.data(), part.size());
    put16(page, 0x0102);
    // Jet 3 has the letters "VC" where Jet 4 counts the free bytes, less eight.
    const std::size_t used = skip + part.size() + chainHeader;
    put16(page + 2, !format.isJet4()          ? 0x4356u
                    : used >= format.pageSize ? 0u
                                              : static_cast<std::uint32_t>(format.pageSize - used));
    put32(page + 4, next);
}

void StoredTable::place(PageFile& file, const std::string& bytes) const {
    std::string_view rest = bytes;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const std::size_t room = file.format().pageSize - (i == 0 ? 0 : chainHeader);
        const PageHandle page = file.read(pages[i]);
        fillPage(file.format(), page.bytes(), rest.substr(0, room), i == 0,
                 i + 1 < pages.size() ? pages[i + 1] : 0);
        rest.remove_prefix(std::min(room, rest.size()));
        file.changed(*page);
    }
}

}  // namespace jet
