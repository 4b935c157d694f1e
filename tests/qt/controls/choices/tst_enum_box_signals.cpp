#include "enum_box_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QSignalSpy>

#include <functional>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Action = std::function<void(MultiEditEnumBox&)>;
using SimpleAction = std::function<void(SimpleEnumBox&)>;

// What one action comes to.
struct Outcome
{
    int changed;
    int activated;
    bool varies;
    bool fresh;
    QString shown;
};

constexpr bool varies = true;
constexpr bool common = false;
constexpr bool fresh = true;
constexpr bool notFresh = false;

void leave(SimpleEnumBox& box)
{
    QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&comboOf(box), &event);
}

void typeAndLeave(SimpleEnumBox& box, const QString& text)
{
    type(box, text);
    leave(box);
}

void typeAndEnter(SimpleEnumBox& box, const QString& text)
{
    type(box, text);
    pressEnter(box);
}

void pressKey(SimpleEnumBox& box, Qt::Key key)
{
    QTest::keyClick(&comboOf(box), key);
}

boost::any valueOf(const QString& text)
{
    for (const auto& [name, value] : steels()) {
        if (name == text)
            return value;
    }
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber ? boost::any(number) : boost::any();
}

void toVaries(MultiEditEnumBox& box)
{
    box.readValue(275);
    box.readValue(355);
}

} // namespace

Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(SimpleAction)
Q_DECLARE_METATYPE(Outcome)

// How often an enum box emits what, and which flags an action leaves: applications
// count on the doubled signals, too.
class TestEnumBoxSignals : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatAnActionDoes_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::addColumn<Action>("arrange");
        QTest::addColumn<Action>("act");
        QTest::addColumn<Outcome>("outcome");
        addRowsOfAList();
        addRowsOfStepsFromOtherRows();
        addRowsOfAnEditableBox();
        addRowsOfTyping();
    }

    void whatAnActionDoes()
    {
        QFETCH(bool, editable);
        QFETCH(Action, arrange);
        QFETCH(Action, act);
        QFETCH(Outcome, outcome);
        QWidget form;
        new QHBoxLayout(&form);
        auto* box = MultiEditEnumBox::create(&form, {}, &vrn::any_equal<int>);
        form.layout()->addWidget(box);
        box->setValues(steels());
        if (editable)
            box->setEditable(true, strength());
        comboOf(*box).setFocus();
        showActive(form);
        arrange(*box);
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        QSignalSpy activated(box, &SimpleEnumBox::activated);
        act(*box);
        QCOMPARE(changed.count(), outcome.changed);
        QCOMPARE(activated.count(), outcome.activated);
        QCOMPARE(box->dataVaries(), outcome.varies);
        QCOMPARE(textOf(*box), outcome.shown);
        QCOMPARE(box->getCurrentValue(), outcome.varies ? boost::any() : valueOf(outcome.shown));
        // Of all reads the first alone emits.
        changed.clear();
        box->readValue(235);
        QCOMPARE(changed.count(), outcome.fresh ? 1 : 0);
    }

    void whatAnActionOnAPlainBoxDoes_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::addColumn<SimpleAction>("act");
        QTest::addColumn<int>("changedDue");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char* name, const SimpleAction& act, int changed,
                             const char* shown) {
            QTest::addRow("a list: %s", name) << false << act << changed << QString(shown);
            QTest::addRow("an editable box: %s", name) << true << act << changed << QString(shown);
        };
        const auto editable = [](const char* name, const SimpleAction& act, int changed,
                                  const char* shown) {
            QTest::addRow("an editable box: %s", name) << true << act << changed << QString(shown);
        };
        row(
            "setValues", [](SimpleEnumBox& b) { b.setValues(steels()); }, 0, "S235");
        row(
            "selectByName", [](SimpleEnumBox& b) { b.selectByName("S355"); }, 0, "S355");
        row(
            "an unknown name", [](SimpleEnumBox& b) { b.selectByName("S460"); }, 0, "S275");
        row(
            "selectByValue", [](SimpleEnumBox& b) { b.selectByValue(355); }, 0, "S355");
        row(
            "next", [](SimpleEnumBox& b) { b.next(); }, 1, "S355");
        row(
            "next at the last row",
            [](SimpleEnumBox& b) {
                b.next();
                b.next();
            },
            1, "S355");
        row(
            "previous", [](SimpleEnumBox& b) { b.previous(); }, 1, "S235");
        row(
            "previous at the first row",
            [](SimpleEnumBox& b) {
                b.previous();
                b.previous();
            },
            1, "S235");
        row(
            "a pick", [](SimpleEnumBox& b) { pick(b, 2); }, 1, "S355");
        row(
            "a pick of the same row", [](SimpleEnumBox& b) { pick(b, 1); }, 1, "S275");
        row(
            "an arrow key", [](SimpleEnumBox& b) { pressKey(b, Qt::Key_Up); }, 1, "S235");
        row("leaving", leave, 0, "S275");
        row(
            "setEditable(true)", [](SimpleEnumBox& b) { b.setEditable(true); }, 0, "S275");
        row(
            "setEditable(false)", [](SimpleEnumBox& b) { b.setEditable(false); }, 0, "S275");
        editable(
            "an unlisted value", [](SimpleEnumBox& b) { b.selectByValue(460); }, 0, "460");
        editable(
            "a text typed", [](SimpleEnumBox& b) { type(b, "460"); }, 0, "460");
        editable(
            "a text, and leaving", [](SimpleEnumBox& b) { typeAndLeave(b, "460"); }, 1, "460");
        // One for the row that Enter adds and picks, one for the value.
        editable(
            "a text and Enter", [](SimpleEnumBox& b) { typeAndEnter(b, "460"); }, 2, "460");
        editable(
            "a refused text, and leaving", [](SimpleEnumBox& b) { typeAndLeave(b, "46x"); }, 1,
            "46x");
        editable(
            "a refused text and Enter", [](SimpleEnumBox& b) { typeAndEnter(b, "46x"); }, 2, "46x");
        editable(
            "a name, and leaving", [](SimpleEnumBox& b) { typeAndLeave(b, "S355"); }, 1, "S355");
        editable(
            "a name and Enter", [](SimpleEnumBox& b) { typeAndEnter(b, "S355"); }, 1, "S355");
    }

    void whatAnActionOnAPlainBoxDoes()
    {
        QFETCH(bool, editable);
        QFETCH(SimpleAction, act);
        QFETCH(int, changedDue);
        QFETCH(QString, shown);
        QWidget form;
        new QHBoxLayout(&form);
        auto* box = SimpleEnumBox::create(&form, {}, &vrn::any_equal<int>);
        form.layout()->addWidget(box);
        box->setValues(steels());
        if (editable)
            box->setEditable(true, strength());
        comboOf(*box).setFocus();
        showActive(form);
        box->selectByValue(275);
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        QSignalSpy activated(box, &SimpleEnumBox::activated);
        act(*box);
        QCOMPARE(changed.count(), changedDue);
        QCOMPARE(activated.count(), 0);
        QCOMPARE(textOf(*box), shown);
    }

