#pragma once

#include <QTimer>
#include <QTreeWidget>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "explore/explore_controls.h"

namespace shell {

class ImageList;

/// The archive's tree. Nodes are found by their keys at once, however many there are; their images
/// come from an image list.
///
/// A click with the mouse clicks the node that it hits, and so do Enter and Space the current one.
/// Moving to a node with the other keys clicks it as well, but only when the keys rest: who goes
/// past ten media does not want all of them read, and not one inside the reading of another.
class ArchiveTree : public QTreeWidget, public explore::TreeControl {
  public:
    /// How long the keys have to rest, in milliseconds.
    static constexpr int restOfKeys = 250;

    explicit ArchiveTree(QWidget* parent);

    /// Where images come from; must outlive the tree. Without it nodes have none.
    void setImageList(const ImageList* images) { images_ = images; }
    /// What a click on the node of that key does. It must let no exception pass.
    void onNodeClick(std::function<void(const std::string& key)> action) {
        nodeClick_ = std::move(action);
    }

    void clearNodes() override;
    void addRootNode(const explore::TreeNode& node) override;
    void addChildNode(const std::string& parentKey, const explore::TreeNode& node) override;

    /// The node of that key; null where there is none.
    QTreeWidgetItem* node(const std::string& key) const;
    /// Makes the node of that key current and brings it into view, without clicking it.
    void showNode(const std::string& key);
    /// The key of a node of this tree.
    static const std::string& keyOf(const QTreeWidgetItem* item);

    /// Brings a node into view; sideways only as far as its text needs it.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    class Node;

    std::unique_ptr<Node> createNode(const explore::TreeNode& node) const;
    void enter(Node* node);
    void click(QTreeWidgetItem* item);
    void clickWhereKeysRest();
    void expandWhenRead(QTreeWidgetItem* item);

    const ImageList* images_ = nullptr;
    std::function<void(const std::string&)> nodeClick_;
    std::unordered_map<std::string_view, Node*> nodes_;  // the texts are the nodes' own
    QTimer keysRest_;
    int clicksRunning_ = 0;
    std::string expandWhenRead_;  // the key of a node without children that was double-clicked
};

}  // namespace shell
