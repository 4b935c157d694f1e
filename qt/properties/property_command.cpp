#include "property_command_p.h"

#include <vrn/qt/property_error.h>

#include <utility>

namespace vrn::qt {

namespace {

// Any number that other commands of an application do not have.
constexpr int gestureId = 0x76726e;

/// Two edits of one property, of which the second came later, as one.
PropertyChange merged(const PropertyChange& first, const PropertyChange& second)
{
    const detail::ValueColumn& type = *first.before.column();
    const auto before = type.emptyLike();
    const auto after = type.emptyLike();
    PropertyChange both{first.key, {}, {}, {}};
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < first.ids.size() || j < second.ids.size()) {
        const bool isInFirst = i < first.ids.size()
            && (j == second.ids.size() || !(second.ids[j] < first.ids[i]));
        const bool isInSecond = j < second.ids.size()
            && (i == first.ids.size() || !(first.ids[i] < second.ids[j]));
        const PropertyValues& was = isInFirst ? first.before : second.before;
        const PropertyValues& is = isInSecond ? second.after : first.after;
        const std::size_t wasPlace = was.place(isInFirst ? i : j);
        const std::size_t isPlace = is.place(isInSecond ? j : i);
        if (!was.column()->isSameAt(wasPlace, *is.column(), isPlace)) {
            both.ids.push_back(isInFirst ? first.ids[i] : second.ids[j]);
            before->append(*was.column(), wasPlace);
            after->append(*is.column(), isPlace);
        }
        i += isInFirst ? 1U : 0U;
        j += isInSecond ? 1U : 0U;
    }
    both.before = PropertyValues(before, false);
    both.after = PropertyValues(after, false);
    return both;
}

} // namespace

PropertyCommand::PropertyCommand(PropertyModel* model, std::vector<PropertyChange> changes,
    const QString& text, std::uint64_t gesture)
    : QUndoCommand(text)
    , m_model(model)
    , m_changes(std::move(changes))
    , m_gesture(gesture)
{}

PropertyCommand::~PropertyCommand() = default;

void PropertyCommand::undo()
{
    apply(&PropertyChange::before);
}

void PropertyCommand::redo()
{
    if (!std::exchange(m_isDone, false))
        apply(&PropertyChange::after);
}

int PropertyCommand::id() const
{
    return m_gesture == 0 ? -1 : gestureId;
}

bool PropertyCommand::mergeWith(const QUndoCommand* other)
{
    const auto* later = dynamic_cast<const PropertyCommand*>(other);
    if (!later || later->m_gesture != m_gesture || later->m_model != m_model
        || m_changes.size() != 1 || later->m_changes.size() != 1
        || m_changes.front().key != later->m_changes.front().key) {
        return false;
    }
    m_changes.front() = merged(m_changes.front(), later->m_changes.front());
    setObsolete(m_changes.front().ids.empty());
    return true;
}

void PropertyCommand::apply(PropertyValues PropertyChange::*values)
{
    // A macro calls its commands although they are obsolete.
    if (isObsolete())
        return;
    if (!m_model) {
        setObsolete(true);
        return;
    }
    const QPointer<PropertyModel> model = m_model;
    try {
        std::vector<PropertyEdit> edits;
        edits.reserve(m_changes.size());
        for (const PropertyChange& change : m_changes)
            edits.push_back({change.key, change.ids, change.*values});
        model->apply(edits);
    } catch (...) {
        setObsolete(true);
        if (model)
            model->fail(PropertyError::from(std::current_exception()).reason());
    }
}

} // namespace vrn::qt
