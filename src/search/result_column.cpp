#include "search/result_column.h"

#include "search/copies.h"
#include "search/text_fold.h"

namespace search {
namespace {

struct ColumnWords {
    ResultColumn column;
    std::string_view key;
    std::string_view title;
    bool isNumber;
};
constexpr std::array<ColumnWords, allResultColumns.size()> words{{
    {ResultColumn::Name, "name", "Name", false},
    {ResultColumn::Medium, "medium", "Medium", false},
    {ResultColumn::Folder, "folder", "Folder", false},
    {ResultColumn::Size, "size", "Size", true},
    {ResultColumn::Modified, "modified", "Modified", false},
    {ResultColumn::Type, "type", "Type", false},
    {ResultColumn::Keywords, "keywords", "Keywords", false},
    {ResultColumn::Notes1, "notes1", "Notes 1", false},
    {ResultColumn::Notes2, "notes2", "Notes 2", false},
    {ResultColumn::Created, "created", "Created", false},
    {ResultColumn::Copies, "copies", "Copies", true},
}};

struct OtherWord {
    std::string_view word;
    ResultColumn column;
};
constexpr std::array<OtherWord, 8> otherWords{{{"path", ResultColumn::Folder},
                                               {"dir", ResultColumn::Folder},
                                               {"date", ResultColumn::Modified},
                                               {"kw", ResultColumn::Keywords},
                                               {"keyword", ResultColumn::Keywords},
                                               {"note", ResultColumn::Notes1},
                                               {"notes", ResultColumn::Notes1},
                                               {"media", ResultColumn::Medium}}};

const ColumnWords& wordsOf(ResultColumn column) { return words[static_cast<std::size_t>(column)]; }

}  // namespace

std::string_view columnKey(ResultColumn column) { return wordsOf(column).key; }
std::string_view columnTitle(ResultColumn column) { return wordsOf(column).title; }
bool isNumber(ResultColumn column) { return wordsOf(column).isNumber; }

std::optional<ResultColumn> columnOfKey(std::string_view key) {
    const std::string wanted = foldedText(key);
    for (const ColumnWords& each : words) {
        if (each.key == wanted) {
            return each.column;
        }
    }
    for (const OtherWord& each : otherWords) {
        if (each.word == wanted) {
            return each.column;
        }
    }
    return std::nullopt;
}

std::string mediumTitle(const base::MediaInfo& medium) {
    const std::string& name = medium.mediaName.empty() ? medium.mediaLabel : medium.mediaName;
    return std::to_string(medium.mediaId) + ":" + (name.empty() ? "" : " " + name);
}

std::string cellText(const Index& index, Row row, ResultColumn column) {
    std::string text;
    appendCellText(index, row, column, text);
    return text;
}

void appendCellText(const Index& index, Row row, ResultColumn column, std::string& text) {
    switch (column) {
        case ResultColumn::Name:
            text += index.name(row);
            break;
        case ResultColumn::Medium:
            text += mediumTitle(index.medium(row));
            break;
        case ResultColumn::Folder:
            text += index.path(row);
            break;
        case ResultColumn::Size:
            if (!index.isFolder(row)) {
                text += std::to_string(index.leastSize(row));
                text += index.isSizeKnown(row) ? "" : "+";
            }
            break;
        case ResultColumn::Modified:
            if (index.modified(row) != unknownTime) {
                appendArchiveDate(index.modified(row), text);
            } else {
                text += index.modifiedText(row);
            }
            break;
        case ResultColumn::Type:
            text += index.type(row);
            break;
        case ResultColumn::Keywords:
            text += index.keywords(row);
            break;
        case ResultColumn::Notes1:
            text += index.notes1(row);
            break;
        case ResultColumn::Notes2:
            text += index.notes2(row);
            break;
        case ResultColumn::Created:
            if (index.created(row) != unknownTime) {
                appendArchiveDate(index.created(row), text);
            } else {
                text += index.createdText(row);
            }
            break;
        case ResultColumn::Copies:
            if (index.copies().isFinished()) {
                text += std::to_string(index.copies().copies(row));
            }
            break;
    }
}

}  // namespace search
