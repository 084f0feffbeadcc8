#include "jet/checker.h"

#include <map>
#include <optional>

#include "base/failure.h"
#include "base/random_access_file.h"
#include "jet/bytes.h"
#include "jet/data_page.h"
#include "jet/file_access.h"
#include "jet/header_page.h"
#include "jet/index_key.h"
#include "jet/index_page.h"
#include "jet/page_census.h"
#include "jet/page_file.h"
#include "jet/system_tables.h"
#include "jet/table_check.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

using base::EngineFailure;
using base::EngineFault;

constexpr std::uint32_t catalogPage = 2;
constexpr std::int32_t tableType = 1;

/// A row of the catalog, as far as the check goes.
struct Entry {
    std::int32_t id = 0;
    std::int32_t parentId = 0;
    std::int32_t type = 0;
    std::string name;
    RowPointer home;
};

/// The check of one file, from the catalog on.
class Checker {
  public:
    Checker(PageFile& pages, CheckReport& report)
        : pages_(pages), report_(report), census_(pages, report) {}

    void run() {
        report_.pageCount = pages_.pageCount();
        checkFreePageMap();
        const PageSet notFree = census_.readFreePages();
        if (const auto catalog = readDefinition(catalogPage, "MSysObjects")) {
            checkCatalog(*catalog);
        }
        census_.compare(notFree);
    }

  private:
    /// Page 1 is well known: two rows, owner 1.
    void checkFreePageMap() {
        const PageHandle page = pages_.read(1);
        const DataPage view(pages_.format(), *page);
        if (!view.wellFormed() || view.slotCount() < 2 || !view.hasExactFreeBytes()) {
            report_.damage(1, "the page of the map of free pages is not in order");
        }
    }

    std::optional<StoredTable> readDefinition(std::uint32_t page, const std::string& name) {
        try {
            return StoredTable::read(pages_, page, name);
        } catch (const EngineFailure& failure) {
            report_.damage(page, "table " + name + " cannot be read: " + failure.text());
            return std::nullopt;
        }
    }

    void checkCatalog(const StoredTable& catalog) {
        ++report_.tableCount;
        TableCheck check(pages_, census_, report_, catalog);
        check.run([&](RowPointer home, const RowView& row) { noteEntry(catalog, home, row); });
        checkCatalogIndexes(catalog, check);
        for (const Entry& entry : entries_) {
            if (entry.type == tableType && entry.id != static_cast<std::int32_t>(catalogPage)) {
                checkTable(entry);
            }
        }
    }

    static ByteSpan bytesOf(const StoredTable& table, const char* name, const RowView& row) {
        const int position = table.definition().find(name);
        if (position < 0) {
            return {};
        }
        const StoredColumn& column = table.columns[static_cast<std::size_t>(position)];
        return row.isPresent(column.number) ? row.bytes(column) : ByteSpan{};
    }

    static std::int32_t numberIn(ByteSpan bytes) {
        return bytes.size() >= 4   ? static_cast<std::int32_t>(get32(bytes.data()))
               : bytes.size() >= 2 ? static_cast<std::int16_t>(get16(bytes.data()))
                                   : 0;
    }

    void noteEntry(const StoredTable& catalog, RowPointer home, const RowView& row) {
        Entry entry;
        entry.id = numberIn(bytesOf(catalog, "Id", row));
        entry.parentId = numberIn(bytesOf(catalog, "ParentId", row));
        entry.type = numberIn(bytesOf(catalog, "Type", row));
        appendDecodedText(pages_.format(), asText(bytesOf(catalog, "Name", row)), entry.name);
        entry.home = home;
        if (!ids_.emplace(entry.id, home.page).second) {
            report_.damage(home.page, "row " + std::to_string(home.slot) +
                                          " of the catalog has an id that another row has");
        } else if (entry.type == tableType) {
            entries_.push_back(entry);
        }
        keys_.push_back(std::move(entry));
    }

