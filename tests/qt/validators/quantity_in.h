#pragma once

#include <vrn/units/i_converter.h>

#include <boost/any.hpp>

#include <QString>

namespace vrn::test {

/// The number of the quantity in `value`, as a double for comparison; a text that
/// says what is wrong where `value` has no quantity of `unitId`.
inline boost::any numberIn(const boost::any& value, int unitId)
{
    if (value.empty())
        return QStringLiteral("empty");
    const auto* quantity = boost::any_cast<units::IConverter::quantity>(&value);
    if (!quantity)
        return QStringLiteral("not a quantity");
    if (quantity->unit_id != unitId)
        return QStringLiteral("a quantity of %1").arg(static_cast<int>(quantity->unit_id));
    return quantity->value;
}

} // namespace vrn::test
