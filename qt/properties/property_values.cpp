#include <vrn/qt/property_values.h>

#include <utility>

namespace vrn::qt {

namespace detail {

ValueColumn::~ValueColumn() = default;

} // namespace detail

PropertyValues::PropertyValues() = default;
PropertyValues::~PropertyValues() = default;
PropertyValues::PropertyValues(const PropertyValues&) = default;
PropertyValues::PropertyValues(PropertyValues&&) noexcept = default;
PropertyValues& PropertyValues::operator=(const PropertyValues&) = default;
PropertyValues& PropertyValues::operator=(PropertyValues&&) noexcept = default;

PropertyValues::PropertyValues(std::shared_ptr<const detail::ValueColumn> column, bool isUniform)
    : m_column(std::move(column))
    , m_isUniform(isUniform)
{}

std::size_t PropertyValues::size() const
{
    return m_column && !m_isUniform ? m_column->size() : 0;
}

bool PropertyValues::isEmpty(std::size_t object) const
{
    return !m_column || place(object) >= m_column->size()
        || m_column->presence[place(object)] != detail::Presence::Value;
}

bool PropertyValues::hasObject(std::size_t object) const
{
    return m_column && place(object) < m_column->size()
        && m_column->presence[place(object)] != detail::Presence::NoObject;
}

boost::any PropertyValues::operator[](std::size_t object) const
{
    return isEmpty(object) ? boost::any() : m_column->at(place(object));
}

QVariant PropertyValues::variant(std::size_t object) const
{
    return isEmpty(object) ? QVariant() : m_column->variantAt(place(object));
}

} // namespace vrn::qt
