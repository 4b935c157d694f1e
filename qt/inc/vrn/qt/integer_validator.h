#pragma once

#include <vrn/qt/empty_text.h>
#include <vrn/qt/i_validator.h>

namespace vrn::qt {

/// A whole number with a range. The value is a `T`; there are instances for
/// `int`, `unsigned int` and `unsigned short`.
///
/// Numbers are read and written without a locale. A number that `T` cannot hold
/// keeps its low bits, before any clamping: "70000" is 4464 in an
/// `unsigned short`, and "-1" is 4294967295 in an `unsigned int`. While the
/// user types, a number out of range is accepted; the end of editing clamps
/// it, and formatting clamps again. "nan" and "inf" are refused. A refused text
/// leaves 0 in the value.
///
/// Unlike in DoubleEditValidator, empty text gives no value even if it counts as zero.
/// The missing value is then shown as "0".
template <typename T>
struct IntegerValidator : public IValidator
{
    using value_type = T;

    /// Asserts "min <= max" and keeps what was given. If `zeroIfEmpty` is false,
    /// empty text is refused until setEmptyValueAllowed is called.
    IntegerValidator(T min, T max, bool zeroIfEmpty);
    ~IntegerValidator() override;

    /// @{
    /// Stored without a check. With a minimum above the maximum every number becomes one of
    /// the two: the end of editing makes a number below the minimum the minimum, and any
    /// other one the maximum; formatting looks at the maximum first, and so always
    /// writes the minimum.
    void setMinimum(T min);
    void setMaximum(T max);
    /// @}
    T getMinimum() const { return m_min; }
    T getMaximum() const { return m_max; }

    /// True: empty text means no value. False: it means zero.
    void setEmptyValueAllowed(bool allowed);

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    /// Clamps whatever number `validate` has left, including the 0 of a refused text.
    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;

private:
    T m_min;
    T m_max;
    EmptyText m_emptyText;
};

extern template struct VRN_QT2_EXPORT IntegerValidator<int>;
extern template struct VRN_QT2_EXPORT IntegerValidator<unsigned int>;
extern template struct VRN_QT2_EXPORT IntegerValidator<unsigned short>;

} // namespace vrn::qt
