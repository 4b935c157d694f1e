#include "section_head_p.h"

#include <vrn/companion_qt/connect.h>

#include <QKeyEvent>
#include <QSignalBlocker>

namespace vrn::qt::detail {

SectionHead::SectionHead(const QString& key, const QString& title, QWidget* parent)
    : QToolButton(parent)
{
    setObjectName(QStringLiteral("section.") + key);
    setText(title);
    setAccessibleName(title);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setAutoRaise(true);
    setCheckable(true);
    setChecked(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    updateLook();
    vrn_connect(this, &QToolButton::clicked, this, &SectionHead::openRequested);
}

void SectionHead::setOpen(bool open)
{
    const QSignalBlocker blocker(this);
    setChecked(open);
    updateLook();
}

void SectionHead::request(bool open)
{
    if (open != isChecked())
        Q_EMIT openRequested(open);
}

void SectionHead::keyPressEvent(QKeyEvent* event)
{
    const bool isMirrored = isRightToLeft();
    switch (event->key()) {
    case Qt::Key_Up:
        Q_EMIT stepRequested(-1);
        break;
    case Qt::Key_Down:
        Q_EMIT stepRequested(1);
        break;
    case Qt::Key_Left:
        request(isMirrored);
        break;
    case Qt::Key_Right:
        request(!isMirrored);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT openRequested(!isChecked());
        break;
    default:
        QToolButton::keyPressEvent(event);
    }
}

void SectionHead::changeEvent(QEvent* event)
{
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        updateLook();
}

void SectionHead::updateLook()
{
    setArrowType(isChecked() ? Qt::DownArrow : isRightToLeft() ? Qt::LeftArrow : Qt::RightArrow);
}

} // namespace vrn::qt::detail
