#include "searchcontrol/duplicates_page.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QShortcut>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>
#include <utility>

#include "controls/status_line.h"
#include "search/query_parser.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

constexpr int roomOfRow = 6;
/// Places of a group that are listed.
constexpr std::size_t mostPlaces = 1000;

/// A query knows days, no times.
std::string dateTerm(search::LocalTime time) {
    constexpr std::size_t lengthOfDay = 10;
    return time == search::unknownTime
               ? " !has:date"
               : " date:" + search::sortableDateText(time).substr(0, lengthOfDay);
}

}  // namespace

std::string queryOf(const search::Index& index, const search::DuplicateGroup& group,
                    const search::SameBy& sameBy) {
    const search::Row row = group.rows.front();
    std::string query = (group.isFolder ? "folder: start:end:" : "file: start:end:") +
                        search::quotedForQuery(index.name(row));
    if (!group.isFolder && sameBy.size && index.isSizeKnown(row)) {
        query += " size:" + std::to_string(index.size(row));
    }
    if (!group.isFolder && sameBy.date) {
        query += dateTerm(index.modified(row));
    }
    return query;
}

DuplicatesPage::DuplicatesPage(base::EventBoundary& boundary, QWidget* parent)
    : QWidget(parent), model_(boundary), slices_(boundary, this) {
    createWidgets();
    connect(comboSame_, &QComboBox::currentIndexChanged, this, [this] { begin(); });
    connect(listGroups_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &DuplicatesPage::showPlaces);
    connect(listGroups_, &QTableView::activated, this, &DuplicatesPage::chooseGroup);
    connect(listPlaces_, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { emit entryWanted(item->data(Qt::UserRole).toUInt()); });
}

void DuplicatesPage::createWidgets() {
    comboSame_ = new QComboBox(this);
    comboSame_->setObjectName("comboSame");
    comboSame_->setAccessibleName("Duplicates have the same");
    comboSame_->addItems({"name and size", "name, size and date", "name"});
    auto* label = new QLabel("Of the results, those with the &same", this);
    label->setBuddy(comboSame_);
    labelWasted_ = new controls::StatusLine("", this);
    labelWasted_->setObjectName("labelWasted");
    listGroups_ = new QTableView(this);
    listGroups_->setObjectName("listDuplicates");
    listGroups_->setAccessibleName("Duplicates");
    listGroups_->setModel(&model_);
    listGroups_->setSelectionBehavior(QTableView::SelectRows);
    listGroups_->setSelectionMode(QTableView::SingleSelection);
    listGroups_->setAlternatingRowColors(true);
    listGroups_->setShowGrid(false);
    listGroups_->setWordWrap(false);
    listGroups_->setTabKeyNavigation(false);
    listGroups_->verticalHeader()->hide();
    listGroups_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    listGroups_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + roomOfRow);
    listGroups_->setSortingEnabled(true);
    listGroups_->horizontalHeader()->setSortIndicator(DuplicatesModel::Wasted, Qt::DescendingOrder);
    listGroups_->horizontalHeader()->setHighlightSections(false);
    listGroups_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    listGroups_->horizontalHeader()->setSectionResizeMode(DuplicatesModel::Name,
                                                          QHeaderView::Stretch);
    listGroups_->horizontalHeader()->resizeSection(DuplicatesModel::Kind,
                                                   fontMetrics().averageCharWidth() * 20);
    listPlaces_ = new QListWidget(this);
    listPlaces_->setObjectName("listPlaces");
    listPlaces_->setAccessibleName("Places of the duplicates");
    auto* top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(comboSame_);
    top->addWidget(labelWasted_, 1);
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(listGroups_);
    splitter->addWidget(listPlaces_);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(splitter, 1);
}

search::SameBy DuplicatesPage::sameBy() const {
    switch (comboSame_->currentIndex()) {
        case 1:
            return {true, true, true};
        case 2:
            return {true, false, false};
        default:
            return {true, true, false};
    }
}

void DuplicatesPage::drop() {
    slices_.stop();
    model_.clear();
    listPlaces_->clear();
    search_.reset();
}

void DuplicatesPage::setHits(std::shared_ptr<const search::Index> index, Hits hits) {
    drop();
    index_ = std::move(index);
    hits_ = std::move(hits);
    isStale_ = true;
    if (isVisible()) {
        begin();
    } else {
        labelWasted_->setText("");
    }
}

void DuplicatesPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (isStale_) {
        begin();
    }
}

void DuplicatesPage::begin() {
    drop();
    isStale_ = false;
    if (index_ == nullptr) {
        labelWasted_->setText("");
        return;
    }
    labelWasted_->setText("Looking for duplicates");
    search_ = std::make_unique<search::DuplicateSearch>(*index_, hits_, sameBy());
    slices_.start([this](const search::Budget& budget) { return lookOn(budget); });
}

bool DuplicatesPage::lookOn(const search::Budget& budget) {
    if (!search_->run(budget)) {
        return false;
    }
    model_.show(index_, &search_->groups());
    const QHeaderView* header = listGroups_->horizontalHeader();
    if (header->sortIndicatorSection() != DuplicatesModel::Wasted ||
        header->sortIndicatorOrder() != Qt::DescendingOrder) {
        model_.sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
    }
    labelWasted_->setText(
        countText(static_cast<std::int64_t>(search_->groups().size()), "group", "groups") + ", " +
        sizeText(search_->wasted()) + " could be saved");
    return true;
}

void DuplicatesPage::showPlaces() {
    listPlaces_->clear();
    const QModelIndex current = listGroups_->currentIndex();
    if (!current.isValid()) {
        return;
    }
    const auto& rows = model_.group(current.row()).rows;
    for (std::size_t i = 0; i < std::min(rows.size(), mostPlaces); ++i) {
        auto* item = new QListWidgetItem(text(search::mediumTitle(index_->medium(rows[i]))) +
                                         "   " + text(pathOnMedium(*index_, rows[i])));
        item->setData(Qt::UserRole, rows[i]);
        listPlaces_->addItem(item);
    }
}

void DuplicatesPage::chooseGroup() {
    const QModelIndex current = listGroups_->currentIndex();
    if (current.isValid()) {
        emit queryWanted(queryOf(*index_, model_.group(current.row()), sameBy()));
    }
}

}  // namespace searchcontrol
