#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "jet/table_definition.h"
#include "jet/value.h"

namespace jet {

class Connection;

/// Numbered as the engine's callers know them. This engine has one kind of cursor: it sees rows
/// that others add, change and delete while it is open.
enum class CursorType { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType { ReadOnly = 1, Pessimistic = 2, Optimistic = 3 };
enum class CommandType { Table = 2 };

/// Where a row stands in the file. A row keeps its place as long as it lives, also when it changes;
/// the place of a deleted row may be given to a new one.
struct RowPlace {
    std::uint32_t page = 0;
    std::uint8_t slot = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): it is the defaulted comparison that compares with zero
    friend auto operator<=>(const RowPlace&, const RowPlace&) = default;
};

/// The rows of one table, in the order in which the file holds them: pages ascending, rows in the
/// order of their slots. One row at a time is current. It is not copied: when another recordset
/// changes or deletes that row, this one sees it (reading a deleted row is a NoCurrentRow failure,
/// moving on from it is not).
///
/// Fields are named by their position, counted from 0 in the order of the table; field() finds it
/// by name once. Every operation may throw base::EngineFailure.
class Recordset {
  public:
    Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    ~Recordset();

    /// Opens the whole table; the first row is current. The connection must stay open meanwhile.
    void open(std::string_view table, Connection& connection, CursorType cursor, LockType lock,
              CommandType command);
    void close();
    bool isOpen() const;

    const TableDefinition& definition() const;
    /// Number of rows of the whole table, whatever the filter.
    std::int64_t recordCount() const;
    /// Position of the field of that name, letter case ignored; NotFound names field and table.
    int field(std::string_view name) const;

    /// Lets only rows through that fulfil the condition: one or more comparisons of the form
    /// field='text', joined by AND. A number field is compared with the number that the quoted text
    /// stands for (a text that is none is a Usage failure), a text field without regard to case;
    /// NULL equals nothing. Two quotation marks in the text stand for one. An empty condition lets
    /// all rows through. The first row that fulfils it becomes current.
    void setFilter(std::string_view condition);

    bool endOfFile() const;  ///< no current row: past the last one, or the table is empty
    void moveFirst();
    void moveNext();  ///< NoCurrentRow when already at the end
    /// Place of the current row; NoCurrentRow at the end.
    RowPlace place() const;

    /// The current row's value.
    Value value(int field) const;
    bool isNull(int field) const;
    /// As text, into `text` (its memory is reused): texts as they are, NULL as "", others as
    /// displayText().
    void readText(int field, std::string& text) const;
    std::string text(int field) const;
    /// As a number: NULL is 0, a text is read as a number; what does not fit is a Value failure.
    std::int32_t integer(int field) const;

    /// Begins a new row, all fields NULL. It becomes current and part of the table with update().
    void addNew();
    /// Sets a field of the new row, or of the current one, whose change begins with the first set
    /// call and is stored by update(). A number for a text field is stored as its decimal text, a
    /// text for a number field is read as a number; what does not fit the field is a Value failure
    /// that names it.
    void setText(int field, std::string_view text);
    void setInteger(int field, std::int64_t number);
    void setValue(int field, const Value& value);
    void setNull(int field);
    void update();
    void cancelUpdate();

    /// Deletes the current row; there is no current row until the next move, which goes to the row
    /// that followed it.
    void deleteCurrent();

    // For Connection: it does not know the recordset any more.
    void connectionClosed();

  private:
    class Implementation;
    Implementation& opened() const;

    std::unique_ptr<Implementation> implementation_;
    Connection* connection_ = nullptr;  ///< where it is registered; null while closed
};

}  // namespace jet
