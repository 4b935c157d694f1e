#pragma once

#include <vrn/qt/empty_text.h>
#include <vrn/qt/i_validator.h>

namespace vrn::qt {

/// A length that is typed in one unit and kept in the internal length unit, the
/// metre. The value is a `double`.
///
/// A bare number is in the field's own unit, given by its unit index (see
/// <vrn/q/unit_index.h>). After a number "m", "dm", "cm" and "mm" are
/// understood in every field; any other text there makes `validate` and
/// `validateWhenFinished` throw vrn::units::UnknownUnit. It is the one
/// exception that bad text can cause in a validator.
///
/// Text that is not a number is accepted as 0.0 if no unit follows it. Such a text has
/// only digits, at most one punctuation mark and more digits, like "1,5" in the C
/// locale. Text without a number before the unit is refused.
///
/// The range is in metres; it is applied at the end of editing and in formatting, as in
/// DoubleEditValidator. Formatting writes the maximum for "nan".
///
/// With ValidationFlagUserLocale, a bare number is in QLocale(); see that flag. A
/// number with a unit is always in the C locale.
///
/// The unit of a kind comes from the active context at each call, but the number of
/// decimals is fixed at construction. So a text that is in the field when the context
/// changes is read in the new unit: "2.000" metres become 2 inches. Take the value
/// before the change and set it afterwards, or read the selection again:
///
///     auto* field = SimpleLineEdit::create(form, QStringLiteral("Span"),
///         new DistanceEditValidator(1001, 0.0, 100.0, false), 0, ExpandHorizontal);
///     field->setValue(2.0);
///     const boost::any span = field->getValue();
///     const vrn::units::Context before = vrn::units::get_active_input_context();
///     vrn::units::set_active_input_context(vrn::units::Context(9));
///     field->setValue(span);
///     vrn::units::set_active_input_context(before);
///
/// If the decimals should change as well, give the field a ForwardValidator and
/// exchange its target.
struct VRN_QT2_EXPORT DistanceEditValidator : public IValidator
{
    /// The number of decimals is the unit's. Asserts "m_min < m_max" and
    /// "m_decimals >= 0" and keeps what was given.
    DistanceEditValidator(int unit, double min, double max, bool zeroIfEmpty);
    ~DistanceEditValidator() override;

    int getUnit() const { return m_unit; }
    double getMinimum() const { return m_min; }
    double getMaximum() const { return m_max; }

    /// True: empty text means no value. False: it means 0.0.
    void setEmptyValueAllowed(bool allowed);
    /// Whether formatted values carry the unit's label, as in "1.500 m".
    void showUnitPostfix(bool show);

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;

private:
    int m_decimals;
    double m_min;
    double m_max;
    int m_unit;
    EmptyText m_emptyText;
    bool m_showUnitPostfix = false;
};

} // namespace vrn::qt
