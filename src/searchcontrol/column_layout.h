#pragma once

#include <QString>

class QHeaderView;

namespace searchcontrol {

/// The header's columns as one line of text, in the order in which they are shown, with their
/// widths and "-" before those that are hidden: "name:260,-medium:90".
QString columnLayout(const QHeaderView& header);
/// Brings the columns into that layout. What the text does not name, or names wrongly, stays as it
/// is; a layout without any column shows the name.
void setColumnLayout(QHeaderView& header, const QString& layout);
/// The layout of somebody who has not chosen one.
QString usualColumnLayout(int widthOfLetter);

}  // namespace searchcontrol
