#include <vrn/qt/distance_edit_validator.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/q/unit_index.h>
#include <vrn/units/unknown_unit.h>

#include "validators/locale_for_flags_p.h"
#include "validators/number_text_p.h"

#include <array>
#include <optional>

namespace vrn::qt {
namespace {

using vrn::q::DisplayToInternal;
using vrn::q::UnitSizeInMetres;

double metresPer(const QString& unit)
{
    if (unit == QLatin1String("m"))
        return 1.0;
    if (unit == QLatin1String("dm"))
        return 0.1;
    if (unit == QLatin1String("cm"))
        return 0.01;
    if (unit == QLatin1String("mm"))
        return 0.001;
    throw vrn::units::UnknownUnit(unit.toStdString());
}

// Where the number at the head of `text` ends: digits, at most one other
// character, which must be a punctuation mark, and digits again. A minus sign
// counts as punctuation and a plus sign does not.
int endOfNumber(const QString& text)
{
    int end = 0;
    while (end < text.size() && text.at(end).isDigit())
        ++end;
    if (end < text.size() && text.at(end).isPunct())
        ++end;
    while (end < text.size() && text.at(end).isDigit())
        ++end;
    return end;
}

// Reads a number and the unit after it, as metres. A text that ends with the
// number is zero metres; it is not refused.
std::optional<double> parseMetres(const QString& text)
{
    const int end = endOfNumber(text);
    if (end == text.size())
        return 0.0;
    bool ok = false;
    // Read as bytes for speed, as in toDouble(). A number of the C locale has
    // only ASCII characters anyway.
    const double number = text.left(end).toLatin1().toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return number * metresPer(text.mid(end).trimmed());
}

// The label of the unit, or an empty string.
QString unitLabel(int unit)
{
    std::array<char, 32> buffer{};
    const int limit = static_cast<int>(buffer.size()) - 1;
    if (vrn_get_unit_label(unit, 1, buffer.data(), limit) == 0)
        return QString();
    return QString::fromUtf8(buffer.data());
}

} // namespace

DistanceEditValidator::DistanceEditValidator(int unit, double min, double max, bool zeroIfEmpty)
    : m_decimals(vrn_get_unit_precision(unit, 1))
    , m_min(min)
    , m_max(max)
    , m_unit(unit)
    , m_emptyText(zeroIfEmpty ? EmptyText::Zero : EmptyText::Refused)
{
    VRN_ASSERT(m_min < m_max)("m_min", m_min)("m_max", m_max);
    VRN_ASSERT(m_decimals >= 0)("m_decimals", m_decimals);
}

DistanceEditValidator::~DistanceEditValidator() = default;

void DistanceEditValidator::setEmptyValueAllowed(bool allowed)
{
    m_emptyText = allowed ? EmptyText::NoValue : EmptyText::Zero;
}

void DistanceEditValidator::showUnitPostfix(bool show)
{
    m_showUnitPostfix = show;
}

bool DistanceEditValidator::validate(
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
    const double toInternal = vrn_get_unitd(m_unit, DisplayToInternal);
    bool ok = false;
    const double number = toDouble(localeForFlags(flags), text, &ok);
    if (ok) {
        value = toInternal * number;
        return true;
    }
    value = 0.0;
    const std::optional<double> metres = parseMetres(text.trimmed());
    if (!metres)
        return false;
    value = toInternal * (*metres / vrn_get_unitd(m_unit, UnitSizeInMetres));
    return true;
}

bool DistanceEditValidator::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    if (!validate(text, value, flags))
        return false;
    if (auto* length = boost::any_cast<double>(&value)) {
        if (m_min > *length)
            *length = m_min;
        else if (m_max < *length)
            *length = m_max;
    }
    return true;
}

QString DistanceEditValidator::reformat(const boost::any& value, const std::bitset<32>& flags)
{
    if (m_emptyText == EmptyText::NoValue && value.empty())
        return QString();
    const auto* length = boost::any_cast<double>(&value);
    if (!length) {
        VRN_ASSERT(value.type() == typeid(double))("value.type().name()", value.type().name());
        return QString();
    }
    // Unlike in DoubleEditValidator, not-a-number becomes the maximum, and the
    // minimum wins in a reversed range.
    double shown = *length <= m_max ? *length : m_max;
    if (!(shown >= m_min))
        shown = m_min;
    shown /= vrn_get_unitd(m_unit, DisplayToInternal);
    const QString text = toFixed(localeForFlags(flags), shown, m_decimals);
    const QString label = m_showUnitPostfix ? unitLabel(m_unit) : QString();
    return label.isEmpty() ? text : text + QLatin1Char(' ') + label;
}

} // namespace vrn::qt
