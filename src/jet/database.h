#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "jet/table_definition.h"

namespace jet {

class DatabaseFile;
class Engine;

enum class FileFormat { Jet3, Jet4 };

struct CreateOptions {
    FileFormat format = FileFormat::Jet4;
    /// Stamp of the file and of its system objects, days since 1899-12-30 in local time; without it
    /// the present moment in UTC.
    std::optional<double> creationDate;
    /// Stamp of the system objects, where it is not that of the file.
    std::optional<double> objectDate;
    std::uint32_t engineBuild = 0x261C;
};

/// What a listing of a database's tables tells of one.
struct TableSummary {
    std::string name;
    std::int64_t rowCount = 0;
    bool system = false;
};

/// The data-definition side of the engine: creates database files and tables and says what tables a
/// file has. Rows are the business of Connection and Recordset.
class Database {
  public:
    /// Makes a new, empty database file. `locale` is a text such as
    /// ";LANGID=0x0409;CP=1252;COUNTRY=0"; only the general sort order (0x0409) and code page 1252
    /// are supported, anything else is an EngineFailure (Usage). An existing file is a failure
    /// (Exists). A failure in the middle may leave a partly built file, which no reader takes for a
    /// database.
    static Database create(Engine& engine, const std::string& path, std::string_view locale,
                           const CreateOptions& options = {});
    /// Opens an existing file; failures as Engine::openFile().
    static Database open(Engine& engine, const std::string& path);

    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    /// Creates a table without rows. Fails (Exists) on a second table of that name, whatever the
    /// case, and (Usage) on names or fields that the format cannot hold.
    void append(const TableDefinition& table);

    FileFormat format() const;
    /// All tables in the order of the catalog, system tables included.
    std::vector<TableSummary> tables() const;
    /// Fields and indexes of one table; EngineFailure (NotFound) when there is none.
    TableDefinition table(std::string_view name) const;

    /// Writes everything to the medium. Nothing else may be called afterwards. The destructor
    /// closes too, but keeps failures to itself.
    void close();

  private:
    explicit Database(std::shared_ptr<DatabaseFile> file);
    DatabaseFile& file() const;

    std::shared_ptr<DatabaseFile> file_;
    std::optional<double> objectDate_;
};

}  // namespace jet
