#include <vrn/base/any_predicates.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/layouters.h>
#include <vrn/qt/validators.h>

#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QToolButton>

#include "document_table.h"
#include "qt/controls/choices/enum_box_fixture.h"
#include "qt/controls/choices/group_fixture.h"
#include "qt/controls/line_edits/line_edit_fixture.h"
#include "support/modal_dialog.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <algorithm>
#include <functional>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

/// A control in a window, and what is done to it. It has two values: the one that it shows
/// when it is fresh, and another one. A step that takes `other` is done with either value: the
/// one that is shown changes nothing.
struct Subject
{
    using Step = std::function<void(bool other)>;

    std::shared_ptr<QWidget> window;
    std::shared_ptr<QObject> group; ///< For a sender that is not a widget.
    QObject* sender = nullptr;

    // Empty if the control cannot do it.
    Step edit;
    Step editWhileItVaries;
    Step set;
    Step read;
    std::function<void()> reset;
    std::function<void()> forceVaries;

    void show() const
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }
};

template <typename Control>
void takeProtocol(
    Subject& subject, Control* control, const boost::any& shown, const boost::any& another)
{
    subject.sender = control;
    const auto value = [=](bool other) { return other ? another : shown; };
    subject.set = [=](bool other) { control->setValue(value(other)); };
    subject.read = [=](bool other) { control->readValue(value(other)); };
    subject.reset = [=] { control->reset(); };
    subject.forceVaries = [=] { control->forceVaries(); };
}

/// An edit by the keyboard, ended by Enter.
Subject::Step typeInto(QLineEdit* edit)
{
    return [=](bool other) {
        edit->setFocus();
        edit->selectAll();
        if (other)
            QTest::keyClicks(edit, "7");
        QTest::keyClick(edit, Qt::Key_Return);
    };
}

Subject windowAround(QWidget* control)
{
    Subject subject;
    subject.window = std::make_shared<QWidget>();
    new QVBoxLayout(subject.window.get());
    subject.window->layout()->addWidget(control);
    return subject;
}

IValidator* digits()
{
    return new IntegerValidator<int>(0, 9, true);
}

Subject simpleLineEdit()
{
    auto* field = SimpleLineEdit::create(nullptr, {}, digits(), 0, ExpandHorizontal);
    Subject subject = windowAround(field);
    subject.sender = field;
    field->setValue(0);
    subject.edit = typeInto(field->edit());
    subject.set = [=](bool other) { field->setValue(other ? 7 : 0); };
    return subject;
}

Subject multiEditLineEdit(MultiEditLineEdit* field)
{
    Subject subject = windowAround(field);
    takeProtocol(subject, field, 0, 7);
    subject.edit = typeInto(field->edit());
    subject.editWhileItVaries = subject.edit;
    return subject;
}

Subject plainMultiEditLineEdit()
{
    return multiEditLineEdit(MultiEditLineEdit::create(nullptr, {}, digits(), 0, ExpandHorizontal));
}

Subject lineEditWithButton()
{
    return multiEditLineEdit(new MultiEditLineEditWithButton(
        digits(), 1, [](QWidget*, int, boost::any& value) { value = 3; }));
}

Subject lineEditWithResetButton()
{
    return multiEditLineEdit(new MultiEditLineEditWithResetButton(
        digits(), 1, [](int, boost::any& shown, boost::any& reported) { shown = reported = 3; }));
}

Subject filePicker()
{
    auto* picker = new MultiEditFilePicker(nullptr, TypeofPathFolder);
    Subject subject = windowAround(picker);
    takeProtocol(subject, picker, std::string(), std::string("7"));
    subject.edit = typeInto(picker->m_edit->edit());
    subject.editWhileItVaries = subject.edit;
    return subject;
}

Subject simpleEnumBox()
{
    auto* window = new QWidget;
    auto* box = SimpleEnumBox::create(window, {}, &vrn::any_equal<int>);
    Subject subject = windowAround(window);
    box->setValues(steels());
    subject.sender = box;
    subject.edit = [=](bool other) { pick(*box, other ? 1 : 0); };
    subject.set = [=](bool other) { box->selectByValue(other ? 275 : 235); };
    return subject;
}

