#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace jet {

class DatabaseFile;
class Engine;
class Recordset;

/// When the rows that a connection stores reach the medium on their own, at the latest. At close
/// they always do. 0 switches a limit off.
struct FlushPolicy {
    std::int64_t rows = 0;
    std::int64_t milliseconds = 0;
};

/// A connection to one database file. Connections of one engine to one file share its pages.
/// Closing, also by the destructor, stores every finished row on the medium; an unfinished one
/// (addNew() without update()) is dropped.
class Connection {
  public:
    explicit Connection(Engine& engine);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Opens the file that a connection text of the form
    /// "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=PATH" names. Keys ignore case; a text without
    /// a data source or with another provider is an EngineFailure (Usage). Other failures as
    /// Engine::openFile().
    void open(std::string_view connectionText);
    bool isOpen() const { return file_ != nullptr; }

    void setFlushPolicy(FlushPolicy policy) { policy_ = policy; }
    /// Stores every finished row on the medium now.
    void flush();
    /// flush() and the end of the connection; recordsets opened on it end too. Failures are thrown,
    /// but the connection is closed in any case.
    void close();

    // For the engine's own classes.
    const std::shared_ptr<DatabaseFile>& file() const { return file_; }
    /// Told after each stored or deleted row: flushes when the policy says so.
    void rowWritten();
    /// Recordsets that end with this connection.
    void add(Recordset& recordset) { recordsets_.push_back(&recordset); }
    void remove(Recordset& recordset) { std::erase(recordsets_, &recordset); }

  private:
    Engine& engine_;
    std::shared_ptr<DatabaseFile> file_;
    std::vector<Recordset*> recordsets_;
    FlushPolicy policy_;
    std::int64_t rowsSinceFlush_ = 0;
    std::int64_t lastFlushMilliseconds_ = 0;
};

}  // namespace jet
