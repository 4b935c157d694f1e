#include "controls/parts/alive_p.h"

#include <utility>

namespace vrn::qt::detail {
namespace {

// The `Alive` of the operation that began last. All of them run on the GUI thread.
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
    for (const QPointer<QWidget>& orphan : m_orphans) {
        if (orphan)
            orphan->deleteLater();
    }
}

void disposeOf(QWidget* part)
{
    if (!part)
        return;
    part->blockSignals(true);
    // Qt may be handing the focus to a part next to the one in use.
    const QObject* const around = part->parent() ? part->parent() : part;
    Alive* outermost = nullptr;
    for (Alive* use = innermost; use; use = use->m_outer) {
        if (use->m_part && (isInside(use->m_part, around) || isInside(part, use->m_part)))
            outermost = use;
    }
    if (!outermost) {
        delete part;
        return;
    }
    outermost->m_orphans.emplace_back(part);
    // This also hides the part. It comes last because it moves the focus, and slots may run.
    part->setParent(nullptr);
}

} // namespace vrn::qt::detail
