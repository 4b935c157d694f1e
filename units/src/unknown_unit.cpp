#include <vrn/units/unknown_unit.h>

namespace vrn::units {
inline namespace v1 {

UnknownUnit::UnknownUnit(const std::string& unit)
    : std::runtime_error("Unknown unit \"" + unit + "\".")
    , m_unit(unit)
{}

UnknownUnit::~UnknownUnit() = default;

} // namespace v1
} // namespace vrn::units
