#include <vrn/qt/multi_edit_value.h>

#include <vrn/assert/smart_assert.h>

namespace vrn::qt {

MultiEditValue::MultiEditValue(bool (*fn)(const boost::any&, const boost::any&))
    : m_differ(fn)
{
    VRN_ASSERT(fn);
}

MultiEditValue::~MultiEditValue() = default;

void MultiEditValue::reset()
{
    m_fresh = true;
    m_varies = false;
    m_value = boost::any();
}

void MultiEditValue::readValue(const boost::any& value)
{
    if (m_fresh) {
        m_fresh = false;
        m_varies = false;
        setValue(value);
        return;
    }
    if (!m_varies)
        m_varies = !m_differ || m_differ(value, m_value);
}

boost::any MultiEditValue::getCurrentValue() const
{
    return m_varies ? boost::any() : m_value;
}

void MultiEditValue::setValue(const boost::any& value)
{
    m_varies = false;
    m_value = value;
}

void MultiEditValue::forceVaries()
{
    m_varies = true;
}

} // namespace vrn::qt
