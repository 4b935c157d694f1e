#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/noncopyable.hpp>
#include <boost/shared_ptr.hpp>

#include <QString>

#include <bitset>
#include <cstddef>
#include <functional>

namespace vrn::qt {

/// Bits of the flags argument that every validator operation takes. Bits 1 to
/// 31 have no meaning and are handed on unchanged.
enum ValidationFlag : std::size_t
{
    /// Set: numbers are read and written in the user's locale. Clear: in the C
    /// locale, with a decimal point whatever the user's settings. Controls
    /// always pass it clear.
    ///
    /// The user's locale is determined once per process, when a validator first needs
    /// it; later changes have no effect. There are two such locales.
    /// DoubleEditValidator and DistanceEditValidator ask `QLocale()`: what
    /// QLocale::setDefault() was given before, or else the environment. UnitValidator
    /// asks `std::locale("")`: the environment alone (LC_ALL, LC_NUMERIC, LANG), or the
    /// classic locale if that one is not installed. An application that sets another
    /// default therefore sets LC_ALL as well, and both before the first text is read or
    /// written:
    ///
    ///     QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
    ///     qputenv("LC_ALL", "de_DE.UTF-8");
    ValidationFlagUserLocale = 0,
};

/// Turns the text that a user types into a typed value, and such a value back
/// into text.
///
/// Every line edit, editable enum box, item delegate and table cell has one. An
/// implementation names the one type that it puts into the `boost::any`, and never
/// puts a convertible type there instead. An empty `boost::any` stands for the
/// absence of a value.
///
///     DoubleEditValidator validator(2, 0.0, 100.0, false);
///     boost::any value;
///     if (validator.validateWhenFinished("12.5", value, {}))
///         model.setSpan(boost::any_cast<double>(value));
///
/// Bad text is refused with `false`. Only an unknown unit in a DistanceEditValidator
/// throws instead. To make a validator of your own, implement `validate` and
/// `reformat`, and override `validateWhenFinished` if the end of editing requires more
/// than a keystroke.
///
/// A validator has a configuration, which is set before use, but no state that changes
/// while it validates. It belongs to the GUI thread.
struct VRN_QT2_EXPORT IValidator : public boost::noncopyable
{
    using pointer = boost::shared_ptr<IValidator>;

    virtual ~IValidator();

    /// Called on every keystroke. Returns whether `text` is acceptable so far,
    /// and puts the value that it stands for into `value`. What `value` holds
    /// after a refusal is up to the implementation.
    virtual bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) = 0;

    /// Called when editing ends: the place to bring a value into its range. By
    /// default the same as `validate`.
    virtual bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags);

    /// The text in which `value` is edited. A value of a foreign type is reported
    /// through the assertion facility and yields an empty string.
    virtual QString reformat(const boost::any& value, const std::bitset<32>& flags) = 0;

    /// The text in which `value` is shown when it is not edited: that of `reformat`,
    /// followed by a blank and the postfix if one is set.
    virtual QString reformatForDisplay(const boost::any& value, const std::bitset<32>& flags);

    /// A hint for the user who has typed `text` so far. It is empty if there is no
    /// hint function, unless the validator has hints of its own.
    QString getEditHint(const QString& text) const;
    void setEditHintFunction(std::function<QString(const QString&)> hint);

    /// Text that is shown after a value for display only, such as a unit.
    void setPostfix(const QString& postfix);

protected:
    IValidator();

    /// What getEditHint() gives: by default, what the hint function says.
    virtual QString editHint(const QString& text) const;

private:
    QString m_postfix;
    std::function<QString(const QString&)> m_editHint;
};

} // namespace vrn::qt
