#include "injection/scene.h"

#include "injection/places.h"

#include <QScopeGuard>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vrn::test::injection {
namespace {

// How deep a deed that is done again and again may lie in itself, and how often it
// is done at all.
constexpr int depthLimit = 3;
constexpr int timesLimit = 12;

} // namespace

Scene& scene()
{
    static Scene scene;
    return scene;
}

void Scene::lay(QWidget* widget) const
{
    if (!page)
        return;
    if (!page->layout())
        new QVBoxLayout(page);
    page->layout()->addWidget(widget);
}

void Scene::enter() const
{
    if (widget() && widget()->focusPolicy() != Qt::NoFocus)
        return widget()->setFocus();
    for (QWidget* part : page->findChildren<QWidget*>()) {
        if ((part->focusPolicy() & Qt::TabFocus) != 0 && part->isVisible())
            return part->setFocus();
    }
}

void Scene::offer(const char* place)
{
    const int index = placeOf(place);
    m_offered[index] = true;
    if (m_outcome)
        m_outcome->offered[index] = true;
}

void Scene::visit(const char* place)
{
    if (!m_outcome)
        return;
    const int index = placeOf(place);
    const int visits = ++m_outcome->visits[index];
    if (index != m_place || visits < m_occurrence || !m_deed)
        return;
    const bool isDue = m_repeats ? m_depth < depthLimit && m_times < timesLimit : m_times == 0;
    if (!isDue)
        return;
    ++m_times;
    ++m_depth;
    m_outcome->reached = true;
    const auto leave = qScopeGuard([this] { --m_depth; });
    // Before it: a deed may throw.
    const bool wasDone = std::exchange(m_outcome->done, true);
    if (!m_deed())
        m_outcome->done = wasDone;
}

void Scene::arm(
    Outcome* outcome, int place, int occurrence, std::function<bool()> deed, bool repeats)
{
    m_outcome = outcome;
    std::copy(std::begin(m_offered), std::end(m_offered), outcome->offered);
    m_place = place;
    m_occurrence = occurrence;
    m_deed = std::move(deed);
    m_repeats = repeats;
    m_depth = 0;
    m_times = 0;
}

} // namespace vrn::test::injection
