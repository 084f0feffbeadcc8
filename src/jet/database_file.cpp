#include "jet/database_file.h"

#include <algorithm>
#include <limits>

#include "base/failure.h"
#include "base/text.h"
#include "jet/catalog_writer.h"
#include "jet/damage.h"
#include "jet/engine.h"
#include "jet/field_codec.h"
#include "jet/file_access.h"
#include "jet/row_scanner.h"
#include "jet/system_tables.h"

namespace jet {

namespace {

/// Pages kept back at the size limit, so that the maps of the rows stored last find room.
constexpr std::uint32_t reservedPages = 64;

}  // namespace

/// While it lives, pages are written by the flush alone.
class DatabaseFile::FlushScope {
  public:
    explicit FlushScope(DatabaseFile& file)
        : file_(file), outer_(std::exchange(file.flushing_, true)) {
        file_.pages_.setGrowing(true);
    }
    FlushScope(const FlushScope&) = delete;
    FlushScope& operator=(const FlushScope&) = delete;
    ~FlushScope() {
        file_.flushing_ = outer_;
        file_.pages_.setGrowing(outer_);
    }

  private:
    DatabaseFile& file_;
    bool outer_;
};

std::shared_ptr<DatabaseFile> DatabaseFile::open(base::FileOpener& files,
                                                 std::unique_ptr<base::RandomAccessFile> file,
                                                 const std::string& path,
                                                 const EngineOptions& options) {
    const Format& format = recogniseFile(*file, path, files, options.lockWaitMilliseconds);
    return std::shared_ptr<DatabaseFile>(
        new DatabaseFile(files, std::move(file), format, path, options));
}

DatabaseFile::DatabaseFile(base::FileOpener& files, std::unique_ptr<base::RandomAccessFile> file,
                           const Format& format, const std::string& path,
                           const EngineOptions& options)
    : files_(files),
      lockWaitMilliseconds_(options.lockWaitMilliseconds),
      maximumPages_(options.maximumPages != 0 ? std::min(options.maximumPages, format.maximumPages)
                                              : format.maximumPages),
      pages_(std::move(file), format, path, options.pageCacheBytes),
      header_(format, readStart(pages_.file(), format.pageSize), path) {
    pages_.setReferences(this);
    freePages_ = UsageMap::read(pages_, {1, 0}, UsageMap::Meaning::FreePages);
}

DatabaseFile::~DatabaseFile() = default;

void DatabaseFile::removeUser() {
    const bool last = --users_ == 0;
    flushAll(last);
    if (last && writing_) {
        writing_ = false;
        pages_.file().tryLock(base::RandomAccessFile::Lock::Shared);
    }
}

Table& DatabaseFile::systemObjects() { return tableOn(systemObjectsPage, "MSysObjects"); }

Table& DatabaseFile::tableOn(std::uint32_t page, const std::string& name) {
    std::unique_ptr<Table>& table = tables_[page];
    if (table == nullptr) {
        try {
            table = std::make_unique<Table>(*this, StoredTable::read(pages_, page, name));
        } catch (...) {
            tables_.erase(page);
            throw;
        }
    }
    return *table;
}

const std::vector<CatalogEntry>& DatabaseFile::catalog() {
    if (!catalogLoaded_) {
        loadCatalog();
    }
    return catalog_;
}

void DatabaseFile::loadCatalog() {
    Table& objects = systemObjects();
    const TableDefinition definition = objects.stored().definition();
    const auto position = [&](const char* name) {
        const int found = definition.find(name);
        if (found < 0) {
            failDamaged(systemObjectsPage, std::string("the catalog has no column ") + name);
        }
        return static_cast<std::size_t>(found);
    };
    const std::size_t id = position("Id");
    const std::size_t parentId = position("ParentId");
    const std::size_t name = position("Name");
    const std::size_t type = position("Type");
    const std::size_t flags = position("Flags");

    std::vector<CatalogEntry> entries;
    const FieldCodec codec(*this, objects);
    for (RowScanner scanner(*this, objects); scanner.next();) {
        CatalogEntry entry;
        entry.id = codec.integer(id, scanner.row());
        entry.parentId = codec.integer(parentId, scanner.row());
        entry.type = codec.integer(type, scanner.row());
        entry.flags = static_cast<std::uint32_t>(codec.integer(flags, scanner.row()));
        codec.readText(name, scanner.row(), entry.name);
        entries.push_back(std::move(entry));
    }
    std::int32_t container = tablesContainer;
    for (const CatalogEntry& entry : entries) {
        if (entry.name == "Tables" && entry.type == 3) {
            container = entry.id;
        }
    }
    catalog_.clear();
    for (CatalogEntry& entry : entries) {
        if (entry.type == CatalogEntry::tableType && entry.parentId == container) {
            catalog_.push_back(std::move(entry));
        }
    }
    catalogLoaded_ = true;
}

Table& DatabaseFile::table(std::string_view name) {
    for (const CatalogEntry& entry : catalog()) {
        if (base::equalIgnoringCase(entry.name, name)) {
            if (entry.id <= 0) {
                failDamaged(systemObjectsPage, "the catalog has no page for table " + entry.name);
            }
            return tableOn(static_cast<std::uint32_t>(entry.id), entry.name);
        }
    }
    throw base::EngineFailure(base::EngineFault::NotFound,
                              pages_.path() + ": there is no table " + std::string(name));
}

void DatabaseFile::beginWriting() {
    if (writing_) {
        return;
    }
    if (!pages_.file().writable()) {
        throw base::EngineFailure(base::EngineFault::ReadOnly,
                                  pages_.path() + ": the file may not be written");
    }
    takeLock(pages_.file(), base::RandomAccessFile::Lock::Exclusive, pages_.path(), files_,
             lockWaitMilliseconds_);
    writing_ = true;
    try {
        prepareForWriting();
    } catch (...) {
        writing_ = false;
        throw;
    }
}

void DatabaseFile::prepareForWriting() {
    // The trace of a write that was cut short would displace every page after it.
    if (pages_.trailingBytes() != 0) {
        pages_.file().truncate(std::uint64_t{pages_.pageCount()} * format().pageSize);
    }
    mendFreePages();
    CatalogWriter(*this).mend();
}

/// A program that ended in the middle of a flush may have left pages that are part of a table and
/// still marked free. They must not be handed out.
void DatabaseFile::mendFreePages() {
    bool interrupted = !format().isJet4();
    for (const CatalogEntry& entry : catalog()) {
        if (entry.id > 0) {
            interrupted |=
                tableOn(static_cast<std::uint32_t>(entry.id), entry.name).wasInterrupted();
        }
    }
    if (!interrupted) {
        return;
    }
    for (const auto& [number, table] : tables_) {
        table->loadMaps();
        for (const std::uint32_t page : table->stored().pages) {
            freePages_.add(page);
        }
    }
    forEachMap([this](UsageMap& map) {
        freePages_.add(map.place().page);
        for (const std::uint32_t page : map.mapPages()) {
            if (page != 0) {
                freePages_.add(page);
            }
        }
        for (std::uint32_t page = map.pages().first(); page != PageSet::none;
             page = map.pages().next(page + 1)) {
            freePages_.add(page);
        }
    });
}

std::uint32_t DatabaseFile::allocatePage() {
    const std::uint32_t count = pages_.pageCount();
    for (; freeHint_ < count; ++freeHint_) {
        if (!freePages_.contains(freeHint_) && freeHint_ != 0) {
            freePages_.add(freeHint_);
            return freeHint_++;
        }
    }
    if (count + (flushing_ ? 0 : reservedPages) >= maximumPages_) {
        throw base::EngineFailure(base::EngineFault::Full,
                                  pages_.path() +
                                      ": the file has reached the size limit of its format (" +
                                      std::string(format().isJet4() ? "2" : "1") + " GiB)");
    }
    freePages_.add(count);
    // Making room for the page may allocate others.
    pages_.reserve(count);
    return count;
}

void DatabaseFile::releasePage(std::uint32_t number) {
    released_.insert(number);
    pages_.forget(number);
}

template <typename Function>
void DatabaseFile::forEachMap(Function function) {
    for (const auto& [page, table] : tables_) {
        table->forEachMap(function);
    }
}

/// The first half of a flush: everything that is new becomes part of the file.
void DatabaseFile::secureReferences() {
    const FlushScope scope(*this);
    const auto allocate = [this] { return allocatePage(); };
    forEachMap([&](UsageMap& map) { map.prepare(pages_, allocate); });
    freePages_.prepare(pages_, allocate);
    forEachMap([&](UsageMap& map) { map.fill(pages_); });
    freePages_.fill(pages_);
    pages_.writeFreshPages();
    pages_.sync();
    freePages_.write(pages_);
    pages_.sync();
    forEachMap([&](UsageMap& map) { map.write(pages_); });
    pages_.sync();
    pages_.settle();
}

void DatabaseFile::flush() { flushAll(false); }

void DatabaseFile::flushAll(bool finished) {
    const bool changing = std::any_of(tables_.begin(), tables_.end(),
                                      [](const auto& table) { return table.second->isChanging(); });
    if (flushing_ || !changing) {
        return;
    }
    const FlushScope scope(*this);
    secureReferences();
    pages_.writeOldPages();
    pages_.sync();
    for (const auto& [page, table] : tables_) {
        table->applyDeferredErases();
    }
    secureReferences();
    pages_.writeOldPages();
    for (std::uint32_t page = released_.first(); page != PageSet::none;
         page = released_.next(page + 1)) {
        freePages_.remove(page);
        freeHint_ = std::min(freeHint_, page);
    }
    released_ = {};
    freePages_.prepare(pages_, [this] { return allocatePage(); });
    freePages_.fill(pages_);
    freePages_.write(pages_);
    if (finished) {
        pages_.sync();
    }
    writeDefinitions(finished);
    pages_.sync();
}

void DatabaseFile::writeDefinitions(bool finished) {
    for (const auto& [page, table] : tables_) {
        if (table->isChanging()) {
            table->writeDefinition(finished);
        }
    }
}

}  // namespace jet
