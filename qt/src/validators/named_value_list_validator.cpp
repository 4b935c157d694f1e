#include <vrn/qt/named_value_list_validator.h>

#include <vrn/assert/smart_assert.h>

#include <utility>

namespace vrn::qt {

NamedValueListValidator::NamedValueListValidator(const NamedValueList& list)
    : m_list(list)
{}

NamedValueListValidator::NamedValueListValidator(NamedValueList&& list)
    : m_list(std::move(list))
{}

NamedValueListValidator::~NamedValueListValidator() = default;

void NamedValueListValidator::set_equal_to(EqualTo equalTo)
{
    m_equalTo = equalTo;
}

void NamedValueListValidator::enable_empty_value(const QString& name)
{
    m_emptyName = name;
}

bool NamedValueListValidator::validate(
    const QString& text, boost::any& value, const std::bitset<32>& /*flags*/)
{
    for (const auto& [name, entryValue] : m_list) {
        if (name == text) {
            value = entryValue;
            return true;
        }
    }
    if (m_emptyName && text == *m_emptyName) {
        value.clear();
        return true;
    }
    return false;
}

QString NamedValueListValidator::reformat(const boost::any& value, const std::bitset<32>& /*flags*/)
{
    VRN_ASSERT(m_equalTo);
    if (m_equalTo) {
        for (const auto& [name, entryValue] : m_list) {
            if (m_equalTo(value, entryValue))
                return name;
        }
    }
    if (m_emptyName && value.empty())
        return *m_emptyName;
    return QString();
}

} // namespace vrn::qt
