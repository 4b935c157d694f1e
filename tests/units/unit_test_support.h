#pragma once

#include <vrn/units/units.h>

#include <QString>
#include <QTest>

#include <locale>
#include <string>
#include <typeinfo>

/// What the tests of the unit library share.
namespace vrn::test {

/// Any number as an identifier, even one that no enumerator has.
inline vrn::units::UnitId::UnitId unitId(int id)
{
    return static_cast<vrn::units::UnitId::UnitId>(id);
}

inline QString formatted(const vrn::units::Context& context, int id, double value,
    const std::locale& locale = std::locale::classic())
{
    return QString::fromStdWString(context.format({unitId(id), value}, locale));
}

inline vrn::units::UnitFormat unitFormat(int unit, int precision, int format = 0)
{
    vrn::units::UnitFormat result;
    result.unit_id = unitId(unit);
    result.precision = precision;
    result.format = format;
    return result;
}

/// The text of the exception that `call` throws, which must be of exactly the type
/// `Exception`; null if it throws nothing.
template <typename Exception, typename Call>
QString thrownText(Call call)
{
    try {
        call();
    } catch (const Exception& error) {
        return typeid(error) == typeid(Exception) ? QString::fromUtf8(error.what())
                                                  : QStringLiteral("another type");
    }
    return {};
}

} // namespace vrn::test
