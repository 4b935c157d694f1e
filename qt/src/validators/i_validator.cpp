#include <vrn/qt/i_validator.h>

#include "validators/lasting_function_p.h"

#include <utility>

namespace vrn::qt {

IValidator::IValidator() = default;
IValidator::~IValidator() = default;

bool IValidator::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    return validate(text, value, flags);
}

QString IValidator::reformatForDisplay(const boost::any& value, const std::bitset<32>& flags)
{
    const QString text = reformat(value, flags);
    return m_postfix.isEmpty() ? text : text + QLatin1Char(' ') + m_postfix;
}

QString IValidator::getEditHint(const QString& text) const
{
    return editHint(text);
}

QString IValidator::editHint(const QString& text) const
{
    return m_editHint ? m_editHint(text) : QString();
}

void IValidator::setEditHintFunction(std::function<QString(const QString&)> hint)
{
    m_editHint = detail::lasting(std::move(hint));
}

void IValidator::setPostfix(const QString& postfix)
{
    m_postfix = postfix;
}

} // namespace vrn::qt
