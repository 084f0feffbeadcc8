#include "searchcontrol/result_actions.h"

#include <QApplication>
#include <QClipboard>

#include "base/message_box.h"
#include "platform/platform.h"
#include "platform/shell_services.h"
#include "search/query_parser.h"
#include "searchcontrol/mounted_media.h"
#include "searchcontrol/pick_list.h"
#include "searchcontrol/pick_list_dialog.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

template <typename Line>
void copyLines(const ChosenEntries& chosen, Line line) {
    std::string lines;
    for (const search::Row row : chosen.rows) {
        lines += lines.empty() ? "" : "\n";
        lines += line(*chosen.index, row);
    }
    if (!lines.empty()) {
        QApplication::clipboard()->setText(text(lines));
    }
}

}  // namespace

std::string copiesQuery(const search::Index& index, search::Row row) {
    const std::string query = (index.isFolder(row) ? "folder: start:end:" : "file: start:end:") +
                              search::quotedForQuery(index.name(row));
    return index.isFolder(row) || !index.isSizeKnown(row)
               ? query
               : query + " size:" + std::to_string(index.size(row));
}

std::string folderTerm(const search::Index& index, search::Row row) {
    const std::string_view path = index.path(row);
    const std::string_view folder = path.substr(std::min(path.find(':') + 1, path.size()));
    // What lies at the top of a medium has no folder but the medium. With the separator behind it
    // the path is not that of a neighbour whose name begins the same.
    return folder.empty() ? mediumTerm(index, row)
                          : "path:start:" + search::quotedForQuery(std::string(path) + "\\");
}

std::string extensionTerm(const search::Index& index, search::Row row) {
    const std::string_view extension = index.extension(row);
    return extension.empty() ? std::string() : "ext:" + search::quotedForQuery(extension);
}

std::string mediumTerm(const search::Index& index, search::Row row) {
    return "medium:" + std::to_string(index.medium(row).mediaId);
}

ResultActions::ResultActions(const search::SearchHost& host, QWidget* window)
    : QObject(window), host_(host), window_(window) {}

void ResultActions::showInMainWindow(const ChosenEntries& chosen) {
    if (chosen.isEmpty() || !host_.showEntry) {
        return;
    }
    const search::Row row = chosen.rows.front();
    const search::Index& index = *chosen.index;
    host_.showEntry({index.medium(row).mediaId, std::string(index.path(row)),
                     std::string(index.name(row)), index.isFolder(row)});
}

/// Where the first entry lies now; "" after having said that it is nowhere to be had.
std::string ResultActions::placeOrMessage(const ChosenEntries& chosen) {
    const search::Row row = chosen.rows.front();
    std::string place = nativePlaceOf(*chosen.index, row, host_.platform.drives());
    if (place.empty()) {
        host_.messages.show({"Medium Not Mounted",
                             "\"" + std::string(chosen.index->name(row)) +
                                 "\" is on a medium that is in no drive now. Fetch the medium " +
                                 mediumToFetch(chosen.index->medium(row)) + ", and try again.",
                             base::MessageButtons::Ok});
    }
    return place;
}

void ResultActions::open(const ChosenEntries& chosen) {
    if (chosen.isEmpty()) {
        return;
    }
    const std::string place = placeOrMessage(chosen);
    if (!place.empty() && host_.openFile) {
        host_.openFile(place);
    }
}

void ResultActions::openFolder(const ChosenEntries& chosen) {
    if (chosen.isEmpty()) {
        return;
    }
    const std::string place = placeOrMessage(chosen);
    const char separator = host_.platform.shell().pathSeparator();
    const std::size_t last = place.find_last_of(separator);
    if (last != std::string::npos && host_.openFile) {
        host_.openFile(place.substr(0, std::max<std::size_t>(last, 1)));
    }
}

void ResultActions::copyPaths(const ChosenEntries& chosen) {
    copyLines(chosen,
              [](const search::Index& index, search::Row row) { return index.wholePath(row); });
}

void ResultActions::copyNames(const ChosenEntries& chosen) {
    copyLines(chosen, [](const search::Index& index, search::Row row) {
        return std::string(index.name(row));
    });
}

void ResultActions::copyRows(const ChosenEntries& chosen,
                             const std::vector<search::ResultColumn>& columns) {
    copyLines(chosen, [&](const search::Index& index, search::Row row) {
        std::string line;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            line += i == 0 ? "" : "\t";
            line += search::cellText(index, row, columns[i]);
        }
        return line;
    });
}

void ResultActions::showPickList(const ChosenEntries& chosen) {
    if (chosen.isEmpty()) {
        return;
    }
    PickListDialog dialog(pickListHtml(*chosen.index, chosen.rows), window_);
    dialog.exec();
}

}  // namespace searchcontrol
