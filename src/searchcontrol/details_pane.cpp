#include "searchcontrol/details_pane.h"

#include <QUrl>

#include "search/copies.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

/// Copies that are listed; where there are more their number says so.
constexpr std::size_t mostCopies = 50;

QString escaped(std::string_view utf8) { return text(utf8).toHtmlEscaped(); }

QString fact(const QString& title, const QString& html) {
    return html.isEmpty() ? QString()
                          : "<tr><td style='padding-right:1em'><i>" + title + "</i></td><td>" +
                                html + "</td></tr>";
}

QString sizeFact(const search::Index& index, search::Row row) {
    if (index.isFolder(row)) {
        return {};
    }
    if (!index.isSizeKnown(row)) {
        return sizeText(index.leastSize(row), false) +
               " (not known exactly: the archive holds sizes below 2 GB only)";
    }
    const QString bytes = countText(index.size(row), "byte", "bytes");
    return index.size(row) < 1024 ? bytes : sizeText(index.size(row)) + " (" + bytes + ")";
}

QString mediumFact(const base::MediaInfo& medium) {
    QString html = escaped(search::mediumTitle(medium));
    if (!medium.mediaLabel.empty()) {
        html += ", label " + escaped(medium.mediaLabel);
    }
    if (!medium.mediaType.empty()) {
        html += ", " + escaped(medium.mediaType);
    }
    const std::string& read =
        medium.archiveUpdate.empty() ? medium.archiveDate : medium.archiveUpdate;
    return read.empty() ? html : html + ", read " + escaped(read);
}

QString copiesFact(const search::Index& index, search::Row row) {
    if (!index.copies().isFinished() || index.copies().copies(row) < 2) {
        return {};
    }
    QString html;
    std::size_t count = 0;
    for (const search::Row copy : index.copies().copiesOf(row)) {
        if (copy != row && ++count <= mostCopies) {
            html += "<a href='entry:" + QString::number(copy) + "'>" +
                    escaped(search::mediumTitle(index.medium(copy))) + ", " +
                    escaped(pathOnMedium(index, copy)) + "</a><br>";
        }
    }
    return count <= mostCopies
               ? html
               : html + "and " +
                     countText(static_cast<std::int64_t>(count - mostCopies), "other", "others");
}

}  // namespace

QString detailsHtml(const search::Index& index, search::Row row) {
    using search::ResultColumn;
    const auto cell = [&](ResultColumn column) {
        return shownCell(index, row, column).toHtmlEscaped();
    };
    return "<b>" + escaped(index.name(row)) + "</b><table>" +
           fact("Place", escaped(pathOnMedium(index, row))) +
           fact("Medium", mediumFact(index.medium(row))) + fact("Size", sizeFact(index, row)) +
           fact("Type", cell(ResultColumn::Type)) + fact("Modified", cell(ResultColumn::Modified)) +
           fact("Created", cell(ResultColumn::Created)) +
           fact("Keywords", cell(ResultColumn::Keywords)) +
           fact("Notes 1", cell(ResultColumn::Notes1)) +
           fact("Notes 2", cell(ResultColumn::Notes2)) + fact("Copies", copiesFact(index, row)) +
           "</table>";
}

DetailsPane::DetailsPane(QWidget* parent) : QTextBrowser(parent) {
    setObjectName("textDetails");
    setAccessibleName("Details");
    setPlaceholderText("Choose an entry to see everything that is known of it");
    // Links lead to entries; nothing is ever loaded.
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        if (link.scheme() == "entry") {
            emit entryWanted(link.path().toUInt());
        }
    });
}

void DetailsPane::show(const search::Index& index, search::Row row) {
    setHtml(detailsHtml(index, row));
}

}  // namespace searchcontrol
