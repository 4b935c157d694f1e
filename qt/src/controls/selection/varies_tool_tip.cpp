#include "controls/selection/varies_tool_tip_p.h"

#include <vrn/qt/multi_edit_control_base.h>

#include <QHelpEvent>
#include <QPointer>
#include <QToolTip>

namespace vrn::qt::detail {
namespace {

constexpr int checkInterval = 100; // ms

// The last one that has shown its text: all texts are the same.
QPointer<VariesToolTip> lastShown;

QString differText()
{
    return QObject::tr("The selected objects differ.");
}

bool hasToolTip(const QWidget* widget)
{
    for (; widget; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
        if (!widget->toolTip().isEmpty())
            return true;
    }
    return false;
}

} // namespace

VariesToolTip::VariesToolTip(QWidget* control)
    : QObject(control)
{
    answerFor(control);
}

void VariesToolTip::removeFrom(const QWidget* control)
{
    for (QObject* child : control->children()) {
        if (auto* toolTip = dynamic_cast<VariesToolTip*>(child)) {
            delete toolTip;
            return;
        }
    }
}

void VariesToolTip::answerFor(QWidget* part)
{
    part->installEventFilter(this);
}

// A control that is being destroyed is only a QWidget here, and does not vary.
bool VariesToolTip::dataVaries() const
{
    const auto* control = dynamic_cast<const MultiEditControlBase*>(parent());
    return control && control->dataVaries();
}

bool VariesToolTip::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (!dataVaries() || hasToolTip(widget))
        return false;
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), differText(), widget);
    event->accept();
    lastShown = this;
    m_whileShown.start(checkInterval, this);
    return true;
}

// No signal says that a control does not vary any more.
void VariesToolTip::timerEvent(QTimerEvent* /*event*/)
{
    const bool isShown = lastShown == this && QToolTip::isVisible()
        && QToolTip::text() == differText();
    if (isShown && dataVaries())
        return;
    m_whileShown.stop();
    if (isShown)
        QToolTip::hideText();
}

} // namespace vrn::qt::detail
