#include <vrn/qt/unit_validator.h>

#include <vrn/assert/smart_assert.h>

#include "validators/locale_for_flags_p.h"
#include "validators/wide_text_p.h"

#include <utility>

namespace vrn::qt {

namespace units = vrn::units;

UnitValidator::UnitValidator(units::Context context)
    : m_context(std::move(context))
{}

UnitValidator::UnitValidator(units::Context context, UnitId unitId)
    : m_context(std::move(context))
    , m_unit_id(unitId)
{}

UnitValidator::~UnitValidator() = default;

UnitValidator::UnitId UnitValidator::get_unit_id() const
{
    VRN_ASSERT(m_unit_id);
    return m_unit_id.get_value_or(units::UnitId::BLANK);
}

void UnitValidator::set_unit_id(UnitId unitId)
{
    m_unit_id = unitId;
}

void UnitValidator::set_minimum(const double& minimum)
{
    m_minimum = minimum;
}

void UnitValidator::set_maximum(const double& maximum)
{
    m_maximum = maximum;
}

void UnitValidator::setEmptyValueAllowed(bool allowed)
{
    m_emptyText = allowed ? EmptyText::NoValue : EmptyText::Zero;
}

bool UnitValidator::validate(const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    if (m_emptyText == EmptyText::NoValue && text.isEmpty()) {
        value.clear();
        return true;
    }
    const UnitId unitId = get_unit_id();
    if (m_emptyText == EmptyText::Zero && text.isEmpty()) {
        value = units::IConverter::quantity{unitId, 0.0};
        return true;
    }
    const detail::WideText wide(text);
    const auto parsed = m_context.parse(wide.view(), unitId, stdLocaleForFlags(flags));
    value = parsed.get_value_or({unitId, 0.0});
    return parsed.has_value();
}

bool UnitValidator::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    if (!validate(text, value, flags))
        return false;
    if (auto* quantity = boost::any_cast<units::IConverter::quantity>(&value))
        quantity->value = clamped(quantity->value);
    return true;
}

QString UnitValidator::reformat(const boost::any& value, const std::bitset<32>& flags)
{
    if (m_emptyText == EmptyText::NoValue && value.empty())
        return QString();
    const auto* held = boost::any_cast<units::IConverter::quantity>(&value);
    if (!held) {
        VRN_ASSERT(value.type() == typeid(units::IConverter::quantity));
        return QString();
    }
    units::IConverter::quantity shown = *held;
    shown.value = clamped(shown.value);
    return detail::toQString(m_context.format(shown, stdLocaleForFlags(flags)));
}

// The comparisons are written so that not-a-number becomes the minimum.
double UnitValidator::clamped(double value) const
{
    if (!(value >= m_minimum))
        return m_minimum;
    if (!(value <= m_maximum))
        return m_maximum;
    return value;
}

} // namespace vrn::qt
