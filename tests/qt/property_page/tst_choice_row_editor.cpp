#include "property_page/row_editor_p.h"

#include <vrn/qt/varies_string.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QSignalSpy>

using namespace vrn::qt;
using namespace vrn::qt::detail;
using namespace vrn::test;

namespace {

PropertySelection::Row choiceRow(bool isOptional)
{
    auto choice = field::choice<int>({{"fixed", 1}, {"free", 2}, {"pinned", 3}});
    if (isOptional)
        choice.optional();
    return {"support", "&Support", {}, choice, "Support", {{0, choice}}};
}

PropertyState common(int value)
{
    return {PropertyState::Common, value, QString()};
}

const PropertyState none{PropertyState::NoValue, {}, QString()};
const PropertyState varying{PropertyState::Varies, {}, QString()};

/// An editor that shows a state, with the focus, and the user.
struct Choice
{
    explicit Choice(const PropertyState& state, bool isOptional = false)
        : row(choiceRow(isOptional))
        , editor(makeChoiceEditor(&form, row))
        , box(qobject_cast<QComboBox*>(editor->widget()))
    {
        show(state);
        form.show();
        form.activateWindow();
        box->setFocus();
    }

    void show(const PropertyState& state) const { editor->show(state, vrn::units::Context()); }
    QStringList entries() const
    {
        QStringList texts;
        for (int i = 0; i < box->count(); ++i)
            texts << box->itemText(i);
        return texts;
    }
    void pressClear()
    {
        if (!QTest::qWaitForWindowActive(&form))
            qFatal("the form is not active");
        QTest::keyClick(box, Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    }
    int value() const
    {
        const RowEntry entry = editor->entry();
        return entry.state != EditState::Complete ? -1
            : entry.value.empty()                 ? 0
                                                  : boost::any_cast<int>(entry.value);
    }
    void pick(const QString& text) const
    {
        box->showPopup();
        QAbstractItemView* list = box->view();
        list->setCurrentIndex(box->model()->index(box->findText(text), 0));
        QTest::keyClick(list, Qt::Key_Return);
    }

    QWidget form;
    const PropertySelection::Row row;
    RowEditor* editor;
    QComboBox* box;
};

} // namespace

class TestChoiceRowEditor : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheState_data();
    void showsTheState();
    void forgetsWhatItShowedBefore();
    void takesAPick();
    void takesNoPickOfWhatIsNoEntry_data();
    void takesNoPickOfWhatIsNoEntry();
    void clears();
    void clearsByKeys_data();
    void clearsByKeys();
    void clearsOnlyWhatIsOptional();
    void takesKeysAsOneGesture();
    void emitsNothingByItself();
    void cannotBeChangedWithoutEntries();
    void keepsWhatIsRefused();
};

void TestChoiceRowEditor::showsTheState_data()
{
    columns<int, bool, QString, QStringList>("state", "isOptional", "text", "entries");
    const QStringList entries{"fixed", "free", "pinned"};
    const QStringList withNone = QStringList{"(none)"} + entries;
    row("an entry", 0, false, QString("free"), entries);
    row("an optional entry", 0, true, QString("free"), withNone);
    row("no entry", 1, false, QString("7"), QStringList{"7"} + entries);
    row("what varies", 2, false, getVariesString(), QStringList{getVariesString()} + entries);
    row("an optional one that varies", 2, true, getVariesString(),
        QStringList{getVariesString()} + withNone);
    row("no value", 3, true, QString(), withNone);
    row("no object", 4, false, QString(), entries);
}

void TestChoiceRowEditor::showsTheState()
{
    QFETCH(const int, state);
    QFETCH(const bool, isOptional);
    QFETCH(const QString, text);
    QFETCH(const QStringList, entries);
    const PropertyState states[]{common(2), common(7), varying, none, PropertyState()};
    const Choice choice(states[state], isOptional);
    QCOMPARE(choice.editor->text(), text);
    QCOMPARE(choice.entries(), entries);
    QCOMPARE(choice.editor->entry().state, EditState::Untouched);
}

void TestChoiceRowEditor::forgetsWhatItShowedBefore()
{
    const Choice choice(common(2));
    choice.show(common(7));
    QCOMPARE(choice.editor->text(), QString("7"));
    choice.show(varying);
    choice.show(common(1));
    QCOMPARE(choice.editor->text(), QString("fixed"));
    choice.show(PropertyState());
    QCOMPARE(choice.editor->text(), QString());
    QCOMPARE(choice.box->count(), 3);
}

void TestChoiceRowEditor::takesAPick()
{
    const Choice choice(common(2));
    QSignalSpy ended(choice.editor, &RowEditor::ended);
    choice.pick("pinned");
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended[0][0].toBool(), false);
    QCOMPARE(choice.value(), 3);
    choice.pick("free");
    QCOMPARE(choice.editor->entry().state, EditState::Untouched);
}

