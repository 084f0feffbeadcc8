#include "searchcontrol/facet_panel.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTimer>

#include "controls/tip_text.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

constexpr int termRole = Qt::UserRole;

}  // namespace

FacetPanel::FacetPanel(QWidget* parent) : QTreeWidget(parent) {
    setObjectName("tvFacets");
    setAccessibleName("Narrow the results");
    setToolTip("Click to narrow the results, Ctrl and click to exclude");
    setColumnCount(2);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setRootIsDecorated(true);
    setIndentation(indentation() * 2 / 3);
    setTextElideMode(Qt::ElideMiddle);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    addGroup("Media", search::Grouping::Medium);
    addGroup("Extensions", search::Grouping::Extension);
    addGroup("Years", search::Grouping::Year);
    addGroup("Keywords", search::Grouping::Keywords);
    connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        choose(item, (QApplication::keyboardModifiers() & Qt::ControlModifier) != 0);
    });
}

void FacetPanel::addGroup(const char* title, search::Grouping grouping) {
    auto* item = new QTreeWidgetItem(this, {title});
    QFont font = item->font(0);
    font.setBold(true);
    item->setFont(0, font);
    item->setExpanded(true);
    groups_.push_back({item, grouping, {}});
}

void FacetPanel::show(const search::Breakdown* counts) {
    for (Group& group : groups_) {
        group.lines = counts == nullptr ? std::vector<search::BreakdownLine>()
                                        : counts->lines(group.grouping);
        if (group.grouping == search::Grouping::Year) {
            // The latest first: that is what is looked for most.
            std::reverse(group.lines.begin(), group.lines.end());
        }
        group.isWhole = false;
        fill(group);
    }
}

void FacetPanel::fill(Group& group) {
    qDeleteAll(group.item->takeChildren());
    const std::size_t shown = std::min(group.lines.size(), group.isWhole ? mostLines : firstLines);
    QList<QTreeWidgetItem*> items;
    for (std::size_t i = 0; i < shown; ++i) {
        const search::BreakdownLine& line = group.lines[i];
        auto* item = new QTreeWidgetItem(
            {text(line.label), countText(static_cast<std::int64_t>(line.entries))});
        item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        item->setData(0, termRole, text(line.term));
        item->setToolTip(0, controls::tipText(text(line.label)));
        items.append(item);
    }
    const auto rest = static_cast<std::int64_t>(group.lines.size() - shown);
    if (rest > 0 && group.isWhole) {
        auto* item = new QTreeWidgetItem({"and " + countText(rest, "other", "others")});
        item->setFlags(Qt::NoItemFlags);
        items.append(item);
    } else if (rest > 0) {
        items.append(new QTreeWidgetItem(
            {"All " + countText(static_cast<std::int64_t>(group.lines.size())) + "\u2026"}));
    }
    group.item->addChildren(items);
    group.item->setHidden(items.isEmpty());
}

void FacetPanel::showAll(const QTreeWidgetItem* groupItem) {
    for (Group& group : groups_) {
        if (group.item == groupItem) {
            group.isWhole = true;
            fill(group);
        }
    }
}

void FacetPanel::choose(QTreeWidgetItem* item, bool excludes) {
    if (item == nullptr || item->parent() == nullptr) {
        return;
    }
    const std::string term = item->data(0, termRole).toString().toStdString();
    if (term.empty()) {
        // The item goes with the lines of its group, but not while its click is handled.
        QTimer::singleShot(0, this, [this, parent = item->parent()] { showAll(parent); });
    } else if (excludes) {
        emit excluded(term);
    } else {
        emit narrowed(term);
    }
}

/// Ctrl+Enter excludes here, whatever it does elsewhere in the window.
bool FacetPanel::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            event->accept();
            return true;
        }
    }
    return QTreeWidget::event(event);
}

void FacetPanel::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter || event->key() == Qt::Key_Space) {
        choose(currentItem(), (event->modifiers() & Qt::ControlModifier) != 0);
        return;
    }
    QTreeWidget::keyPressEvent(event);
}

}  // namespace searchcontrol
