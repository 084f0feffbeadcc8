#include "jet/recordset.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "jet/connection.h"
#include "jet/database_file.h"
#include "jet/field_codec.h"
#include "jet/filter.h"
#include "jet/row_builder.h"
#include "jet/row_scanner.h"

namespace jet {

using base::EngineFailure;
using base::EngineFault;

class Recordset::Implementation {
  public:
    Implementation(std::string_view tableName, Connection& connection, LockType lock)
        : connection_(connection),
          file_(connection.file()),
          table_(file_->table(tableName)),
          definition_(table_.stored().definition()),
          readOnly_(lock == LockType::ReadOnly),
          codec_(*file_, table_),
          scanner_(*file_, table_),
          builder_(file_->format(), table_.stored()) {
        moveFirst();
    }
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    ~Implementation() { cancelUpdate(); }

    const TableDefinition& definition() const { return definition_; }
    std::int64_t recordCount() const { return table_.rowCount(); }

    int field(std::string_view name) const {
        const int position = definition_.find(name);
        if (position < 0) {
            throw EngineFailure(EngineFault::NotFound,
                                "table " + definition_.name + " has no field " + std::string(name));
        }
        return position;
    }

    void setFilter(std::string_view condition) {
        filter_ = Filter(condition, table_.stored(), file_->format());
        moveFirst();
    }

    bool endOfFile() const { return atEnd_; }

    void moveFirst() {
        cancelUpdate();
        scanner_.rewind();
        atNewRow_ = false;
        advance();
    }

    void moveNext() {
        cancelUpdate();
        if (atEnd_) {
            fail("there is no row after the last one");
        }
        if (atNewRow_) {
            // The row added last stands where the scan has not come yet or will not come again.
            atNewRow_ = false;
            atEnd_ = true;
            return;
        }
        advance();
    }

    RowPlace place() const {
        if (atEnd_) {
            fail("there is no current row");
        }
        const RowPointer home = currentHome();
        return {home.page, home.slot};
    }

    const RowView& current() {
        if (atEnd_) {
            fail("there is no current row");
        }
        if (atNewRow_ ? !locateNewRow() : !scanner_.refresh()) {
            fail("the current row has been deleted");
        }
        return atNewRow_ ? newRow_ : scanner_.row();
    }

    /// What a field reads as: the row being composed, or the current one.
    template <typename Read>
    auto read(int field, Read readFrom) {
        const std::size_t column = position(field);
        if (editing_ == Editing::None) {
            return readFrom(column, current());
        }
        RowView composed;
        const ByteSpan bytes = builder_.build();
        composed.parse(file_->format(), table_.stored().variableEver != 0, bytes);
        return readFrom(column, composed);
    }

    const FieldCodec& codec() const { return codec_; }

    void addNew() {
        beginChange();
        cancelUpdate();
        loaded_.clear();
        builder_.clear();
        editing_ = Editing::New;
    }

    /// Sets a field of the new row, or of the current one, which is taken over at its first change.
    template <typename Set>
    void change(int field, Set set) {
        const std::size_t column = position(field);
        if (editing_ == Editing::None) {
            beginChange();
            builder_.load(current());
            loaded_ = longValuesOf(current());
            editing_ = Editing::Current;
        }
        const std::string before = composedValue(column);
        set(column, builder_);
        table_.longValues().release(column, before);
    }

    void setNull(int field) {
        change(field, [](std::size_t column, RowBuilder& row) { row.setNull(column); });
    }

    void update() {
        if (editing_ == Editing::None) {
            return;
        }
        if (editing_ == Editing::New) {
            numberRow();
            const ByteSpan row = builder_.build();
            newHome_ = table_.insert(row);
            atNewRow_ = true;
            atEnd_ = false;
        } else {
            const std::vector<LongValue> replaced = replacedValues();
            const ByteSpan row = builder_.build();
            table_.update(currentHome(), row);
            // Only now: a row that cannot be stored keeps its old values.
            release(replaced);
        }
        editing_ = Editing::None;
        connection_.rowWritten();
    }

