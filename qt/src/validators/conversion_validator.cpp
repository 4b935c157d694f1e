#include <vrn/qt/conversion_validator.h>

#include "validators/lasting_function_p.h"

#include <utility>

namespace vrn::qt {

ConversionValidator::ConversionValidator(IValidator::pointer target)
    : ForwardValidator(std::move(target))
{}

ConversionValidator::~ConversionValidator() = default;

void ConversionValidator::setConversionFn(
    std::function<void(boost::any&)> toDisplayFn, std::function<void(boost::any&)> fromDisplayFn)
{
    m_toDisplayFn = detail::lasting(std::move(toDisplayFn));
    m_fromDisplayFn = detail::lasting(std::move(fromDisplayFn));
}

bool ConversionValidator::validate(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    if (!ForwardValidator::validate(text, value, flags))
        return false;
    if (m_fromDisplayFn)
        m_fromDisplayFn(value);
    return true;
}

bool ConversionValidator::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    if (!ForwardValidator::validateWhenFinished(text, value, flags))
        return false;
    if (m_fromDisplayFn)
        m_fromDisplayFn(value);
    return true;
}

QString ConversionValidator::reformat(const boost::any& value, const std::bitset<32>& flags)
{
    return ForwardValidator::reformat(toDisplay(value), flags);
}

QString ConversionValidator::reformatForDisplay(
    const boost::any& value, const std::bitset<32>& flags)
{
    return ForwardValidator::reformatForDisplay(toDisplay(value), flags);
}

boost::any ConversionValidator::toDisplay(const boost::any& value) const
{
    boost::any copy = value;
    if (m_toDisplayFn)
        m_toDisplayFn(copy);
    return copy;
}

} // namespace vrn::qt
