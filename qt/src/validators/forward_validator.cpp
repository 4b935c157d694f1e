#include <vrn/qt/forward_validator.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/chained_validator.h>

#include <algorithm>
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
    const bool forwardsToItself = isReachedFrom(target.get());
    VRN_ASSERT(!forwardsToItself);
    if (!forwardsToItself)
        m_target = std::move(target);
}

// A target may be exchanged while it answers. Each operation therefore holds it until
// the answer is there.
bool ForwardValidator::validate(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    const IValidator::pointer target = m_target;
    return target && target->validate(text, value, flags);
}

bool ForwardValidator::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    const IValidator::pointer target = m_target;
    return target && target->validateWhenFinished(text, value, flags);
}

QString ForwardValidator::reformat(const boost::any& value, const std::bitset<32>& flags)
{
    const IValidator::pointer target = m_target;
    return target ? target->reformat(value, flags) : QString();
}

QString ForwardValidator::reformatForDisplay(const boost::any& value, const std::bitset<32>& flags)
{
    const IValidator::pointer target = m_target;
    return target ? target->reformatForDisplay(value, flags) : QString();
}

bool ForwardValidator::isReachedFrom(const IValidator* validator) const
{
    if (validator == this)
        return true;
    if (const auto* forwarder = dynamic_cast<const ForwardValidator*>(validator))
        return isReachedFrom(forwarder->getValidator());
    const auto* chain = dynamic_cast<const ChainedValidator*>(validator);
    return chain
        && std::any_of(chain->m_members.begin(), chain->m_members.end(),
            [this](const auto& member) { return isReachedFrom(member.get()); });
}

} // namespace vrn::qt
