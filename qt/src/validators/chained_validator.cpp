#include <vrn/qt/chained_validator.h>

#include <vrn/assert/smart_assert.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vrn::qt {

ChainedValidator::ChainedValidator(std::deque<std::unique_ptr<IValidator>> members)
    : m_members(std::move(members))
{
    const auto missing = std::remove(m_members.begin(), m_members.end(), nullptr);
    VRN_ASSERT(missing == m_members.end())("missing", std::distance(missing, m_members.end()));
    m_members.erase(missing, m_members.end());
}

ChainedValidator::~ChainedValidator() = default;

bool ChainedValidator::validate(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    return std::any_of(m_members.begin(), m_members.end(),
        [&](const auto& member) { return member->validate(text, value, flags); });
}

QString ChainedValidator::reformat(const boost::any& value, const std::bitset<32>& flags)
{
    for (const auto& member : m_members) {
        const QString text = member->reformat(value, flags);
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

} // namespace vrn::qt
