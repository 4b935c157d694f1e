#include "controls/popups/edit_hint_popup_p.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWindow>

#include "controls/parts/readable_colours_p.h"
#include "qt_compat_p.h"

namespace vrn::qt::detail {

EditHintPopup::EditHintPopup(QWidget* owner)
    : PopupBase(owner)
    , m_label(new QLabel(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->addWidget(m_label);
    m_label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    new ReadableColours(m_label, this);
}

EditHintPopup::~EditHintPopup() = default;

void EditHintPopup::setHint(const QString& hint)
{
    m_label->setText(hint);
    m_label->setHidden(hint.isEmpty());
    resize(sizeHint().boundedTo(largestSize()));
}

QSize EditHintPopup::sizeHint() const
{
    return m_label->text().isEmpty() ? QSize(0, 0) : m_label->sizeHint();
}

void EditHintPopup::showEvent(QShowEvent* event)
{
    PopupBase::showEvent(event);
    if (QWindow* window = windowHandle())
        window->installEventFilter(this);
}

// Before Qt chooses the widget that the mouse presses, so that the one below gets the
// focus, drags and context menus as if the hint were not there.
bool EditHintPopup::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == windowHandle()) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            return handDown(*static_cast<QMouseEvent*>(event));
        default:
            break;
        }
    }
    return PopupBase::eventFilter(watched, event);
}

bool EditHintPopup::handDown(const QMouseEvent& event)
{
    QWindow* below = parentWidget()->window()->windowHandle();
    // While no button is pressed, the mouse belongs to the hint, which becomes clearer
    // under it.
    if (!below || (event.type() == QEvent::MouseMove && event.buttons() == Qt::NoButton))
        return false;
    const QPoint onScreen = compat::globalPosition(event);
    const QPoint position = below->mapFromGlobal(onScreen);
    if (event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick)
        m_pressedBelow = QRect(QPoint(0, 0), below->size()).contains(position);
    if (!m_pressedBelow)
        return false;
    QMouseEvent copy(
        event.type(), position, onScreen, event.button(), event.buttons(), event.modifiers());
    copy.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(below, &copy);
    return true;
}

} // namespace vrn::qt::detail
