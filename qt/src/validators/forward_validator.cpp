#include <vrn/qt/forward_validator.h>

#include <vrn/assert/smart_assert.h>

#include <utility>

namespace vrn::qt {

ForwardValidator::ForwardValidator(IValidator::pointer target)
    : m_target(std::move(target))
{}

ForwardValidator::~ForwardValidator() = default;

IValidator* ForwardValidator::getValidator() const
{
    return m_target.get();
}

void ForwardValidator::setValidator(IValidator::pointer target)
{
    const bool forwardsToItself = target.get() == this;
    VRN_ASSERT(!forwardsToItself);
    if (!forwardsToItself)
        m_target = std::move(target);
}

bool ForwardValidator::validate(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    return m_target && m_target->validate(text, value, flags);
}

bool ForwardValidator::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    return m_target && m_target->validateWhenFinished(text, value, flags);
}

QString ForwardValidator::reformat(const boost::any& value, const std::bitset<32>& flags)
{
    return m_target ? m_target->reformat(value, flags) : QString();
}

QString ForwardValidator::reformatForDisplay(const boost::any& value, const std::bitset<32>& flags)
{
    return m_target ? m_target->reformatForDisplay(value, flags) : QString();
}

} // namespace vrn::qt
