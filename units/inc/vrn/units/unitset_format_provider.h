#pragma once

#include <vrn/units/i_format_provider.h>
#include <vrn/units/unit_format.h>

#include <map>

namespace vrn::units {
inline namespace v1 {

/// Formats of the ten unit systems, with overrides on top.
///
/// An answer comes from the override of the id, or else from the default of the
/// unit set in the active system, or else, for a unit, from the unit itself. An
/// override counts as a whole, not field by field.
///
/// A setter copies the override or default of the id, changes one field and stores
/// the result as the override. A unit without an override starts from a blank
/// UnitFormat and not from its own default, so set the unit first:
///
///     UnitsetFormatProvider formats;
///     formats.set_unit(UnitId::METRE, UnitId::METRE);
///     formats.set_precision(UnitId::METRE, 2);
///
/// A setter or an assignment that throws, as it does when memory runs out, has changed
/// nothing. Any thread may read as long as no setter is called.
class VRN_UNITS_EXPORT UnitsetFormatProvider : public IFormatProvider
{
public:
    /// `system_index` is 0 to 9. With any other, a question about a unit set fails an
    /// assertion, and the set is not known.
    explicit UnitsetFormatProvider(
        std::int32_t system_index = 0, std::map<std::int32_t, UnitFormat> overrides = {});
    ~UnitsetFormatProvider() override;

    UnitsetFormatProvider(const UnitsetFormatProvider& other);
    UnitsetFormatProvider(UnitsetFormatProvider&& other) noexcept;
    UnitsetFormatProvider& operator=(const UnitsetFormatProvider& other);
    UnitsetFormatProvider& operator=(UnitsetFormatProvider&& other) noexcept;

    std::int32_t system_index() const noexcept { return m_system_index; }
    const std::map<std::int32_t, UnitFormat>& overrides() const noexcept { return m_overrides; }

    /// True for every id from 0 to 999, even if there is no such unit, for every unit
    /// set, and for every id that has an override.
    bool is_known(UnitId::UnitId id) const override;

    UnitId::UnitId get_unit(UnitId::UnitId id) const override;
    void set_unit(UnitId::UnitId id, UnitId::UnitId unit) override;

    /// Also throws for an id below 1000 that is not a unit.
    std::int32_t get_precision(UnitId::UnitId id) const override;
    void set_precision(UnitId::UnitId id, std::int32_t precision) override;

    /// Gives 0 for an id below 1000 that is not a unit.
    std::int32_t get_format(UnitId::UnitId id) const override;
    void set_format(UnitId::UnitId id, std::int32_t format) override;

    boost::optional<std::string> get_label(UnitId::UnitId id) const override;
    void set_label(UnitId::UnitId id, const boost::optional<std::string>& label) override;

private:
    const UnitFormat* find_entry(UnitId::UnitId id) const;
    UnitFormat& override_of(UnitId::UnitId id);

    std::int32_t m_system_index;
    std::map<std::int32_t, UnitFormat> m_overrides;
};

} // namespace v1
} // namespace vrn::units
