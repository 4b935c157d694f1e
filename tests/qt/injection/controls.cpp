#include "injection/controls.h"

#include "injection/foreign_code.h"
#include "injection/scene.h"

#include <vrn/qt/controls.h>
#include <vrn/qt/factories.h>
#include <vrn/qt/properties.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QIcon>
#include <QPushButton>
#include <QToolButton>
#include <QUndoStack>

#include <cstdint>
#include <map>
#include <stdexcept>

namespace vrn::test::injection {
namespace {

using namespace vrn::qt;

NamedValueList steels()
{
    return {{"S235", 235}, {"S275", 275}, {"S355", 355}};
}

void useNumbers(Scene& s)
{
    s.values[0] = 235;
    s.values[1] = 355;
}

void useFlags(Scene& s)
{
    s.values[0] = true;
    s.values[1] = false;
}

// Makes `control`, if it has that base, one that can be saved.
template <typename T>
void makeSavable(T* control)
{
    if constexpr (std::is_base_of_v<MultiEditControlBase, T>) {
        scene().offer("the saver");
        scene().offer("the loader");
        control->setCanBeSaved(
            "id",
            [held = std::make_shared<int>(1)](vrn::KeyValueStorage&) {
                scene().visit("the saver");
                return *held == 1;
            },
            [held = std::make_shared<int>(1)](const vrn::KeyValueStorage&) {
                scene().visit("the loader");
                ++*held;
            });
    }
}

template <typename T>
T* present(Scene& s, T* control)
{
    s.control = control;
    makeSavable(control);
    return control;
}

template <typename T>
void furnish(Scene& s, T* field)
{
    useNumbers(s);
    field->setUnitString("m");
    field->setValueHistory(foreignHistory());
    s.offer("the inner button's function");
    field->addButton(holdingSomething([](const QString& text) {
        scene().visit("the inner button's function");
        return text + "7";
    }),
        {});
    s.lay(field);
    s.speak = [field] {
        field->setValue(12);
        field->onEditingFinished();
        return true;
    };
    field->setValue(12);
}

boost::function<void()> buttonFunction()
{
    scene().offer("the button's function");
    return holdingSomething([] { scene().visit("the button's function"); });
}

template <typename T>
void makeLineEdit(Scene& s)
{
    furnish(s,
        present(s,
            T::create(s.page, "&Span", boost::make_shared<ForeignValidator>(), buttonFunction(), 0,
                ExpandHorizontal)));
}

// Of an application that follows the validation, and whose values are converted.
template <typename Base>
class DerivedLineEdit : public Base
{
public:
    explicit DerivedLineEdit(QWidget* parent)
        : Base(parent, "Span", boost::make_shared<ForeignConversion>(), {}, Base::OptionBorderless,
            ExpandVertical)
    {
        scene().offer("vetoValidation");
        scene().offer("onValidated");
    }

protected:
    bool vetoValidation(const QString& text) override
    {
        const bool vetoes = Base::vetoValidation(text);
        scene().visit("vetoValidation");
        return vetoes;
    }

