#include "property_command_p.h"

#include <vrn/qt/property_error.h>

#include <utility>

namespace vrn::qt {

namespace {

// Any number that other commands of an application do not have.
constexpr int gestureId = 0x76726e;

struct Change
{
    const SharedIds& ids;
    const PropertyValues& before;
    const PropertyValues& after;
};

struct Merged
{
    ObjectIds ids;
    PropertyValues before;
    PropertyValues after;
};

/// Two edits of one property, of which the second came later, as one.
Merged merged(const Change& first, const Change& second)
{
    const detail::ValueColumn& type = *first.before.column();
    const auto before = type.emptyLike();
    const auto after = type.emptyLike();
    Merged both;
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

PropertyCommand::PropertyCommand(PropertyModel* model, std::vector<PropertyEdit> edits,
    std::vector<PropertyValues> before, const QString& text, std::uint64_t gesture)
    : QUndoCommand(text)
    , m_model(model)
    , m_edits(std::move(edits))
    , m_others(std::move(before))
    , m_gesture(gesture)
{}

PropertyCommand::~PropertyCommand() = default;

void PropertyCommand::undo()
{
    swap();
}

void PropertyCommand::redo()
{
    if (!std::exchange(m_isDone, false))
        swap();
}

int PropertyCommand::id() const
{
    return m_gesture == 0 ? -1 : gestureId;
}

bool PropertyCommand::mergeWith(const QUndoCommand* other)
{
    const auto* later = dynamic_cast<const PropertyCommand*>(other);
    if (!later || later->m_gesture != m_gesture || later->m_model != m_model || m_edits.size() != 1
        || later->m_edits.size() != 1 || m_edits.front().key != later->m_edits.front().key) {
        return false;
    }
    PropertyEdit& edit = m_edits.front();
    const PropertyEdit& laterEdit = later->m_edits.front();
    Merged both = merged({edit.ids, m_others.front(), edit.values},
        {laterEdit.ids, later->m_others.front(), laterEdit.values});
    edit.ids = std::move(both.ids);
    edit.values = std::move(both.after);
    m_others.front() = std::move(both.before);
    setObsolete(edit.ids.empty());
    return true;
}

void PropertyCommand::swap()
{
    // A macro calls its commands although they are obsolete.
    if (isObsolete())
        return;
    if (!m_model) {
        setObsolete(true);
        return;
    }
    for (std::size_t i = 0; i < m_edits.size(); ++i)
        std::swap(m_edits[i].values, m_others[i]);
    const QPointer<PropertyModel> model = m_model;
    try {
        model->apply(m_edits);
    } catch (...) {
        setObsolete(true);
        if (model)
            model->fail(PropertyError::from(std::current_exception()).reason());
    }
}

} // namespace vrn::qt
