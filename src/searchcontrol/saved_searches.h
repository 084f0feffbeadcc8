#pragma once

#include <QString>
#include <vector>

#include "searchcontrol/settings_section.h"

namespace searchcontrol {

/// Queries that were given names, in the order of their names, kept in a section of the settings
/// file.
class SavedSearches {
  public:
    struct Search {
        QString name;
        QString query;
        friend bool operator==(const Search&, const Search&) = default;
    };

    explicit SavedSearches(SettingsSection settings);

    const std::vector<Search>& all();
    /// Keeps a query under a name; one of that name, letter case ignored, gives way to it. Without
    /// a name nothing is kept.
    void save(const QString& name, const QString& query);
    void forget(const QString& name);

  private:
    void read();
    void write();

    SettingsSection settings_;
    std::vector<Search> searches_;
    bool isRead_ = false;
};

}  // namespace searchcontrol
