#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace base {
class FileOpener;
}

namespace jet {

class DatabaseFile;
class FileRegistry;

struct EngineOptions {
    /// Memory for pages of one open file, in bytes. Resident memory does not grow beyond it with
    /// the size of the file, but for two bits a page.
    std::size_t pageCacheBytes = 8u << 20;
    /// How long a connection waits for a file that another process holds before it fails.
    int lockWaitMilliseconds = 2000;
    /// Pages that a file may have, where they are to be fewer than its format allows; 0: no such
    /// limit.
    std::uint32_t maximumPages = 0;
};

/// The database engine of one process: it knows which files are open, so that every connection to
/// one file works on one set of pages and sees the finished rows of the others. It knows nothing of
/// what the tables mean. Used by one thread; it must outlive its connections, databases and
/// recordsets.
class Engine {
  public:
    explicit Engine(base::FileOpener& files, EngineOptions options = {});
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine();

    const EngineOptions& options() const { return options_; }

    // For the engine's own classes.
    base::FileOpener& files() { return files_; }
    /// The open file at `path`, opened now if no connection has it open. An EngineFailure says
    /// which obstacle there is: no such file, not a database, encoded, with a password, damaged, in
    /// use.
    std::shared_ptr<DatabaseFile> openFile(const std::string& path);

  private:
    base::FileOpener& files_;
    EngineOptions options_;
    std::unique_ptr<FileRegistry> registry_;
};

}  // namespace jet
