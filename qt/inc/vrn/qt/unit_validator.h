#pragma once

#include <vrn/qt/empty_text.h>
#include <vrn/qt/i_validator.h>
#include <vrn/units/context.h>

#include <boost/optional.hpp>

#include <limits>

namespace vrn::qt {

/// A physical quantity with its unit. The value is a
/// `vrn::units::IConverter::quantity`.
///
///     #include <vrn/q/input_context.h>
///
///     auto span = boost::make_shared<UnitValidator>(
///         vrn::units::get_active_input_context(), vrn::units::UnitId::GEO_LENGTH);
///     span->set_maximum(20.0); // metres, whatever unit is typed and shown
///
/// The id is a unit, or a unit set such as GEO_LENGTH. Values have this id; under
/// a unit set their number is in the base scale (m, kN, t, sec and products of
/// them), and so are minimum and maximum. Text may name any unit that fits. A bare
/// number is in the display unit, in which values are also shown.
///
/// While the user types, a quantity out of range is accepted; the end of editing
/// clamps it, and formatting clamps again. A refused text leaves a quantity of
/// zero in the value.
///
/// Reading is lenient: "12,5 m" is 12 m, "." is 0, and "1/0" becomes the maximum,
/// without a range the largest double. "nan" and "inf" are refused. Enter shows what
/// was read; to refuse more, derive from this class and look at the text first.
/// docs/quantities.md says what can be typed, and where reading stops.
///
/// Prefer a unit set to a unit. A symbol is read as the first unit that has it, and for
/// 29 plain units that is a different unit, on another scale: a field with one of these
/// reads its own text as another quantity, and does so again at each Enter. Unit sets
/// tell the units apart.
///
/// With ValidationFlagUserLocale, numbers are in std::locale(""); see that flag. If
/// that locale groups digits by a blank or an apostrophe, what is written is not read
/// back, so write a text without the flag if it is to be read again. The whole feet of
/// a length in feet and inches are always written in the global std::locale: leave that
/// the classic one.
///
/// The validator has a copy of its context: a later change of the active system or its
/// overrides does not reach it. An id that the context does not know makes its
/// operations throw std::invalid_argument with "Invalid unit id.", and a display unit
/// of another kind makes `reformat` throw one with "Incompatible units.", also when the
/// user presses Enter. MAT_ELSUP_M3 and INERTIA_POINT have such a unit in system 7;
/// give them another by an override.
struct VRN_QT2_EXPORT UnitValidator : public IValidator
{
    using UnitId = vrn::units::UnitId::UnitId;

    /// Call set_unit_id before any use. Without it, the validator reports an
    /// assertion and works on bare numbers.
    explicit UnitValidator(vrn::units::Context context);
    UnitValidator(vrn::units::Context context, UnitId unitId);
    ~UnitValidator() override;

    UnitId get_unit_id() const;
    void set_unit_id(UnitId unitId);

    /// The copy that the validator was given.
    const vrn::units::Context& getContext() const { return m_context; }

    void set_minimum(const double& minimum);
    void set_maximum(const double& maximum);
    double getMinimum() const { return m_minimum; }
    double getMaximum() const { return m_maximum; }

    /// True: empty text means no value. False, the default: it means zero.
    void setEmptyValueAllowed(bool allowed);

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    /// The quantity in its display unit, with the label: "12.500 kN/m2". The
    /// postfix is not used here.
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;

private:
    double clamped(double value) const;

    vrn::units::Context m_context;
    boost::optional<UnitId> m_unit_id;
    EmptyText m_emptyText = EmptyText::Zero;
    double m_minimum = std::numeric_limits<double>::lowest();
    double m_maximum = std::numeric_limits<double>::max();
};

} // namespace vrn::qt
