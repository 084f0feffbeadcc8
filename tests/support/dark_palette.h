#pragma once

#include <QPalette>

namespace support {

/// The colours of a dark desktop.
inline QPalette darkPalette() {
    const QColor window(0x2d, 0x2f, 0x31);
    const QColor base(0x23, 0x25, 0x27);
    const QColor text(0xee, 0xee, 0xee);
    QPalette palette(window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, text);
    }
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Button, QColor(0x3a, 0x3d, 0x40));
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x2a, 0x2c, 0x2e));
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::Highlight, QColor(0x2b, 0x8f, 0x6c));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xc5, 0xf0));
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9a, 0x9a));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
    }
    return palette;
}

}  // namespace support