Subject multiEditEnumBox()
{
    auto* box = MultiEditEnumBox::create(nullptr, {}, &vrn::any_equal<int>);
    Subject subject = windowAround(box);
    box->setValues(steels());
    takeProtocol(subject, box, 235, 275);
    subject.edit = [=](bool other) { pick(*box, other ? 1 : 0); };
    subject.editWhileItVaries = subject.edit;
    return subject;
}

Subject checkBox()
{
    auto* window = new QWidget;
    auto* box = MultiEditCheckBox::create("x", window);
    Subject subject = windowAround(window);
    takeProtocol(subject, box, false, true);
    subject.edit = [=](bool) { clickOn(box->findChild<QCheckBox*>()); };
    subject.editWhileItVaries = subject.edit;
    return subject;
}

Subject checkBoxGroup()
{
    auto* window = new QWidget;
    HBoxLayouter row;
    row.onCreate(window);
    const auto group = std::make_shared<MultiEditCheckBoxGroup>(
        window, row, std::deque<QString>{"x", "y", "z"}, std::deque<QString>{});
    row.onFinish();
    Subject subject = windowAround(window);
    subject.group = group;
    subject.sender = group.get();
    auto* all = group.get();
    subject.edit = [=](bool) { clickOn(window->findChild<QCheckBox*>()); };
    subject.editWhileItVaries = subject.edit;
    subject.set = [=](bool other) { all->setValue(0, other); };
    subject.read = [=](bool other) { all->readValue(0, other); };
    subject.reset = [=] { all->reset(); };
    return subject;
}

Subject groupBox()
{
    auto* window = new QWidget;
    auto* box = MultiEditGroupBox::create("x", window);
    box->resize(100, 100);
    Subject subject = windowAround(window);
    takeProtocol(subject, box, false, true);
    subject.edit = [=](bool) { clickOn(box); };
    return subject;
}

Subject radioButtonGroup()
{
    auto* window = new QWidget;
    auto* group = MultiEditRadioButtonGroup::create(
        "Steel", steels(), &vrn::any_equal<int>, &vrn::any_less<int>, window, nullptr, true, true);
    Subject subject = windowAround(window);
    takeProtocol(subject, group, 235, 275);
    subject.edit = [=](bool other) {
        clickOn(group->findChildren<QRadioButton*>().at(other ? 1 : 0));
    };
    subject.editWhileItVaries = subject.edit;
    return subject;
}

using Make = Subject (*)();

const QMap<QString, Make>& subjects()
{
    static const QMap<QString, Make> byName = {
        {"SimpleLineEdit", &simpleLineEdit},
        {"MultiEditLineEdit", &plainMultiEditLineEdit},
        {"MultiEditLineEditWithButton", &lineEditWithButton},
        {"MultiEditLineEditWithResetButton", &lineEditWithResetButton},
        {"MultiEditFilePicker", &filePicker},
        {"SimpleEnumBox", &simpleEnumBox},
        {"MultiEditEnumBox", &multiEditEnumBox},
        {"MultiEditCheckBox", &checkBox},
        {"MultiEditCheckBoxGroup", &checkBoxGroup},
        {"MultiEditGroupBox", &groupBox},
        {"MultiEditRadioButtonGroup", &radioButtonGroup},
    };
    return byName;
}

/// How a control gets into the state that a column is about, and what is then done to it.
/// The function is empty if the control cannot do it.
struct Column
{
    std::function<void(Subject&, bool other)> arrange;
    std::function<Subject::Step(Subject&)> act;
};

void readIfItCan(Subject& subject, bool other)
{
    if (subject.read)
        subject.read(other);
}

void makeItVary(Subject& subject, bool /*other*/)
{
    subject.read(false);
    subject.read(true);
}

Subject::Step withoutValue(const std::function<void()>& step)
{
    return step ? Subject::Step([=](bool) { step(); }) : Subject::Step();
}

