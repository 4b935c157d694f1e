#include "entry/unit_kinds_p.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace vrn::units::detail {
namespace {

/// Units that measure something else than others of their dimension code.
struct UnitKind
{
    int unit;
    const char* kind;
};

struct DimensionKind
{
    std::uint32_t dimension;
    const char* kind;
};

constexpr const char* area_per_length = "an area per length";
constexpr const char* area_per_area = "an area per area";
constexpr const char* angle = "an angle";
constexpr const char* angle_per_length = "an angle per length";
constexpr const char* temperature = "a temperature";
constexpr const char* temperature_gradient = "a temperature per length";
constexpr const char* moment_per_length = "a moment per length";
constexpr const char* moment_per_area = "a moment per area";
constexpr const char* moment_per_angle = "a moment per angle";
constexpr const char* force_per_angle = "a force per angle";
constexpr const char* bimoment_per_angle = "a bimoment per angle";
constexpr const char* weight = "a weight per volume";
constexpr const char* inertia_per_length = "a moment of inertia per length";
constexpr const char* energy = "an energy";
constexpr const char* energy_per_volume = "an energy per volume";
constexpr const char* ratio = "a ratio";
constexpr const char* flow_per_length = "a flow per length";
constexpr const char* flow_per_area = "a flow per area";
constexpr const char* flow_per_volume = "a flow per volume";

// clang-format off
constexpr UnitKind kinds_of_units[] = {
    {2, ratio}, {3, angle}, {4, angle}, {5, angle}, {6, temperature}, {7, temperature_gradient},
    {8, ratio}, {9, ratio}, {10, "one over an angle"}, {19, angle_per_length},
    {26, area_per_length}, {27, area_per_area}, {28, area_per_length}, {29, area_per_length},
    {30, area_per_area}, {67, moment_per_length}, {68, moment_per_length}, {79, weight},
    {81, inertia_per_length}, {88, moment_per_area}, {89, moment_per_area}, {110, "a bimoment"},
    {115, moment_per_length}, {118, moment_per_length}, {154, energy_per_volume},
    {156, inertia_per_length}, {159, weight}, {160, "a volume per length"},
    {161, moment_per_angle}, {162, moment_per_angle}, {163, moment_per_angle},
    {164, moment_per_angle}, {165, moment_per_length}, {166, moment_per_length},
    {167, moment_per_length}, {168, moment_per_length}, {171, force_per_angle},
    {172, force_per_angle}, {173, force_per_angle}, {174, force_per_angle},
    {175, bimoment_per_angle}, {176, bimoment_per_angle}, {177, bimoment_per_angle},
    {178, bimoment_per_angle}, {179, bimoment_per_angle}, {180, bimoment_per_angle},
    {188, moment_per_area}, {189, moment_per_area}, {190, moment_per_area},
    {191, angle_per_length}, {203, angle}, {205, angle}, {208, temperature}, {209, temperature},
    {217, temperature_gradient}, {226, area_per_length}, {227, area_per_area},
    {228, area_per_length}, {229, inertia_per_length}, {253, inertia_per_length}, {259, weight},
    {267, moment_per_length}, {268, moment_per_length}, {269, moment_per_angle},
    {270, moment_per_angle}, {280, weight}, {281, moment_per_length}, {282, moment_per_length},
    {288, moment_per_area}, {327, flow_per_length}, {328, flow_per_length},
    {329, flow_per_length}, {330, flow_per_length}, {331, flow_per_length},
    {332, flow_per_length}, {333, flow_per_length}, {334, flow_per_length}, {335, flow_per_area},
    {336, flow_per_area}, {337, flow_per_area}, {338, flow_per_area}, {339, flow_per_area},
    {340, flow_per_area}, {341, flow_per_area}, {342, flow_per_area}, {343, flow_per_volume},
    {344, flow_per_volume}, {345, flow_per_volume}, {346, flow_per_volume},
    {347, flow_per_volume}, {348, flow_per_volume}, {349, flow_per_volume},
    {350, flow_per_volume}, {355, moment_per_area}, {356, moment_per_area},
    {357, moment_per_area}, {358, moment_per_area}, {381, energy}, {382, energy}, {383, energy},
    {384, energy}, {385, energy}, {387, energy_per_volume}, {400, angle_per_length},
    {401, angle_per_length}, {402, angle_per_length}, {403, angle_per_length},
};

constexpr DimensionKind kinds_of_dimensions[] = {
    {0x000000, "a number"},
    {0x000001, "a length"},
    {0x000002, "an area"},
    {0x000003, "a volume"},
    {0x000004, "a second moment of area"},
    {0x000005, "a fifth power of length"},
    {0x000006, "a sixth power of length"},
    {0x00001d, "one over a volume"},
    {0x00001e, "one over an area"},
    {0x00001f, "one over a length"},
    {0x000100, "a time"},
    {0x00011f, "a time per length"},
    {0x001d02, "an energy per mass and time"},
    {0x001e00, "an angular acceleration"},
    {0x001e01, "an acceleration"},
    {0x001e02, "an energy per mass"},
    {0x001f00, "a frequency"},
    {0x001f01, "a velocity"},
    {0x001f02, "an area per time"},
    {0x001f03, "a flow"},
    {0x010000, "a mass"},
    {0x010001, "a mass times a length"},
    {0x010002, "a moment of inertia"},
    {0x01001d, "a density"},
    {0x01001e, "a mass per area"},
    {0x01001f, "a mass per length"},
    {0x011d00, "a heat flow per area"},
    {0x011d01, "a heat flow per length"},
    {0x011d02, "a heat flow"},
    {0x011d1e, "an energy"},
    {0x011d1f, "a heat flow per volume"},
    {0x011e00, "a force per length"},
    {0x011e01, "a force"},
    {0x011e02, "a moment"},
    {0x011e03, "a bimoment"},
    {0x011e04, "a bimoment times a length"},
    {0x011e1e, "a force per volume"},
    {0x011e1f, "a force per area"},
    {0x011f00, "a mass per time"},
    {0x011f02, "a moment times a time"},
    {0x011f1d, "a mass per time and volume"},
    {0x011f1e, "a mass per time and area"},
    {0x011f1f, "a viscosity"},
    {0x070000, "one over a mass"},
    {0x100000, "a temperature"},
    {0x10001f, "a temperature per length"},
    {0x170300, "a thermal resistance"},
    {0x700000, "one over a temperature"},
    {0x701e02, "a heat capacity"},
    {0x711d00, "a heat transfer"},
    {0x711d01, "a thermal conductivity"},
    {0x711e01, "a heat capacity"},
    {0x711e1f, "a heat capacity"},
};
// clang-format on

} // namespace

const char* kind_of_unit(const IUnitProvider& provider, UnitId::UnitId unit)
{
    const auto* const by_unit = std::find_if(std::begin(kinds_of_units), std::end(kinds_of_units),
        [unit](const UnitKind& each) { return each.unit == static_cast<int>(unit); });
    if (by_unit != std::end(kinds_of_units))
        return by_unit->kind;
    const std::uint32_t dimension = provider.get_dimension(unit);
    const auto* const by_dimension = std::find_if(std::begin(kinds_of_dimensions),
        std::end(kinds_of_dimensions),
        [dimension](const DimensionKind& each) { return each.dimension == dimension; });
    return by_dimension != std::end(kinds_of_dimensions) ? by_dimension->kind : "another quantity";
}

} // namespace vrn::units::detail
