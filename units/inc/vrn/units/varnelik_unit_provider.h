#pragma once

#include <vrn/units/i_unit_provider.h>

namespace vrn::units {
inline namespace v1 {

/// Answers from the fixed tables of this library; see <vrn/units/catalogue.h>.
/// It has no state: all objects are alike, and any thread may ask.
class VRN_UNITS_EXPORT VarnelikUnitProvider : public IUnitProvider
{
public:
    bool is_known(UnitId::UnitId unit_id) const override;
    std::vector<UnitId::UnitId> get_all_ids() const override;
    std::uint32_t get_dimension(UnitId::UnitId unit_id) const override;
    double get_factor(UnitId::UnitId unit_id) const override;
    const std::string& get_symbol(UnitId::UnitId unit_id) const override;
    const std::vector<std::string>& get_alternative_symbols(UnitId::UnitId unit_id) const override;
    const std::vector<UnitId::UnitId>& get_compatible_units(UnitId::UnitId unit_id) const override;
};

} // namespace v1
} // namespace vrn::units
