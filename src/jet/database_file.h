#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "jet/format.h"
#include "jet/header_page.h"
#include "jet/page_file.h"
#include "jet/table.h"
#include "jet/usage_map.h"

namespace base {
class FileOpener;
}

namespace jet {

struct EngineOptions;

/// One row of the catalog, the table MSysObjects.
struct CatalogEntry {
    std::int32_t id = 0;  ///< of a table: the page of its definition
    std::int32_t parentId = 0;
    std::string name;
    std::int32_t type = 0;
    std::uint32_t flags = 0;

    static constexpr std::int32_t tableType = 1;
    static constexpr std::uint32_t systemFlags = 0x80000002;

    bool isSystem() const { return (flags & systemFlags) != 0; }
};

/// One open database file: its pages, its tables and the order in which changes reach the medium.
/// All connections of one engine to one file share it; it counts them as users.
///
/// flush() writes in steps, with a sync between them, so that at any moment the file is sound:
/// fresh pages; the map of free pages (they are not free any more); the maps of the tables (they
/// are part of the tables now); pages that were part of the file before; what those no longer refer
/// to, released pages and row counts. What was flushed stays; what was not is either complete or
/// not there.
class DatabaseFile final : private PageFile::References {
  public:
    /// Opens and checks a file; failures as Engine::openFile().
    static std::shared_ptr<DatabaseFile> open(base::FileOpener& files,
                                              std::unique_ptr<base::RandomAccessFile> file,
                                              const std::string& path,
                                              const EngineOptions& options);
    DatabaseFile(const DatabaseFile&) = delete;
    DatabaseFile& operator=(const DatabaseFile&) = delete;
    ~DatabaseFile() override;

    const Format& format() const { return pages_.format(); }
    PageFile& pages() { return pages_; }
    const HeaderPage& header() const { return header_; }

    void addUser() { ++users_; }
    /// Flushes; after the last user the file is unlocked and its marks are gone. Failures are
    /// thrown, but the user is gone in any case.
    void removeUser();

    /// Tables in the order of the catalog.
    const std::vector<CatalogEntry>& catalog();
    /// The table of that name, letter case ignored; NotFound when there is none.
    Table& table(std::string_view name);
    Table& tableOn(std::uint32_t page, const std::string& name);
    Table& systemObjects();
    /// Forgets what it knows of the catalog, after a table was added.
    void catalogChanged() { catalogLoaded_ = false; }

    /// Takes the right to write. ReadOnly or InUse when it is not to be had.
    void beginWriting();
    /// A page that is free, or a new one at the end; Full at the format's limit.
    std::uint32_t allocatePage();
    /// Gives a page back; it is not used again before the next flush.
    void releasePage(std::uint32_t number);
    const UsageMap& freePages() const { return freePages_; }
    bool isReleased(std::uint32_t page) const { return released_.contains(page); }

    void flush();

  private:
    DatabaseFile(base::FileOpener& files, std::unique_ptr<base::RandomAccessFile> file,
                 const Format& format, const std::string& path, const EngineOptions& options);

    class FlushScope;

    void secureReferences() override;
    void flushAll(bool finished);
    void writeDefinitions(bool finished);
    void loadCatalog();
    void prepareForWriting();
    void mendFreePages();
    template <typename Function>
    void forEachMap(Function function);

    base::FileOpener& files_;
    int lockWaitMilliseconds_;
    std::uint32_t maximumPages_;
    PageFile pages_;
    HeaderPage header_;
    UsageMap freePages_;
    PageSet released_;
    std::uint32_t freeHint_ = 0;
    std::map<std::uint32_t, std::unique_ptr<Table>> tables_;
    std::vector<CatalogEntry> catalog_;
    bool catalogLoaded_ = false;
    bool writing_ = false;
    bool flushing_ = false;
    int users_ = 0;
};

/// Definition page of the catalog table in every file.
constexpr std::uint32_t systemObjectsPage = 2;

}  // namespace jet
