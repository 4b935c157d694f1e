#include <vrn/qt/property_set.h>

#include <algorithm>
#include <stdexcept>

namespace vrn::qt {

namespace {

template <typename Described>
const Described* found(const std::vector<Described>& described, const std::string& key)
{
    const auto at = std::find_if(
        described.begin(), described.end(), [&](const Described& each) { return each.key == key; });
    return at == described.end() ? nullptr : &*at;
}

bool contains(const PropertyKeys& keys, const std::string& key)
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace

namespace detail {

Rollback::~Rollback() = default;

} // namespace detail

QString PropertyDescription::title() const
{
    QString text = caption;
    for (int i = 0; i + 1 < int(text.size()); ++i) {
        if (text.at(i) == QLatin1Char('&'))
            text.remove(i, 1);
    }
    return text;
}

PropertyList::PropertyList(std::string key, CountedName name)
    : m_key(std::move(key))
    , m_name(std::move(name))
{}

PropertyList::~PropertyList() = default;
PropertyList::PropertyList(const PropertyList&) = default;
PropertyList::PropertyList(PropertyList&&) noexcept = default;
PropertyList& PropertyList::operator=(const PropertyList&) = default;
PropertyList& PropertyList::operator=(PropertyList&&) noexcept = default;

PropertyList& PropertyList::section(const std::string& key, const QString& title, bool open)
{
    if (found(m_sections, key))
        throw std::logic_error("duplicate key: " + key);
    m_sections.push_back({key, title, open});
    return *this;
}

PropertyList& PropertyList::add(const std::string& key, const QString& caption, const Field& field)
{
    if (find(key))
        throw std::logic_error("duplicate key: " + key);
    if (m_sections.empty())
        section(std::string(), QString());
    m_properties.push_back({key, caption, m_sections.size() - 1, field, false});
    m_properties.back().field.setHistoryOf(key);
    return *this;
}

void PropertyList::checkConditions()
{
    for (PropertyDescription& property : m_properties) {
        const PropertyDescription* const source = find(property.field.conditionKey());
        property.field.checkCondition(source ? &source->field : nullptr);
    }
}

QString PropertyList::countedName(std::size_t count) const
{
    return m_name ? m_name(int(count)) : QString::number(count);
}

const PropertyDescription* PropertyList::find(const std::string& key) const
{
    return found(m_properties, key);
}

PropertyKeys PropertyList::affectedBy(const PropertyKeys& keys) const
{
    PropertyKeys affected = keys;
    // A setter may change whatever it likes.
    const bool wasSet = std::any_of(
        m_properties.begin(), m_properties.end(), [&](const PropertyDescription& property) {
            return property.isComputed && !property.field.isReadOnly()
                && contains(keys, property.key);
        });
    // What is computed may be a source in its turn.
    for (std::size_t before = 0; before != affected.size();) {
        before = affected.size();
        for (const PropertyDescription& property : m_properties) {
            const PropertyKeys& sources = property.field.sources();
            const bool depends = wasSet
                || (sources.empty()
                        ? property.isComputed
                        : std::any_of(sources.begin(), sources.end(),
                            [&](const std::string& source) { return contains(affected, source); }));
            if (depends && !contains(affected, property.key))
                affected.push_back(property.key);
        }
    }
    return affected;
}

} // namespace vrn::qt
