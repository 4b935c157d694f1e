#include "injection/actions.h"

#include "injection/foreign_code.h"
#include "injection/scene.h"
#include "injection/user.h"

#include <vrn/qt/controls.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionGroupBox>

namespace vrn::test::injection {
namespace {

using namespace vrn::qt;

// Calls `function` with the control, if it is a T.
template <typename T, typename Function>
bool with(Scene& s, Function function)
{
    auto* control = dynamic_cast<T*>(s.control.data());
    if (control)
        function(*control);
    return control != nullptr;
}

template <typename T>
T* partOf(Scene& s)
{
    return s.page ? s.page->findChild<T*>() : nullptr;
}

bool pressKey(Qt::Key key)
{
    press(key);
    return true;
}

bool clickButton(Scene& s, int index)
{
    const auto buttons = s.page->findChildren<QAbstractButton*>();
    if (index >= buttons.size())
        return false;
    QAbstractButton* button = buttons[index];
    click(button, QPoint(std::min(6, button->width() / 2), button->height() / 2));
    return true;
}

bool leaveAndComeBack(Scene& s)
{
    click(s.other, QPoint(5, 5));
    if (s.page)
        s.enter();
    return true;
}

bool clickTitle(Scene& s)
{
    return with<QGroupBox>(s, [](QGroupBox& box) {
        QStyleOptionGroupBox option;
        option.initFrom(&box);
        option.text = box.title();
        option.subControls = QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel;
        const QRect indicator = box.style()->subControlRect(
            QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, &box);
        click(&box, indicator.center());
    });
}

bool pickFromHistory(Scene& s)
{
    auto* list = partOf<QListWidget>(s);
    if (!list || list->count() == 0)
        return false;
    click(list->viewport(), list->visualItemRect(list->item(0)).center());
    return true;
}

bool openList(Scene& s)
{
    auto* combo = partOf<QComboBox>(s);
    if (combo)
        combo->showPopup();
    return combo != nullptr;
}

bool pickWithMouse(Scene& s)
{
    if (!openList(s))
        return false;
    // Whatever it has led to that the list was opened.
    if (auto* combo = partOf<QComboBox>(s)) {
        const QPointer<QAbstractItemView> view(combo->view());
        const QPoint place = view->visualRect(view->model()->index(1, 0)).center();
        hover(view->viewport(), place);
        if (view)
            click(view->viewport(), place);
    }
    return true;
}

bool pickWithKeys(Scene& s)
{
    return openList(s) && pressKey(Qt::Key_Down) && pressKey(Qt::Key_Return);
}

bool turnWheel(Scene& s)
{
    QWidget* target = partOf<QComboBox>(s);
    if (target)
        turnWheelOver(target);
    return target != nullptr;
}

bool typeAndUndo(Scene& s)
{
    if (!partOf<QLineEdit>(s))
        return false;
    press(Qt::Key_3);
    // As Ctrl+Z does, without the key that comes first.
    if (auto* edit = partOf<QLineEdit>(s))
        edit->undo();
    return true;
}

bool replaceHint(Scene& s)
{
    if (s.replaceFunctions)
        s.replaceFunctions();
    return bool(s.replaceFunctions);
}

// Reads two values after a reset, the same or not.
bool read(Scene& s, int first, int second)
{
    return with<MultiEditControlBase>(s, [&](MultiEditControlBase& control) {
        const boost::any values[] = {s.values[first], s.values[second]};
        for (const boost::any& value : values) {
            if (s.control)
                control.readValue(value);
        }
    });
}

bool loadBoxes(Scene& s)
{
    const auto group = dynamic_cast<MultiEditCheckBoxGroup*>(s.control.data());
    if (!group)
        return false;
    vrn::KeyValueStorage storage;
    for (const char* key : {"fixed/0", "fixed/1", "fixed/2"})
        storage[key] = true;
    QList<QPointer<MultiEditCheckBox>> boxes;
    for (MultiEditCheckBox* box : s.page->findChildren<MultiEditCheckBox*>())
        boxes.append(box);
    for (const auto& box : boxes) {
        if (box)
            box->load(storage);
    }
    return true;
}

std::vector<Action> rows()
{
    using LineEdit = SimpleLineEdit;
    using EnumBox = SimpleEnumBox;
    using CheckGroup = MultiEditCheckBoxGroup;
    const auto user = Action::User;
    const auto program = Action::Program;
    std::vector<Action> rows = {
        // clang-format off
        {"it is made", Action::Maker, [](Scene&) { return true; }},

        {"the user types a digit", user, [](Scene&) { return pressKey(Qt::Key_3); }},
        {"the user types a letter", user, [](Scene&) { return pressKey(Qt::Key_X); }},
        {"the user presses Space", user, [](Scene&) { return pressKey(Qt::Key_Space); }},
        {"the user presses Enter", user, [](Scene&) { return pressKey(Qt::Key_Return); }},
        {"the user presses Tab", user, [](Scene&) { return pressKey(Qt::Key_Tab); }},
        {"the user presses Down", user, [](Scene&) { return pressKey(Qt::Key_Down); }},
        {"the user presses Backspace", user, [](Scene&) { return pressKey(Qt::Key_Backspace); }},
        {"the user types and undoes", user, &typeAndUndo},
        {"the user clicks elsewhere", user, [](Scene& s) { click(s.other, {5, 5}); return true; }},
        {"the user leaves and comes back", user, [](Scene& s) { return leaveAndComeBack(s); }},
        {"the user goes to another window", user, [](Scene& s) { activate(s.elsewhere); return true; }},
        {"the user closes the window", user, [](Scene& s) { s.window->close(); return true; }},
        {"the user clicks the first button", user, [](Scene& s) { return clickButton(s, 0); }},
        {"the user clicks the second button", user, [](Scene& s) { return clickButton(s, 1); }},
        {"the user clicks the third button", user, [](Scene& s) { return clickButton(s, 2); }},
        {"the user clicks the fourth button", user, [](Scene& s) { return clickButton(s, 3); }},
        {"the user clicks the title", user, &clickTitle},
        {"the user picks from the history", user, &pickFromHistory},
        {"the user picks from the list by mouse", user, &pickWithMouse},
        {"the user picks from the list by keys", user, &pickWithKeys},
        {"the user turns the wheel", user, &turnWheel},

        {"setEnabled(false)", program, [](Scene& s) { return with<QWidget>(s, [](auto& c) { c.setEnabled(false); })
            || with<CheckGroup>(s, [](auto& c) { c.setEnabled(false); }); }},
        {"hide", program, [](Scene& s) { return with<QWidget>(s, [](auto& c) { c.hide(); }); }},
        {"clearFocus", program, [](Scene& s) { return with<QWidget>(s, [](auto&) { leaveFocus(); }); }},

        {"reset", program, [](Scene& s) { return with<MultiEditControlBase>(s, [](auto& c) { c.reset(); })
            || with<CheckGroup>(s, [](auto& c) { c.reset(); }); }},
        {"readValue twice alike", program, [](Scene& s) { return read(s, 1, 1); }},
        {"readValue of two that differ", program, [](Scene& s) { return read(s, 1, 0); }},
        {"setValue", program, [](Scene& s) {
            return with<MultiEditControlBase>(s, [&](auto& c) { c.setValue(boost::any(s.values[1])); })
                || with<LineEdit>(s, [&](auto& c) { c.setValue(boost::any(s.values[1])); }); }},
        {"setValue of the other value", program, [](Scene& s) {
            return with<MultiEditControlBase>(s, [&](auto& c) { c.setValue(boost::any(s.values[0])); }); }},
        {"forceVaries", program, [](Scene& s) { return with<MultiEditControlBase>(s, [](auto& c) { c.forceVaries(); }); }},
        {"getCurrentValue", program, [](Scene& s) {
            return with<MultiEditControlBase>(s, [](const auto& c) { c.getCurrentValue(); })
                || with<LineEdit>(s, [](const auto& c) { c.getValue(); })
                || with<EnumBox>(s, [](const auto& c) { c.getSelectedValue(); }); }},
        {"save", program, [](Scene& s) { return with<MultiEditControlBase>(s, [](auto& c) { vrn::KeyValueStorage k; c.save(k); }); }},
        {"load", program, [](Scene& s) { return with<MultiEditControlBase>(s, [](auto& c) { c.load({}); }); }},
        {"setCanBeSaved", program, [](Scene& s) { return with<MultiEditControlBase>(s, [](auto& c) { c.setCanBeSaved("other", {}, {}); }); }},

        {"onEditingFinished", program, [](Scene& s) { return with<LineEdit>(s, [](auto& c) { c.onEditingFinished(); }); }},
        {"onTextEdited", program, [](Scene& s) { return with<LineEdit>(s, [](auto& c) { c.onTextEdited("45"); }); }},
        {"setValueHistory", program, [](Scene& s) { return with<LineEdit>(s, [](auto& c) { c.setValueHistory(foreignHistory()); }); }},
        {"setValueHistory of none", program, [](Scene& s) { return with<LineEdit>(s, [](auto& c) { c.setValueHistory(nullptr); }); }},
        {"addCurrentValueToValueHistory", program, [](Scene& s) { return with<LineEdit>(s, [](auto& c) { c.addCurrentValueToValueHistory(); }); }},
        {"setReadOnly", program, [](Scene& s) { return with<LineEdit>(s, [](auto& c) { c.setReadOnly(true); }); }},
        {"setMaxLength", program, [](Scene& s) { return with<LineEdit>(s, [](auto& c) { c.setMaxLength(1); }); }},
        {"setUnitString", program, [](Scene& s) { return with<LineEdit>(s, [](auto& c) { c.setUnitString("km"); }); }},
        {"new functions of the validator", program, &replaceHint},
        {"copyStateFrom", program, [](Scene& s) { return with<MultiEditLineEdit>(s, [](auto& c) { c.copyStateFrom(c); }); }},

        {"setValues", program, [](Scene& s) { return with<EnumBox>(s, [](auto& c) { c.setValues({{"S235", 235}, {"S355", 355}}); }); }},
        {"setValues of none", program, [](Scene& s) { return with<EnumBox>(s, [](auto& c) { c.setValues({}); }); }},
        {"selectByName", program, [](Scene& s) { return with<EnumBox>(s, [](auto& c) { c.selectByName("S275"); }); }},
        {"selectByValue", program, [](Scene& s) { return with<EnumBox>(s, [](auto& c) { c.selectByValue(355); }); }},
        {"selectByValue of none", program, [](Scene& s) { return with<EnumBox>(s, [](auto& c) { c.selectByValue(7); }); }},
        {"getNameForValue", program, [](Scene& s) { return with<EnumBox>(s, [](const auto& c) { c.getNameForValue(7); }); }},
        {"next", program, [](Scene& s) { return with<EnumBox>(s, [](auto& c) { c.next(); }); }},
        {"next and previous", program, [](Scene& s) { return with<EnumBox>(s, [&](auto& c) { c.next(); if (s.control) c.previous(); }); }},
        {"setEditable(true)", program, [](Scene& s) { return with<EnumBox>(s, [](auto& c) { c.setEditable(true, boost::make_shared<ForeignValidator>()); }); }},
        {"setEditable(false)", program, [](Scene& s) { return with<EnumBox>(s, [](auto& c) { c.setEditable(false); }); }},

        {"setChecked(true)", program, [](Scene& s) { return with<SimpleCheckBox>(s, [](auto& c) { c.setChecked(true); })
            || with<QGroupBox>(s, [](auto& c) { c.setChecked(true); }); }},
        {"setChecked(false)", program, [](Scene& s) { return with<SimpleCheckBox>(s, [](auto& c) { c.setChecked(false); })
            || with<QGroupBox>(s, [](auto& c) { c.setChecked(false); }); }},

        {"setSelected", program, [](Scene& s) { return with<SimpleRadioButtonGroup>(s, [](auto& c) { c.setSelected(275); }); }},
        {"setValueEnabled", program, [](Scene& s) { return with<SimpleRadioButtonGroup>(s, [](auto& c) { c.setValueEnabled(235, false); }); }},
        {"setValuesEnabled", program, [](Scene& s) { return with<SimpleRadioButtonGroup>(s, [](auto& c) { c.setValuesEnabled(false); }); }},

        {"setValue of a box", program, [](Scene& s) { return with<CheckGroup>(s, [](auto& c) { c.setValue(0, !c.getValue(0)); }); }},
        {"readValue of a box", program, [](Scene& s) { return with<CheckGroup>(s, [](auto& c) { c.readValue(1, true); }); }},
        {"onEndRead", program, [](Scene& s) { return with<CheckGroup>(s, [](auto& c) { c.onEndRead(); }); }},
        {"setEnabled of a box", program, [](Scene& s) { return with<CheckGroup>(s, [](auto& c) { c.setEnabled(0, false); }); }},
        {"load of all boxes", program, &loadBoxes},
        {"a box goes", program, [](Scene& s) { return with<CheckGroup>(s, [&](auto&) { delete partOf<MultiEditCheckBox>(s); }); }},

        {"setButtonsEnabled", program, [](Scene& s) { return with<Toolbar>(s, [](auto& c) { c.setButtonsEnabled(false, 7); }); }},
        {"clear", program, [](Scene& s) { return with<Toolbar>(s, [](auto& c) { c.clear(); }); }},
        {"addButton", program, [](Scene& s) { return with<Toolbar>(s, [](auto& c) { c.addButtonWithText("new", "New", "", {}, 1); }); }},
        {"a button goes", program, [](Scene& s) { return with<Toolbar>(s, [&](auto&) { delete partOf<QPushButton>(s); }); }},
        // clang-format on
    };
    // Those that make a control tell of a change, also before the event loop runs.
    const QByteArrayList early = {"reset", "readValue of two that differ", "setValue",
        "setValue of the other value", "onEditingFinished", "selectByValue", "next and previous",
        "setChecked(true)", "setSelected", "setValue of a box", "load of all boxes"};
    const std::size_t count = rows.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (rows[i].who == user) {
            Action whileVaries = rows[i];
            whileVaries.whileVaries = true;
            whileVaries.name += ", while it varies";
            rows.push_back(whileVaries);
        } else if (early.contains(rows[i].name)) {
            Action beforeLoop = rows[i];
            beforeLoop.beforeLoop = true;
            beforeLoop.name += ", before the event loop runs";
            rows.push_back(beforeLoop);
        }
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
