#include "searchcontrol/syntax_card.h"

#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "search/breakdown.h"
#include "search/query_fields.h"
#include "search/query_parser.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

/// Entries from which examples are taken.
constexpr search::Row sampleSize = 20000;

std::string mostFrequentTerm(const search::Index& index, search::Grouping grouping) {
    std::vector<search::Row> sample(std::min(index.size(), sampleSize));
    for (search::Row row = 0; row < sample.size(); ++row) {
        sample[row] = row;
    }
    search::Breakdown counts(index, sample, {grouping});
    counts.run(search::Budget::unlimited());
    const auto lines = counts.lines(grouping);
    const auto most = std::max_element(
        lines.begin(), lines.end(),
        [](const auto& left, const auto& right) { return left.entries < right.entries; });
    return most == lines.end() ? std::string() : most->term;
}

std::string firstFolder(const search::Index& index) {
    for (search::Row row = 0; row < std::min(index.size(), sampleSize); ++row) {
        if (index.isFolder(row)) {
            return "dir:" + search::quotedForQuery(index.name(row));
        }
    }
    return {};
}

std::string archiveExample(const search::Index& index, std::string_view field) {
    if (field == "ext:") {
        return mostFrequentTerm(index, search::Grouping::Extension);
    }
    if (field == "date:") {
        return mostFrequentTerm(index, search::Grouping::Year);
    }
    if (field == "kw:") {
        const auto& known = index.knownKeywords();
        return known.empty()
                   ? std::string()
                   : "kw:" +
                         search::quotedForQuery(known.front().substr(0, known.front().find(',')));
    }
    if (field == "medium:" && !index.media().empty()) {
        return "medium:" + std::to_string(index.media().front().mediaId);
    }
    if (field == "only:" && !index.media().empty()) {
        return "only:" + std::to_string(index.media().front().mediaId);
    }
    return field == "dir:" ? firstFolder(index) : std::string();
}

QString escaped(std::string_view utf8) { return text(utf8).toHtmlEscaped(); }

QString fieldLine(const search::Index* index, const search::QueryField& field) {
    const std::string example = exampleOf(index, field.word, field.example);
    const QString link = QString::fromLatin1(QUrl::toPercentEncoding(text(example)));
    return "<tr><td><code>" + escaped(field.word) + "</code>&nbsp;&nbsp;</td><td>" +
           escaped(field.meaning) + "&nbsp;&nbsp;</td><td><a href='query:" + link + "'><code>" +
           escaped(example) + "</code></a></td></tr>";
}

constexpr const char* introduction =
    "<h3>Searching</h3><p>Type a few letters. Every word must occur somewhere in the name or the "
    "path, in any order; capital letters and accents make no difference. A word with / or \\ "
    "looks at the whole path.</p>";
constexpr const char* keys =
    "<h3>Keys</h3><table>"
    "<tr><td><code>Down</code>&nbsp;&nbsp;</td><td>into the list; typing there goes back to the "
    "line</td></tr>"
    "<tr><td><code>Enter</code></td><td>show the entry in the main window</td></tr>"
    "<tr><td><code>Ctrl+Enter</code></td><td>open it</td></tr>"
    "<tr><td><code>Ctrl+K</code></td><td>keywords and notes; <code>Ctrl+Z</code> takes them "
    "back</td></tr>"
    "<tr><td><code>Ctrl+E, Ctrl+P</code></td><td>export, pick list</td></tr>"
    "<tr><td><code>Ctrl+S</code></td><td>keep the query under a name</td></tr>"
    "<tr><td><code>Right, Ctrl+Space</code></td><td>take the completion, show all</td></tr>"
    "<tr><td><code>Alt+Up</code></td><td>earlier queries</td></tr>"
    "<tr><td><code>Ctrl+L, Esc</code></td><td>to the query line; clear it, then close</td></tr>"
    "</table><p>Keywords and notes given here are written into the archive. Keywords applied to "
    "explored records in the main window are in memory only, so they are not found here.</p>";

}  // namespace

std::string exampleOf(const search::Index* index, std::string_view field,
                      std::string_view usualExample) {
    std::string example;
    if (index != nullptr && index->size() > 0) {
        example = archiveExample(*index, field);
    }
    return example.empty() ? std::string(usualExample) : example;
}

QString syntaxCardHtml(const search::Index* index) {
    QString html = introduction;
    std::string_view group;
    for (const search::QueryField& field : search::queryFields()) {
        if (field.group != group) {
            html += group.empty() ? "" : "</table>";
            group = field.group;
            html += "<p><b>" + escaped(group) + "</b></p><table>";
        }
        html += fieldLine(index, field);
    }
    return html + "</table>" + keys;
}

SyntaxCard::SyntaxCard(QWidget* parent) : QDialog(parent), textCard_(new QTextBrowser(this)) {
    setObjectName("form_syntax");
    setWindowTitle("How to Search");
    textCard_->setObjectName("textSyntax");
    textCard_->setAccessibleName("How to search");
    textCard_->setOpenLinks(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(textCard_);
    connect(textCard_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        if (link.scheme() == "query") {
            const QByteArray query = link.toEncoded().mid(sizeof("query:") - 1);
            emit exampleChosen(QByteArray::fromPercentEncoding(query).toStdString());
        }
    });
    resize(680, 620);
}

void SyntaxCard::show(const search::Index* index) {
    textCard_->setHtml(syntaxCardHtml(index));
    show();
    raise();
    activateWindow();
}

}  // namespace searchcontrol
