#pragma once

#include <vrn/qt/empty_text.h>
#include <vrn/qt/i_validator.h>

#include <limits>

namespace vrn::qt {

/// A plain number with a range and a number of decimals. The value is a
/// `double`.
///
/// While the user types, a number out of range is accepted as it stands; the
/// end of editing clamps it, and formatting clamps again. No text is refused
/// for its size. A refused text leaves 0.0 in the value.
///
/// QLocale reads "nan" and "inf" as numbers. Formatting writes the minimum for
/// "nan": without a range, the lowest double in 314 characters. Give the field a
/// range, or refuse "nan" in a derived class. IntegerValidator and UnitValidator
/// refuse both.
///
/// With ValidationFlagUserLocale, numbers are in QLocale(); see that flag.
struct VRN_QT2_EXPORT DoubleEditValidator : public IValidator
{
    /// Three decimals, any finite number, empty text means 0.0.
    DoubleEditValidator();
    /// The same within a range, which is not checked.
    DoubleEditValidator(double min, double max);
    /// Asserts "m_min < m_max" and "m_precision >= 0" and keeps what was given.
    DoubleEditValidator(int precision, double min, double max, bool zeroIfEmpty);
    ~DoubleEditValidator() override;

    void setMinimum(double min);
    void setMaximum(double max);
    double getMinimum() const { return m_min; }
    double getMaximum() const { return m_max; }
    /// Asserts "min < max" and stores both anyway.
    void setRange(double min, double max);
    /// Digits after the decimal point. At most 1074 are written; no double has more.
    void setPrecision(int precision);
    /// True: empty text means no value. False: it means 0.0.
    void setEmptyValueAllowed(bool allowed);

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;

private:
    int m_precision = 3;
    double m_min = std::numeric_limits<double>::lowest();
    double m_max = std::numeric_limits<double>::max();
    EmptyText m_emptyText = EmptyText::Zero;
};

} // namespace vrn::qt