    /// Long values that were stored for the row are given up with it.
    void cancelUpdate() {
        for (std::size_t i = 0; editing_ != Editing::None && i < definition_.fields.size(); ++i) {
            table_.longValues().release(i, composedValue(i));
        }
        editing_ = Editing::None;
    }

    void deleteCurrent() {
        beginChange();
        cancelUpdate();
        const std::vector<LongValue> values = longValuesOf(current());
        table_.erase(currentHome());
        release(values);
        connection_.rowWritten();
    }

  private:
    enum class Editing { None, New, Current };

    [[noreturn]] void fail(const std::string& why) const {
        throw EngineFailure(EngineFault::NoCurrentRow, "table " + definition_.name + ": " + why);
    }

    std::size_t position(int field) const {
        if (field < 0 || static_cast<std::size_t>(field) >= definition_.fields.size()) {
            throw EngineFailure(
                EngineFault::Usage,
                "table " + definition_.name + " has no field number " + std::to_string(field));
        }
        return static_cast<std::size_t>(field);
    }

    void advance() {
        while (scanner_.next()) {
            if (filter_.isEmpty() || filter_.matches(scanner_.row(), codec_)) {
                atEnd_ = false;
                return;
            }
        }
        scanner_.release();
        atEnd_ = true;
    }

    RowPointer currentHome() const { return atNewRow_ ? newHome_ : scanner_.home(); }

    bool locateNewRow() {
        ByteSpan bytes;
        return table_.ownsPage(newHome_.page) && table_.locate(newHome_, newPage_, bytes) &&
               newRow_.parse(file_->format(), table_.stored().variableEver != 0, bytes);
    }

    void beginChange() {
        if (readOnly_) {
            throw EngineFailure(EngineFault::Usage,
                                "table " + definition_.name + " was opened for reading only");
        }
        table_.beginChange();
    }

    /// A new row gets the next number in its autonumber column, unless it brought one.
    void numberRow() {
        for (std::size_t i = 0; i < definition_.fields.size(); ++i) {
            const Field& field = definition_.fields[i];
            if (!field.autoNumber || field.type != DataType::Long) {
                continue;
            }
            if (!builder_.isPresent(i)) {
                codec_.setInteger(i, static_cast<std::int32_t>(table_.nextAutoNumber()), builder_);
            } else if (table_.stored().columns[i].fixed) {
                table_.noteAutoNumber(get32(builder_.fixed(i).data()));
            }
        }
    }

    /// A long value as a row has it: column and definition.
    struct LongValue {
        std::size_t column;
        std::string definition;

        friend bool operator==(const LongValue&, const LongValue&) = default;
    };

    std::vector<LongValue> longValuesOf(const RowView& row) const {
        std::vector<LongValue> values;
        for (std::size_t i = 0; i < table_.stored().columns.size(); ++i) {
            const StoredColumn& column = table_.stored().columns[i];
            if (isLongValue(column.field.type) && row.isPresent(column.number)) {
                values.push_back({i, std::string(asText(row.bytes(column)))});
            }
        }
        return values;
    }

    /// Long values of the current row that the composed one replaces. Those that were not set are
    /// those of the row as it is now: another recordset may have replaced them since it was loaded.
    std::vector<LongValue> replacedValues() {
        std::vector<LongValue> stored = longValuesOf(current());
        for (const LongValue& loaded : loaded_) {
            if (isComposed(loaded)) {
                const auto now = std::find_if(stored.begin(), stored.end(), [&](const auto& value) {
                    return value.column == loaded.column;
                });
                now != stored.end() ? builder_.setBytes(loaded.column, now->definition)
                                    : builder_.setNull(loaded.column);
            }
        }
        std::erase_if(stored, [this](const LongValue& value) { return isComposed(value); });
        return stored;
    }

    bool isComposed(const LongValue& value) const {
        return builder_.isPresent(value.column) &&
               builder_.variable(value.column) == value.definition;
    }

    bool isLoaded(const LongValue& value) const {
        return std::find(loaded_.begin(), loaded_.end(), value) != loaded_.end();
    }

    /// Definition of a long value that was stored for the row being composed, and for no other;
    /// else empty.
    std::string composedValue(std::size_t column) {
        if (!isLongValue(definition_.fields[column].type) || !builder_.isPresent(column)) {
            return {};
        }
        const std::string definition(builder_.variable(column));
        return isLoaded({column, definition}) ? std::string() : definition;
    }

