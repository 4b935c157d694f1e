#include "line_row_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;
using namespace vrn::test;

Q_DECLARE_METATYPE(vrn::qt::EditState)

class TestLineRowEditor : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatIsTyped_data();
    void readsWhatIsTyped();
    void endsOncePerText();
};

void TestLineRowEditor::readsWhatIsTyped_data()
{
    columns<QByteArray, QString, EditState, boost::any, QString>(
        "key", "typed", "state", "value", "reason");
    const auto none = boost::any();

    row("a length", QByteArray("length"), QString("2.5"), EditState::Complete, boost::any(2.5),
        QString());
    row("a length in another unit", QByteArray("length"), QString("5 ft"), EditState::Complete,
        boost::any(5 * 0.3048), QString());
    row("the text that was there", QByteArray("length"), QString("3.000 m"), EditState::Untouched,
        none, QString());
    row("a length that is too long", QByteArray("length"), QString("41 m"), EditState::Refused,
        none, QString("It must be between 0.100 m and 40.000 m."));
    row("no length", QByteArray("length"), QString(), EditState::Refused, none,
        QString("A value is needed."));
}

void TestLineRowEditor::readsWhatIsTyped()
{
    QFETCH(QByteArray, key);
    QFETCH(QString, typed);
    QFETCH(boost::any, value);
    LineRow row(key.toStdString());
    row.open();
    row.type(typed);
    QTEST(row.entry().state, "state");
    QTEST(row.entry().reason, "reason");
    QCOMPARE(row.entry().value.type().name(), value.type().name());
    if (!value.empty())
        QVERIFY(row.selection.row(row.key)->field.valueType().isSame(row.entry().value, value));
    QCOMPARE(row.isRed(),
        row.entry().state == EditState::Refused || row.entry().state == EditState::Unfinished);
}

void TestLineRowEditor::endsOncePerText()
{
    LineRow row("length");
    row.open();
    row.press(Qt::Key_Tab);
    QVERIFY(row.edit()->hasFocus());
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 0);
    row.type("2.5");
    row.press(Qt::Key_Return);
    QCOMPARE(row.ended, 1);
    QCOMPARE(row.beams[1].length, 2.5);
    QCOMPARE(row.text(), QString("2.500 m"));
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 1);
    QVERIFY(row.after->hasFocus());
}

VRN_TEST(TestLineRowEditor)
#include "tst_line_row_editor.moc"
