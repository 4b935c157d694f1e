#include <vrn/qt/double_edit_validator.h>

#include <vrn/assert/smart_assert.h>

#include "validators/locale_for_flags_p.h"
#include "validators/number_text_p.h"

namespace vrn::qt {
DoubleEditValidator::DoubleEditValidator() = default;

DoubleEditValidator::DoubleEditValidator(double min, double max)
    : m_min(min)
    , m_max(max)
{}

DoubleEditValidator::DoubleEditValidator(int precision, double min, double max, bool zeroIfEmpty)
    : m_precision(precision)
    , m_min(min)
    , m_max(max)
    , m_emptyText(zeroIfEmpty ? EmptyText::Zero : EmptyText::Refused)
{
    VRN_ASSERT(m_min < m_max)("m_min", m_min)("m_max", m_max);
    VRN_ASSERT(m_precision >= 0)("m_precision", m_precision);
}

DoubleEditValidator::~DoubleEditValidator() = default;

void DoubleEditValidator::setMinimum(double min)
{
    m_min = min;
}

void DoubleEditValidator::setMaximum(double max)
{
    m_max = max;
}

void DoubleEditValidator::setRange(double min, double max)
{
    VRN_ASSERT(min < max)("min", min)("max", max);
    m_min = min;
    m_max = max;
}

void DoubleEditValidator::setPrecision(int precision)
{
    m_precision = precision;
}

void DoubleEditValidator::setEmptyValueAllowed(bool allowed)
{
    m_emptyText = allowed ? EmptyText::NoValue : EmptyText::Zero;
}

bool DoubleEditValidator::validate(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    if (m_emptyText == EmptyText::NoValue && text.isEmpty()) {
        value.clear();
        return true;
    }
    if (m_emptyText == EmptyText::Zero && text.isEmpty()) {
        value = 0.0;
        return true;
    }
    bool ok = false;
    const double number = toDouble(localeForFlags(flags), text, &ok);
    // Qt refuses "1e999" and returns infinity all the same.
    value = ok ? number : 0.0;
    return ok;
}

bool DoubleEditValidator::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    if (!validate(text, value, flags))
        return false;
    if (auto* number = boost::any_cast<double>(&value)) {
        if (m_min > *number)
            *number = m_min;
        else if (m_max < *number)
            *number = m_max;
    }
    return true;
}

QString DoubleEditValidator::reformat(const boost::any& value, const std::bitset<32>& flags)
{
    if (m_emptyText == EmptyText::NoValue && value.empty())
        return QString();
    const auto* number = boost::any_cast<double>(&value);
    if (!number) {
        VRN_ASSERT(value.type() == typeid(double))("value.type().name()", value.type().name());
        return QString();
    }
    // The comparisons are written so that not-a-number becomes the minimum.
    const double shown = !(m_min <= *number) ? m_min : !(*number <= m_max) ? m_max : *number;
    return toFixed(localeForFlags(flags), shown, m_precision);
}

} // namespace vrn::qt