    void release(const std::vector<LongValue>& values) {
        for (const LongValue& value : values) {
            table_.longValues().release(value.column, value.definition);
        }
    }

    Connection& connection_;
    std::shared_ptr<DatabaseFile> file_;
    Table& table_;
    TableDefinition definition_;
    bool readOnly_;
    FieldCodec codec_;
    Filter filter_;
    RowScanner scanner_;
    RowBuilder builder_;
    Editing editing_ = Editing::None;
    std::vector<LongValue> loaded_;  ///< of the current row when its change began
    bool atEnd_ = true;
    bool atNewRow_ = false;
    RowPointer newHome_;
    PageHandle newPage_;
    RowView newRow_;
};

Recordset::Recordset() = default;
Recordset::~Recordset() { close(); }

void Recordset::open(std::string_view table, Connection& connection, CursorType, LockType lock,
                     CommandType) {
    if (!connection.isOpen()) {
        throw EngineFailure(EngineFault::Usage,
                            "table " + std::string(table) + ": the connection is not open");
    }
    close();
    implementation_ = std::make_unique<Implementation>(table, connection, lock);
    connection_ = &connection;
    connection.add(*this);
}

void Recordset::close() {
    implementation_.reset();
    if (Connection* const connection = std::exchange(connection_, nullptr)) {
        connection->remove(*this);
    }
}

void Recordset::connectionClosed() {
    implementation_.reset();
    connection_ = nullptr;
}

bool Recordset::isOpen() const { return implementation_ != nullptr; }

Recordset::Implementation& Recordset::opened() const {
    if (implementation_ == nullptr) {
        throw EngineFailure(EngineFault::Usage, "the recordset is not open");
    }
    return *implementation_;
}

const TableDefinition& Recordset::definition() const { return opened().definition(); }
std::int64_t Recordset::recordCount() const { return opened().recordCount(); }
int Recordset::field(std::string_view name) const { return opened().field(name); }
void Recordset::setFilter(std::string_view condition) { opened().setFilter(condition); }
bool Recordset::endOfFile() const { return opened().endOfFile(); }
void Recordset::moveFirst() { opened().moveFirst(); }
void Recordset::moveNext() { opened().moveNext(); }
RowPlace Recordset::place() const { return opened().place(); }

Value Recordset::value(int field) const {
    Implementation& set = opened();
    return set.read(field, [&](std::size_t column, const RowView& row) {
        return set.codec().value(column, row);
    });
}

bool Recordset::isNull(int field) const { return jet::isNull(value(field)); }

void Recordset::readText(int field, std::string& text) const {
    Implementation& set = opened();
    set.read(field, [&](std::size_t column, const RowView& row) {
        set.codec().readText(column, row, text);
    });
}

std::string Recordset::text(int field) const {
    std::string text;
    readText(field, text);
    return text;
}

std::int32_t Recordset::integer(int field) const {
    Implementation& set = opened();
    return set.read(field, [&](std::size_t column, const RowView& row) {
        return set.codec().integer(column, row);
    });
}

void Recordset::addNew() { opened().addNew(); }

void Recordset::setText(int field, std::string_view text) {
    Implementation& set = opened();
    set.change(field, [&](std::size_t column, RowBuilder& row) {
        set.codec().setText(column, text, row);
    });
}

void Recordset::setInteger(int field, std::int64_t number) {
    Implementation& set = opened();
    set.change(field, [&](std::size_t column, RowBuilder& row) {
        set.codec().setInteger(column, number, row);
    });
}

void Recordset::setValue(int field, const Value& value) {
    Implementation& set = opened();
    set.change(field, [&](std::size_t column, RowBuilder& row) {
        set.codec().setValue(column, value, row);
    });
}

void Recordset::setNull(int field) { opened().setNull(field); }
void Recordset::update() { opened().update(); }
void Recordset::cancelUpdate() { opened().cancelUpdate(); }
void Recordset::deleteCurrent() { opened().deleteCurrent(); }

}  // namespace jet
