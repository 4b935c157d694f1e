#pragma once

#include <vrn/qt/field.h>
#include <vrn/units/entry.h>

#include <QString>

namespace vrn::qt {

/// Changes each object from its own value: "+= 5 mm", "-= 10 %", "*= 1.1", "/= 2". As the
/// value of an edit it stands in place of a number:
///
///     const Field depth = field::quantity(UnitId::GEO_LENGTH);
///     const RelativeEntry entry = readRelativeEdit("+= 5 mm", depth, Context());
///     // entry.state is EntryState::Complete, and entry.edit.operand is 0.005
///     const boost::any value = entry.edit;
struct RelativeEdit
{
    enum Operation
    {
        Add,
        Subtract,
        AddPercent,
        SubtractPercent,
        Multiply,
        Divide
    };
    Operation operation = Add;
    /// What is added to a quantity is in the base scale.
    double operand = 0.0;

    friend bool operator==(const RelativeEdit& a, const RelativeEdit& b)
    {
        return a.operation == b.operation && detail::isSame(a.operand, b.operand);
    }
};

/// What a text was read as.
struct RelativeEntry
{
    vrn::units::EntryState state = vrn::units::EntryState::Refused;
    RelativeEdit edit; ///< If the text is complete.
    QString reason; ///< If it is not; a sentence.
};

/// Whether the text is to be read as a relative edit. It begins with "+=" or "-=", or with "*"
/// or "/", with which no number begins. "-5" and "+5" are numbers.
VRN_QT2_EXPORT bool isRelativeEdit(const QString& text);

/// Reads a text for which isRelativeEdit() is true. What is added may be all that
/// EntryReader reads as a value of the field. A factor is a plain number.
///
/// In a field whose unit is percent, "-= 10 %" could mean points or a part of the value, and
/// is refused. A field that takes no relative edits refuses all.
VRN_QT2_EXPORT RelativeEntry readRelativeEdit(
    const QString& text, const Field& field, const vrn::units::Context& units);

/// The number that comes out for one object, in the scale of its model. It may be out of
/// range, infinite or not a number.
VRN_QT2_EXPORT double applied(
    const RelativeEdit& edit, double stored, const Field& field, const vrn::units::Context& units);

} // namespace vrn::qt
