#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "search/breakdown.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace searchcontrol {

/// How the hits of the query are spread over media, extensions, years and sizes: four tables, each
/// line with its numbers and a bar. Label and numbers are links that narrow the query to what it
/// counts.
class StatisticsPage : public QWidget {
    Q_OBJECT

  public:
    explicit StatisticsPage(QWidget* parent);

    /// Null: nothing is counted yet.
    void show(const search::Breakdown* counts);
    using QWidget::show;

  signals:
    void narrowed(const std::string& term);

  private:
    struct Table {
        search::Grouping grouping;
        QTreeWidget* tree;
    };

    QWidget* createTable(const char* name, const QString& title, search::Grouping grouping);
    static void fill(QTreeWidget& tree, const std::vector<search::BreakdownLine>& lines);

    std::vector<Table> tables_;
};

}  // namespace searchcontrol
