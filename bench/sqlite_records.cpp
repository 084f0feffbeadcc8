#include "sqlite_records.h"

#include <sqlite3.h>

#include <stdexcept>

namespace bench {

namespace {

constexpr const char* columns =
    "filename, path, folder, type, size, datecreated, datemodified, keywords, notes1, notes2, "
    "mediaid";

class Statement {
  public:
    Statement(sqlite3* database, const std::string& text) {
        if (sqlite3_prepare_v2(database, text.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database));
        }
    }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement() { sqlite3_finalize(statement_); }

    void bind(int place, const std::string& text) {
        sqlite3_bind_text(statement_, place, text.data(), static_cast<int>(text.size()),
                          SQLITE_STATIC);
    }
    void bind(int place, std::int32_t number) { sqlite3_bind_int(statement_, place, number); }
    void run() {
        if (sqlite3_step(statement_) != SQLITE_DONE) {
            throw std::runtime_error("a statement failed");
        }
        sqlite3_reset(statement_);
    }
    bool step() { return sqlite3_step(statement_) == SQLITE_ROW; }
    void read(int column, std::string& text) {
        text.assign(reinterpret_cast<const char*>(sqlite3_column_text(statement_, column)),
                    static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)));
    }
    std::int32_t number(int column) { return sqlite3_column_int(statement_, column); }
    std::int64_t touch(int column) {
        sqlite3_column_text(statement_, column);
        return sqlite3_column_bytes(statement_, column);
    }

  private:
    sqlite3_stmt* statement_ = nullptr;
};

}  // namespace

SqliteRecords::SqliteRecords(const std::string& path) {
    if (sqlite3_open(path.c_str(), &database_) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(database_));
    }
    execute(
        "CREATE TABLE IF NOT EXISTS main (filename TEXT, path TEXT, folder TEXT, type TEXT, size "
        "INTEGER, datecreated TEXT, datemodified TEXT, keywords TEXT, notes1 TEXT, notes2 TEXT, "
        "mediaid INTEGER)");
}

SqliteRecords::~SqliteRecords() { sqlite3_close(database_); }

void SqliteRecords::execute(const char* statement) {
    if (sqlite3_exec(database_, statement, nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(database_));
    }
}

void SqliteRecords::insert(const std::vector<base::ScanEntry>& entries) {
    execute("BEGIN");
    {
        Statement insert(database_, std::string("INSERT INTO main (") + columns +
                                        ") VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        for (const base::ScanEntry& entry : entries) {
            insert.bind(1, entry.FileName);
            insert.bind(2, entry.path);
            insert.bind(3, entry.Folder);
            insert.bind(4, entry.Type);
            insert.bind(5, entry.Size);
            insert.bind(6, entry.DateCreated);
            insert.bind(7, entry.DateModified);
            insert.bind(8, entry.keywords);
            insert.bind(9, entry.Notes1);
            insert.bind(10, entry.Notes2);
            insert.bind(11, entry.mediaId);
            insert.run();
        }
    }
    execute("COMMIT");
}

std::vector<base::ScanEntry> SqliteRecords::selectEntries() {
    std::vector<base::ScanEntry> entries;
    Statement select(database_, std::string("SELECT ") + columns + " FROM main");
    while (select.step()) {
        base::ScanEntry& entry = entries.emplace_back();
        select.read(0, entry.FileName);
        select.read(1, entry.path);
        select.read(2, entry.Folder);
        select.read(3, entry.Type);
        entry.Size = select.number(4);
        select.read(5, entry.DateCreated);
        select.read(6, entry.DateModified);
        select.read(7, entry.keywords);
        select.read(8, entry.Notes1);
        select.read(9, entry.Notes2);
        entry.mediaId = select.number(10);
    }
    return entries;
}

std::int64_t SqliteRecords::selectColumns() {
    std::int64_t bytes = 0;
    Statement select(database_, std::string("SELECT ") + columns + " FROM main");
    while (select.step()) {
        for (int column = 0; column < 11; ++column) {
            bytes += column == 4 || column == 10 ? select.number(column) & 1 : select.touch(column);
        }
    }
    return bytes;
}

std::int64_t SqliteRecords::countLike(const std::string& pattern) {
    Statement statement(database_,
                        "SELECT count(*) FROM main WHERE filename LIKE ? OR path LIKE ?");
    statement.bind(1, pattern);
    statement.bind(2, pattern);
    return statement.step() ? statement.number(0) : 0;
}

void SqliteRecords::deleteMedium(std::int32_t mediaId) {
    Statement statement(database_, "DELETE FROM main WHERE mediaid = ?");
    statement.bind(1, mediaId);
    statement.run();
}

}  // namespace bench
