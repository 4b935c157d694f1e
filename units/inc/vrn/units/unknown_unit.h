#pragma once

#include <vrn/units/vrn_units_export.h>

#include <stdexcept>
#include <string>

namespace vrn::units {
inline namespace v1 {

/// Thrown when the text after a number does not name a unit that the reader knows.
/// what() is a sentence that quotes the text.
class VRN_UNITS_EXPORT UnknownUnit : public std::runtime_error
{
public:
    /// `unit` is the text after the number, in UTF-8.
    explicit UnknownUnit(const std::string& unit);
    ~UnknownUnit() override;

    const std::string& unit() const noexcept { return m_unit; }

private:
    std::string m_unit;
};

} // namespace v1
} // namespace vrn::units
