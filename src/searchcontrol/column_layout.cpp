#include "searchcontrol/column_layout.h"

#include <QHeaderView>
#include <QStringList>

#include "search/result_column.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

constexpr int narrowest = 20;
constexpr int widest = 5000;

struct UsualColumn {
    search::ResultColumn column;
    int letters;
    bool isHidden;
};
constexpr UsualColumn usualColumns[] = {
    {search::ResultColumn::Name, 34, false},     {search::ResultColumn::Medium, 18, false},
    {search::ResultColumn::Folder, 34, false},   {search::ResultColumn::Size, 18, false},
    {search::ResultColumn::Modified, 25, false}, {search::ResultColumn::Type, 24, false},
    {search::ResultColumn::Keywords, 18, false}, {search::ResultColumn::Notes1, 16, false},
    {search::ResultColumn::Notes2, 16, true},    {search::ResultColumn::Created, 25, true},
    {search::ResultColumn::Copies, 8, false}};

QString columnText(search::ResultColumn column, int width, bool isHidden) {
    return (isHidden ? "-" : "") + text(search::columnKey(column)) + ":" + QString::number(width);
}

}  // namespace

QString usualColumnLayout(int widthOfLetter) {
    QStringList columns;
    for (const UsualColumn& each : usualColumns) {
        columns.append(columnText(each.column, each.letters * widthOfLetter, each.isHidden));
    }
    return columns.join(',');
}

QString columnLayout(const QHeaderView& header) {
    QStringList columns;
    for (int place = 0; place < header.count(); ++place) {
        const int section = header.logicalIndex(place);
        const bool isHidden = header.isSectionHidden(section);
        // A hidden column is 0 wide; it comes back as wide as most are.
        const int width = isHidden ? header.defaultSectionSize() : header.sectionSize(section);
        columns.append(columnText(search::allResultColumns[static_cast<std::size_t>(section)],
                                  width, isHidden));
    }
    return columns.join(',');
}

void setColumnLayout(QHeaderView& header, const QString& layout) {
    int place = 0;
    for (const QString& part : layout.split(',', Qt::SkipEmptyParts)) {
        const bool isHidden = part.startsWith('-');
        const QStringList pieces = part.mid(isHidden ? 1 : 0).split(':');
        const auto column = search::columnOfKey(pieces[0].toStdString());
        const int section = column ? static_cast<int>(*column) : -1;
        if (section < 0 || header.visualIndex(section) < place) {
            continue;  // unknown, or named twice
        }
        header.moveSection(header.visualIndex(section), place++);
        header.setSectionHidden(section, isHidden);
        if (pieces.size() > 1 && pieces[1].toInt() > 0) {
            header.resizeSection(section, qBound(narrowest, pieces[1].toInt(), widest));
        }
    }
    if (header.hiddenSectionCount() == header.count()) {
        header.showSection(0);
    }
}

}  // namespace searchcontrol
