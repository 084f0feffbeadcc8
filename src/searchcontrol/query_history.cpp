#include "searchcontrol/query_history.h"

#include <utility>

namespace searchcontrol {

namespace {

constexpr const char* historyKey = "history";
/// Between two queries; no query holds it.
constexpr QChar border = '\t';

}  // namespace

QueryHistory::QueryHistory(SettingsSection settings) : settings_(std::move(settings)) {}

void QueryHistory::read() {
    if (!isRead_) {
        isRead_ = true;
        queries_ = settings_.read(historyKey).split(border, Qt::SkipEmptyParts).mid(0, most);
    }
}

int QueryHistory::size() {
    read();
    return static_cast<int>(queries_.size());
}

const QString& QueryHistory::at(int place) {
    read();
    return queries_[place];
}

void QueryHistory::add(const QString& query) {
    read();
    const QString added = QString(query).replace(border, ' ').trimmed();
    if (added.isEmpty() || (!queries_.isEmpty() && queries_.first() == added)) {
        return;
    }
    queries_.removeAll(added);
    queries_.prepend(added);
    if (queries_.size() > most) {
        queries_.removeLast();
    }
    settings_.write(historyKey, queries_.join(border));
}

}  // namespace searchcontrol
