#include <vrn/qt/property_model.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/q/input_context.h>
#include <vrn/qt/property_error.h>

#include <QPointer>

#include <algorithm>
#include <exception>
#include <utility>

namespace vrn::qt {

namespace {

/// True while it lives.
class Flag
{
public:
    explicit Flag(std::shared_ptr<bool> flag)
        : m_flag(std::move(flag))
    {
        *m_flag = true;
    }
    ~Flag() { *m_flag = false; }

    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    std::shared_ptr<bool> m_flag;
};

template <typename Values>
void makeUnique(Values& values)
{
    const auto isUnordered = [](const auto& a, const auto& b) { return !(a < b); };
    if (std::adjacent_find(values.begin(), values.end(), isUnordered) == values.end())
        return;
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

/// Adds `more` to a list in which an empty one stands for all.
void unite(PropertyKeys& values, const PropertyKeys& more, bool isFirst)
{
    if (isFirst)
        values = more;
    else if (values.empty() || more.empty())
        values.clear();
    else
        values.insert(values.end(), more.begin(), more.end());
}

PropertyState stateOf(const detail::ValueSummary* summary)
{
    PropertyState state;
    if (!summary || !summary->hasObject)
        return state;
    state.kind = summary->varies ? PropertyState::Varies
        : summary->hasValue      ? PropertyState::Common
                                 : PropertyState::NoValue;
    state.value = summary->common();
    if (summary->varies)
        state.different = summary->different();
    return state;
}

} // namespace

PropertyModel::PropertyModel(QObject* parent)
    : QObject(parent)
    , m_units(vrn::units::get_active_input_context())
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &PropertyModel::flush);
}

PropertyModel::~PropertyModel() = default;

std::uint32_t PropertyModel::addKind(const PropertyList& properties)
{
    m_kinds.push_back(properties);
    m_kinds.back().checkConditions();
    return kindCount() - 1;
}

std::uint32_t PropertyModel::kindCount() const
{
    return std::uint32_t(m_kinds.size());
}

const PropertyList& PropertyModel::kind(std::uint32_t kind) const
{
    static const PropertyList none(std::string(), {});
    VRN_ASSERT(kind < kindCount())("kind", kind);
    return kind < kindCount() ? m_kinds[kind] : none;
}

void PropertyModel::setUnits(const vrn::units::Context& units)
{
    m_units = units;
    Q_EMIT unitsChanged();
}

void PropertyModel::schedule()
{
    // A timer, because an event that is posted in a slot of changed() would be sent in the
    // same turn.
    if (!m_turn.isActive())
        m_turn.start(0);
}

void PropertyModel::announce(const PropertyKeys& keys, const ObjectIds& ids)
{
    ObjectIds unique = ids;
    makeUnique(unique);
    announceUnique(affectedBy(keys), unique);
}

PropertyKeys PropertyModel::affectedBy(const PropertyKeys& keys) const
{
    PropertyKeys affected = keys;
    for (const PropertyList& kind : m_kinds) {
        for (const std::string& key : kind.affectedBy(keys))
            affected.push_back(key);
    }
    return affected;
}

void PropertyModel::announceUnique(const PropertyKeys& keys, const SharedIds& ids)
{
    unite(m_changedKeys, keys, !m_isAnnounced);
    makeUnique(m_changedKeys);
    if (!m_isAnnounced) {
        m_changedIds = ids;
    } else if (ids.empty() || m_changedIds.empty()) {
        m_changedIds = {};
        m_moreIds.clear();
    } else if (m_changedIds.get() != ids.get()) {
        m_moreIds.insert(m_moreIds.end(), ids.begin(), ids.end());
    }
    m_isAnnounced = true;
    // Each of them is sorted a few times at most.
    if (m_moreIds.size() > m_changedIds.size())
        addMoreIds();
    schedule();
}

void PropertyModel::addMoreIds()
{
    if (m_moreIds.empty())
        return;
    m_moreIds.insert(m_moreIds.end(), m_changedIds.begin(), m_changedIds.end());
    makeUnique(m_moreIds);
    m_changedIds = std::exchange(m_moreIds, {});
}

