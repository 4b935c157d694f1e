#pragma once

#include <vrn/units/i_unit_provider.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vrn::test {

/// Units of an application: ids, symbols and more spellings.
class OtherUnits : public units::IUnitProvider
{
public:
    struct Unit
    {
        int id;
        std::string symbol;
        std::vector<std::string> spellings;
    };

    explicit OtherUnits(std::vector<Unit> units)
        : m_units(std::move(units))
    {}

    bool is_known(units::UnitId::UnitId) const override { return true; }
    std::vector<units::UnitId::UnitId> get_all_ids() const override
    {
        std::vector<units::UnitId::UnitId> ids;
        for (const Unit& unit : m_units)
            ids.push_back(static_cast<units::UnitId::UnitId>(unit.id));
        return ids;
    }
    std::uint32_t get_dimension(units::UnitId::UnitId) const override { return 0; }
    double get_factor(units::UnitId::UnitId) const override { return 1; }
    const std::string& get_symbol(units::UnitId::UnitId id) const override
    {
        return unit(id).symbol;
    }
    const std::vector<std::string>& get_alternative_symbols(units::UnitId::UnitId id) const override
    {
        if (unit(id).symbol.empty())
            throw std::invalid_argument("unit_id");
        return unit(id).spellings;
    }
    const std::vector<units::UnitId::UnitId>& get_compatible_units(
        units::UnitId::UnitId) const override
    {
        return m_no_units;
    }

private:
    const Unit& unit(units::UnitId::UnitId id) const
    {
        for (const Unit& unit : m_units) {
            if (unit.id == static_cast<int>(id))
                return unit;
        }
        throw std::invalid_argument("unit_id");
    }

    std::vector<Unit> m_units;
    std::vector<units::UnitId::UnitId> m_no_units;
};

} // namespace vrn::test
