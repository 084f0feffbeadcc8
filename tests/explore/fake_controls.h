#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "explore/explore_controls.h"

namespace support {

/// Keeps its nodes in the order in which they were added; a child's line is "parent > key".
class FakeTree : public explore::TreeControl {
  public:
    void clearNodes() override {
        refuse();
        nodes.clear();
        lines.clear();
    }
    void addRootNode(const explore::TreeNode& node) override {
        refuse();
        add(node, node.key);
    }
    void addChildNode(const std::string& parentKey, const explore::TreeNode& node) override {
        refuse();
        if (atChild) {
            atChild();
        }
        if (!has(parentKey)) {
            throw base::InvalidArgumentFailure("no parent");
        }
        add(node, parentKey + " > " + node.key);
    }

    bool has(const std::string& key) const {
        return std::any_of(nodes.begin(), nodes.end(),
                           [&](const explore::TreeNode& node) { return node.key == key; });
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> result;
        for (const explore::TreeNode& node : nodes) {
            result.push_back(node.text);
        }
        return result;
    }
    std::vector<std::string> images() const {
        std::vector<std::string> result;
        for (const explore::TreeNode& node : nodes) {
            result.push_back(node.image);
        }
        return result;
    }

    std::vector<explore::TreeNode> nodes;
    std::vector<std::string> lines;
    bool refuses = false;
    std::function<void()> atChild;  // before a child is added

  private:
    void refuse() const {
        if (refuses) {
            throw base::InvalidArgumentFailure("the tree refuses");
        }
    }
    void add(const explore::TreeNode& node, const std::string& line) {
        if (has(node.key)) {
            throw base::InvalidArgumentFailure("the key is in use");
        }
        nodes.push_back(node);
        lines.push_back(line);
    }
};

/// Columns stand as "heading width".
class FakeList : public explore::ListControl {
  public:
    int widthInTwips() const override { return width; }
    void insertColumn(int position, const std::string& heading, int widthInTwips) override {
        columns.insert(columns.begin() + position - 1,
                       heading + " " + std::to_string(widthInTwips));
    }
    void removeAllRows() override {
        if (refuses) {
            throw base::InvalidArgumentFailure("the list refuses");
        }
        rows.clear();
    }
    void appendRows(std::vector<Row> added) override {
        rows.insert(rows.end(), added.begin(), added.end());
    }

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const Row& row : rows) {
            result.push_back(row[0]);
        }
        return result;
    }

    int width = 1000;
    std::vector<std::string> columns;
    std::vector<Row> rows;
    bool refuses = false;
};

}  // namespace support
