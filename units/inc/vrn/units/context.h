#pragma once

#include <vrn/units/converter.h>
#include <vrn/units/unitset_format_provider.h>
#include <vrn/units/varnelik_unit_provider.h>

#include <locale>
#include <string>
#include <string_view>

namespace vrn::units {
inline namespace v1 {

/// The unit library in one value: units, formats and conversion, and the way from
/// quantities to text and back.
///
///     Context context(8); // the first of the US customary systems
///     const auto length = context.parse(L"1' 6''", UnitId::GEO_LENGTH, std::locale("C"));
///     // length->value is 0.4572, in metres
///     context.format(*length, std::locale("C")); // L"1.50 ft"
///
/// A copy is independent of its original: neither sees a change of the other. Any
/// thread may read as long as the formats are not changed.
///
/// When memory runs out, every operation throws std::bad_alloc. An assignment that
/// throws leaves the context as it was. A text is never read or written in part.
class VRN_UNITS_EXPORT Context
{
public:
    /// For the parameters see UnitsetFormatProvider.
    explicit Context(
        std::int32_t system_index = 0, std::map<std::int32_t, UnitFormat> overrides = {});
    ~Context();

    Context(const Context& other);
    /// Leaves `other` without overrides, in the same system.
    Context(Context&& other) noexcept;
    Context& operator=(const Context& other);
    Context& operator=(Context&& other) noexcept;

    const VarnelikUnitProvider& unit_provider() const noexcept { return m_unit_provider; }
    const UnitsetFormatProvider& format_provider() const noexcept { return m_format_provider; }
    UnitsetFormatProvider& format_provider() noexcept { return m_format_provider; }
    const Converter& converter() const noexcept { return m_converter; }

    /// Reads a quantity of `unit_id`, a unit or a unit set. A number without a
    /// unit is in the display unit of `unit_id`. The result has the id `unit_id`;
    /// it is empty if the text is not a quantity or is one of another kind.
    boost::optional<IConverter::quantity> parse(
        std::wstring_view text, UnitId::UnitId unit_id, const std::locale& locale) const;

    /// Writes `q` in its display unit.
    std::wstring format(IConverter::quantity q, const std::locale& locale) const;

    /// The code of the dimension of the unit in which `unit_id` is shown. Throws
    /// std::invalid_argument with "Invalid unit id." if `unit_id` or that unit is not
    /// known.
    std::uint32_t get_display_dimension(UnitId::UnitId unit_id) const;

    /// What is written after the values of `unit_id`, in UTF-8: usually the symbol of
    /// its display unit. Empty if the unit is hidden.
    std::string get_display_label(UnitId::UnitId unit_id) const;

private:
    boost::optional<IConverter::quantity> read(
        std::wstring_view text, UnitId::UnitId unit_id, const std::locale& locale) const;
    boost::optional<IConverter::quantity> finish(
        IConverter::quantity parsed, UnitId::UnitId unit_id) const;

    VarnelikUnitProvider m_unit_provider;
    UnitsetFormatProvider m_format_provider;
    Converter m_converter; ///< Points at m_unit_provider of the same object.
};

} // namespace v1
} // namespace vrn::units
