#pragma once

#include <QString>

namespace controls {

/// A text that is shown in a tool tip as it is. Tool tips guess whether a text is marked up, so one
/// that looks like it would be taken for it, and one that is only escaped would show its escapes.
inline QString tipText(const QString& plain) {
    return plain.isEmpty() ? QString() : "<span>" + plain.toHtmlEscaped() + "</span>";
}

}  // namespace controls
