#include "searchcontrol/texts.h"

#include <QLocale>

namespace searchcontrol {

namespace {

QString shownDate(search::LocalTime time, const std::string& stored) {
    return text(time == search::unknownTime ? stored : search::sortableDateText(time));
}

}  // namespace

QString countText(std::int64_t count) { return QLocale().toString(static_cast<qlonglong>(count)); }

QString countText(std::int64_t count, const char* one, const char* many) {
    return countText(count) + ' ' + (count == 1 ? one : many);
}

QString sizeText(std::int64_t bytes, bool isExact) {
    QString size = QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
    size.replace("kB", "KB");
    return isExact ? size : "at least " + size;
}

QString shownCell(const search::Index& index, search::Row row, search::ResultColumn column) {
    using search::ResultColumn;
    switch (column) {
        case ResultColumn::Size:
            return index.isFolder(row) ? QString()
                                       : sizeText(index.leastSize(row), index.isSizeKnown(row));
        case ResultColumn::Modified:
            return shownDate(index.modified(row), index.modifiedText(row));
        case ResultColumn::Created:
            return shownDate(index.created(row), index.createdText(row));
        default:
            return text(search::cellText(index, row, column));
    }
}

std::string pathOnMedium(const search::Index& index, search::Row row) {
    const std::string path = index.wholePath(row);
    const std::size_t colon = path.find(':');
    return colon == std::string::npos ? path : path.substr(colon + 1);
}

}  // namespace searchcontrol
