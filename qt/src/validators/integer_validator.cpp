#include <vrn/qt/integer_validator.h>

#include <vrn/assert/smart_assert.h>

namespace vrn::qt {

template <typename T>
IntegerValidator<T>::IntegerValidator(T min, T max, bool zeroIfEmpty)
    : m_min(min)
    , m_max(max)
    , m_emptyText(zeroIfEmpty ? EmptyText::Zero : EmptyText::Refused)
{
    VRN_ASSERT(min <= max)("min", min)("max", max);
}

template <typename T>
IntegerValidator<T>::~IntegerValidator() = default;

template <typename T>
void IntegerValidator<T>::setMinimum(T min)
{
    m_min = min;
}

template <typename T>
void IntegerValidator<T>::setMaximum(T max)
{
    m_max = max;
}

template <typename T>
void IntegerValidator<T>::setEmptyValueAllowed(bool allowed)
{
    m_emptyText = allowed ? EmptyText::NoValue : EmptyText::Zero;
}

template <typename T>
bool IntegerValidator<T>::validate(
    const QString& text, boost::any& value, const std::bitset<32>& /*flags*/)
{
    if (text.isEmpty() && m_emptyText != EmptyText::Refused) {
        value.clear();
        return true;
    }
    bool ok = false;
    // Zero if the text is not a number.
    const qlonglong number = text.toLongLong(&ok, 10);
    value = static_cast<T>(number);
    return ok;
}

template <typename T>
bool IntegerValidator<T>::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    const bool ok = validate(text, value, flags);
    if (!value.empty()) {
        T& number = boost::any_cast<T&>(value);
        if (number < m_min)
            number = m_min;
        else if (number > m_max)
            number = m_max;
    }
    return ok;
}

template <typename T>
QString IntegerValidator<T>::reformat(const boost::any& value, const std::bitset<32>& /*flags*/)
{
    if (m_emptyText == EmptyText::NoValue && value.empty())
        return QString();
    if (m_emptyText == EmptyText::Zero && value.empty())
        return QStringLiteral("0");
    const T* number = boost::any_cast<T>(&value);
    if (!number) {
        VRN_ASSERT(value.type() == typeid(value_type))("value.type().name()", value.type().name());
        return QString();
    }
    T shown = *number;
    if (shown > m_max)
        shown = m_max;
    if (shown < m_min)
        shown = m_min;
    return QString::number(shown, 10);
}

template struct IntegerValidator<int>;
template struct IntegerValidator<unsigned int>;
template struct IntegerValidator<unsigned short>;

} // namespace vrn::qt
