#include "controls/parts/alive_p.h"

#include <utility>

namespace vrn::qt::detail {
namespace {

// Of the operation that began last. All of them run on the GUI thread.
Alive* innermost = nullptr;

// Not isAncestorOf(): that stops at a popup, which is a window of its own.
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
    // This also hides the part. It comes last because it moves the focus, and slots may run.
    part->setParent(nullptr);
}

} // namespace vrn::qt::detail
