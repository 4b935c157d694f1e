#include "injection/actions.h"

#include "injection/foreign_code.h"
#include "injection/scene.h"
#include "injection/user.h"

#include <vrn/qt/controls.h>
#include <vrn/qt/properties.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionGroupBox>

namespace vrn::test::injection {
namespace {

using namespace vrn::qt;

template <typename T>
T* controlAs(const Scene& s)
{
    return dynamic_cast<T*>(s.control.data());
}

template <typename T>
T* partOf(const Scene& s)
{
    return s.page ? s.page->findChild<T*>() : nullptr;
}

bool always(const Scene&)
{
    return true;
}

template <typename T>
bool has(const Scene& s)
{
    return partOf<T>(s) != nullptr;
}

// What the program does with a control of one of the types; the first that fits counts.
template <typename... T, typename Function>
Action program(const char* name, Function function)
{
    const auto applies = [](const Scene& s) { return (controlAs<T>(s) || ...); };
    const auto act = [function](Scene& s) {
        bool isDone = false;
        const auto tryAs = [&](auto* control) {
            if (control && !std::exchange(isDone, true))
                function(s, *control);
        };
        (tryAs(controlAs<T>(s)), ...);
    };
    return {name, Action::Program, act, applies};
}

Action user(const char* name, std::function<void(Scene&)> act,
    std::function<bool(Scene&)> applies = &always)
{
    return {name, Action::User, std::move(act), std::move(applies)};
}

Action key(const char* name, Qt::Key key)
{
    return user(name, [key](Scene&) { press(key); });
}

QAbstractButton* buttonOf(const Scene& s, int index)
{
    return s.page ? s.page->findChildren<QAbstractButton*>().value(index) : nullptr;
}

Action button(const char* name, int index)
{
    const auto act = [index](Scene& s) {
        QAbstractButton* button = buttonOf(s, index);
        click(button, QPoint(std::min(6, button->width() / 2), button->height() / 2));
    };
    return user(name, act, [index](Scene& s) { return buttonOf(s, index) != nullptr; });
}

void leaveAndComeBack(Scene& s)
{
    const QPointer<QWidget> part(QApplication::focusWidget());
    click(s.other, QPoint(5, 5));
    // As a click into this part does, which would also press a button.
    if (part)
        part->setFocus(Qt::MouseFocusReason);
}

void clickTitle(Scene& s)
{
    auto* box = controlAs<QGroupBox>(s);
    QStyleOptionGroupBox option;
    option.initFrom(box);
    option.text = box->title();
    option.subControls = QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel;
    const QRect indicator = box->style()->subControlRect(
        QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, box);
    click(box, indicator.center());
}

bool hasHistory(const Scene& s)
{
    const auto* list = partOf<QListWidget>(s);
    return list && list->count() > 0;
}

void pickFromHistory(Scene& s)
{
    auto* list = partOf<QListWidget>(s);
    click(list->viewport(), list->visualItemRect(list->item(0)).center());
}

void pickWithMouse(Scene& s)
{
    partOf<QComboBox>(s)->showPopup();
    // Whatever it has led to that the list was opened.
    if (auto* combo = partOf<QComboBox>(s)) {
        const QPointer<QAbstractItemView> view(combo->view());
        const QPoint place = view->visualRect(view->model()->index(1, 0)).center();
        hover(view->viewport(), place);
        if (view)
            click(view->viewport(), place);
    }
}

void pickWithKeys(Scene& s)
{
    partOf<QComboBox>(s)->showPopup();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
}

void typeAndUndo(Scene&)
{
    press(Qt::Key_3);
    undo();
}

// Reads two values, which are values of the control by their number.
void read(Scene& s, MultiEditControlBase& control, int first, int second)
{
    const boost::any values[] = {s.values[first], s.values[second]};
    control.readValue(values[0]);
    if (s.control)
        control.readValue(values[1]);
}

void loadBoxes(Scene& s)
{
    vrn::KeyValueStorage storage;
    for (const char* key : {"fixed/0", "fixed/1", "fixed/2"})
        storage[key] = true;
    std::vector<QPointer<MultiEditCheckBox>> boxes;
    if (s.page) {
        for (MultiEditCheckBox* box : s.page->findChildren<MultiEditCheckBox*>())
            boxes.emplace_back(box);
    }
    for (const auto& box : boxes) {
        if (box)
            box->load(storage);
    }
}

std::vector<Action> ofUser()
{
    return {
        // clang-format off
        key("the user types a digit", Qt::Key_3),
        key("the user types a letter", Qt::Key_X),
        key("the user presses Space", Qt::Key_Space),
        key("the user presses Enter", Qt::Key_Return),
        key("the user presses Tab", Qt::Key_Tab),
        key("the user presses Down", Qt::Key_Down),
        key("the user presses Backspace", Qt::Key_Backspace),
        user("the user types and undoes", &typeAndUndo, &has<QLineEdit>),
        user("the user clicks elsewhere", [](Scene& s) { click(s.other, {5, 5}); }),
        user("the user leaves and comes back", &leaveAndComeBack),
        user("the user goes to another window", [](Scene& s) { activate(s.elsewhere); }),
        user("the user closes the window", [](Scene& s) { s.window->close(); }),
        button("the user clicks the first button", 0),
        button("the user clicks the second button", 1),
        button("the user clicks the third button", 2),
        button("the user clicks the fourth button", 3),
        user("the user clicks the title", &clickTitle, [](Scene& s) { return controlAs<QGroupBox>(s) != nullptr; }),
        user("the user picks from the history", &pickFromHistory, &hasHistory),
        user("the user picks from the list by mouse", &pickWithMouse, &has<QComboBox>),
        user("the user picks from the list by keys", &pickWithKeys, &has<QComboBox>),
        user("the user turns the wheel", [](Scene& s) { turnWheelOver(partOf<QComboBox>(s)); }, &has<QComboBox>),
        // clang-format on
    };
}

std::vector<Action> ofProgram()
{
    using Multi = MultiEditControlBase;
    using LineEdit = SimpleLineEdit;
    using EnumBox = SimpleEnumBox;
    using RadioGroup = SimpleRadioButtonGroup;
    using CheckGroup = MultiEditCheckBoxGroup;
    const auto replaceFunctions = [](Scene& s) { s.replaceFunctions(); };
    return {
        // clang-format off
        program<QWidget, CheckGroup>("setEnabled(false)", [](Scene&, auto& c) { c.setEnabled(false); }),
        program<QWidget>("hide", [](Scene&, auto& c) { c.hide(); }),
        program<QWidget>("clearFocus", [](Scene&, auto&) { leaveFocus(); }),

        program<Multi, CheckGroup>("reset", [](Scene&, auto& c) { c.reset(); }),
        program<Multi>("readValue twice alike", [](Scene& s, auto& c) { read(s, c, 1, 1); }),
        program<Multi>("readValue of two that differ", [](Scene& s, auto& c) { read(s, c, 1, 0); }),
        program<Multi, LineEdit>("setValue", [](Scene& s, auto& c) { c.setValue(boost::any(s.values[1])); }),
        program<Multi>("setValue of the other value", [](Scene& s, auto& c) { c.setValue(boost::any(s.values[0])); }),
        program<Multi>("forceVaries", [](Scene&, auto& c) { c.forceVaries(); }),
        program<Multi>("getCurrentValue", [](Scene&, auto& c) { c.getCurrentValue(); }),
        program<Multi>("save", [](Scene&, auto& c) { vrn::KeyValueStorage storage; c.save(storage); }),
        program<Multi>("load", [](Scene&, auto& c) { c.load({}); }),
        program<Multi>("setCanBeSaved", [](Scene&, auto& c) { c.setCanBeSaved("other", {}, {}); }),

        program<LineEdit>("getValue", [](Scene&, auto& c) { c.getValue(); }),
        program<LineEdit>("onEditingFinished", [](Scene&, auto& c) { c.onEditingFinished(); }),
        program<LineEdit>("onTextEdited", [](Scene&, auto& c) { c.onTextEdited("45"); }),
        program<LineEdit>("setValueHistory", [](Scene&, auto& c) { c.setValueHistory(foreignHistory()); }),
        program<LineEdit>("setValueHistory of none", [](Scene&, auto& c) { c.setValueHistory(nullptr); }),
        program<LineEdit>("addCurrentValueToValueHistory", [](Scene&, auto& c) { c.addCurrentValueToValueHistory(); }),
        program<LineEdit>("setReadOnly", [](Scene&, auto& c) { c.setReadOnly(true); }),
        program<LineEdit>("setMaxLength", [](Scene&, auto& c) { c.setMaxLength(1); }),
        program<LineEdit>("setUnitString", [](Scene&, auto& c) { c.setUnitString("km"); }),
        program<MultiEditLineEdit>("copyStateFrom", [](Scene&, auto& c) { c.copyStateFrom(c); }),
        {"new functions of the validator", Action::Program, replaceFunctions, [](Scene& s) { return bool(s.replaceFunctions); }},

        program<EnumBox>("setValues", [](Scene&, auto& c) { c.setValues({{"S235", 235}, {"S355", 355}}); }),
        program<EnumBox>("setValues of none", [](Scene&, auto& c) { c.setValues({}); }),
        program<EnumBox>("getSelectedValue", [](Scene&, auto& c) { c.getSelectedValue(); }),
        program<EnumBox>("selectByName", [](Scene&, auto& c) { c.selectByName("S275"); }),
        program<EnumBox>("selectByValue", [](Scene&, auto& c) { c.selectByValue(355); }),
        program<EnumBox>("selectByValue of none", [](Scene&, auto& c) { c.selectByValue(7); }),
        program<EnumBox>("getNameForValue", [](Scene&, auto& c) { c.getNameForValue(7); }),
        program<EnumBox>("next and previous", [](Scene& s, auto& c) { c.next(); if (s.control) c.previous(); }),
        program<EnumBox>("setEditable(true)", [](Scene&, auto& c) { c.setEditable(true, boost::make_shared<ForeignValidator>()); }),
        program<EnumBox>("setEditable(false)", [](Scene&, auto& c) { c.setEditable(false); }),

        program<SimpleCheckBox, QGroupBox>("setChecked(true)", [](Scene&, auto& c) { c.setChecked(true); }),
        program<SimpleCheckBox, QGroupBox>("setChecked(false)", [](Scene&, auto& c) { c.setChecked(false); }),

        program<RadioGroup>("setSelected", [](Scene&, auto& c) { c.setSelected(275); }),
        program<RadioGroup>("setValueEnabled", [](Scene&, auto& c) { c.setValueEnabled(235, false); }),
        program<RadioGroup>("setValuesEnabled", [](Scene&, auto& c) { c.setValuesEnabled(false); }),

        program<CheckGroup>("setValue of a box", [](Scene&, auto& c) { c.setValue(0, !c.getValue(0)); }),
        program<CheckGroup>("readValue of a box", [](Scene&, auto& c) { c.readValue(1, true); }),
        program<CheckGroup>("onEndRead", [](Scene&, auto& c) { c.onEndRead(); }),
        program<CheckGroup>("setEnabled of a box", [](Scene&, auto& c) { c.setEnabled(0, false); }),
        program<CheckGroup>("load of all boxes", [](Scene& s, auto&) { loadBoxes(s); }),
        program<CheckGroup>("a box goes", [](Scene& s, auto&) { delete partOf<MultiEditCheckBox>(s); }),

        program<Toolbar>("setButtonsEnabled", [](Scene&, auto& c) { c.setButtonsEnabled(false, 7); }),
        program<Toolbar>("clear", [](Scene&, auto& c) { c.clear(); }),
        program<Toolbar>("addButton", [](Scene&, auto& c) { c.addButtonWithText("new", "New", "", {}, 1); }),
        program<Toolbar>("a button goes", [](Scene& s, auto&) { delete partOf<QPushButton>(s); }),

        program<PropertyPage>("finishEditing", [](Scene&, auto& c) { c.finishEditing(); }),
        program<PropertyPage>("cancelEditing", [](Scene&, auto& c) { c.cancelEditing(); }),
        program<PropertyPage>("setSelection", [](Scene&, auto& c) { c.setSelection({1}); }),
        program<PropertyPage>("setModel of none", [](Scene&, auto& c) { c.setModel(nullptr); }),
        program<PropertyPage>("setReadOnly of a page", [](Scene&, auto& c) { c.setReadOnly(true); }),
        program<PropertyPage>("setValue of a property", [](Scene&, auto& c) { c.setValue("bolts", 7); }),
        program<PropertyPage>("flush", [](Scene&, auto& c) { c.flush(); }),
        program<PropertyPage>("save of a page", [](Scene&, auto& c) { c.save(); }),
        program<PropertyPage>("setUnits", [](Scene&, auto& c) { if (c.model()) c.model()->setUnits(vrn::units::Context(8)); }),
        // clang-format on
    };
}

// The same before the event loop runs, for what makes a control tell of a change.
const QByteArrayList early = {"reset", "readValue of two that differ", "setValue",
    "setValue of the other value", "onEditingFinished", "selectByValue", "next and previous",
    "setChecked(true)", "setSelected", "setValue of a box", "load of all boxes"};

std::vector<Action> rows()
{
    std::vector<Action> rows = {{"it is made", Action::Maker, [](Scene&) {}, &always}};
    for (const Action& action : ofUser()) {
        rows.push_back(action);
        Action whileVaries = action;
        whileVaries.name += ", while it varies";
        whileVaries.whileVaries = true;
        whileVaries.applies = [applies = action.applies](Scene& s) {
            return controlAs<MultiEditControlBase>(s) && applies(s);
        };
        rows.push_back(whileVaries);
    }
    for (const Action& action : ofProgram()) {
        rows.push_back(action);
        if (!early.contains(action.name))
            continue;
        Action beforeLoop = action;
        beforeLoop.name += ", before the event loop runs";
        beforeLoop.beforeLoop = true;
        rows.push_back(beforeLoop);
    }
    return rows;
}

} // namespace

const std::vector<Action>& actions()
{
    static const std::vector<Action> all = rows();
    return all;
}

} // namespace vrn::test::injection
