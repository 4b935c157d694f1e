#include "controls/parts/alive_p.h"

#include <utility>

namespace vrn::qt::detail {
namespace {

// The one of the operation that was begun last. All run on the GUI thread.
Alive* innermost = nullptr;

// By parents, not by isAncestorOf(): a popup is a window of its own.
bool isInside(const QObject* widget, const QObject* part)
{
    while (widget && widget != part)
        widget = widget->parent();
    return widget != nullptr;
}

} // namespace

Alive::Alive(const QObject* control, QWidget* part)
    : m_control(control)
    , m_part(part)
    , m_outer(std::exchange(innermost, this))
{}

Alive::~Alive()
{
    innermost = m_outer;
    if (m_deletesPart && m_part)
        m_part->deleteLater();
}

void disposeOf(QWidget* part)
{
    if (!part)
        return;
    part->blockSignals(true);
    Alive* outermost = nullptr;
    for (Alive* use = innermost; use; use = use->m_outer) {
        if (isInside(use->m_part, part))
            outermost = use;
    }
    if (!outermost) {
        delete part;
        return;
    }
    outermost->m_part = part;
    outermost->m_deletesPart = true;
    // Hides it, too. Last: that moves the focus, and a slot may be told.
    part->setParent(nullptr);
}

} // namespace vrn::qt::detail
