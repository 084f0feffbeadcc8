#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/scan_entry.h"

struct sqlite3;

namespace bench {

/// The same rows in an SQLite file, the yardstick of the benchmarks: a table of the same eleven
/// columns without an index, a prepared statement, one transaction.
class SqliteRecords {
  public:
    explicit SqliteRecords(const std::string& path);
    SqliteRecords(const SqliteRecords&) = delete;
    SqliteRecords& operator=(const SqliteRecords&) = delete;
    ~SqliteRecords();

    void insert(const std::vector<base::ScanEntry>& entries);
    /// Reads all columns of all rows into entries, as the program keeps them.
    std::vector<base::ScanEntry> selectEntries();
    /// Steps through all rows and fetches every column without keeping it; the bytes of the texts.
    std::int64_t selectColumns();
    /// Rows whose name or path is LIKE the pattern.
    std::int64_t countLike(const std::string& pattern);
    void deleteMedium(std::int32_t mediaId);

  private:
    void execute(const char* statement);

    sqlite3* database_ = nullptr;
};

}  // namespace bench
