#include "searchcontrol/mounted_media.h"

#include <QFileInfo>

#include "base/text.h"
#include "platform/drives.h"
#include "platform/path_rules.h"
#include "search/result_column.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

std::string nativePlaceOf(const search::Index& index, search::Row row, platform::Drives& drives) {
    const base::MediaInfo& medium = index.medium(row);
    const std::string path = pathOnMedium(index, row);
    for (const platform::DriveListEntry& drive : drives.list()) {
        if (!base::equalIgnoringCase(drive.label, medium.mediaLabel)) {
            continue;
        }
        std::string place = platform::nativePath(drive.folder, path);
        const QFileInfo found(text(place));
        if (found.exists() && found.isDir() == index.isFolder(row)) {
            return place;
        }
    }
    return {};
}

std::string mediumToFetch(const base::MediaInfo& medium) {
    std::string result = search::mediumTitle(medium);
    if (!medium.mediaLabel.empty()) {
        result += ", label " + medium.mediaLabel;
    }
    return result;
}

}  // namespace searchcontrol
