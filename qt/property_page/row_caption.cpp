#include "row_caption_p.h"

#include <QHelpEvent>
#include <QStyle>
#include <QStylePainter>
#include <QToolTip>

#include "controls/parts/mnemonic_p.h"

#include <algorithm>

namespace vrn::qt::detail {
namespace {

constexpr int fewestLetters = 10; ///< That are shown on the narrowest page.

} // namespace

RowCaption::RowCaption(const QString& text, QWidget* parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
}

QSize RowCaption::minimumSizeHint() const
{
    const QSize full = QLabel::minimumSizeHint();
    const int narrow = fewestLetters * fontMetrics().averageCharWidth();
    return {std::min(full.width(), narrow), full.height()};
}

bool RowCaption::isElided() const
{
    return contentsRect().width() < QLabel::minimumSizeHint().width();
}

bool RowCaption::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !isElided())
        return QLabel::event(event);
    QStringList lines(withoutMnemonic(text()));
    if (!toolTip().isEmpty())
        lines << toolTip();
    QToolTip::showText(
        static_cast<QHelpEvent*>(event)->globalPos(), lines.join(QLatin1Char('\n')), this);
    return true;
}

void RowCaption::paintEvent(QPaintEvent* event)
{
    if (!isElided()) {
        QLabel::paintEvent(event);
        return;
    }
    const QRect room = contentsRect();
    const QString shown = fontMetrics().elidedText(
        text(), Qt::ElideRight, room.width(), Qt::TextShowMnemonic);
    const Qt::Alignment alignment = QStyle::visualAlignment(layoutDirection(), this->alignment());
    QStylePainter painter(this);
    painter.drawItemText(room, int(alignment) | Qt::TextShowMnemonic, palette(), isEnabled(), shown,
        foregroundRole());
}

} // namespace vrn::qt::detail
