#pragma once

#include <QTextBrowser>
#include <memory>

#include "search/index.h"

namespace searchcontrol {

/// Everything that the archive holds of one entry: its facts, its place on its medium, and its
/// copies elsewhere, each a link.
class DetailsPane : public QTextBrowser {
    Q_OBJECT

  public:
    explicit DetailsPane(QWidget* parent);

    /// The copies are told only where index.copies() is finished.
    void show(const search::Index& index, search::Row row);
    using QTextBrowser::show;

  signals:
    /// A copy was clicked.
    void entryWanted(search::Row row);
};

/// What the pane shows.
QString detailsHtml(const search::Index& index, search::Row row);

}  // namespace searchcontrol
