#include "jet/recordset.h"

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
        editing_ = Editing::None;
        scanner_.rewind();
        atNewRow_ = false;
        advance();
    }

    void moveNext() {
        editing_ = Editing::None;
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
        builder_.clear();
        editing_ = Editing::New;
    }

    /// The row to set fields of: the new one, or the current one, taken over at its first change.
    RowBuilder& edited(int& field) {
        field = static_cast<int>(position(field));
        if (editing_ == Editing::None) {
            beginChange();
            builder_.load(current());
            editing_ = Editing::Current;
        }
        return builder_;
    }

    void setNull(int field) {
        RowBuilder& row = edited(field);
        row.setNull(static_cast<std::size_t>(field));
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
            releaseReplacedValues();
            const ByteSpan row = builder_.build();
            table_.update(currentHome(), row);
        }
        editing_ = Editing::None;
        connection_.rowWritten();
    }

    void cancelUpdate() { editing_ = Editing::None; }

    void markRows() {
        beginChange();
        marked_ = table_.closePages();
    }

    bool isMarked() {
        current();
        return marked_.contains(currentHome().page);
    }

    void deleteCurrent() {
        beginChange();
        const RowView& row = current();
        for (std::size_t i = 0; i < table_.stored().columns.size(); ++i) {
            releaseValue(i, row);
        }
        table_.erase(currentHome());
        editing_ = Editing::None;
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

    /// Long values that the update has replaced are given up.
    void releaseReplacedValues() {
        const RowView& old = current();
        for (std::size_t i = 0; i < table_.stored().columns.size(); ++i) {
            const StoredColumn& column = table_.stored().columns[i];
            if (isLongValue(column.field.type) && old.isPresent(column.number) &&
                builder_.variable(i) != asText(old.bytes(column))) {
                releaseValue(i, old);
            }
        }
    }

    void releaseValue(std::size_t index, const RowView& row) {
        const StoredColumn& column = table_.stored().columns[index];
        if (isLongValue(column.field.type) && row.isPresent(column.number)) {
            table_.longValues().release(index, asText(row.bytes(column)));
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
    bool atEnd_ = true;
    bool atNewRow_ = false;
    RowPointer newHome_;
    PageHandle newPage_;
    RowView newRow_;
    PageSet marked_;
};

Recordset::Recordset() = default;
Recordset::~Recordset() = default;

void Recordset::open(std::string_view table, Connection& connection, CursorType, LockType lock,
                     CommandType) {
    if (!connection.isOpen()) {
        throw EngineFailure(EngineFault::Usage,
                            "table " + std::string(table) + ": the connection is not open");
    }
    implementation_ = std::make_unique<Implementation>(table, connection, lock);
}

void Recordset::close() { implementation_.reset(); }
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
    RowBuilder& row = opened().edited(field);
    opened().codec().setText(static_cast<std::size_t>(field), text, row);
}

void Recordset::setInteger(int field, std::int64_t number) {
    RowBuilder& row = opened().edited(field);
    opened().codec().setInteger(static_cast<std::size_t>(field), number, row);
}

void Recordset::setValue(int field, const Value& value) {
    RowBuilder& row = opened().edited(field);
    opened().codec().setValue(static_cast<std::size_t>(field), value, row);
}

void Recordset::setNull(int field) { opened().setNull(field); }
void Recordset::update() { opened().update(); }
void Recordset::cancelUpdate() { opened().cancelUpdate(); }
void Recordset::markRows() { opened().markRows(); }
bool Recordset::isMarked() const { return opened().isMarked(); }
void Recordset::deleteCurrent() { opened().deleteCurrent(); }

}  // namespace jet