    /// A reader finds a table through the indexes on ParentId and Name, and on Id.
    void checkCatalogIndexes(const StoredTable& catalog, const TableCheck& check) {
        for (std::size_t i = 0; i < catalog.indexes.size(); ++i) {
            const bool byName = namesOf(catalog, catalog.indexes[i]) == "ParentId Name ";
            if (!byName && namesOf(catalog, catalog.indexes[i]) != "Id ") {
                continue;
            }
            for (const Entry& entry : keys_) {
                std::string key;
                appendLongKey(byName ? entry.parentId : entry.id, key);
                if (!byName ||
                    (isPlain(entry.name) && appendTextKey(pages_.format(), entry.name, key))) {
                    lookUp(check, i, key, entry.home, "the catalog's row of " + entry.name);
                }
            }
        }
        keys_.clear();
    }

    static std::string namesOf(const StoredTable& table, const StoredIndex& index) {
        std::string names;
        for (const auto& [number, ascending] : index.columns) {
            for (const StoredColumn& column : table.columns) {
                if (column.number == number && ascending) {
                    names += column.field.name + " ";
                }
            }
        }
        return names;
    }

    /// Sort keys of other characters depend on the sort order of the database.
    static bool isPlain(const std::string& name) {
        for (const char c : name) {
            if (static_cast<unsigned char>(c) >= 0x80) {
                return false;
            }
        }
        return true;
    }

    void lookUp(const TableCheck& table, std::size_t index, const std::string& key, RowPointer home,
                const std::string& what) {
        if (!table.indexes()[index].contains(IndexPage::leafEntry(key, home))) {
            report_.add(table.wasInterrupted() ? CheckFinding::Kind::Unfinished
                                               : CheckFinding::Kind::Damage,
                        home.page,
                        "row " + std::to_string(home.slot) + ", " + what +
                            ", is not found through its index");
        }
    }

    void checkTable(const Entry& entry) {
        if (entry.id < static_cast<std::int32_t>(catalogPage) ||
            static_cast<std::uint32_t>(entry.id) >= pages_.pageCount()) {
            report_.damage(entry.home.page, "the catalog says that table " + entry.name +
                                                " begins on page " + std::to_string(entry.id));
            return;
        }
        const auto table = readDefinition(static_cast<std::uint32_t>(entry.id), entry.name);
        if (!table) {
            return;
        }
        ++report_.tableCount;
        TableCheck check(pages_, census_, report_, *table);
        if (entry.name != "MSysACEs") {
            check.run();
            return;
        }
        std::vector<std::pair<std::int32_t, RowPointer>> rights;
        check.run([&](RowPointer home, const RowView& row) {
            rights.emplace_back(numberIn(bytesOf(*table, "ObjectId", row)), home);
        });
        for (std::size_t i = 0; i < table->indexes.size(); ++i) {
            if (namesOf(*table, table->indexes[i]) != "ObjectId ") {
                continue;
            }
            for (const auto& [object, home] : rights) {
                std::string key;
                appendLongKey(object, key);
                lookUp(check, i, key, home, "a right over object " + std::to_string(object));
            }
        }
    }

    PageFile& pages_;
    CheckReport& report_;
    PageCensus census_;
    std::vector<Entry> entries_;  ///< tables
    std::vector<Entry> keys_;     ///< all rows, until the indexes have been checked
    std::map<std::int32_t, std::uint32_t> ids_;
};

}  // namespace

CheckReport checkDatabase(base::FileOpener& files, const std::string& path,
                          const CheckOptions& options) {
    CheckReport report;
    auto file = openExisting(files, path, false);
    try {
        const Format& format = recogniseFile(*file, path, files, options.lockWaitMilliseconds);
        PageFile pages(std::move(file), format, path, options.pageCacheBytes);
        const HeaderPage header(format, readStart(pages.file(), format.pageSize), path);
        if (pages.trailingBytes() != 0) {
            report.unfinished(pages.pageCount(), std::to_string(pages.trailingBytes()) +
                                                     " bytes at the end of the file make no page");
        }
        Checker(pages, report).run();
    } catch (const EngineFailure& failure) {
        if (failure.fault() != EngineFault::Damaged) {
            throw;
        }
        report.damage(0, failure.text());
    }
    return report;
}

}  // namespace jet
