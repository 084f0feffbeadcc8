#include "searchcontrol/saved_searches.h"

#include <algorithm>
#include <utility>

namespace searchcontrol {

namespace {

/// More than anybody will keep; a settings file that says otherwise is not believed.
constexpr int most = 1000;

std::string nameKey(std::size_t number) { return "name" + std::to_string(number); }
std::string queryKey(std::size_t number) { return "query" + std::to_string(number); }

}  // namespace

SavedSearches::SavedSearches(SettingsSection settings) : settings_(std::move(settings)) {}

const std::vector<SavedSearches::Search>& SavedSearches::all() {
    read();
    return searches_;
}

void SavedSearches::read() {
    if (isRead_) {
        return;
    }
    isRead_ = true;
    const int count = std::clamp(settings_.readNumber("count"), 0, most);
    for (std::size_t i = 1; i <= static_cast<std::size_t>(count); ++i) {
        Search search{settings_.read(nameKey(i)), settings_.read(queryKey(i))};
        if (!search.name.isEmpty()) {
            searches_.push_back(std::move(search));
        }
    }
}

void SavedSearches::write() {
    std::size_t number = 0;
    for (const Search& search : searches_) {
        ++number;
        settings_.write(nameKey(number), search.name);
        settings_.write(queryKey(number), search.query);
    }
    settings_.writeNumber("count", static_cast<int>(number));
}

void SavedSearches::save(const QString& name, const QString& query) {
    const QString kept = name.trimmed();
    if (kept.isEmpty()) {
        return;
    }
    read();
    std::erase_if(searches_, [&](const Search& each) {
        return each.name.compare(kept, Qt::CaseInsensitive) == 0;
    });
    searches_.push_back({kept, query});
    std::sort(searches_.begin(), searches_.end(), [](const Search& left, const Search& right) {
        return left.name.compare(right.name, Qt::CaseInsensitive) < 0;
    });
    write();
}

void SavedSearches::forget(const QString& name) {
    read();
    if (std::erase_if(searches_, [&](const Search& each) { return each.name == name; }) > 0) {
        write();
    }
}

}  // namespace searchcontrol