/// In the order of the table.
const QList<Column>& columns()
{
    const auto common = [](Subject& subject, bool) { readIfItCan(subject, false); };
    const auto nothing = [](Subject&, bool) {};
    static const QList<Column> all = {
        {common, [](Subject& s) { return s.edit; }},
        {&makeItVary, [](Subject& s) { return s.editWhileItVaries; }},
        {common, [](Subject& s) { return s.set; }},
        {&readIfItCan, [](Subject& s) { return withoutValue(s.reset); }},
        {nothing, [](Subject& s) { return s.read; }},
        {common, [](Subject& s) { return s.read; }},
        {common, [](Subject& s) { return withoutValue(s.forceVaries); }},
    };
    return all;
}

/// How often the signal comes, in the words of the table.
QString cellOf(Make make, const Column& column)
{
    QStringList counts;
    for (const bool other : {false, true}) {
        Subject subject = make();
        const Subject::Step act = column.act(subject);
        if (!act)
            return QString::fromUtf8("–");
        subject.show();
        column.arrange(subject, other);
        const QSignalSpy changed(subject.sender, SIGNAL(valueChanged()));
        act(other);
        counts.append(QString::number(changed.count()));
    }
    counts.removeDuplicates();
    return counts.join(" / ");
}

/// What a control emits, in order.
class Emitted : public QObject
{
public:
    explicit Emitted(const QObject* sender)
        : m_changed(sender, SIGNAL(valueChanged()))
    {
        if (const auto* box = qobject_cast<const SimpleEnumBox*>(sender)) {
            connect(box, &SimpleEnumBox::activated, this, [this] {
                if (m_changed.isEmpty())
                    m_before.append("`activated(int)`, then ");
            });
        }
    }

    /// In the words of the table.
    QString told() const
    {
        const QStringList changed = {"", "`valueChanged()`", "`valueChanged()` twice"};
        if (m_before.isEmpty() && m_changed.isEmpty())
            return "nothing";
        return m_before + changed.value(m_changed.count(), "too much");
    }

private:
    QSignalSpy m_changed;
    QString m_before;
};

/// What is done to a control after it is shown.
struct Action
{
    Make make;
    std::function<void(Subject&)> act;
};

template <typename Control>
Control& controlOf(Subject& subject)
{
    return *qobject_cast<Control*>(subject.sender);
}

void typeAndLeave(QLineEdit* edit, const QString& text)
{
    QLineEdit other(edit->window());
    other.show();
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    other.setFocus();
}

Subject withHistory()
{
    Subject subject = simpleLineEdit();
    const auto history = boost::make_shared<vrn::ValueHistory>(
        L"key", boost::make_shared<vrn::ValueHistoryMemoryStorage>());
    history->add(L"5");
    controlOf<SimpleLineEdit>(subject).setValueHistory(history);
    return subject;
}

Subject withThreeDots()
{
    auto* field = SimpleLineEdit::create(
        nullptr, {}, boost::make_shared<IntegerValidator<int>>(0, 9, true), [] {}, 0,
        ExpandHorizontal);
    Subject subject = windowAround(field);
    subject.sender = field;
    return subject;
}

Subject editableBox()
{
    Subject subject = simpleEnumBox();
    controlOf<SimpleEnumBox>(subject).setEditable(true, strength());
    return subject;
}

// The edit inside does not have the focus, which it would lose to the button.
Subject filePickerAtItsButton()
{
    Subject subject = filePicker();
    controlOf<MultiEditFilePicker>(subject).m_btn->setFocus();
    return subject;
}

