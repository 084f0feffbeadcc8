#include "jet/property_block.h"

#include <algorithm>

#include "jet/bytes.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

constexpr std::string_view jet3Mark{"KKD\0", 4};
constexpr std::string_view jet4Mark{"MR2\0", 4};
constexpr std::uint16_t namesKind = 0x80;
constexpr std::uint16_t columnKind = 1;
constexpr std::uint8_t yes = 0xFF;
constexpr std::string_view allowZeroLength = "AllowZeroLength";
constexpr std::string_view required = "Required";
constexpr std::size_t blockHeader = 6;
constexpr std::size_t entryHeader = 8;

bool isText(const Field& field) {
    return field.type == DataType::Text || field.type == DataType::Memo;
}

std::string block(std::uint16_t kind, std::string_view content) {
    ByteWriter out;
    out.u32(static_cast<std::uint32_t>(blockHeader + content.size())).u16(kind).raw(content);
    return std::move(out.bytes());
}

class Builder {
  public:
    Builder(const Format& format, const TableDefinition& table) : format_(format), table_(table) {}

    std::string build() {
        std::string columns;
        for (const Field& field : table_.fields) {
            columns += column(field);
        }
        ByteWriter names;
        for (const std::string_view name : names_) {
            writeName(names, name);
        }
        return std::string(format_.isJet4() ? jet4Mark : jet3Mark) +
               block(namesKind, names.bytes()) + columns;
    }

  private:
    void writeName(ByteWriter& out, std::string_view name) const {
        const std::string stored = encodedName(format_, name);
        out.u16(static_cast<std::uint32_t>(stored.size())).raw(stored);
    }

    std::string column(const Field& field) {
        const std::string name = encodedName(format_, field.name);
        ByteWriter out;
        out.u32(static_cast<std::uint32_t>(blockHeader + name.size()));
        out.u16(static_cast<std::uint32_t>(name.size())).raw(name);
        if (isText(field)) {
            writeTruth(out, allowZeroLength, field.allowZeroLength);
        }
        writeTruth(out, required, field.required);
        return block(columnKind, out.bytes());
    }

    void writeTruth(ByteWriter& out, std::string_view property, bool value) {
        out.u16(entryHeader + 1).u8(1).u8(static_cast<std::uint32_t>(DataType::Boolean));
        out.u16(placeOf(property)).u16(1).u8(value ? yes : 0u);
    }

    /// Names are listed in the order of their first use.
    std::uint32_t placeOf(std::string_view property) {
        auto found = std::find(names_.begin(), names_.end(), property);
        if (found == names_.end()) {
            found = names_.insert(names_.end(), property);
        }
        return static_cast<std::uint32_t>(found - names_.begin());
    }

    const Format& format_;
    const TableDefinition& table_;
    std::vector<std::string_view> names_;
};

class Reader {
  public:
    Reader(const Format& format, TableDefinition& table) : format_(format), table_(table) {}

    bool read(std::string_view bytes) {
        ByteReader reader(asBytes(bytes));
        const std::string_view mark = asText(reader.take(jet4Mark.size()));
        if (mark != jet4Mark && mark != jet3Mark) {
            return false;
        }
        while (reader.remaining() > 0 && !reader.failed()) {
            const std::uint32_t length = reader.u32();
            const std::uint16_t kind = reader.u16();
            if (length < blockHeader) {
                return false;
            }
            const ByteSpan content = reader.take(length - blockHeader);
            if (reader.failed() || !readBlock(kind, content)) {
                return false;
            }
        }
        return !reader.failed();
    }

  private:
    bool readBlock(std::uint16_t kind, ByteSpan content) {
        if (kind == namesKind) {
            return readNames(ByteReader(content));
        }
        return kind != columnKind || readColumn(ByteReader(content));
    }

    bool readNames(ByteReader reader) {
        while (reader.remaining() > 0 && !reader.failed()) {
            names_.push_back(decodedName(format_, asText(reader.take(reader.u16()))));
        }
        return !reader.failed();
    }

    bool readColumn(ByteReader reader) {
        reader.skip(4);
        const std::string name = decodedName(format_, asText(reader.take(reader.u16())));
        const int position = table_.find(name);
        while (reader.remaining() > 0 && !reader.failed()) {
            const std::uint16_t length = reader.u16();
            if (length < entryHeader) {
                return false;
            }
            ByteReader entry(reader.take(length - 2u));
            entry.skip(1);
            const auto type = static_cast<DataType>(entry.u8());
            const std::uint16_t nameIndex = entry.u16();
            const ByteSpan value = entry.take(entry.u16());
            if (entry.failed() || reader.failed()) {
                return false;
            }
            if (position >= 0 && nameIndex < names_.size() && type == DataType::Boolean) {
                set(table_.fields[static_cast<std::size_t>(position)], names_[nameIndex],
                    !value.empty() && value[0] != 0);
            }
        }
        return !reader.failed();
    }

    static void set(Field& field, std::string_view property, bool value) {
        if (property == allowZeroLength) {
            field.allowZeroLength = value;
        } else if (property == required) {
            field.required = value;
        }
    }

    const Format& format_;
    TableDefinition& table_;
    std::vector<std::string> names_;
};

}  // namespace

std::string PropertyBlock::build(const Format& format, const TableDefinition& table) {
    return Builder(format, table).build();
}

bool PropertyBlock::apply(const Format& format, std::string_view block, TableDefinition& table) {
    return Reader(format, table).read(block);
}

}  // namespace jet
