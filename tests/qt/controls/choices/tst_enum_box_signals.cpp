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

// What an action leads to: valueChanged(), activated(), the state (f is fresh, c common,
// v varying) and the text shown; "*" is the text of a varying selection.
struct Outcome
{
    explicit Outcome(const QString& text)
        : changed(text.section(' ', 0, 0).toInt())
        , activated(text.section(' ', 1, 1).toInt())
        , state(text.section(' ', 2, 2))
        , shown(text.section(' ', 3, 3).replace("*", getVariesString()))
    {}

    int changed;
    int activated;
    QString state;
    QString shown;
};

// A state, and the actions that lead to it.
struct Start
{
    QByteArray name;
    bool isEditable;
    Action arrange;
};

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

// How often an enum box emits what, and which state an action leaves: applications rely
// on the doubled signals, too.
class TestEnumBoxSignals : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatAnActionDoes_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::addColumn<Action>("arrange");
        QTest::addColumn<Action>("act");
        QTest::addColumn<QString>("outcomeDue");
        for (const bool editable : {false, true})
            addCommonRows(editable);
        addRowsOfFillingAList();
        addRowsOfStepsFromOtherRows();
        addRowsOfAnEditableBox();
        addRowsOfTheVariesText();
    }

    void whatAnActionDoes()
    {
        QFETCH(bool, editable);
        QFETCH(Action, arrange);
        QFETCH(Action, act);
        QFETCH(QString, outcomeDue);
        const Outcome outcome(outcomeDue);
        const bool varies = outcome.state == "v";
        QWidget form;
        auto* box = MultiEditEnumBox::create(&form, {}, &vrn::any_equal<int>);
        fillAndShow(*box, editable);
        arrange(*box);
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        QSignalSpy activated(box, &SimpleEnumBox::activated);
        act(*box);
        QCOMPARE(changed.count(), outcome.changed);
        QCOMPARE(activated.count(), outcome.activated);
        QCOMPARE(box->dataVaries(), varies);
        QCOMPARE(textOf(*box), outcome.shown);
        QCOMPARE(box->getCurrentValue(), varies ? boost::any() : valueOf(outcome.shown));
        // The first of all reads is the only one that emits.
        changed.clear();
        box->readValue(235);
        QCOMPARE(changed.count(), outcome.state == "f" ? 1 : 0);
    }

    void whatAnActionOnAPlainBoxDoes_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::addColumn<SimpleAction>("act");
        QTest::addColumn<int>("changedDue");
        QTest::addColumn<QString>("shown");
        const auto editable = [](const char* name, int changed, const char* shown,
                                  const SimpleAction& act) {
            QTest::addRow("an editable box: %s", name) << true << act << changed << QString(shown);
        };
        const auto both = [&](const char* name, int changed, const char* shown,
                              const SimpleAction& act) {
            QTest::addRow("a list: %s", name) << false << act << changed << QString(shown);
            editable(name, changed, shown, act);
        };
        // clang-format off
        both("setValues", 0, "S235", [](auto& b) { b.setValues(steels()); });
        both("selectByName", 0, "S355", [](auto& b) { b.selectByName("S355"); });
        both("an unknown name", 0, "S275", [](auto& b) { b.selectByName("S460"); });
        both("a name in other letters", 0, "S275", [](auto& b) { b.selectByName("s355"); });
        both("no name", 0, "S275", [](auto& b) { b.selectByName({}); });
        both("selectByValue", 0, "S355", [](auto& b) { b.selectByValue(355); });
        both("next", 1, "S355", [](auto& b) { b.next(); });
        both("next at the last row", 1, "S355", [](auto& b) { b.next(); b.next(); });
        both("previous", 1, "S235", [](auto& b) { b.previous(); });
        both("previous at the first row", 1, "S235", [](auto& b) { b.previous(); b.previous(); });
        both("a pick", 1, "S355", [](auto& b) { pick(b, 2); });
        both("a pick of the same row", 1, "S275", [](auto& b) { pick(b, 1); });
        both("an arrow key", 1, "S235", [](auto& b) { pressKey(b, Qt::Key_Up); });
        both("leaving", 0, "S275", leave);
        both("setEditable(true)", 0, "S275", [](auto& b) { b.setEditable(true); });
        both("setEditable(false)", 0, "S275", [](auto& b) { b.setEditable(false); });
        editable("an unlisted value", 0, "460", [](auto& b) { b.selectByValue(460); });
        editable("a text typed", 0, "460", [](auto& b) { type(b, "460"); });
        editable("a text, and leaving", 1, "460", [](auto& b) { typeAndLeave(b, "460"); });
        // One for the row that Enter adds and picks, one for the value.
        editable("a text and Enter", 2, "460", [](auto& b) { typeAndEnter(b, "460"); });
        editable("a refused text, and leaving", 1, "46x", [](auto& b) { typeAndLeave(b, "46x"); });
        editable("a refused text and Enter", 2, "46x", [](auto& b) { typeAndEnter(b, "46x"); });
        editable("a name, and leaving", 1, "S355", [](auto& b) { typeAndLeave(b, "S355"); });
        editable("a name and Enter", 1, "S355", [](auto& b) { typeAndEnter(b, "S355"); });
        // clang-format on
    }

    void whatAnActionOnAPlainBoxDoes()
    {
        QFETCH(bool, editable);
        QFETCH(SimpleAction, act);
        QFETCH(int, changedDue);
        QFETCH(QString, shown);
        QWidget form;
        auto* box = SimpleEnumBox::create(&form, {}, &vrn::any_equal<int>);
        fillAndShow(*box, editable);
        box->selectByValue(275);
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        QSignalSpy activated(box, &SimpleEnumBox::activated);
        act(*box);
        QCOMPARE(changed.count(), changedDue);
        QCOMPARE(activated.count(), 0);
        QCOMPARE(textOf(*box), shown);
    }