void clickInHistory(Subject& subject)
{
    auto* edit = controlOf<SimpleLineEdit>(subject).edit();
    QFocusEvent enter(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(edit, &enter);
    auto* list = subject.window->findChild<QListWidget*>();
    QVERIFY(list && list->isVisible());
    const QPoint position = list->visualItemRect(list->item(0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, position);
}

void clickInnerButton(Subject& subject)
{
    auto& field = controlOf<SimpleLineEdit>(subject);
    field.edit()->setFocus();
    field.addButton([](const QString&) { return QString("5"); }, {})->click();
    QCOMPARE(field.edit()->text(), QString("5"));
}

void closeDialog(Subject& subject, bool choose)
{
    WhenOpen<QFileDialog> user([=](QFileDialog& dialog) {
        if (choose)
            static_cast<QDialog&>(dialog).accept();
        else
            dialog.reject();
    });
    QTest::mouseClick(controlOf<MultiEditFilePicker>(subject).m_btn, Qt::LeftButton);
    QCOMPARE(user.count, 1);
}

template <typename Control>
void callAllSuspended(Subject& subject)
{
    auto& control = controlOf<Control>(subject);
    control.suspendValueChangedSignal();
    subject.read(true);
    subject.set(false);
    subject.set(true);
    control.setChecked(false);
    control.setChecked(true);
    control.reset();
    control.resumeValueChangedSignal();
}

void clickOnAll(Subject& subject)
{
    clickOn(subject.window->findChildren<QCheckBox*>().last());
    const auto& group = controlOf<MultiEditCheckBoxGroup>(subject);
    QVERIFY(group.getValue(0));
    QVERIFY(group.getValue(2));
}

void loadThree(Subject& subject)
{
    auto& group = controlOf<MultiEditCheckBoxGroup>(subject);
    group.setCanBeSaved("key");
    vrn::KeyValueStorage storage;
    const auto boxes = subject.window->findChildren<MultiEditCheckBox*>();
    for (int i = 0; i < 3; ++i)
        storage[boxes.at(i)->getStorageId()] = true;
    for (int i = 0; i < 3; ++i)
        boxes.at(i)->load(storage);
    QVERIFY(group.getValue(2));
}

Action call(Make make, std::function<void(Subject&)> act)
{
    return {make, std::move(act)};
}

/// An action on the control itself.
template <typename Control>
auto on(Make make)
{
    return [make](std::function<void(Control&)> act) {
        return call(make, [act](Subject& subject) { act(controlOf<Control>(subject)); });
    };
}

/// The actions of each row, by what the row says of "Control" and "What happens".
const QMap<QString, QList<Action>>& actions()
{
    const auto field = on<SimpleLineEdit>(&simpleLineEdit);
    const auto dotted = on<SimpleLineEdit>(&withThreeDots);
    const auto withButton = on<MultiEditLineEditWithButton>(&lineEditWithButton);
    const auto withReset = on<MultiEditLineEditWithResetButton>(&lineEditWithResetButton);
    const auto list = on<SimpleEnumBox>(&simpleEnumBox);
    const auto editable = on<SimpleEnumBox>(&editableBox);
    const auto multi = on<SimpleEnumBox>(&multiEditEnumBox);
    const auto check = on<MultiEditCheckBox>(&checkBox);
    const auto radio = on<MultiEditRadioButtonGroup>(&radioButtonGroup);
    const auto boxes = on<MultiEditCheckBoxGroup>(&checkBoxGroup);
    const auto close = [](Make make, bool choose) {
        return call(make, [choose](Subject& subject) { closeDialog(subject, choose); });
    };
    // clang-format off
    static const QMap<QString, QList<Action>> byRow = {
        {"SimpleLineEdit: a key is typed", {field([](auto& f) { QTest::keyClicks(f.edit(), "7"); })}},
        {"SimpleLineEdit: Enter, with a text that is refused", {field([](auto& f) {
            QTest::keyClicks(f.edit(), "x");
            QTest::keyClick(f.edit(), Qt::Key_Return);
            QVERIFY(!f.isValueValid());
        })}},
        {"SimpleLineEdit: a text is typed and the field left", {field([](auto& f) { typeAndLeave(f.edit(), "7"); })}},
        {"SimpleLineEdit: an untouched field is left", {field([](auto& f) { typeAndLeave(f.edit(), {}); })}},
        {"SimpleLineEdit: an entry of the history is clicked", {call(&withHistory, &clickInHistory)}},
        {"SimpleLineEdit: the button inside the edit is clicked", {call(&simpleLineEdit, &clickInnerButton)}},
        {"SimpleLineEdit: the \"...\" button is clicked", {dotted([](auto& f) { f.template findChild<QPushButton*>()->click(); })}},
        {"MultiEditLineEditWithButton: its button is clicked", {withButton([](auto& f) {
            f.getButton()->click();
            QCOMPARE(f.getCurrentValue(), boost::any(3));
        })}},
        {"MultiEditLineEditWithResetButton: its button is clicked", {withReset([](auto& f) { f.template findChild<QToolButton*>("btn")->click(); })}},
        {"MultiEditFilePicker: the dialog is closed, with a choice or without", {
            close(&filePickerAtItsButton, true),
            close(&filePickerAtItsButton, false)}},
        {"MultiEditFilePicker: the same, after a click that took the focus from the edit", {close(&filePicker, false)}},
        {"SimpleEnumBox: setValues(), selectByName()", {
            list([](auto& box) { box.setValues(steels()); }),
            list([](auto& box) { box.selectByName("S275"); })}},
        {"SimpleEnumBox: next(), previous()", {
            list([](auto& box) { box.next(); }),
            list([](auto& box) { box.selectByName("S275"); box.previous(); })}},
        {"SimpleEnumBox: next() at the end of the list", {list([](auto& box) { box.selectByName("S355"); box.next(); })}},
        {"SimpleEnumBox: a new text is typed and the editable box left", {editable([](auto& box) {
            QLineEdit other(box.window());
            other.show();
            comboOf(box).setFocus();
            type(box, "460");
            other.setFocus();
        })}},
        {"SimpleEnumBox: a new text is typed into the editable box, and Enter", {editable([](auto& box) { type(box, "460"); pressEnter(box); })}},
        {"MultiEditEnumBox: an entry is picked", {multi([](auto& box) { pick(box, 2); })}},
        {"MultiEditEnumBox: setValues()", {multi([](auto& box) { box.setValues(steels()); })}},
        {"MultiEditEnumBox: selectByName(), selectByValue(), next()", {
            multi([](auto& box) { box.selectByName("S275"); }),
            multi([](auto& box) { box.selectByValue(275); }),
            multi([](auto& box) { box.next(); })}},
        {"MultiEditCheckBox: setChecked() that changes the box", {check([](auto& box) { box.setChecked(true); })}},
        {"MultiEditCheckBox: any call between suspendValueChangedSignal() and resumeValueChangedSignal()", {
            call(&checkBox, &callAllSuspended<MultiEditCheckBox>)}},
        {"MultiEditGroupBox: any call between suspendValueChangedSignal() and resumeValueChangedSignal()", {
            call(&groupBox, &callAllSuspended<MultiEditGroupBox>)}},
        {"MultiEditRadioButtonGroup: setSelected()", {radio([](auto& group) { group.setSelected(275); })}},
        {"MultiEditCheckBoxGroup: a click on \"All\", however many boxes it changes", {call(&checkBoxGroup, &clickOnAll)}},
        {"MultiEditCheckBoxGroup: onEndRead(), setEnabled()", {
            boxes([](auto& group) { group.onEndRead(); }),
            boxes([](auto& group) { group.setEnabled(0, false); }),
            boxes([](auto& group) { group.setEnabled(false); })}},
        {"MultiEditCheckBoxGroup: the last of three boxes is loaded", {call(&checkBoxGroup, &loadThree)}},
    };
    // clang-format on
    return byRow;
}

QString keyOf(const QStringList& row)
{
    QString key = row.at(0) + ": " + row.at(1);
    return key.remove('`');
}

constexpr int mostCalls = 50;

using Slot = void (*)(Subject&);

void readAgain(Subject& subject)
{
    subject.reset();
    subject.read(true);
    subject.read(true);
}

void setAgain(Subject& subject)
{
    subject.set(true);
}

/// How deep `slot` calls itself after an edit of the user and after a value that was set: for
/// a check box, a click alone does not show it.
int depthOfCalls(Make make, Slot slot, bool blocksSignals)
{
    Subject subject = make();
    subject.show();
    int depth = 0;
    int deepest = 0;
    const OnValueChangedHook hook(subject.sender, [&] {
        ++depth;
        deepest = std::max(deepest, depth);
        if (depth < mostCalls) {
            const QSignalBlocker blocker(blocksSignals ? subject.sender : nullptr);
            slot(subject);
        }
        --depth;
    });
    subject.edit(true);
    subject.reset();
    subject.set(true);
    return deepest;
}

const QStringList header = {"Control", "the user's edit", "the same while it varies",
    "`setValue()`", "`reset()`", "first `readValue()`", "later `readValue()`", "`forceVaries()`"};

const QStringList headerOfActions = {"Control", "What happens", "Emits"};

} // namespace

Q_DECLARE_METATYPE(Make)
Q_DECLARE_METATYPE(Slot)
Q_DECLARE_METATYPE(const QMetaObject*)

/// Runs the tables of docs/signals.md.
class TestSignalsDocument : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachControlHasARow()
    {
        QStringList documented;
        for (const QStringList& row : tableRows("signals.md", header))
            documented.append(codeOf(row.at(0)));
        documented.sort();
        QCOMPARE(documented, subjects().keys());
    }

    void aCell_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("cell");
        for (const QStringList& row : tableRows("signals.md", header)) {
            for (int column = 1; column < header.size(); ++column) {
                const QString control = codeOf(row.at(0));
                QTest::newRow(qPrintable(control + ": " + header.at(column)))
                    << control << column << row.at(column);
            }
        }
    }

    void aCell()
    {
        QFETCH(QString, control);
        QFETCH(int, column);
        QFETCH(QString, cell);
        QVERIFY2(subjects().contains(control), qPrintable(control));
        QCOMPARE(cellOf(subjects().value(control), columns().at(column - 1)), cell);
    }

    void eachActionHasARow()
    {
        QStringList documented;
        for (const QStringList& row : tableRows("signals.md", headerOfActions))
            documented.append(keyOf(row));
        for (const QString& key : actions().keys())
            QVERIFY2(documented.count(key) == 1, qPrintable("not one row: " + key));
    }

    void anAction_data()
    {
        QTest::addColumn<QString>("emitted");
        for (const QStringList& row : tableRows("signals.md", headerOfActions))
            QTest::newRow(qPrintable(keyOf(row))) << row.at(2);
    }

    void anAction()
    {
        QFETCH(QString, emitted);
        QVERIFY2(actions().contains(QTest::currentDataTag()), "no action");
        for (const Action& action : actions().value(QTest::currentDataTag())) {
            Subject subject = action.make();
            subject.show();
            const Emitted emittedNow(subject.sender);
            action.act(subject);
            QCOMPARE(emittedNow.told(), emitted);
        }
    }

    // For the controls that can be read.
    void aSlotThatChangesTheControl_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<Slot>("slot");
        QTest::addColumn<bool>("endless");
        for (const QStringList& row : tableRows("signals.md", header)) {
            const QString control = codeOf(row.at(0));
            if (row.at(5) == QString::fromUtf8("–"))
                continue;
            const bool emitsWhenRead = row.at(4) != "0" || row.at(5) != "0";
            QTest::addRow("%s: reads again", qPrintable(control))
                << subjects().value(control) << &readAgain << emitsWhenRead;
            QTest::addRow("%s: sets again", qPrintable(control))
                << subjects().value(control) << &setAgain << (row.at(3) != "0");
        }
    }

    void aSlotThatChangesTheControl()
    {
        QFETCH(Make, make);
        QFETCH(Slot, slot);
        QFETCH(bool, endless);
        QCOMPARE(depthOfCalls(make, slot, false), endless ? mostCalls : 1);
        QCOMPARE(depthOfCalls(make, slot, true), 1);
    }

    void noneOfTheOthersHasTheSignal_data()
    {
        QTest::addColumn<const QMetaObject*>("type");
        QTest::newRow("SimpleCheckBox") << &SimpleCheckBox::staticMetaObject;
        QTest::newRow("SimpleRadioButtonGroup") << &SimpleRadioButtonGroup::staticMetaObject;
        QTest::newRow("Toolbar") << &Toolbar::staticMetaObject;
    }

    void noneOfTheOthersHasTheSignal()
    {
        QFETCH(const QMetaObject*, type);
        QCOMPARE(type->indexOfSignal("valueChanged()"), -1);
    }
};

VRN_TEST(TestSignalsDocument)
#include "tst_signals_document.moc"
