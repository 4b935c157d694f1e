#pragma once

#include <QColor>
#include <QRect>

class QWidget;

namespace vrn::test {

/// The contrast of two colours as the Web Content Accessibility Guidelines measure it: 1 if
/// they are equal, 21 for black and white.
double contrast(const QColor& a, const QColor& b);

/// What there is to read in a picture of a part of a widget.
struct Legibility
{
    QColor text; ///< The colour that stands out most.
    QColor ground; ///< The most frequent colour.
    double contrast = 1;
};

/// Paints the part `place` of `widget`, which shows a text and nothing else.
Legibility legibility(QWidget& widget, const QRect& place);

} // namespace vrn::test
