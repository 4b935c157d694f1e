#include "property_page/row_editor_p.h"

#include <vrn/qt/varies_string.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QCheckBox>
#include <QSignalSpy>

#include <memory>

using namespace vrn::qt;
using namespace vrn::qt::detail;
using namespace vrn::test;

namespace {

PropertySelection::Row flagRow(bool isOptional)
{
    auto flag = field::flag();
    if (isOptional)
        flag.optional();
    return {"active", "&Active", {}, flag, "Active", {{0, flag}}};
}

PropertyState common(bool value)
{
    return {PropertyState::Common, value, QString()};
}

/// An editor that shows a state, and the user.
struct Flag
{
    explicit Flag(const PropertyState& state, bool isOptional = false)
        : row(flagRow(isOptional))
        , editor(makeFlagEditor(&form, row))
        , box(qobject_cast<QCheckBox*>(editor->widget()))
    {
        editor->show(state, vrn::units::Context());
    }

    void click() const { QTest::keyClick(box, Qt::Key_Space); }
    void pressClear()
    {
        form.show();
        form.activateWindow();
        if (!QTest::qWaitForWindowActive(&form))
            qFatal("the form is not active");
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    }

    QWidget form;
    const PropertySelection::Row row;
    RowEditor* editor;
    QCheckBox* box;
};

const PropertyState none{PropertyState::NoValue, {}, QString()};
const PropertyState varying{PropertyState::Varies, {}, QString()};

} // namespace

class TestFlagRowEditor : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheState_data();
    void showsTheState();
    void takesClicks_data();
    void takesClicks();
    void clears_data();
    void clears();
    void clearsOnlyWhatIsOptional();
    void signalsOnceForAClick();
    void isUntouchedAgainOnceItIsBack();
    void keepsWhatIsRefused();
};

void TestFlagRowEditor::showsTheState_data()
{
    columns<int, int, QString, QString>("state", "checked", "text", "beside");
    row("true is checked", 0, int(Qt::Checked), QString("Yes"), QString());
    row("false is not", 1, int(Qt::Unchecked), QString("No"), QString());
    row("what varies says so", 2, int(Qt::PartiallyChecked), getVariesString(), getVariesString());
    row("no value says so", 3, int(Qt::PartiallyChecked), QString(), QString("(none)"));
    row("no object shows nothing", 4, int(Qt::Unchecked), QString(), QString());
}

void TestFlagRowEditor::showsTheState()
{
    QFETCH(const int, state);
    QFETCH(const int, checked);
    QFETCH(const QString, text);
    QFETCH(const QString, beside);
    const PropertyState states[]{common(true), common(false), varying, none, PropertyState()};
    const Flag flag(states[state], true);
    QCOMPARE(int(flag.box->checkState()), checked);
    QCOMPARE(flag.editor->text(), text);
    QCOMPARE(flag.box->text(), beside);
    QCOMPARE(flag.editor->entry().state, EditState::Untouched);
}

void TestFlagRowEditor::takesClicks_data()
{
    columns<int, bool, int, QString>("state", "isOptional", "clicks", "value");
    row("a click checks", 1, false, 1, QString("true"));
    row("a click unchecks", 0, false, 1, QString("false"));
    row("a click checks what varies", 2, false, 1, QString("true"));
    row("two clicks uncheck what varies", 2, false, 2, QString("false"));
    row("an optional one comes round to no value", 0, true, 2, QString("none"));
    row("and from there to true", 3, true, 1, QString("true"));
    row("an optional one that varies comes round to no value", 2, true, 3, QString("none"));
}

void TestFlagRowEditor::takesClicks()
{
    QFETCH(const int, state);
    QFETCH(const bool, isOptional);
    QFETCH(const int, clicks);
    QFETCH(const QString, value);
    const PropertyState states[]{common(true), common(false), varying, none};
    const Flag flag(states[state], isOptional);
    for (int i = 0; i < clicks; ++i)
        flag.click();
    const RowEntry entry = flag.editor->entry();
    QCOMPARE(entry.state, EditState::Complete);
    QCOMPARE(entry.value.empty()                 ? QString("none")
            : boost::any_cast<bool>(entry.value) ? QString("true")
                                                 : QString("false"),
        value);
}

void TestFlagRowEditor::clears_data()
{
    columns<int, int, bool>("state", "clicks", "isEdit");
    row("true", 0, 0, true);
    row("false", 1, 0, true);
    row("what varies", 2, 0, true);
    row("what was picked for varying objects and refused", 2, 1, true);
    row("no value", 3, 0, false);
    row("what was picked for no value and refused", 3, 1, false);
}

void TestFlagRowEditor::clears()
{
    QFETCH(const int, state);
    QFETCH(const int, clicks);
    QFETCH(const bool, isEdit);
    const PropertyState states[]{common(true), common(false), varying, none};
    Flag flag(states[state], true);
    if (clicks > 0) {
        flag.click();
        flag.editor->refuse("It is locked.");
    }
    QSignalSpy ended(flag.editor, &RowEditor::ended);
    flag.pressClear();
    QCOMPARE(ended.count(), 1);
    const RowEntry entry = flag.editor->entry();
    QCOMPARE(entry.state, isEdit ? EditState::Complete : EditState::Untouched);
    QVERIFY(entry.value.empty());
    QCOMPARE(flag.editor->text(), QString());
    QCOMPARE(flag.box->text(), QString("(none)"));
}

void TestFlagRowEditor::clearsOnlyWhatIsOptional()
{
    Flag flag(varying);
    QSignalSpy ended(flag.editor, &RowEditor::ended);
    flag.pressClear();
    QCOMPARE(ended.count(), 0);
    QCOMPARE(flag.editor->entry().state, EditState::Untouched);
}

void TestFlagRowEditor::signalsOnceForAClick()
{
    const Flag flag(common(false));
    QSignalSpy changed(flag.editor, &RowEditor::changed);
    QSignalSpy ended(flag.editor, &RowEditor::ended);
    flag.editor->show(common(true), vrn::units::Context());
    flag.editor->show(varying, vrn::units::Context());
    QCOMPARE(changed.count() + ended.count(), 0);
    flag.click();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended[0][0].toBool(), false);
}

void TestFlagRowEditor::isUntouchedAgainOnceItIsBack()
{
    const Flag flag(common(false));
    flag.click();
    flag.click();
    QCOMPARE(flag.editor->entry().state, EditState::Untouched);
}

void TestFlagRowEditor::keepsWhatIsRefused()
{
    const Flag flag(common(false));
    QSignalSpy cancelled(flag.editor, &RowEditor::cancelled);
    flag.click();
    flag.editor->refuse("It is locked.");
    QCOMPARE(flag.editor->entry().state, EditState::Refused);
    QCOMPARE(flag.editor->entry().reason, QString("It is locked."));
    QVERIFY(flag.box->isChecked());
    QVERIFY(flag.box->styleSheet().contains("red"));
    QSignalSpy ended(flag.editor, &RowEditor::ended);
    QTest::keyClick(flag.box, Qt::Key_Return);
    QCOMPARE(ended.count(), 1);
    QTest::keyClick(flag.box, Qt::Key_Escape);
    QCOMPARE(cancelled.count(), 1);
    flag.editor->show(common(false), vrn::units::Context());
    QVERIFY(!flag.box->styleSheet().contains("red"));
    QTest::keyClick(flag.box, Qt::Key_Escape);
    QCOMPARE(cancelled.count(), 1);
}

VRN_TEST(TestFlagRowEditor)
#include "tst_flag_row_editor.moc"
