#pragma once

#include <QTreeWidget>
#include <string>
#include <vector>

#include "search/breakdown.h"

namespace searchcontrol {

/// How many hits lie on which medium, have which extension, year, keywords. A click narrows the
/// query to a line, Ctrl and a click excludes it; with the keys these are Enter and Ctrl+Enter.
class FacetPanel : public QTreeWidget {
    Q_OBJECT

  public:
    /// Lines of a group that are shown before somebody asks for all.
    static constexpr std::size_t firstLines = 10;
    /// Lines of a group that are shown at most; nobody looks through more, and the window would
    /// wait for them.
    static constexpr std::size_t mostLines = 2000;

    explicit FacetPanel(QWidget* parent);

    /// Null: nothing is counted.
    void show(const search::Breakdown* counts);
    using QTreeWidget::show;

  signals:
    void narrowed(const std::string& term);
    void excluded(const std::string& term);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    struct Group {
        QTreeWidgetItem* item;
        search::Grouping grouping;
        std::vector<search::BreakdownLine> lines;
        bool isWhole = false;
    };

    void addGroup(const char* title, search::Grouping grouping);
    void fill(Group& group);
    void choose(QTreeWidgetItem* item, bool excludes);
    void showAll(const QTreeWidgetItem* groupItem);

    std::vector<Group> groups_;
};

}  // namespace searchcontrol