    void onValidated(const QString& text, const boost::any& value) override
    {
        Base::onValidated(text, value);
        scene().visit("onValidated");
    }
};

template <typename T>
void makeDerivedLineEdit(Scene& s)
{
    furnish(s, present(s, new DerivedLineEdit<T>(s.page)));
}

void makeLineEditWithButton(Scene& s)
{
    s.offer("the button's function");
    const auto compute = [](QWidget*, int, boost::any& value) {
        scene().visit("the button's function");
        value = 77;
    };
    auto* field = present(
        s, new MultiEditLineEditWithButton(new ForeignValidator, 1, holdingSomething(compute)));
    furnish(s, field);
}

void makeLineEditWithResetButton(Scene& s)
{
    s.offer("the button's function");
    const auto restore = [](int, boost::any& shown, boost::any& reported) {
        scene().visit("the button's function");
        shown = 1;
        reported = 2;
    };
    auto* field = present(s,
        new MultiEditLineEditWithResetButton(new ForeignValidator, 1, holdingSomething(restore)));
    furnish(s, field);
}

void fill(Scene& s, SimpleEnumBox* box)
{
    useNumbers(s);
    s.offer("the equality function");
    box->setValues(steels());
    s.lay(box);
    s.speak = [box] {
        box->setValues(steels());
        box->next();
        return true;
    };
}

void makeSimpleEnumBox(Scene& s)
{
    fill(s, present(s, SimpleEnumBox::create(s.page, "&Steel", &foreignEqual)));
}

void makeMultiEditEnumBox(Scene& s)
{
    fill(s, present(s, MultiEditEnumBox::create(s.page, "&Steel", &foreignEqual)));
}

template <typename T>
void makeEditableEnumBox(Scene& s)
{
    auto* box = present(s, T::create(s.page, "&Steel", &foreignEqual));
    fill(s, box);
    box->setEditable(true, boost::make_shared<ForeignValidator>());
}

class DerivedEnumBox : public SimpleEnumBox
{
public:
    explicit DerivedEnumBox(QWidget* parent)
        : SimpleEnumBox(parent, "Steel", &foreignEqual)
    {
        scene().offer("onItemActivated");
        scene().offer("onSelected");
    }

protected:
    void onItemActivated(const QString& text) override
    {
        const QPointer<DerivedEnumBox> alive(this);
        scene().visit("onItemActivated");
        if (alive)
            SimpleEnumBox::onItemActivated(text);
    }

