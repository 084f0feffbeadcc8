#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jet/checker.h"
#include "jet/connection.h"
#include "jet/database.h"
#include "jet/engine.h"
#include "jet/recordset.h"
#include "tests/support/faulty_files.h"

// A table of items, and a simple model of what must be in it: the judge of the tests that stop the
// engine in the middle of its work.

namespace jet_test {

/// One row of the table; `id` tells rows apart.
struct Item {
    std::int32_t id = 0;
    std::int32_t medium = 0;
    std::string name;
    std::string note;  ///< a memo

    friend bool operator==(const Item&, const Item&) = default;
};

/// What may be in the table, row by row: the version stored last by a flush that returned, and
/// every version since. No version is a version too.
class ItemModel {
  public:
    void put(const Item& item) { versions(item.id).push_back(item); }
    void erase(std::int32_t id) { versions(id).push_back(std::nullopt); }
    /// The last versions are on the medium: the others may not come back.
    void flushed();
    /// Takes what was found for what is there.
    void adopt(const std::vector<Item>& found);
    /// The last versions.
    std::vector<Item> items() const;
    std::size_t size() const { return items().size(); }

    /// Why the rows found cannot be; empty when they can. `last`: only the last versions can.
    enum class Accept { Last, AnySinceFlush };
    std::string complaint(const std::vector<Item>& found, Accept accept) const;

  private:
    using Versions = std::vector<std::optional<Item>>;
    Versions& versions(std::int32_t id);

    std::map<std::int32_t, Versions> rows_;
};

/// A connection to the table by an engine of its own, whose cache is as small as can be. Each
/// change goes to the model, too, before it is tried.
class ItemSession {
  public:
    enum class Decision { Keep, Replace, Delete };

    ItemSession(support::FaultyFiles& files, const std::string& path, ItemModel& model,
                jet::EngineOptions options = smallCache());
    /// On another session's engine: two connections of one process.
    ItemSession(ItemSession& other, ItemModel& model);

    static jet::EngineOptions smallCache() { return {.pageCacheBytes = 1}; }
    /// Makes the file with two tables, "items" and "media", and closes it.
    static void create(support::FaultyFiles& files, const std::string& path, jet::FileFormat format,
                       jet::EngineOptions options = smallCache());

    void insert(const Item& item);
    /// Looks at every row that `filter` lets through and does what `decide` says; a replaced row
    /// takes the item as `decide` has left it.
    void change(const std::function<Decision(Item&)>& decide, const std::string& filter = {});
    void deleteMedium(std::int32_t medium);
    std::vector<Item> read();
    std::int64_t recordCount() { return rows_.recordCount(); }
    void flush();
    void close();
    jet::Connection& connection() { return connection_; }
    jet::Recordset& rows() { return rows_; }

  private:
    void open(const std::string& path);
    Item current();
    void set(const Item& item, const Item* old);

    std::shared_ptr<jet::Engine> engine_;
    std::string path_;
    ItemModel& model_;
    jet::Connection connection_;
    jet::Recordset rows_;
};

/// The text of `length` characters that belongs to a seed; mostly plain letters, some others among
/// them.
std::string someText(std::uint32_t seed, std::size_t length);

/// The findings as lines, for a test's message.
std::string textOf(const jet::CheckReport& report);

}  // namespace jet_test
