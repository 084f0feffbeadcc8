#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>

#include "search/index.h"
#include "search/result_column.h"

// The texts of the component: how numbers, sizes and cells are written for people.

namespace searchcontrol {

inline QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// "1,234,567" as the user's country writes it.
QString countText(std::int64_t count);
/// "1 file", "1,234 files".
QString countText(std::int64_t count, const char* one, const char* many);
/// "12.3 MB" in units of 1024; behind "at least " where `isExact` is false.
QString sizeText(std::int64_t bytes, bool isExact = true);
/// What a result's cell shows: sizes in units, dates as "2019-05-31 18:04:59" so that a column of
/// them can be read downwards, everything else as the archive holds it.
QString shownCell(const search::Index& index, search::Row row, search::ResultColumn column);
/// Path and name without the medium's number: "\photos\a.jpg".
std::string pathOnMedium(const search::Index& index, search::Row row);

}  // namespace searchcontrol
