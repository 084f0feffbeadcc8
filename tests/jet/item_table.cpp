#include "tests/jet/item_table.h"

#include <algorithm>
#include <set>

namespace jet_test {

namespace {

enum Column { Id, Medium, Name, Note };

std::string describe(const Item& item) {
    return "row " + std::to_string(item.id) + " (medium " + std::to_string(item.medium) +
           ", name of " + std::to_string(item.name.size()) + " bytes, note of " +
           std::to_string(item.note.size()) + ")";
}

}  // namespace

ItemModel::Versions& ItemModel::versions(std::int32_t id) {
    Versions& versions = rows_[id];
    if (versions.empty()) {
        versions.push_back(std::nullopt);
    }
    return versions;
}

void ItemModel::flushed() {
    for (auto row = rows_.begin(); row != rows_.end();) {
        row->second.erase(row->second.begin(), row->second.end() - 1);
        row = row->second.front() ? std::next(row) : rows_.erase(row);
    }
}

void ItemModel::adopt(const std::vector<Item>& found) {
    rows_.clear();
    for (const Item& item : found) {
        rows_[item.id] = {item};
    }
}

std::vector<Item> ItemModel::items() const {
    std::vector<Item> items;
    for (const auto& [id, versions] : rows_) {
        if (versions.back()) {
            items.push_back(*versions.back());
        }
    }
    return items;
}

std::string ItemModel::complaint(const std::vector<Item>& found, Accept accept) const {
    std::set<std::int32_t> seen;
    const auto mayBe = [&](const Versions& versions, const std::optional<Item>& item) {
        return accept == Accept::Last
                   ? versions.back() == item
                   : std::find(versions.begin(), versions.end(), item) != versions.end();
    };
    for (const Item& item : found) {
        if (!seen.insert(item.id).second) {
            return describe(item) + " is there twice";
        }
        const auto row = rows_.find(item.id);
        if (row == rows_.end() || !mayBe(row->second, item)) {
            return describe(item) + " was never stored like that";
        }
    }
    for (const auto& [id, versions] : rows_) {
        if (!seen.contains(id) && !mayBe(versions, std::nullopt)) {
            return "row " + std::to_string(id) + " is lost";
        }
    }
    return {};
}

ItemSession::ItemSession(support::FaultyFiles& files, const std::string& path, ItemModel& model,
                         jet::EngineOptions options)
    : engine_(std::make_shared<jet::Engine>(files, options)),
      path_(path),
      model_(model),
      connection_(*engine_) {
    open(path);
}

ItemSession::ItemSession(ItemSession& other, ItemModel& model)
    : engine_(other.engine_), path_(other.path_), model_(model), connection_(*engine_) {
    open(path_);
}

void ItemSession::open(const std::string& path) {
    connection_.open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
    rows_.open("items", connection_, jet::CursorType::Dynamic, jet::LockType::Optimistic,
               jet::CommandType::Table);
}

void ItemSession::create(support::FaultyFiles& files, const std::string& path,
                         jet::FileFormat format, jet::EngineOptions options) {
    jet::Engine engine(files, options);
    jet::CreateOptions create;
    create.format = format;
    create.creationDate = 42329.25;
    auto database = jet::Database::create(engine, path, ";LANGID=0x0409;CP=1252;COUNTRY=0", create);
    using enum jet::DataType;
    database.append(
        {"items", {{"Id", Long}, {"Medium", Long}, {"Name", Text}, {"Note", Memo}}, {}});
    database.append({"media", {{"Id", Long}, {"Label", Text}}, {}});
    database.close();
}

void ItemSession::set(const Item& item, const Item* old) {
    rows_.setInteger(Id, item.id);
    rows_.setInteger(Medium, item.medium);
    rows_.setText(Name, item.name);
    if (old == nullptr || old->note != item.note) {
        rows_.setText(Note, item.note);
    }
}

void ItemSession::insert(const Item& item) {
    model_.put(item);
    rows_.addNew();
    set(item, nullptr);
    rows_.update();
}

Item ItemSession::current() {
    return {rows_.integer(Id), rows_.integer(Medium), rows_.text(Name), rows_.text(Note)};
}

void ItemSession::change(const std::function<Decision(Item&)>& decide, const std::string& filter) {
    rows_.setFilter(filter);
    for (; !rows_.endOfFile(); rows_.moveNext()) {
        const Item old = current();
        Item item = old;
        switch (decide(item)) {
            case Decision::Keep:
                break;
            case Decision::Replace:
                model_.put(item);
                set(item, &old);
                rows_.update();
                break;
            case Decision::Delete:
                model_.erase(item.id);
                rows_.deleteCurrent();
                break;
        }
    }
    rows_.setFilter("");
}

void ItemSession::deleteMedium(std::int32_t medium) {
    change([](Item&) { return Decision::Delete; }, "Medium='" + std::to_string(medium) + "'");
}

std::vector<Item> ItemSession::read() {
    std::vector<Item> items;
    rows_.setFilter("");
    for (rows_.moveFirst(); !rows_.endOfFile(); rows_.moveNext()) {
        items.push_back(current());
    }
    return items;
}

void ItemSession::flush() {
    connection_.flush();
    model_.flushed();
}

void ItemSession::close() {
    rows_.close();
    connection_.close();
    model_.flushed();
}

std::string someText(std::uint32_t seed, std::size_t length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        seed = seed * 1664525u + 1013904223u;
        const std::uint32_t pick = seed >> 24;
        if (pick == 0) {
            text += "\xC3\xA9";  // e with an acute accent, in both formats
        } else {
            text.push_back(static_cast<char>('a' + pick % 26));
        }
    }
    return text;
}

std::string textOf(const jet::CheckReport& report) {
    std::string text;
    for (const jet::CheckFinding& finding : report.findings()) {
        static const char* const kinds[] = {"damage", "unfinished", "lost space"};
        text += std::string(kinds[static_cast<int>(finding.kind)]) + ", page " +
                std::to_string(finding.page) + ": " + finding.text + "\n";
    }
    return text;
}

}  // namespace jet_test
