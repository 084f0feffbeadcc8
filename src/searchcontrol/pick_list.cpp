#include "searchcontrol/pick_list.h"

#include <algorithm>
#include <tuple>
#include <vector>

#include "searchcontrol/mounted_media.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

/// By medium, then by folder, then by name.
std::vector<search::Row> inOrderOfFetching(const search::Index& index,
                                           std::span<const search::Row> rows) {
    std::vector<search::Row> result(
        rows.begin(),
        rows.begin() + static_cast<std::ptrdiff_t>(std::min(rows.size(), mostPicked)));
    std::sort(result.begin(), result.end(), [&](search::Row left, search::Row right) {
        const auto key = [&](search::Row row) {
            return std::tuple(index.medium(row).mediaId, index.foldedPath(index.pathId(row)),
                              index.foldedName(row));
        };
        return key(left) < key(right);
    });
    return result;
}

QString escaped(std::string_view utf8) { return text(utf8).toHtmlEscaped(); }

std::string_view folderOnMedium(const search::Index& index, search::Row row) {
    const std::string_view path = index.path(row);
    const std::string_view folder = path.substr(path.find(':') + 1);
    return folder.empty() ? "\\" : folder;
}

QString fileLine(const search::Index& index, search::Row row) {
    const QString size = shownCell(index, row, search::ResultColumn::Size);
    return "<tr><td>\u2610&nbsp;</td><td>" + escaped(index.name(row)) +
           (index.isFolder(row) ? " (folder)" : "") + "</td><td align='right'>&nbsp;&nbsp;" +
           size.toHtmlEscaped() + "</td></tr>";
}

}  // namespace

QString pickListHtml(const search::Index& index, std::span<const search::Row> rows) {
    QString html = "<h2>Pick list</h2>";
    const std::vector<search::Row> wanted = inOrderOfFetching(index, rows);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const search::Row row = wanted[i];
        const bool isFirst = i == 0;
        const bool isNewMedium =
            isFirst || index.mediumPosition(row) != index.mediumPosition(wanted[i - 1]);
        const bool isNewFolder = isNewMedium || index.pathId(row) != index.pathId(wanted[i - 1]);
        if (isNewFolder && !isFirst) {
            html += "</table>";
        }
        if (isNewMedium) {
            html += "<h3>\u2610 Medium " + escaped(mediumToFetch(index.medium(row))) + "</h3>";
        }
        if (isNewFolder) {
            html += "<p><b>" + escaped(folderOnMedium(index, row)) + "</b></p><table>";
        }
        html += fileLine(index, row);
    }
    html += wanted.empty() ? "" : "</table>";
    if (rows.size() > wanted.size()) {
        html += "<p>" + countText(static_cast<std::int64_t>(rows.size() - wanted.size())) +
                " more are left out here.</p>";
    }
    return html;
}

}  // namespace searchcontrol