private:
    using AddRow = std::function<void(const char* name, const Action& act, const Outcome&)>;

    static AddRow rowsOf(const QByteArray& state, bool editable, const Action& arrange)
    {
        return [=](const char* name, const Action& act, const Outcome& outcome) {
            QTest::addRow("%s%s: %s", editable ? "editable, " : "", state.constData(), name)
                << editable << arrange << act << outcome;
        };
    }

    static AddRow rowsOfFresh(bool editable)
    {
        return rowsOf("fresh", editable, [](MultiEditEnumBox&) {});
    }

    static AddRow rowsOfCommon(bool editable)
    {
        return rowsOf("common", editable, [](MultiEditEnumBox& b) { b.readValue(275); });
    }

    static AddRow rowsOfVaries(bool editable) { return rowsOf("varies", editable, toVaries); }

    // Where it makes no difference whether the box is editable.
    static void addCommonRows(bool editable)
    {
        const QString various = getVariesString();
        const Action nothing = [](MultiEditEnumBox&) {};
        const Action reset = [](MultiEditEnumBox& b) { b.reset(); };
        const Action readSame = [](MultiEditEnumBox& b) { b.readValue(275); };
        const Action readOther = [](MultiEditEnumBox& b) { b.readValue(355); };
        const Action set = [](MultiEditEnumBox& b) { b.setValue(355); };
        const Action force = [](MultiEditEnumBox& b) { b.forceVaries(); };
        const Action byName = [](MultiEditEnumBox& b) { b.selectByName("S355"); };
        const Action byUnknownName = [](MultiEditEnumBox& b) { b.selectByName("S460"); };
        const Action byValue = [](MultiEditEnumBox& b) { b.selectByValue(355); };
        const Action next = [](MultiEditEnumBox& b) { b.next(); };
        const Action previous = [](MultiEditEnumBox& b) { b.previous(); };
        const Action pickThird = [](MultiEditEnumBox& b) { pick(b, 2); };
        const Action keyUp = [](MultiEditEnumBox& b) { pressKey(b, Qt::Key_Up); };
        const Action keyDown = [](MultiEditEnumBox& b) { pressKey(b, Qt::Key_Down); };
        const Action makeEditable = [](MultiEditEnumBox& b) { b.setEditable(true, strength()); };
        const Action makeAList = [](MultiEditEnumBox& b) { b.setEditable(false); };

        auto row = rowsOfFresh(editable);
        row("nothing", nothing, {0, 0, common, fresh, "S235"});
        row("reset", reset, {0, 0, common, fresh, "S235"});
        row("the first read", readSame, {1, 0, common, notFresh, "S275"});
        row("setValue", set, {1, 0, common, fresh, "S355"});
        row("forceVaries", force, {0, 0, varies, notFresh, various});
        row("selectByName", byName, {1, 0, common, fresh, "S355"});
        row("an unknown name", byUnknownName, {0, 0, common, fresh, "S235"});
        row("selectByValue", byValue, {1, 0, common, fresh, "S355"});
        row("next", next, {1, 0, common, fresh, "S275"});
        row("previous at the first row", previous, {0, 0, common, fresh, "S235"});
        row("a pick", pickThird, {2, 1, common, fresh, "S355"});
        row("Down", keyDown, {2, 1, common, fresh, "S275"});
        row("Up at the first row", keyUp, {0, 0, common, fresh, "S235"});
        row("leaving", leave, {0, 0, common, fresh, "S235"});
        row("setEditable(true)", makeEditable, {0, 0, common, fresh, "S235"});
        row("setEditable(false)", makeAList, {0, 0, common, fresh, "S235"});

        row = rowsOfCommon(editable);
        row("nothing", nothing, {0, 0, common, notFresh, "S275"});
        row("reset keeps the row", reset, {0, 0, common, fresh, "S275"});
        row("an equal read", readSame, {0, 0, common, notFresh, "S275"});
        row("a different read", readOther, {0, 0, varies, notFresh, various});
        row("setValue", set, {1, 0, common, notFresh, "S355"});
        row("forceVaries", force, {0, 0, varies, notFresh, various});
        row("selectByName", byName, {1, 0, common, notFresh, "S355"});
        row("an unknown name", byUnknownName, {0, 0, common, notFresh, "S275"});
        row("selectByValue", byValue, {1, 0, common, notFresh, "S355"});
        row("next", next, {1, 0, common, notFresh, "S355"});
        row("previous", previous, {1, 0, common, notFresh, "S235"});
        row("a pick", pickThird, {2, 1, common, notFresh, "S355"});
        row("a pick of the same row", [](MultiEditEnumBox& b) { pick(b, 1); },
            {2, 1, common, notFresh, "S275"});
        row("Up", keyUp, {2, 1, common, notFresh, "S235"});
        row("Down", keyDown, {2, 1, common, notFresh, "S355"});
        row("leaving", leave, {0, 0, common, notFresh, "S275"});
        row("setEditable(true)", makeEditable, {0, 0, common, notFresh, "S275"});
        row("setEditable(false)", makeAList, {0, 0, common, notFresh, "S275"});

        row = rowsOfVaries(editable);
        row("nothing", nothing, {0, 0, varies, notFresh, various});
        row("reset shows the row before", reset, {0, 0, common, fresh, "S275"});
        row("an equal read", readSame, {0, 0, varies, notFresh, various});
        row("a different read", readOther, {0, 0, varies, notFresh, various});
        row("setValue", set, {1, 0, common, notFresh, "S355"});
        row("forceVaries", force, {0, 0, varies, notFresh, various});
        row("selectByName", byName, {1, 0, common, notFresh, "S355"});
        row("an unknown name", byUnknownName, {0, 0, varies, notFresh, various});
        row("selectByValue", byValue, {1, 0, common, notFresh, "S355"});
        // The various entry is the last row.
        row("next at the various entry", next, {0, 0, varies, notFresh, various});
        row("a pick", pickThird, {2, 1, common, notFresh, "S355"});
        row("a pick of the various entry counts as any", [](MultiEditEnumBox& b) { pick(b, 3); },
            {2, 1, common, notFresh, various});
        row("Up", keyUp, {2, 1, common, notFresh, "S355"});
        row("Down at the last row", keyDown, {0, 0, varies, notFresh, various});
        row("leaving", leave, {0, 0, varies, notFresh, various});
        row("setEditable(true)", makeEditable, {0, 0, varies, notFresh, various});
        row("setEditable(false)", makeAList, {0, 0, varies, notFresh, various});
    }

    static void addRowsOfAList()
    {
        addCommonRows(false);
        const Action fill = [](MultiEditEnumBox& b) { b.setValues(steels()); };
        rowsOfFresh(false)("setValues", fill, {0, 0, common, fresh, "S235"});
        rowsOfCommon(false)("setValues", fill, {0, 0, common, notFresh, "S235"});
        rowsOfVaries(false)("setValues leaves it varying", fill, {0, 0, varies, notFresh, "S235"});
    }

    // A varying list with another row current: previous() comes there, and so does
    // whoever moves the combo box without a pick.
    static void addRowsOfStepsFromOtherRows()
    {
        const QString various = getVariesString();
        const Action next = [](MultiEditEnumBox& b) { b.next(); };
        const Action previous = [](MultiEditEnumBox& b) { b.previous(); };
        const auto at = [](int row) {
            return rowsOf(
                "varies, at row " + QByteArray::number(row), false, [row](MultiEditEnumBox& b) {
                    toVaries(b);
                    comboOf(b).setCurrentIndex(row);
                });
        };
        at(0)("next emits and leaves it varying", next, {1, 0, varies, notFresh, "S275"});
        at(1)("next emits and leaves it varying", next, {1, 0, varies, notFresh, "S355"});
        at(2)("next comes to the various entry", next, {1, 0, varies, notFresh, various});
        at(0)("previous at the first row", previous, {0, 0, varies, notFresh, "S235"});
        at(1)("previous emits and leaves it varying", previous, {1, 0, varies, notFresh, "S235"});
        at(3)("previous emits and leaves it varying", previous, {1, 0, varies, notFresh, "S355"});
        // A text that was entered while the box was editable is a row behind it.
        const auto atVariousBeforeAnEntered = [](bool editable) {
            return rowsOf("varies, an entered row behind the various one", true,
                [editable](MultiEditEnumBox& b) {
                    toVaries(b);
                    typeAndEnter(b, "460");
                    b.setEditable(editable, strength());
                    b.forceVaries();
                });
        };
        atVariousBeforeAnEntered(true)(
            "next emits and brings in its text", next, {1, 0, common, notFresh, "460"});
        atVariousBeforeAnEntered(false)("next in the list again emits and leaves it varying", next,
            {1, 0, varies, notFresh, "460"});
        at(3)("there and back",
            [](MultiEditEnumBox& b) {
                b.previous();
                b.next();
            },
            {2, 0, varies, notFresh, various});
    }

    static void addRowsOfAnEditableBox()
    {
        addCommonRows(true);
        const QString various = getVariesString();
        const Action readUnlisted = [](MultiEditEnumBox& b) { b.readValue(460); };
        const Action setUnlisted = [](MultiEditEnumBox& b) { b.setValue(460); };
        const Action fill = [](MultiEditEnumBox& b) { b.setValues(steels()); };
        auto row = rowsOfFresh(true);
        row("the first read of an unlisted value", readUnlisted, {1, 0, common, notFresh, "460"});
        row("setValue unlisted", setUnlisted, {1, 0, common, fresh, "460"});
        row("setValues", fill, {0, 0, common, fresh, "S235"});
        row = rowsOfCommon(true);
        row("a read of an unlisted value", readUnlisted, {0, 0, varies, notFresh, various});
        row("setValue unlisted", setUnlisted, {1, 0, common, notFresh, "460"});
        row("setValues", fill, {0, 0, common, notFresh, "S235"});
        row = rowsOfVaries(true);
        row("a read of an unlisted value", readUnlisted, {0, 0, varies, notFresh, various});
        row("setValue unlisted", setUnlisted, {1, 0, common, notFresh, "460"});
        // The text moves off the various entry, as by typing.
        row("setValues", fill, {0, 0, common, notFresh, "S235"});
        row("previous", [](MultiEditEnumBox& b) { b.previous(); },
            {1, 0, common, notFresh, "S355"});
    }

    static void addRowsOfTyping()
    {
        const Action typed = [](MultiEditEnumBox& b) { type(b, "460"); };
        const Action typedAndLeft = [](MultiEditEnumBox& b) { typeAndLeave(b, "460"); };
        const Action typedAndEntered = [](MultiEditEnumBox& b) { typeAndEnter(b, "460"); };
        const Action refused = [](MultiEditEnumBox& b) { type(b, "46x"); };
        const Action refusedAndLeft = [](MultiEditEnumBox& b) { typeAndLeave(b, "46x"); };
        const Action refusedAndEntered = [](MultiEditEnumBox& b) { typeAndEnter(b, "46x"); };
        const Action name = [](MultiEditEnumBox& b) { type(b, "S355"); };
        const Action nameAndLeft = [](MultiEditEnumBox& b) { typeAndLeave(b, "S355"); };
        const Action nameAndEntered = [](MultiEditEnumBox& b) { typeAndEnter(b, "S355"); };
        const Action enter = [](MultiEditEnumBox& b) { pressEnter(b); };
        const QString various = getVariesString();
        const Action variesTyped = [=](MultiEditEnumBox& b) { type(b, various); };
        const Action variesTypedAndLeft = [=](MultiEditEnumBox& b) { typeAndLeave(b, various); };
        const Action variesTypedAndEntered = [=](MultiEditEnumBox& b) { typeAndEnter(b, various); };

        const auto add = [&](const AddRow& row, bool freshAfter) {
            row("a text typed", typed, {0, 0, common, freshAfter, "460"});
            row("a text, and leaving", typedAndLeft, {1, 0, common, freshAfter, "460"});
            // Two for the row that Enter adds and picks, one for the value.
            row("a text and Enter", typedAndEntered, {3, 1, common, freshAfter, "460"});
            row("a refused text", refused, {0, 0, common, freshAfter, "46x"});
            row("a refused text, and leaving", refusedAndLeft, {1, 0, common, freshAfter, "46x"});
            row("a refused text and Enter", refusedAndEntered, {3, 1, common, freshAfter, "46x"});
            row("a name typed", name, {0, 0, common, freshAfter, "S355"});
            row("a name, and leaving", nameAndLeft, {2, 1, common, freshAfter, "S355"});
            row("a name and Enter", nameAndEntered, {2, 1, common, freshAfter, "S355"});
            row("the varies text typed", variesTyped, {0, 0, varies, freshAfter, various});
            row("the varies text, and leaving", variesTypedAndLeft,
                {0, 0, varies, freshAfter, various});
            row("the varies text and Enter", variesTypedAndEntered,
                {0, 0, varies, freshAfter, various});
        };
        add(rowsOfFresh(true), fresh);
        add(rowsOfCommon(true), notFresh);
        add(rowsOfVaries(true), notFresh);
        rowsOfFresh(true)("Enter", enter, {2, 1, common, fresh, "S235"});
        rowsOfCommon(true)("Enter", enter, {2, 1, common, notFresh, "S275"});
        const auto varying = rowsOfVaries(true);
        varying("Enter over the various text", enter, {0, 0, varies, notFresh, various});
        varying("a text typed over it and undone",
            [](MultiEditEnumBox& b) {
                type(b, "460");
                QTest::keyClick(&comboOf(b), Qt::Key_Z, Qt::ControlModifier);
            },
            {0, 0, varies, notFresh, various});
        const auto commonAfterVaries = rowsOf("common after varies", true, [](MultiEditEnumBox& b) {
            toVaries(b);
            b.setValue(235);
        });
        commonAfterVaries(
            "the varies text, and leaving", variesTypedAndLeft, {0, 0, varies, notFresh, various});
        commonAfterVaries(
            "the varies text and Enter", variesTypedAndEntered, {0, 0, varies, notFresh, various});
    }
};

VRN_TEST(TestEnumBoxSignals)
#include "tst_enum_box_signals.moc"
