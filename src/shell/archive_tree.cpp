#include "shell/archive_tree.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <memory>
#include <utility>

#include "base/failure.h"
#include "controls/roomy_rows.h"
#include "controls/tip_text.h"
#include "shell/pictures.h"

namespace shell {

class ArchiveTree::Node : public QTreeWidgetItem {
  public:
    Node(std::string key, const QString& text, QIcon image, QIcon selectedImage)
        : QTreeWidgetItem(UserType),
          key_(std::move(key)),
          text_(text),
          image_(std::move(image)),
          selectedImage_(std::move(selectedImage)) {}

    const std::string& key() const { return key_; }

    QVariant data(int column, int role) const override {
        switch (role) {
            case Qt::DisplayRole:
                return text_;
            case Qt::DecorationRole:
                return isSelected() ? selectedImage_ : image_;
            case Qt::ToolTipRole:
                return controls::tipText(text_);
            default:
                return QTreeWidgetItem::data(column, role);
        }
    }

  private:
    std::string key_;
    QString text_;
    QIcon image_;
    QIcon selectedImage_;
};

ArchiveTree::ArchiveTree(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setItemDelegate(new controls::RoomyRows(this));
    // Without this every row would be measured before the first one is shown.
    setUniformRowHeights(true);
    // Texts that do not fit are reached by scrolling; deep folders would not be seen at all.
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::itemClicked, this, &ArchiveTree::click);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &ArchiveTree::expandWhenRead);
    keysRest_.setSingleShot(true);
    keysRest_.setInterval(restOfKeys);
    keysRest_.callOnTimeout(this, &ArchiveTree::clickWhereKeysRest);
}

void ArchiveTree::clearNodes() {
    keysRest_.stop();
    nodes_.clear();
    clear();
}

void ArchiveTree::addRootNode(const explore::TreeNode& node) {
    std::unique_ptr<Node> added = createNode(node);
    enter(added.get());
    addTopLevelItem(added.release());
}

void ArchiveTree::addChildNode(const std::string& parentKey, const explore::TreeNode& node) {
    QTreeWidgetItem* parent = this->node(parentKey);
    if (parent == nullptr) {
        throw base::InvalidArgumentFailure("the tree has no node \"" + parentKey + "\"");
    }
    std::unique_ptr<Node> added = createNode(node);
    enter(added.get());
    parent->addChild(added.release());
}

std::unique_ptr<ArchiveTree::Node> ArchiveTree::createNode(const explore::TreeNode& node) const {
    const auto image = [this](const std::string& key) {
        return images_ == nullptr ? QIcon() : images_->image(QString::fromStdString(key));
    };
    return std::make_unique<Node>(
        node.key, QString::fromStdString(node.text), image(node.image),
        image(node.selectedImage.empty() ? node.image : node.selectedImage));
}

void ArchiveTree::enter(Node* node) {
    if (!nodes_.emplace(node->key(), node).second) {
        throw base::InvalidArgumentFailure("the tree has a node \"" + node->key() + "\" already");
    }
}

QTreeWidgetItem* ArchiveTree::node(const std::string& key) const {
    const auto found = nodes_.find(key);
    return found == nodes_.end() ? nullptr : found->second;
}

void ArchiveTree::showNode(const std::string& key) {
    if (QTreeWidgetItem* found = node(key)) {
        setCurrentItem(found);
        scrollToItem(found);
    }
}

const std::string& ArchiveTree::keyOf(const QTreeWidgetItem* item) {
    return static_cast<const Node*>(item)->key();
}

void ArchiveTree::click(QTreeWidgetItem* item) {
    keysRest_.stop();
    if (nodeClick_) {
        ++clicksRunning_;
        // A copy: the node may be gone before the click has ended.
        nodeClick_(std::string(keyOf(item)));
        --clicksRunning_;
        if (QTreeWidgetItem* node = this->node(expandWhenRead_)) {
            node->setExpanded(true);
        }
        expandWhenRead_.clear();
    }
}

/// A medium has no children to be shown until it has been read, which the first half of a double
/// click has only just begun.
void ArchiveTree::expandWhenRead(QTreeWidgetItem* item) {
    if (clicksRunning_ > 0 && item->childCount() == 0) {
        expandWhenRead_ = keyOf(item);
    }
}

void ArchiveTree::keyPressEvent(QKeyEvent* event) {
    const QTreeWidgetItem* before = currentItem();
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
        case Qt::Key_Select:
            if (event->isAutoRepeat()) {
                return;  // a key that is held down clicks once
            }
            if (currentItem() != nullptr) {
                setCurrentItem(currentItem());
                click(currentItem());
                return;
            }
            break;
        default:
            break;
    }
    QTreeWidget::keyPressEvent(event);
    if (currentItem() != before) {
        keysRest_.start();
    }
}

void ArchiveTree::clickWhereKeysRest() {
    if (clicksRunning_ > 0) {
        keysRest_.start();
    } else if (currentItem() != nullptr) {
        click(currentItem());
    }
}

/// The view's own way would go back to the left margin with every click, away from deep folders.
void ArchiveTree::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QScrollBar* sideways = horizontalScrollBar();
    const int before = sideways->value();
    QTreeWidget::scrollTo(index, hint);
    sideways->setValue(before);
    const QRect row = visualRect(index);
    const int textEnd = row.left() + sizeHintForIndex(index).width();
    const int beyond = textEnd - viewport()->width();
    if (row.left() < 0 || beyond > 0) {
        sideways->setValue(before + qMin(row.left(), qMax(beyond, 0)));
    }
}

void ArchiveTree::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    // Short texts are no narrower than the tree, so that all of a row can be clicked.
    header()->setMinimumSectionSize(viewport()->width());
}

}  // namespace shell
