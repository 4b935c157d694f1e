#include "dark_palette.h"

#include <QPalette>

namespace gallery {

QPalette darkPalette()
{
    const QColor window(53, 53, 53);
    const QColor text(240, 240, 240);
    const QColor disabledText(140, 140, 140);

    // The shades of frames and buttons follow from the window.
    QPalette palette(window, window);
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, QColor(90, 170, 240));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabledText);
    }
    palette.setColor(QPalette::PlaceholderText, disabledText);
    return palette;
}

} // namespace gallery
