#pragma once

#include <QLineEdit>
#include <functional>
#include <memory>
#include <vector>

#include "search/completion.h"
#include "search/index.h"

class QCompleter;
class QStandardItemModel;

namespace searchcontrol {

class QueryHistory;

/// The line in which a query is typed. Down leaves it for the list. Behind the cursor stands, in
/// grey, how the word may go on; Right takes it, Ctrl+Space shows what else there is. Alt with Up
/// and Down goes through the queries used before.
class QueryLine : public QLineEdit {
    Q_OBJECT

  public:
    /// `history` must outlive this.
    QueryLine(QueryHistory& history, QWidget* parent);

    /// What words may be completed from; null: the language alone.
    void setIndex(std::shared_ptr<const search::Index> index);
    std::string query() const { return text().toStdString(); }
    /// A query that comes from elsewhere, such as a click: it can be undone like typing.
    void setQuery(const std::string& query);
    /// Puts typed text behind what is there; "\b" takes a character away.
    void type(const QString& text);
    /// The query is used: remembers it.
    void remember();
    /// What is to be seen in grey.
    const QString& proposal() const { return proposal_; }
    void showCompletions();

  signals:
    void leftDownwards();
    void entered();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    std::vector<search::Completion> completions(std::size_t most) const;
    void propose();
    void acceptProposal();
    void insert(const search::Completion& completion);
    void insertText(const QString& wanted);
    void goThroughHistory(int step);

    QueryHistory& history_;
    std::shared_ptr<const search::Index> index_;
    QCompleter* completer_;
    QStandardItemModel* completionModel_;
    std::vector<search::Completion> shown_;
    QString proposal_;
    int historyPlace_ = -1;
    QString typedBeforeHistory_;
};

}  // namespace searchcontrol
