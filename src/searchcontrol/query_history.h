#pragma once

#include <QString>
#include <QStringList>

#include "searchcontrol/settings_section.h"

namespace searchcontrol {

/// The queries that were used last, kept in one line of the settings file.
class QueryHistory {
  public:
    static constexpr int most = 200;

    explicit QueryHistory(SettingsSection settings);

    /// Adds a query as the latest one. One that is there already only moves up; blanks are none.
    void add(const QString& query);
    int size();
    /// The latest one is at 0.
    const QString& at(int place);

  private:
    void read();

    SettingsSection settings_;
    QStringList queries_;
    bool isRead_ = false;  ///< not before somebody asks: start-up does not wait for it
};

}  // namespace searchcontrol
