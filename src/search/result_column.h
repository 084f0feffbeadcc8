#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "search/index.h"

namespace search {

/// The columns of a result, in their usual order.
enum class ResultColumn {
    Name,
    Medium,
    Folder,
    Size,
    Modified,
    Type,
    Keywords,
    Notes1,
    Notes2,
    Created,
    Copies,
};

constexpr std::array<ResultColumn, 11> allResultColumns{
    ResultColumn::Name,     ResultColumn::Medium,  ResultColumn::Folder,   ResultColumn::Size,
    ResultColumn::Modified, ResultColumn::Type,    ResultColumn::Keywords, ResultColumn::Notes1,
    ResultColumn::Notes2,   ResultColumn::Created, ResultColumn::Copies};

/// The name by which a query (sort:) and the companion know the column: "name", "modified".
std::string_view columnKey(ResultColumn column);
/// What stands above it: "Name", "Notes 1".
std::string_view columnTitle(ResultColumn column);
/// The column of that key, some usual other words for it ("date", "path", "kw") included; none for
/// any other text.
std::optional<ResultColumn> columnOfKey(std::string_view key);
bool isNumber(ResultColumn column);

/// The text of a cell, for people and exports alike: sizes in bytes without any grouping (empty for
/// folders, "2147483648+" where the size is not known exactly), dates as stored, a medium as its
/// number, ":" and its name ("7: Holiday"). Copies need a finished CopyTable, else they are empty.
std::string cellText(const Index& index, Row row, ResultColumn column);
void appendCellText(const Index& index, Row row, ResultColumn column, std::string& text);

/// "7: Holiday 2001", with the label in its place where there is no name.
std::string mediumTitle(const base::MediaInfo& medium);

}  // namespace search