    void onSelected() override { scene().visit("onSelected"); }
};

void makeDerivedEnumBox(Scene& s)
{
    auto* box = present(s, new DerivedEnumBox(s.page));
    fill(s, box);
    box->setEditable(true, boost::make_shared<ForeignValidator>());
}

void makeSimpleCheckBox(Scene& s)
{
    s.lay(present(s, SimpleCheckBox::create("&Visible", s.page)));
}

void makeMultiEditCheckBox(Scene& s)
{
    useFlags(s);
    auto* box = present(s, MultiEditCheckBox::create("&Visible", s.page));
    s.offer("a hook on valueChanged");
    s.belongings.push_back(
        std::make_shared<OnValueChangedHook>(box, [] { scene().visit("a hook on valueChanged"); }));
    s.lay(box);
    s.speak = [box] {
        box->setValue(true);
        return true;
    };
}

void makeMultiEditGroupBox(Scene& s)
{
    useFlags(s);
    auto* box = present(s, MultiEditGroupBox::create("&Fire protection", s.page));
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(new QLineEdit);
    s.lay(box);
    s.speak = [box] {
        box->setValue(true);
        return true;
    };
}

template <typename T>
T* makeRadioButtonGroup(Scene& s, ILayouter* layouter, bool useGroupBox)
{
    useNumbers(s);
    s.offer("the equality function");
    s.offer("the order function");
    auto* group = present(s,
        T::create(
            "Steel", steels(), &foreignEqual, &foreignLess, s.page, layouter, useGroupBox, true));
    s.lay(group);
    return group;
}

void makeSimpleRadioButtonGroup(Scene& s)
{
    ForeignLayouter layouter;
    makeRadioButtonGroup<SimpleRadioButtonGroup>(s, &layouter, true);
}

void makeMultiEditRadioButtonGroup(Scene& s)
{
    ForeignLayouter layouter;
    auto* group = makeRadioButtonGroup<MultiEditRadioButtonGroup>(s, &layouter, true);
    s.speak = [group] {
        group->setValue(235);
        return true;
    };
}

// The buttons belong to a container that is not the group.
void makeMultiEditRadioButtonGroupElsewhere(Scene& s)
{
    auto* container = new QWidget(s.page);
    ForeignLayouter layouter;
    layouter.onCreate(container);
    auto* group = makeRadioButtonGroup<MultiEditRadioButtonGroup>(s, &layouter, false);
    if (s.page)
        s.lay(container);
    s.speak = [group] {
        group->setValue(235);
        return true;
    };
}

void makeMultiEditCheckBoxGroup(Scene& s)
{
    useFlags(s);
    ForeignLayouter layouter;
    layouter.onCreate(s.page);
    auto* group = present(
        s, new MultiEditCheckBoxGroup(s.page, layouter, {"x", "", "y", "z"}, {"along x"}));
    group->setCanBeSaved("fixed");
    s.speak = [group] {
        for (std::size_t i = 0; i < group->size(); ++i)
            group->setValue(i, !group->getValue(i));
        // "All" alone has nothing to tell.
        return scene().page && scene().page->findChildren<MultiEditCheckBox*>().size() > 1;
    };
}

void makeFilePicker(Scene& s)
{
    s.values[0] = std::string("/srv/a.sec");
    s.values[1] = std::string("/srv/b.sec");
    s.offer("while its dialog is open");
    auto* picker = present(s, new MultiEditFilePicker(s.page, TypeofPathFileInFolder));
    picker->setFileName("name.txt");
    s.lay(picker);
    s.speak = [picker] {
        picker->setValue(std::string("/srv"));
        picker->m_edit->onEditingFinished();
        return true;
    };
}

void makeToolbar(Scene& s)
{
    s.offer("the button's function");
    s.offer("while its dialog is open");
    auto* toolbar = present(s, new Toolbar(s.page, ExpandHorizontal));
    s.lay(toolbar);
    toolbar->addButtonWithText("text", "Text", "", buttonFunction(), 1);
    toolbar->addButton("icon", QIcon(), "", buttonFunction(), 2);
    toolbar->addLabel("label", "");
    toolbar->addButtonWithText("throwing", "!", "", holdingSomething([] {
        scene().visit("the button's function");
        throw std::runtime_error("from the button's function");
    }),
        4);
    toolbar->addWidget(new QLineEdit);
}

// A MultiEditValue is not a QObject; its owner is.
class ValueOwner
    : public QObject
    , public MultiEditValue
{
public:
    explicit ValueOwner(QObject* parent)
        : QObject(parent)
        , MultiEditValue(&foreignDiffer)
    {}

private:
    static bool foreignDiffer(const boost::any& a, const boost::any& b)
    {
        return !foreignEqual(a, b);
    }
};

void makeMultiEditValue(Scene& s)
{
    useNumbers(s);
    s.offer("the equality function");
    present(s, new ValueOwner(s.page));
}

// --- made from hints

Hints lineEditHints()
{
    Hints hints;
    setTextHint(hints, "editor", "lineedit");
    setTextHint(hints, "validator.type", "double");
    setHint<bool>(hints, "optional", true);
    return hints;
}

// The button's function also uses the functions of its own editor, which may have gone.
void makeLineEditFromHints(Scene& s)
{
    s.values[0] = 235.0;
    s.values[1] = 355.0;
    s.offer("the inner button's function");
    const auto editor = std::make_shared<EditorMetaData>();
    Hints hints = lineEditHints();
    setDefaultTextHint(
        hints, "default_fn", holdingSomething([weak = std::weak_ptr(editor)](const QString& text) {
            scene().visit("the inner button's function");
            if (const auto used = weak.lock()) {
                boost::any value;
                used->forceVaries();
                used->getValue(value);
                used->setValue(7.0);
            }
            return text + "7";
        }));
    *editor = createEditorFromHints(s.page, hints);
    s.belongings.push_back(editor);
    auto* field = present(s, static_cast<MultiEditLineEdit*>(editor->widget));
    s.lay(field);
    s.speak = [field] {
        field->setValue(12.0);
        field->onEditingFinished();
        return true;
    };
    editor->setValue(12.0);
}

// A slot reads the value by the editor's function.
void makeEnumBoxFromHints(Scene& s)
{
    Hints hints;
    setTextHint(hints, "editor", "enumbox");
    setHint<NamedValueList>(hints, "values", steels());
    setEqualHint(hints, "equal_value_fn", &foreignEqual);
    const EditorMetaData editor = createEditorFromHints(s.page, hints);
    fill(s, present(s, static_cast<MultiEditEnumBox*>(editor.widget)));
    s.offer("a hook on valueChanged");
    s.belongings.push_back(
        std::make_shared<OnValueChangedHook>(editor.widget, [getValue = editor.getValue] {
            scene().visit("a hook on valueChanged");
            boost::any value;
            getValue(value);
        }));
}

// With a kind of the application.
std::unique_ptr<Editor> makeByFactory(const char* name, Hints hints)
{
    scene().offer("the creator of a kind");
    auto validators = std::make_shared<DefaultValidatorFactory>();
    validators->add<int>("foreign", [](const Hints&) {
        auto validator = std::make_unique<ForeignValidator>();
        scene().visit("the creator of a kind");
        return validator;
    });
    setHint<ValidatorKind>(hints, "validator.kind", kindOf<int>("foreign"));
    return DefaultEditorFactory(validators).create(name, hints);
}

void makeResetButtonByFactory(Scene& s)
{
    s.offer("the button's function");
    Hints hints;
    setResetHint(
        hints, "reset_callback", holdingSomething([](int, boost::any& shown, boost::any& reported) {
            scene().visit("the button's function");
            shown = 1;
            reported = 2;
        }));
    const auto editor = makeByFactory("multi_edit_line_edit_with_reset_button", hints);
    furnish(s, present(s, static_cast<MultiEditLineEditWithResetButton*>(editor->widget)));
}

void makeEditableListByFactory(Scene& s)
{
    Hints hints;
    setHint<NamedValueList>(hints, "entries", steels());
    setEqualHint(hints, "is_equal", &foreignEqual);
    setHint<bool>(hints, "editable", true);
    const auto editor = makeByFactory("named_value_list", hints);
    fill(s, present(s, static_cast<MultiEditEnumBox*>(editor->widget)));
}

// A button that edits a value in a dialog, by an editor of the callback kind.
void makeDialogButtonByFactory(Scene& s)
{
    s.offer("the callback");
    s.offer("the equality function");
    auto* button = present(s, new QPushButton("Edit...", s.page));
    s.lay(button);
    QObject::connect(button, &QPushButton::clicked, button, [] {
        Hints hints;
        setEqualHint(hints, "is_equal", &foreignEqual);
        setEditHint(hints, "callback", holdingSomething([](QWidget*, boost::any& value) {
            scene().visit("the callback");
            value = 7;
            return true;
        }));
        const auto editor = DefaultEditorFactory(nullptr).create("callback", hints);
        editor->widget->setParent(scene().page);
        editor->control->readValue(5);
    });
}

// A page of one property, whose objects, check and history are the application's.
void makePropertyPage(Scene& s)
{
    struct Plate
    {
        int bolts = 12;
    };
    for (const char* place : {"the getter", "the setter", "the check of a field",
             "the history storage's get", "the history storage's add"})
        s.offer(place);
    const auto get = [](const Plate& plate) {
        scene().visit("the getter");
        return plate.bolts;
    };
    const auto set = [](Plate& plate, int bolts) {
        scene().visit("the setter");
        plate.bolts = bolts;
    };
    const auto check = [](int bolts) {
        scene().visit("the check of a field");
        return bolts == 3 ? QString("Not three.") : QString();
    };
    PropertySet<Plate> plates("plate", [](int n) { return QString("%1 plates").arg(n); });
    plates.add("bolts", "&Bolts", get, set, field::integer().accept(check).history("bolts"));
    const auto objects = std::make_shared<std::map<std::uint64_t, Plate>>();
    (*objects)[1] = {4};
    (*objects)[2] = {5};
    const auto model = std::make_shared<ObjectModel>();
    model->addKind(plates, objects.get());
    const auto stack = std::make_shared<QUndoStack>();
    s.belongings = {objects, model, stack};

    auto* page = present(s, new PropertyPage(s.page));
    // The field is the first part that takes the focus.
    page->setFilterVisible(false);
    page->setHistory(boost::make_shared<ForeignStorage>());
    page->setUndoStack(stack.get());
    page->setModel(model.get());
    page->setSelection({1, 2});
    if (s.control)
        s.lay(page);
}

template <typename T>
void makeReference(Scene& s)
{
    s.lay(present(s, new T(s.page)));
}

template <bool IsEditable>
void makeReferenceList(Scene& s)
{
    makeReference<QComboBox>(s);
    auto* box = static_cast<QComboBox*>(s.control.data());
    box->addItems({"S235", "S275", "S355"});
    box->setEditable(IsEditable);
}

template <typename T>
void makeReferenceInWidget(Scene& s)
{
    auto* outer = present(s, new QWidget(s.page));
    auto* layout = new QVBoxLayout(outer);
    auto* inner = new T(outer);
    layout->addWidget(inner);
    outer->setFocusProxy(inner);
    outer->setFocusPolicy(inner->focusPolicy());
    s.lay(outer);
}

} // namespace

const std::vector<Control>& controls()
{
    static const std::vector<Control> rows = {
        {"a SimpleLineEdit", &makeLineEdit<SimpleLineEdit>},
        {"a derived SimpleLineEdit", &makeDerivedLineEdit<SimpleLineEdit>},
        {"a MultiEditLineEdit", &makeLineEdit<MultiEditLineEdit>},
        {"a derived MultiEditLineEdit", &makeDerivedLineEdit<MultiEditLineEdit>},
        {"a MultiEditLineEditWithButton", &makeLineEditWithButton},
        {"a MultiEditLineEditWithResetButton", &makeLineEditWithResetButton},
        {"a SimpleEnumBox", &makeSimpleEnumBox},
        {"an editable SimpleEnumBox", &makeEditableEnumBox<SimpleEnumBox>},
        {"a derived SimpleEnumBox", &makeDerivedEnumBox},
        {"a MultiEditEnumBox", &makeMultiEditEnumBox},
        {"an editable MultiEditEnumBox", &makeEditableEnumBox<MultiEditEnumBox>},
        {"a SimpleCheckBox", &makeSimpleCheckBox},
        {"a MultiEditCheckBox", &makeMultiEditCheckBox},
        {"a MultiEditGroupBox", &makeMultiEditGroupBox},
        {"a SimpleRadioButtonGroup", &makeSimpleRadioButtonGroup},
        {"a MultiEditRadioButtonGroup", &makeMultiEditRadioButtonGroup},
        {"a MultiEditRadioButtonGroup without a box", &makeMultiEditRadioButtonGroupElsewhere},
        {"a MultiEditCheckBoxGroup", &makeMultiEditCheckBoxGroup},
        {"a MultiEditFilePicker", &makeFilePicker},
        {"a Toolbar", &makeToolbar},
        {"a MultiEditValue", &makeMultiEditValue},
        {"a hinted MultiEditLineEdit", &makeLineEditFromHints},
        {"a hinted MultiEditEnumBox", &makeEnumBoxFromHints},
        {"a factory's MultiEditLineEditWithResetButton", &makeResetButtonByFactory},
        {"a factory's editable MultiEditEnumBox", &makeEditableListByFactory},
        {"a button of a factory's MultiEditValue", &makeDialogButtonByFactory},
        {"a PropertyPage", &makePropertyPage},
        {"Qt's QLineEdit", &makeReference<QLineEdit>, true},
        {"Qt's QLineEdit in a widget", &makeReferenceInWidget<QLineEdit>, true},
        {"Qt's QCheckBox", &makeReference<QCheckBox>, true},
        {"Qt's QCheckBox in a widget", &makeReferenceInWidget<QCheckBox>, true},
        {"Qt's QToolButton", &makeReference<QToolButton>, true},
        {"Qt's QGroupBox", &makeReference<QGroupBox>, true},
        {"Qt's QComboBox", &makeReferenceList<false>, true},
        {"Qt's QComboBox that is editable", &makeReferenceList<true>, true},
    };
    return rows;
}

} // namespace vrn::test::injection