void PropertyModel::fail(const QString& reason)
{
    m_failures.push_back(reason);
    schedule();
}

void PropertyModel::flush()
{
    const QPointer<PropertyModel> guarded(this);
    m_turn.stop();
    const std::vector<QString> failures = std::exchange(m_failures, {});
    const bool isAnnounced = std::exchange(m_isAnnounced, false);
    const PropertyKeys keys = std::exchange(m_changedKeys, {});
    addMoreIds();
    const SharedIds ids = std::exchange(m_changedIds, {});
    if (isAnnounced)
        Q_EMIT changed(keys, ids.get());
    if (guarded && !isWriting() && std::exchange(m_hasWritten, false))
        Q_EMIT writingEnded();
    for (const QString& reason : failures) {
        if (guarded)
            Q_EMIT failed(reason);
    }
}

const Field* PropertyModel::fieldOf(const std::string& key, const ObjectIds& ids) const
{
    const auto isOfKind = [](const ObjectId& id, std::uint32_t kind) { return id.kind < kind; };
    for (std::uint32_t kind = 0; kind < kindCount(); ++kind) {
        const auto first = std::lower_bound(ids.begin(), ids.end(), kind, isOfKind);
        if (first == ids.end() || first->kind != kind)
            continue;
        if (const PropertyDescription* property = m_kinds[kind].find(key))
            return &property->field;
    }
    return nullptr;
}

std::vector<PropertyValues> PropertyModel::readValues(
    const PropertyKeys& keys, const ObjectIds& ids) const
{
    PropertySink sink(ids);
    for (const std::string& key : keys) {
        const Field* field = fieldOf(key, ids);
        sink.m_slots.push_back(
            {field ? field->valueType().makeColumn(ids.size()) : nullptr, nullptr});
    }
    read(keys, ids, sink);
    std::vector<PropertyValues> values;
    values.reserve(keys.size());
    for (PropertySink::Slot& slot : sink.m_slots)
        values.emplace_back(std::move(slot.column), false);
    return values;
}

std::vector<PropertyState> PropertyModel::readStates(
    const PropertyKeys& keys, const ObjectIds& ids) const
{
    std::vector<PropertyState> states;
    states.reserve(keys.size());
    try {
        PropertySink sink(ids);
        for (const std::string& key : keys) {
            const Field* field = fieldOf(key, ids);
            sink.m_slots.push_back({nullptr, field ? field->valueType().makeSummary() : nullptr});
        }
        read(keys, ids, sink);
        for (const PropertySink::Slot& slot : sink.m_slots)
            states.push_back(stateOf(slot.summary.get()));
    } catch (...) {
        states.clear();
        if (keys.size() == 1) {
            PropertyState state;
            state.kind = PropertyState::Unreadable;
            state.reason = PropertyError::from(std::current_exception()).reason();
            states.push_back(state);
            return states;
        }
        // Each by itself tells which properties are concerned.
        for (const std::string& key : keys)
            states.push_back(readStates({key}, ids).front());
    }
    return states;
}

QString PropertyModel::text(ObjectId id, const std::string& key) const
{
    const ObjectIds ids{id};
    const Field* field = fieldOf(key, ids);
    return field ? field->text(readValues({key}, ids).front()[0], m_units) : QString();
}

ObjectIds PropertyModel::objects(std::uint32_t) const
{
    return {};
}

void PropertyModel::apply(const std::vector<PropertyEdit>& edits)
{
    if (isWriting())
        throw PropertyError(tr("Another edit is being written."));
    const QPointer<PropertyModel> guarded(this);
    std::exception_ptr refusal;
    try {
        const Flag writing(m_isWriting);
        write(edits);
    } catch (...) {
        refusal = std::current_exception();
    }
    if (guarded) {
        m_hasWritten = true;
        schedule();
    }
    if (refusal)
        throw PropertyError::from(refusal);
    if (!guarded)
        return;
    PropertyKeys keys;
    for (const PropertyEdit& edit : edits)
        keys.push_back(edit.key);
    const PropertyKeys affected = affectedBy(keys);
    for (const PropertyEdit& edit : edits)
        announceUnique(affected, edit.ids);
}

} // namespace vrn::qt
