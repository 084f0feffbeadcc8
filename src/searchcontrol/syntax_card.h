#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "search/index.h"

class QTextBrowser;

namespace searchcontrol {

/// The query language on one page, with examples from the archive at hand. A click on an example
/// searches for it.
class SyntaxCard : public QDialog {
    Q_OBJECT

  public:
    explicit SyntaxCard(QWidget* parent);

    /// `index` may be null.
    void show(const search::Index* index);
    using QDialog::show;

  signals:
    void exampleChosen(const std::string& query);

  private:
    QTextBrowser* textCard_;
};

/// An example of a field that finds something in this archive, or else the usual one.
std::string exampleOf(const search::Index* index, std::string_view field,
                      std::string_view usualExample);
QString syntaxCardHtml(const search::Index* index);

}  // namespace searchcontrol
