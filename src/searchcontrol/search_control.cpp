#include "searchcontrol/search_control.h"

#include <QKeyEvent>
#include <QTabWidget>
#include <QVBoxLayout>

#include "base/event_boundary.h"
#include "controls/status_line.h"
#include "platform/clock.h"
#include "platform/platform.h"
#include "search/query_parser.h"
#include "searchcontrol/query_line.h"
#include "searchcontrol/result_table.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

SearchControl::SearchControl(const search::SearchHost& host)
    : host_(host),
      reader_(host.engine, host.boundary, this),
      task_(host.boundary, this),
      history_(SettingsSection(host.platform.privateProfile(), host.platform.shell(), "search")) {
    setObjectName("search_control");
    setAccessibleName("Search");
    createWidgets();
    connectParts();
    showStatus();
}

SearchControl::~SearchControl() = default;

void SearchControl::createWidgets() {
    queryLine_ = new QueryLine(history_, this);
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName("tabSearch");
    table_ = new ResultTable(this);
    tabs_->addTab(table_, "Results");
    labelStatus_ = new controls::StatusLine("", this);
    labelStatus_->setObjectName("labelStatus");
    labelSelection_ = new controls::StatusLine("", this);
    labelSelection_->setObjectName("labelSelection");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(queryLine_);
    layout->addWidget(tabs_, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(labelStatus_, 2);
    bottom->addWidget(labelSelection_, 1);
    layout->addLayout(bottom);
    setFocusProxy(queryLine_);
}

void SearchControl::connectParts() {
    const auto guarded = [this](auto action) {
        return [this, action] { host_.boundary.run([&] { (this->*action)(); }); };
    };
    connect(queryLine_, &QLineEdit::textChanged, this, guarded(&SearchControl::searchAnew));
    connect(&reader_, &ArchiveReader::indexChanged, this, guarded(&SearchControl::searchAnew));
    connect(&reader_, &ArchiveReader::progressed, this, &SearchControl::showStatus);
    connect(&task_, &SearchTask::foundMore, this, &SearchControl::showHits);
    connect(&task_, &SearchTask::finished, this, &SearchControl::showHits);
    connect(table_, &ResultTable::typed, this, [this](const QString& text) {
        queryLine_->setFocus();
        queryLine_->type(text);
    });
    connect(table_, &ResultTable::leftUpwards, queryLine_, [this] { queryLine_->setFocus(); });
    connect(queryLine_, &QueryLine::leftDownwards, table_, [this] {
        table_->setFocus();
        if (!table_->currentIndex().isValid()) {
            table_->selectRow(0);
        }
    });
}

search::LocalTime SearchControl::now() const {
    const platform::SystemTime now = host_.platform.clock().localNow();
    return search::localTime(
        {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond});
}

void SearchControl::setArchivePath(const QString& path) {
    host_.boundary.run([&] { reader_.setPath(path); });
}

bool SearchControl::isBusy() const { return reader_.isReading() || task_.isRunning(); }

void SearchControl::searchAnew() {
    query_ = search::parseQuery(queryLine_->query(), now());
    if (reader_.index() == nullptr) {
        task_.stop();
        table_->show(nullptr, {});
    } else {
        task_.start(reader_.index(), query_);
    }
    showStatus();
}

void SearchControl::showHits() {
    table_->show(task_.run()->sharedIndex(), task_.run()->hits());
    showStatus();
}

void SearchControl::showStatus() { labelStatus_->setText(statusText()); }

QString SearchControl::statusText() const {
    if (!query_.notices.empty()) {
        return text(query_.notices.front().text);
    }
    if (!reader_.obstacle().isEmpty()) {
        return "The archive cannot be read: " + reader_.obstacle();
    }
    if (reader_.path().isEmpty()) {
        return "No archive is open";
    }
    if (reader_.index() == nullptr) {
        return "Reading the archive: " + countText(reader_.done()) + " of about " +
               countText(reader_.expected());
    }
    if (task_.run() == nullptr) {
        return {};
    }
    return countText(static_cast<std::int64_t>(task_.run()->found()), "hit", "hits") +
           (task_.isRunning() ? ", searching" : "");
}

void SearchControl::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !queryLine_->text().isEmpty()) {
        queryLine_->setQuery("");
        queryLine_->setFocus();
        return;
    }
    // Without a query Escape is the window's, which closes.
    QWidget::keyPressEvent(event);
}

}  // namespace searchcontrol
