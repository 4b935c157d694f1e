#pragma once

#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/varies_string.h>

#include "line_edit_fixture.h"
#include "support/table.h"

#include <QSignalSpy>

namespace vrn::test {

/// What a user or the application does to a field of a Form.
using MultiEditAction = std::function<void(vrn::qt::MultiEditLineEdit&, Form&)>;

} // namespace vrn::test

Q_DECLARE_METATYPE(vrn::test::MultiEditAction)

namespace vrn::test {
namespace action {

inline MultiEditAction nothing()
{
    return [](vrn::qt::MultiEditLineEdit&, Form&) {};
}

inline MultiEditAction reset()
{
    return [](vrn::qt::MultiEditLineEdit& field, Form&) { field.reset(); };
}

inline MultiEditAction read(const boost::any& value)
{
    return [value](vrn::qt::MultiEditLineEdit& field, Form&) { field.readValue(value); };
}

inline MultiEditAction set(const boost::any& value)
{
    return [value](vrn::qt::MultiEditLineEdit& field, Form&) { field.setValue(value); };
}

inline MultiEditAction forceVaries()
{
    return [](vrn::qt::MultiEditLineEdit& field, Form&) { field.forceVaries(); };
}

/// Types `text` in place of what the field shows.
inline MultiEditAction type(const QString& text)
{
    return [text](vrn::qt::MultiEditLineEdit& field, Form&) {
        field.edit()->selectAll();
        QTest::keyClicks(field.edit(), text);
    };
}

inline MultiEditAction enter()
{
    return [](vrn::qt::MultiEditLineEdit& field, Form&) {
        QTest::keyClick(field.edit(), Qt::Key_Return);
    };
}

inline MultiEditAction leave()
{
    return [](vrn::qt::MultiEditLineEdit&, Form& form) { form.leave(); };
}

inline MultiEditAction inOrder(const std::vector<MultiEditAction>& actions)
{
    return [actions](vrn::qt::MultiEditLineEdit& field, Form& form) {
        for (const MultiEditAction& action : actions)
            action(field, form);
    };
}

} // namespace action

/// The columns of a table of what actions do to a field. actionRow() adds a row, and
/// verifyActions() tests the current one. The random sequences hold the rules that need
/// no focus.
inline void addActionColumns()
{
    QTest::addColumn<MultiEditAction>("action");
    QTest::addColumn<int>("valueChanged");
    QTest::addColumn<bool>("varies");
    QTest::addColumn<QString>("text");
    QTest::addColumn<boost::any>("current");
}

inline void actionRow(const char* name, const std::vector<MultiEditAction>& actions,
    int valueChanged, bool varies, const QString& text, const boost::any& current)
{
    row(name, action::inOrder(actions), valueChanged, varies, text, current);
}

inline void verifyActions(vrn::qt::MultiEditLineEdit* field)
{
    QFETCH(MultiEditAction, action);
    Form form;
    form.open(field);
    QSignalSpy valueChanged(field, &vrn::qt::MultiEditLineEdit::valueChanged);
    action(*field, form);
    QTEST(int(valueChanged.count()), "valueChanged");
    QTEST(field->dataVaries(), "varies");
    QTEST(field->edit()->text(), "text");
    QTEST(field->getCurrentValue(), "current");
}

/// Whether the next read is the first one, which alone ends a variation. The call
/// changes the state of the control.
inline bool isFresh(vrn::qt::MultiEditControlBase& control, const boost::any& value)
{
    control.forceVaries();
    control.readValue(value);
    return !control.dataVaries();
}

/// One decimal, 0 to 100; an empty text is refused.
inline vrn::qt::IValidator* percentage()
{
    return new vrn::qt::DoubleEditValidator(1, 0.0, 100.0, false);
}

/// A validator of numbers with one decimal that counts what it writes.
struct CountingValidator : public vrn::qt::DoubleEditValidator
{
    CountingValidator()
        : DoubleEditValidator(1, -100.0, 100.0, false)
    {}

    QString reformat(const boost::any& value, const std::bitset<32>& flags) override
    {
        ++written;
        return DoubleEditValidator::reformat(value, flags);
    }

    int written = 0;
};

} // namespace vrn::test
