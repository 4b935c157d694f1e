#pragma once

#include <vrn/units/i_converter.h>
#include <vrn/units/i_unit_provider.h>

#include <boost/optional.hpp>

namespace vrn::units {
inline namespace v1 {

/// Converts by the factors of a unit provider.
///
/// Conversion only multiplies, so temperatures convert as differences:
/// 0 °C is 0 °F.
///
/// Every operation throws std::logic_error with "No unit provider set." until there
/// is one, and passes on what the provider throws for unknown ids.
class VRN_UNITS_EXPORT Converter : public IConverter
{
public:
    /// The provider is not owned and must outlive its use here.
    void set_unit_provider(const IUnitProvider* unit_provider);

    bool can_convert(UnitId::UnitId from, UnitId::UnitId to) const override;
    quantity convert(quantity q, UnitId::UnitId unit_id) const override;
    /// As convert, but empty if can_convert says no.
    boost::optional<quantity> try_convert(quantity q, UnitId::UnitId unit_id) const;
    double to_base(quantity q) const override;
    quantity from_base(double value, UnitId::UnitId unit_id) const override;

private:
    const IUnitProvider& unit_provider() const;

    const IUnitProvider* m_unit_provider = nullptr;
};

} // namespace v1
} // namespace vrn::units
