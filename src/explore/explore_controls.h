#pragma once

#include <functional>
#include <string>
#include <vector>

// What exploring an archive needs of the main window. The window's tree and list are such controls;
// tests bring their own.

namespace explore {

/// One line of the archive's tree.
struct TreeNode {
    std::string key;            ///< the archive's own path text, or "12:" for medium 12
    std::string text;           ///< what is shown
    std::string image;          ///< key of its image
    std::string selectedImage;  ///< key of its image while it is selected; empty: the same
};

/// The archive's tree. Keys are exact texts, letter case included, and each is used once.
class TreeControl {
  public:
    virtual ~TreeControl() = default;

    virtual void clearNodes() = 0;
    /// Adds a node behind the other roots. InvalidArgumentFailure where its key is in use.
    virtual void addRootNode(const TreeNode& node) = 0;
    /// Adds a node behind the other children of the node of that key. InvalidArgumentFailure where
    /// there is no such parent, or where the node's own key is in use.
    virtual void addChildNode(const std::string& parentKey, const TreeNode& node) = 0;
};

/// The record list.
class ListControl {
  public:
    /// A row's own text and its sub-items.
    using Row = std::vector<std::string>;

    virtual ~ListControl() = default;

    /// Its whole width, in twips (1/1440 inch).
    virtual int widthInTwips() const = 0;
    /// Inserts a left-aligned column before the one that is at `position`, from 1.
    virtual void insertColumn(int position, const std::string& heading, int widthInTwips) = 0;
    virtual void removeAllRows() = 0;
    /// Appends the rows in their order; a list that is sorted shows them at their sorted places.
    virtual void appendRows(std::vector<Row> rows) = 0;
};

/// What exploring sets off outside its two controls. Whoever builds the program connects the
/// commands; one that is not connected does nothing.
struct ExploreCommands {
    /// Shows and lays out the workspace.
    std::function<void()> arrangeWorkspace;
    /// The window that is there while a medium is read; neither call waits for anything.
    std::function<void()> showLoading;
    std::function<void()> hideLoading;
    /// Shows the open-archive window and does not wait for it.
    std::function<void()> showOpenWindow;
};

}  // namespace explore
