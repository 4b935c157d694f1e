#include "value_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace gallery {

ValueLabel::ValueLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QString ValueLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

bool ValueLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || shownText() == text())
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
    return true;
}

void ValueLabel::paintEvent(QPaintEvent* /*event*/)
{
    // As in a QLabel, the text decides about its direction, not the window.
    const bool isReversed = text().isRightToLeft();
    const Qt::Alignment aligned = QStyle::visualAlignment(
        isReversed ? Qt::RightToLeft : Qt::LeftToRight, alignment());
    const int flags = static_cast<int>(aligned)
        | (isReversed ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight);
    QPainter painter(this);
    style()->drawItemText(
        &painter, contentsRect(), flags, palette(), isEnabled(), shownText(), foregroundRole());
}

} // namespace gallery