private:
    static void fillAndShow(SimpleEnumBox& box, bool editable)
    {
        QWidget& form = *box.parentWidget();
        (new QHBoxLayout(&form))->addWidget(&box);
        box.setValues(steels());
        if (editable)
            box.setEditable(true, strength());
        comboOf(box).setFocus();
        showActive(form);
    }

    static Start freshBox(bool editable)
    {
        return {"fresh", editable, [](auto&) {}};
    }
    static Start commonBox(bool editable)
    {
        return {"common", editable, [](auto& b) { b.readValue(275); }};
    }
    static Start varyingBox(bool editable) { return {"varies", editable, toVaries}; }

    static void add(const Start& start, const char* name, const char* outcomeDue, const Action& act)
    {
        QTest::addRow(
            "%s%s: %s", start.isEditable ? "editable, " : "", start.name.constData(), name)
            << start.isEditable << start.arrange << act << QString(outcomeDue);
    }

    // Of a fresh box, of one with row 1 in common and of one that varies.
    static void addToAll(bool editable, const char* name, const char* fresh, const char* common,
        const char* varies, const Action& act)
    {
        add(freshBox(editable), name, fresh, act);
        add(commonBox(editable), name, common, act);
        add(varyingBox(editable), name, varies, act);
    }

    // Where it makes no difference whether the box is editable.
    static void addCommonRows(bool editable)
    {
        const auto row = [=](auto... cells) { addToAll(editable, cells...); };
        // clang-format off
        row("nothing",            "0 0 f S235", "0 0 c S275", "0 0 v *",    [](auto&) {});
        row("reset",              "0 0 f S235", "0 0 f S275", "0 0 f S275", [](auto& b) { b.reset(); });
        row("a read of 275",      "1 0 c S275", "0 0 c S275", "0 0 v *",    [](auto& b) { b.readValue(275); });
        row("a read of 355",      "1 0 c S355", "0 0 v *",    "0 0 v *",    [](auto& b) { b.readValue(355); });
        row("setValue",           "1 0 f S355", "1 0 c S355", "1 0 c S355", [](auto& b) { b.setValue(355); });
        row("forceVaries",        "0 0 v *",    "0 0 v *",    "0 0 v *",    [](auto& b) { b.forceVaries(); });
        row("selectByName",       "1 0 f S355", "1 0 c S355", "1 0 c S355", [](auto& b) { b.selectByName("S355"); });
        row("an unknown name",    "0 0 f S235", "0 0 c S275", "0 0 v *",    [](auto& b) { b.selectByName("S460"); });
        row("selectByValue",      "1 0 f S355", "1 0 c S355", "1 0 c S355", [](auto& b) { b.selectByValue(355); });
        // The various entry is the last row.
        row("next",               "1 0 f S275", "1 0 c S355", "0 0 v *",    [](auto& b) { b.next(); });
        row("a pick",             "2 1 f S355", "2 1 c S355", "2 1 c S355", [](auto& b) { pick(b, 2); });
        row("Up",                 "0 0 f S235", "2 1 c S235", "2 1 c S355", [](auto& b) { pressKey(b, Qt::Key_Up); });
        row("Down",               "2 1 f S275", "2 1 c S355", "0 0 v *",    [](auto& b) { pressKey(b, Qt::Key_Down); });
        row("leaving",            "0 0 f S235", "0 0 c S275", "0 0 v *",    leave);
        row("setEditable(true)",  "0 0 f S235", "0 0 c S275", "0 0 v *",    [](auto& b) { b.setEditable(true, strength()); });
        row("setEditable(false)", "0 0 f S235", "0 0 c S275", "0 0 v *",    [](auto& b) { b.setEditable(false); });
        add(freshBox(editable), "previous at the first row", "0 0 f S235", [](auto& b) { b.previous(); });
        add(commonBox(editable), "previous", "1 0 c S235", [](auto& b) { b.previous(); });
        add(commonBox(editable), "a pick of the same row", "2 1 c S275", [](auto& b) { pick(b, 1); });
        add(varyingBox(editable), "a pick of the various entry counts as any", "2 1 c *", [](auto& b) { pick(b, 3); });
        // clang-format on
    }

    static void addRowsOfFillingAList()
    {
        addToAll(false, "setValues leaves the state", "0 0 f S235", "0 0 c S235", "0 0 v S235",
            [](auto& b) { b.setValues(steels()); });
    }

    // A list that varies, with another row current: previous() gets there, and so does code
    // that moves the combo box without a pick.
    static void addRowsOfStepsFromOtherRows()
    {
        const auto at = [](int row) {
            const auto arrange = [row](MultiEditEnumBox& b) {
                toVaries(b);
                comboOf(b).setCurrentIndex(row);
            };
            return Start{"varies, at row " + QByteArray::number(row), false, arrange};
        };
        // An entered text is a row after the various one.
        const auto beforeEntered = [](bool editable) {
            const auto arrange = [editable](MultiEditEnumBox& b) {
                toVaries(b);
                typeAndEnter(b, "460");
                b.setEditable(editable, strength());
                b.forceVaries();
            };
            return Start{editable ? "varies before an entered row" : "a list again", true, arrange};
        };
        const Action next = [](auto& b) { b.next(); };
        const Action previous = [](auto& b) { b.previous(); };
        // clang-format off
        add(at(0), "next emits and leaves it varying", "1 0 v S275", next);
        add(at(1), "next emits and leaves it varying", "1 0 v S355", next);
        add(at(2), "next comes to the various entry", "1 0 v *", next);
        add(at(0), "previous at the first row", "0 0 v S235", previous);
        add(at(1), "previous emits and leaves it varying", "1 0 v S235", previous);
        add(at(3), "previous emits and leaves it varying", "1 0 v S355", previous);
        add(at(3), "there and back", "2 0 v *", [](auto& b) { b.previous(); b.next(); });
        add(beforeEntered(true), "next emits and brings in its text", "1 0 c 460", next);
        add(beforeEntered(false), "next emits and leaves it varying", "1 0 v 460", next);
        // clang-format on
    }

    static void addRowsOfAnEditableBox()
    {
        const auto row = [](auto... cells) { addToAll(true, cells...); };
        // clang-format off
        row("a read of an unlisted value", "1 0 c 460",  "0 0 v *",    "0 0 v *",    [](auto& b) { b.readValue(460); });
        row("setValue unlisted",           "1 0 f 460",  "1 0 c 460",  "1 0 c 460",  [](auto& b) { b.setValue(460); });
        // The text moves off the various entry, as by typing.
        row("setValues",                   "0 0 f S235", "0 0 c S235", "0 0 c S235", [](auto& b) { b.setValues(steels()); });
        row("a text typed",                "0 0 f 460",  "0 0 c 460",  "0 0 c 460",  [](auto& b) { type(b, "460"); });
        row("a text, and leaving",         "1 0 f 460",  "1 0 c 460",  "1 0 c 460",  [](auto& b) { typeAndLeave(b, "460"); });
        // Two for the row that Enter adds and picks, one for the value.
        row("a text and Enter",            "3 1 f 460",  "3 1 c 460",  "3 1 c 460",  [](auto& b) { typeAndEnter(b, "460"); });
        row("a refused text",              "0 0 f 46x",  "0 0 c 46x",  "0 0 c 46x",  [](auto& b) { type(b, "46x"); });
        row("a refused text, and leaving", "1 0 f 46x",  "1 0 c 46x",  "1 0 c 46x",  [](auto& b) { typeAndLeave(b, "46x"); });
        row("a refused text and Enter",    "3 1 f 46x",  "3 1 c 46x",  "3 1 c 46x",  [](auto& b) { typeAndEnter(b, "46x"); });
        row("a name typed",                "0 0 f S355", "0 0 c S355", "0 0 c S355", [](auto& b) { type(b, "S355"); });
        row("a name, and leaving",         "2 1 f S355", "2 1 c S355", "2 1 c S355", [](auto& b) { typeAndLeave(b, "S355"); });
        row("a name and Enter",            "2 1 f S355", "2 1 c S355", "2 1 c S355", [](auto& b) { typeAndEnter(b, "S355"); });
        row("Enter",                       "2 1 f S235", "2 1 c S275", "0 0 v *",    [](auto& b) { pressEnter(b); });
        add(varyingBox(true), "previous", "1 0 c S355", [](auto& b) { b.previous(); });
        // clang-format on
    }

    // A user who types it makes any box vary, even a fresh one.
    static void addRowsOfTheVariesText()
    {
        const Start commonAgain = {"common after varies", true, [](auto& b) {
                                       toVaries(b);
                                       b.setValue(235);
                                   }};
        // clang-format off
        for (const Start& start : {freshBox(true), commonBox(true), varyingBox(true), commonAgain}) {
            add(start, "the varies text typed", "0 0 v *", [](auto& b) { type(b, getVariesString()); });
            add(start, "the varies text, and leaving", "0 0 v *", [](auto& b) { typeAndLeave(b, getVariesString()); });
            add(start, "the varies text and Enter", "0 0 v *", [](auto& b) { typeAndEnter(b, getVariesString()); });
        }
        add(varyingBox(true), "a text typed over it and undone", "0 0 v *", [](auto& b) {
            type(b, "460"); QTest::keyClick(&comboOf(b), Qt::Key_Z, Qt::ControlModifier); });
        // clang-format on
    }
};

VRN_TEST(TestEnumBoxSignals)
#include "tst_enum_box_signals.moc"
