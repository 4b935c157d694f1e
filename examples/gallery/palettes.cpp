#include "palettes.h"

#include <QPalette>

#include <array>

namespace gallery {
namespace {

constexpr std::array textRoles{QPalette::WindowText, QPalette::Text, QPalette::ButtonText};

QColor halfway(const QColor& a, const QColor& b)
{
    return {(a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2};
}

} // namespace

QPalette withReadableDisabledText(QPalette palette)
{
    const QColor ground = palette.color(QPalette::Disabled, QPalette::Window);
    for (const auto role : textRoles) {
        const QColor text = palette.color(QPalette::Active, role);
        palette.setColor(QPalette::Disabled, role, halfway(text, ground));
    }
    return palette;
}

QPalette darkPalette()
{
    const QColor window(53, 53, 53);
    const QColor text(240, 240, 240);

    // The shades of frames and buttons follow from the window.
    QPalette palette(window, window);
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, QColor(90, 170, 240));
    for (const auto role : textRoles)
        palette.setColor(role, text);
    palette.setColor(QPalette::PlaceholderText, QColor(140, 140, 140));
    return palette;
}

} // namespace gallery