void TestChoiceRowEditor::takesNoPickOfWhatIsNoEntry_data()
{
    columns<int, QString>("state", "picked");
    row("what varies", 0, getVariesString());
    row("a value without an entry", 1, QString("7"));
}

void TestChoiceRowEditor::takesNoPickOfWhatIsNoEntry()
{
    QFETCH(const int, state);
    QFETCH(const QString, picked);
    const Choice choice(state == 0 ? varying : common(7), true);
    choice.pick("free");
    QCOMPARE(choice.value(), 2);
    choice.pick(picked);
    QCOMPARE(choice.editor->entry().state, EditState::Untouched);
}

void TestChoiceRowEditor::clears()
{
    const Choice choice(varying, true);
    choice.pick("(none)");
    QCOMPARE(choice.value(), 0);
    choice.show(none);
    QCOMPARE(choice.editor->entry().state, EditState::Untouched);
    choice.pick("fixed");
    QCOMPARE(choice.value(), 1);
}

void TestChoiceRowEditor::clearsByKeys_data()
{
    columns<int, bool>("state", "isEdit");
    row("an entry", 0, true);
    row("a value without an entry", 1, true);
    row("what varies", 2, true);
    row("no value", 3, false);
}

void TestChoiceRowEditor::clearsByKeys()
{
    QFETCH(const int, state);
    QFETCH(const bool, isEdit);
    const PropertyState states[]{common(2), common(7), varying, none};
    Choice choice(states[state], true);
    QSignalSpy ended(choice.editor, &RowEditor::ended);
    choice.pressClear();
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended[0][0].toBool(), false);
    QCOMPARE(choice.value(), isEdit ? 0 : -1);
    QCOMPARE(choice.box->currentText(), QString("(none)"));
}

void TestChoiceRowEditor::clearsOnlyWhatIsOptional()
{
    Choice choice(common(2));
    QSignalSpy ended(choice.editor, &RowEditor::ended);
    choice.pressClear();
    QCOMPARE(ended.count(), 0);
    QCOMPARE(choice.box->currentText(), QString("free"));
}

void TestChoiceRowEditor::takesKeysAsOneGesture()
{
    const Choice choice(common(1));
    QSignalSpy ended(choice.editor, &RowEditor::ended);
    QTest::keyClicks(choice.box, "fr");
    QVERIFY(ended.count() > 0);
    for (const auto& signal : ended)
        QCOMPARE(signal[0].toBool(), true);
    QCOMPARE(choice.value(), 2);
    QTest::keyClick(choice.box, Qt::Key_Down);
    QCOMPARE(choice.value(), 3);
}

void TestChoiceRowEditor::emitsNothingByItself()
{
    const Choice choice(common(1));
    QSignalSpy changed(choice.editor, &RowEditor::changed);
    QSignalSpy ended(choice.editor, &RowEditor::ended);
    for (const PropertyState& state : {common(3), common(7), varying, none, PropertyState()})
        choice.show(state);
    QCOMPARE(changed.count() + ended.count(), 0);
}

void TestChoiceRowEditor::cannotBeChangedWithoutEntries()
{
    QWidget form;
    const auto any = field::choice<int>();
    const PropertySelection::Row row{"any", "Any", {}, any, "Any", {{0, any}}};
    RowEditor* editor = makeChoiceEditor(&form, row);
    editor->show(common(7), vrn::units::Context());
    editor->setReadOnly(false);
    QCOMPARE(editor->text(), QString("7"));
    QVERIFY(!editor->widget()->isEnabled());
}

void TestChoiceRowEditor::keepsWhatIsRefused()
{
    const Choice choice(common(1));
    QSignalSpy cancelled(choice.editor, &RowEditor::cancelled);
    choice.pick("free");
    choice.editor->refuse("It is locked.");
    QCOMPARE(choice.editor->entry().state, EditState::Refused);
    QCOMPARE(choice.editor->entry().reason, QString("It is locked."));
    QCOMPARE(choice.editor->text(), QString("free"));
    QVERIFY(choice.box->styleSheet().contains("red"));
    QSignalSpy ended(choice.editor, &RowEditor::ended);
    QTest::keyClick(choice.box, Qt::Key_Return);
    QCOMPARE(ended.count(), 1);
    QTest::keyClick(choice.box, Qt::Key_Escape);
    QCOMPARE(cancelled.count(), 1);
    choice.show(common(1));
    QVERIFY(!choice.box->styleSheet().contains("red"));
    QCOMPARE(choice.editor->entry().state, EditState::Untouched);
}

VRN_TEST(TestChoiceRowEditor)
#include "tst_choice_row_editor.moc"
