#include <vrn/qt/field.h>

#include <vrn/units/entry.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <optional>

namespace vrn::qt {

namespace {

using vrn::units::Context;
using vrn::units::EntryReader;
using vrn::units::EntryState;
using UnitId = vrn::units::UnitId::UnitId;

constexpr std::size_t longestNumber = 64;

/// In the fewest digits that are read as the same. A unit may follow, so an exponent has no
/// plus.
QString numberText(double value)
{
    constexpr double leastFixed = 1e-5;
    constexpr double mostFixed = 1e15;
    const double size = std::abs(value);
    const bool isFixed = size == 0.0 || (size >= leastFixed && size < mostFixed);
    std::array<char, longestNumber> digits;
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
        isFixed ? std::chars_format::fixed : std::chars_format::scientific)
                          .ptr;
    return QString::fromLatin1(
        digits.data(), int(std::remove(digits.data(), end, '+') - digits.data()));
}

double roundedTo(double value, int digits)
{
    std::array<char, longestNumber> text;
    const char* const end = std::to_chars(
        text.data(), text.data() + text.size(), value, std::chars_format::scientific, digits - 1)
                                .ptr;
    double result = value;
    std::from_chars(text.data(), end, result);
    return result;
}

/// Reads as an editor of the field does. To make a reader takes longer than to find a text, so
/// that of the last kind and system is kept.
const EntryReader& readerOf(const Field& field, const Context& units)
{
    static const EntryReader numbers;
    if (field.shape() != Field::Shape::Quantity)
        return numbers;
    struct Last
    {
        UnitId kind;
        std::int32_t system;
        std::map<std::int32_t, vrn::units::UnitFormat> overrides;
        EntryReader reader;
    };
    static std::optional<Last> last;
    const auto& formats = units.format_provider();
    if (!last || last->kind != field.kind() || last->system != formats.system_index()
        || last->overrides != formats.overrides()) {
        last.emplace(Last{field.kind(), formats.system_index(), formats.overrides(),
            EntryReader(units, field.kind())});
    }
    return last->reader;
}

class ExactText
{
public:
    ExactText(const Field& field, double stored, const Context& units)
        : m_field(field)
        , m_stored(stored)
        , m_units(units)
        , m_reader(readerOf(field, units))
    {}

    bool readsBack(const QString& text) const
    {
        // Between minus one foot and zero, a field writes the sign of the inches.
        const bool hasSignOfInches = text.startsWith(QLatin1String("0' -"));
        const QString signFirst = hasSignOfInches ? QStringLiteral("-0' ") + text.mid(4) : text;
        const auto entry = m_reader.read(signFirst.toStdWString());
        return entry.state == EntryState::Complete && isStored(entry.quantity.value);
    }

    /// Empty if no number in the unit comes to the value.
    QString textIn(UnitId unit, const std::string& label) const
    {
        const auto& converter = m_units.converter();
        const UnitId kind = m_field.kind();
        if (!converter.can_convert(unit, kind))
            return QString();
        const double base = m_field.toBase(m_stored, m_units);
        const double nearest = converter.convert({kind, base}, unit).value;
        if (!std::isfinite(nearest))
            return QString();
        const QString symbol = label.empty() ? QString()
                                             : QLatin1Char(' ') + QString::fromStdString(label);
        return textNear(nearest, [&](double number) {
            const double value = converter.convert({unit, number}, kind).value;
            return isStored(value) ? numberText(number) + symbol : QString();
        });
    }

private:
    bool isStored(double base) const
    {
        return detail::isSame(m_field.fromBase(base, m_units), m_stored);
    }

    /// The first text with few digits that `textOf` gives and that reads back.
    template <typename TextOf>
    QString textNear(double nearest, const TextOf& textOf) const
    {
        // The rounding of the conversions.
        constexpr int mostSteps = 4;
        const auto tryNumber = [&](double number) {
            const QString text = textOf(number);
            return !text.isEmpty() && readsBack(text) ? text : QString();
        };
        for (int digits = 1; digits <= std::numeric_limits<double>::max_digits10; ++digits) {
            double above = nearest;
            double below = nearest;
            for (int step = 0; step <= mostSteps; ++step) {
                for (const double number : {above, below}) {
                    const QString text = tryNumber(roundedTo(number, digits));
                    if (!text.isEmpty())
                        return text;
                }
                // With few digits the neighbours are the same.
                if (digits <= std::numeric_limits<double>::digits10)
                    break;
                above = std::nextafter(above, std::numeric_limits<double>::infinity());
                below = std::nextafter(below, -std::numeric_limits<double>::infinity());
            }
        }
        return QString();
    }

    const Field& m_field;
    const double m_stored;
    const Context& m_units;
    const EntryReader& m_reader;
};

/// The unit in which the field takes a decimal number.
std::pair<UnitId, std::string> decimalUnit(UnitId kind, const Context& units)
{
    namespace Unit = vrn::units::UnitId;
    const UnitId shown = units.format_provider().get_unit(kind);
    const auto symbolOf = [&](UnitId unit) { return units.unit_provider().get_symbol(unit); };
    switch (shown) {
    case Unit::FEET_AND_FRACTIONAL_INCHES:
        return {Unit::FOOT, symbolOf(Unit::FOOT)};
    case Unit::FRACTIONAL_INCHES:
        return {Unit::INCH, symbolOf(Unit::INCH)};
    default:
        return {shown, units.get_display_label(kind)};
    }
}

/// The other units of the kind, that of the base scale first.
std::vector<UnitId> otherUnits(UnitId kind, const Context& units)
{
    const auto& provider = units.unit_provider();
    std::vector<UnitId> others = provider.get_compatible_units(kind);
    if (others.empty()) {
        for (const UnitId unit : provider.get_all_ids()) {
            const bool isUnit = !provider.get_symbol(unit).empty();
            if (isUnit && provider.get_dimension(unit) == provider.get_dimension(kind))
                others.push_back(unit);
        }
    }
    std::stable_partition(others.begin(), others.end(),
        [&](UnitId unit) { return provider.get_factor(unit) == 1.0; });
    return others;
}

} // namespace

QString Field::exactText(const boost::any& value, const vrn::units::Context& units) const
{
    const QString shown = text(value, units);
    const auto* stored = boost::any_cast<double>(&value);
    const bool isNumber = shape() == Shape::Number;
    if (!stored || !std::isfinite(*stored) || (!isNumber && shape() != Shape::Quantity))
        return shown;
    try {
        const ExactText exact(*this, *stored, units);
        if (exact.readsBack(shown))
            return shown;
        if (isNumber)
            return numberText(*stored);
        const auto [unit, label] = decimalUnit(kind(), units);
        QString text = exact.textIn(unit, label);
        if (!text.isEmpty())
            return text;
        for (const UnitId other : otherUnits(kind(), units)) {
            text = exact.textIn(other, units.unit_provider().get_symbol(other));
            if (!text.isEmpty())
                return text;
        }
    } catch (const std::exception&) {
        // A kind that these units cannot show cannot be typed either.
    }
    return shown;
}

} // namespace vrn::qt
