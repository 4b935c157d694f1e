#include <vrn/base/any_predicates.h>
#include <vrn/q/input_context.h>
#include <vrn/qt/editor_meta_data.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/pixmap.h>
#include <vrn/qt/varies_string.h>

#include "factory_fixture.h"
#include "support/life.h"
#include "support/table.h"
#include "support/test_main.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLineEdit>
#include <QPointer>
#include <QToolButton>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;
using namespace std::string_literals;

namespace {

using vrn::units::UnitId::UnitId;

const boost::any untouched = 42;

HintList lineEdit(const std::string& type = std::string(), HintList more = {})
{
    more.emplace_back("editor", "lineedit"s);
    if (!type.empty())
        more.emplace_back("validator.type", type);
    return more;
}

HintList enumBox(HintList more = {})
{
    more.emplace_back("editor", "enumbox"s);
    return more;
}

HintList fullEnumBox(HintList more = {})
{
    more.emplace_back("equal_value_fn", equalHint(&vrn::any_equal<int>));
    more.emplace_back("values", steels());
    return enumBox(std::move(more));
}

using Probe = std::function<QString(const EditorMetaData&)>;

QString given(const EditorMetaData& editor)
{
    boost::any value = untouched;
    return editor.getValue(value) ? describe(value) : QStringLiteral("varies, ") + describe(value);
}

QLineEdit* editOf(const EditorMetaData& editor)
{
    return editor.widget->findChild<QLineEdit*>();
}

QToolButton* buttonOf(const EditorMetaData& editor)
{
    return editor.widget->findChild<QToolButton*>();
}

QComboBox* listOf(const EditorMetaData& editor)
{
    return editor.widget->findChild<QComboBox*>();
}

/// What the editor gives and shows when the user has pasted `text` and pressed Enter.
Probe entered(const QString& text)
{
    return [text](const EditorMetaData& editor) {
        editOf(editor)->clear();
        editOf(editor)->insert(text);
        QTest::keyClick(editOf(editor), Qt::Key_Return);
        boost::any value = untouched;
        const QString prefix = editor.getValue(value) ? "" : "varies, ";
        return prefix + shownAs(value, editOf(editor)->text());
    };
}

Probe toolTip()
{
    return [](const EditorMetaData& editor) {
        const QToolButton* button = buttonOf(editor);
        return button ? button->toolTip() : QStringLiteral("no button");
    };
}

/// The text after `text` and a click on the button.
Probe clicked(const QString& text)
{
    return [text](const EditorMetaData& editor) {
        editOf(editor)->setText(text);
        buttonOf(editor)->click();
        return editOf(editor)->text();
    };
}

/// What the box gives for its last name.
Probe picked()
{
    return [](const EditorMetaData& editor) {
        QComboBox* list = listOf(editor);
        list->setCurrentIndex(list->count() - 1);
        return QStringLiteral("%1 of %2").arg(given(editor)).arg(list->count());
    };
}

/// What the editor gives after 355 is set.
Probe set355()
{
    return [](const EditorMetaData& editor) {
        editor.setValue(355);
        return given(editor);
    };
}

/// What the hints make: what the probe finds, or "nothing".
QString built(const Hints& hints, const Probe& probe)
{
    return outcome([&] {
        QWidget form;
        const EditorMetaData editor = createEditorFromHints(&form, hints);
        if (editor.widget)
            return probe(editor);
        return editor.setValue || editor.forceVaries || editor.getValue ? QString("half an editor")
                                                                        : QString("nothing");
    });
}

/// Registers an editor while it lives.
class Registered
{
public:
    Registered(const std::string& name, const EditorCreator& creator)
        : m_name(name)
    {
        registerEditor(name, creator);
    }
    ~Registered() { unregisterEditor(m_name); }

    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;

private:
    std::string m_name;
};

/// An editor that is a label, as an application registers one.
EditorCreator label(const QString& name)
{
    return [name](QWidget* parent, const Hints&) {
        EditorMetaData editor;
        editor.widget = new QWidget(parent);
        editor.widget->setObjectName(name);
        return editor;
    };
}

Probe widgetName()
{
    return [](const EditorMetaData& editor) { return editor.widget->objectName(); };
}

/// Who makes the editor `name`: "built-in", the name of a label, or "nothing".
QString editorOf(const std::string& name)
{
    Hints hints = hintsOf(fullEnumBox());
    setTextHint(hints, "editor", name);
    const QString made = built(hints, widgetName());
    return made.isEmpty() ? QStringLiteral("built-in") : made;
}

using End = std::function<void(std::unique_ptr<QWidget>& form, QWidget* editor)>;

} // namespace

Q_DECLARE_METATYPE(std::function<void()>)
Q_DECLARE_METATYPE(Probe)
Q_DECLARE_METATYPE(End)

class TestEditorMetaData : public HintsTest
{
    Q_OBJECT

private Q_SLOTS:
    // --- hints

    // With every other hint in `others`, the one of `key` is missing, given or wrong.
    void everyHint_data()
    {
        columns<HintList, std::string, boost::any, boost::any, Probe, QString, QString>(
            "others", "key", "given", "wrong", "probe", "missing", "whenGiven");
        const DefaultTextHint half = [](const QString& text) {
            return QString::number(text.toDouble() / 2);
        };
        const HintList none;
        const HintList onlyEqual = enumBox({{"equal_value_fn", equalHint(&vrn::any_equal<int>)}});
        const HintList optionalDouble = lineEdit("double", {{"optional", true}});
        const HintList unknown = {{"editor", "spinbox"s}};
        const QString reset = "Reset to default.";
        const QString longText(257, 'n');
        const QString cut = "std::string \"" + longText.left(256) + "\" as \"";
        // clang-format off
        row("editor", none, "editor"s, boost::any("lineedit"s), boost::any(std::wstring(L"lineedit")), entered("ab"), "nothing", "std::wstring \"ab\" as \"ab\"");
        row("editor: no name", none, "editor"s, boost::any(""s), boost::any("lineedit"), entered("ab"), "nothing", "nothing");
        row("editor: unknown", none, "editor"s, boost::any("spinbox"s), boost::any(QString("spinbox")), entered("ab"), "nothing", "nothing");
        row("editor: names are compared exactly", none, "editor"s, boost::any("lineedit\0"s), boost::any(1), entered("ab"), "nothing", "nothing");
        row("editor: in capitals", none, "editor"s, boost::any("LineEdit"s), boost::any(1), entered("ab"), "nothing", "nothing");
        row("optional: a button", lineEdit(), "optional"s, boost::any(true), boost::any(1), toolTip(), "no button", reset);
        row("optional: false", lineEdit(), "optional"s, boost::any(false), boost::any("false"s), toolTip(), "no button", "no button");
        row("optional: a button for a string", lineEdit("string"), "optional"s, boost::any(true), boost::any(1), toolTip(), "no button", reset);
        row("optional: a string has no missing value", lineEdit("string"), "optional"s, boost::any(true), boost::any(1), entered(""), "std::string \"\" as \"\"", "std::string \"\" as \"\"");
        row("optional: a button for an int", lineEdit("int"), "optional"s, boost::any(true), boost::any(1), toolTip(), "no button", reset);
        row("optional: no int", lineEdit("int"), "optional"s, boost::any(true), boost::any(1), entered(""), "int 0 as \"0\"", "empty as \"\"");
        row("optional: a button for a double", lineEdit("double", {{"default_fn", half}}), "optional"s, boost::any(true), boost::any(1), toolTip(), "no button", reset);
        row("optional: no double", lineEdit("double", {{"default_fn", half}}), "optional"s, boost::any(true), boost::any(1), entered(""), "double 0 as \"0.000\"", "empty as \"\"");
        row("optional: a button for a distance", lineEdit("distance"), "optional"s, boost::any(true), boost::any(1), toolTip(), "no button", reset);
        row("optional: no distance", lineEdit("distance"), "optional"s, boost::any(true), boost::any(1), entered(""), "double 0 as \"0.000\"", "empty as \"\"");
        row("optional: a button for a quantity", lineEdit("unit"), "optional"s, boost::any(true), boost::any(1), toolTip(), "no button", reset);
        row("optional: no quantity", lineEdit("unit", {{"validator.unit_id", UnitId::GEO_LENGTH}}), "optional"s, boost::any(true), boost::any(1), entered(""), "0 of unit 1001 as \"0.000 m\"", "empty as \"\"");
        row("optional: of no use to an enumbox", fullEnumBox(), "optional"s, boost::any(true), boost::any(1), picked(), "int 355 of 2", "int 355 of 2");
        row("optional: read for an unknown editor", unknown, "optional"s, boost::any(true), boost::any(1), toolTip(), "nothing", "nothing");
        row("type: int", lineEdit(), "validator.type"s, boost::any("int"s), boost::any("int"), entered("12"), "std::wstring \"12\" as \"12\"", "int 12 as \"12\"");
        row("type: none", lineEdit(), "validator.type"s, boost::any(""s), boost::any(std::wstring()), entered("12"), "std::wstring \"12\" as \"12\"", "std::wstring \"12\" as \"12\"");
        row("type: string", lineEdit(), "validator.type"s, boost::any("string"s), boost::any(1), entered("12"), "std::wstring \"12\" as \"12\"", "std::string \"12\" as \"12\"");
        row("type: double", lineEdit(), "validator.type"s, boost::any("double"s), boost::any(1), entered("12"), "std::wstring \"12\" as \"12\"", "double 12 as \"12.000\"");
        row("type: distance", lineEdit(), "validator.type"s, boost::any("distance"s), boost::any(1), entered("150 cm"), "std::wstring \"150 cm\" as \"150 cm\"", "double 1.5 as \"1.500\"");
        row("type: unit", lineEdit(), "validator.type"s, boost::any("unit"s), boost::any(1), entered("12"), "std::wstring \"12\" as \"12\"", "12 of unit 1 as \"12.000 -\"");
        row("type: unknown", lineEdit(), "validator.type"s, boost::any("unsigned int"s), boost::any(1), entered("12"), "std::wstring \"12\" as \"12\"", "nothing");
        row("type: a name of the other door", lineEdit(), "validator.type"s, boost::any("bool"s), boost::any(1), entered("12"), "std::wstring \"12\" as \"12\"", "nothing");
        row("unit", lineEdit("unit"), "validator.unit_id"s, boost::any(UnitId::GEO_LENGTH), boost::any(1001), entered("150 cm"), "empty as \"150 cm\"", "1.5 of unit 1001 as \"1.500 m\"");
        row("length of a string", lineEdit("string"), "validator.max_length"s, boost::any(3), boost::any(std::size_t(3)), entered(longText), cut + longText.left(256) + '"', "std::string \"nnn\" as \"nnn\"");
        row("length of an optional string", lineEdit("string", {{"optional", true}}), "validator.max_length"s, boost::any(300), boost::any(300U), entered(longText), cut + longText.left(256) + '"', "std::string \"" + longText + "\" as \"" + longText + '"');
        row("default of an optional double", optionalDouble, "default_fn"s, boost::any(half), boost::any(std::function<QString(const QString&)>(half)), clicked("5"), "5", "2.5");
        row("default of a double is read without a button", lineEdit("double"), "default_fn"s, boost::any(half), boost::any(1), toolTip(), "no button", "no button");
        row("equality", enumBox({{"values", steels()}}), "equal_value_fn"s, equalHint(&vrn::any_equal<int>), boost::any(std::function<bool(const boost::any&, const boost::any&)>(&vrn::any_equal<int>)), set355(), "ptree_bad_path: No such node (equal_value_fn)", "int 355");
        row("values", onlyEqual, "values"s, boost::any(steels()), boost::any(std::vector<std::pair<QString, boost::any>>()), picked(), "ptree_bad_path: No such node (values)", "int 355 of 2");
        row("equality is missed before values", enumBox(), "equal_value_fn"s, equalHint(&vrn::any_equal<int>), boost::any(1), picked(), "ptree_bad_path: No such node (equal_value_fn)", "ptree_bad_path: No such node (values)");
        // clang-format on
    }
    void everyHint()
    {
        QFETCH(HintList, others);
        QFETCH(std::string, key);
        QFETCH(boost::any, given);
        QFETCH(boost::any, wrong);
        QFETCH(Probe, probe);
        Hints hints = hintsOf(others);
        const auto type = readHint<std::string>(hints, "validator.type");
        const bool isOptional = readHint<bool>(hints, "optional");
        if (type == "double" && isOptional)
            expectAssert("fn"); // The button has no function.
        QTEST(built(hints, probe), "missing");
        put(hints, key, given);
        QTEST(built(hints, probe), "whenGiven");

        const boost::any noValue;
        for (const boost::any& other : {wrong, noValue}) {
            put(hints, key, other);
            expectWrongHint();
            QCOMPARE(built(hints, probe), wrongType);
            QCOMPARE(wrongHint(), wrongHint(key, other, given));
        }
    }

    // In the order in which the hints are read, the first wrong one is told of.
    void theOrderOfReading_data()
    {
        columns<HintList, QString, std::string>("hints", "result", "path");
        const boost::any wrong = short(0);
        const std::string none;
        const QString noEqual = "ptree_bad_path: No such node (equal_value_fn)";
        // clang-format off
        row("optional before the type", HintList{{"editor", "lineedit"s}, {"optional", wrong}, {"validator.type", wrong}}, wrongType, "optional"s);
        row("optional before an unknown type", lineEdit("float", {{"optional", wrong}}), wrongType, "optional"s);
        row("optional before the length", lineEdit("string", {{"optional", wrong}, {"validator.max_length", wrong}}), wrongType, "optional"s);
        row("optional before a missing equality", enumBox({{"optional", wrong}}), wrongType, "optional"s);
        row("a wrong equality before missing values", enumBox({{"equal_value_fn", wrong}}), wrongType, "equal_value_fn"s);
        row("a wrong equality before wrong values", enumBox({{"equal_value_fn", wrong}, {"values", wrong}}), wrongType, "equal_value_fn"s);
        row("a missing equality before wrong values", enumBox({{"values", wrong}}), noEqual, none);
        row("wrong values before a null equality", enumBox({{"equal_value_fn", equalHint(nullptr)}, {"values", wrong}}), wrongType, "values"s);
        // clang-format on
    }
    void theOrderOfReading()
    {
        QFETCH(HintList, hints);
        QFETCH(QString, result);
        if (result == wrongType)
            expectWrongHint();
        QCOMPARE(built(hintsOf(hints), widgetName()), result);
        if (result == wrongType)
            QTEST(reported("path"), "path");
    }

    void otherHintsAreNotRead_data()
    {
        columns<HintList, Probe, QString>("hints", "probe", "result");
        const auto wrongBut = [](const std::vector<std::string>& read, HintList hints) {
            const std::vector<std::string> all = {"optional", "validator.type", "validator.unit_id",
                "validator.max_length", "default_fn", "equal_value_fn", "values", "validator.kind",
                "validator.optional", "validator"};
            for (const std::string& key : all) {
                if (std::find(read.begin(), read.end(), key) == read.end())
                    hints.emplace_back(key, boost::any(short(0)));
            }
            return hints;
        };
        const std::string type = "validator.type";
        row("without an editor", wrongBut({}, {}), entered(""), "nothing");
        row("by a line edit", wrongBut({"optional", type}, lineEdit()), entered("a"),
            "std::wstring \"a\" as \"a\"");
        row("by a string", wrongBut({"optional", type, "validator.max_length"}, lineEdit("string")),
            entered("a"), "std::string \"a\" as \"a\"");
        row("by an int", wrongBut({"optional", type}, lineEdit("int")), entered("1"),
            "int 1 as \"1\"");
        row("by a double", wrongBut({"optional", type, "default_fn"}, lineEdit("double")),
            entered("1"), "double 1 as \"1.000\"");
        row("by a distance", wrongBut({"optional", type}, lineEdit("distance")), entered("1"),
            "double 1 as \"1.000\"");
        row("by a quantity", wrongBut({"optional", type, "validator.unit_id"}, lineEdit("unit")),
            entered("1"), "1 of unit 1 as \"1.000 -\"");
        row("by an unknown type", wrongBut({"optional", type}, lineEdit("float")), entered("1"),
            "nothing");
        row("by an enum box", wrongBut({"optional", "equal_value_fn", "values"}, fullEnumBox()),
            picked(), "int 355 of 2");
        row("by an unknown editor", wrongBut({"optional"}, {{"editor", "spinbox"s}}), entered(""),
            "nothing");
        row("by a registered editor", wrongBut({}, {{"editor", "label"s}}), widgetName(),
            "registered");
    }
    void otherHintsAreNotRead()
    {
        QFETCH(HintList, hints);
        QFETCH(Probe, probe);
        const Registered registered("label", label("registered"));
        QTEST(built(hintsOf(hints), probe), "result");
    }

    // --- line edits

    void aLineEditIsAChildWithoutFrameAndCaption()
    {
        QWidget form;
        const EditorMetaData editor = createEditorFromHints(&form, hintsOf(lineEdit()));
        QVERIFY(qobject_cast<MultiEditLineEdit*>(editor.widget));
        QCOMPARE(editor.widget->parentWidget(), &form);
        QCOMPARE(editor.widget->styleSheet(), QString("* { background-color:white; }"));
        QVERIFY(qobject_cast<QHBoxLayout*>(editor.widget->layout()));
        QVERIFY(editOf(editor)->accessibleName().isEmpty());

        const std::unique_ptr<QWidget> alone(
            createEditorFromHints(nullptr, hintsOf(lineEdit())).widget);
        QVERIFY(!alone->parentWidget());
    }

    void aPlainTextIsCut()
    {
        const QString kept(256, 'x');
        QCOMPARE(built(hintsOf(lineEdit()), entered(kept + "yz")),
            "std::wstring \"" + kept + "\" as \"" + kept + '"');
    }

    void theWholeRangeOfANumberIsTaken_data()
    {
        columns<std::string, QString, QString>("type", "text", "result");
        row("the lowest int", "int"s, "-2147483648", "int -2147483648 as \"-2147483648\"");
        row("the highest int", "int"s, "2147483647", "int 2147483647 as \"2147483647\"");
        row("a negative distance", "distance"s, "-1.5", "double -1.5 as \"-1.500\"");
        row("a large distance", "distance"s, "1000000", "double 1000000 as \"1000000.000\"");
        row("a negative double", "double"s, "-1.5", "double -1.5 as \"-1.500\"");
    }
    void theWholeRangeOfANumberIsTaken()
    {
        QFETCH(std::string, type);
        QFETCH(QString, text);
        QTEST(built(hintsOf(lineEdit(type)), entered(text)), "result");
    }

    void aQuantityHasTheContextOfItsConstruction()
    {
        const vrn::units::Context before = vrn::units::get_active_input_context();
        const Hints hints = hintsOf(lineEdit("unit", {{"validator.unit_id", UnitId::GEO_LENGTH}}));
        QWidget form;
        const EditorMetaData metric = createEditorFromHints(&form, hints);
        vrn::units::set_active_input_context(vrn::units::Context(9));
        const EditorMetaData imperial = createEditorFromHints(&form, hints);
        vrn::units::set_active_input_context(before);
        QCOMPARE(entered("2")(metric), QString("2 of unit 1001 as \"2.000 m\""));
        QVERIFY(!entered("2")(imperial).endsWith("m\""));
    }

    void theButtonHasItsIcon()
    {
        QWidget form;
        const EditorMetaData editor = createEditorFromHints(
            &form, hintsOf(lineEdit("int", {{"optional", true}})));
        const QPixmap icon = Pixmap::createOrDefault(L"control_repeat_blue.png");
        QCOMPARE(buttonOf(editor)->icon().pixmap(icon.size()).toImage(), icon.toImage());
    }

    void theButtonClearsTheText_data()
    {
        columns<std::string>("type");
        for (const char* type : {"", "string", "int", "distance", "unit"})
            row(*type ? type : "none", std::string(type));
    }
    void theButtonClearsTheText()
    {
        QFETCH(std::string, type);
        QCOMPARE(built(hintsOf(lineEdit(type, {{"optional", true}})), clicked("5")), QString());
    }

    void aDefaultIsTakenOverAsIfItWasTyped()
    {
        Hints hints = hintsOf(lineEdit("double", {{"optional", true}}));
        setDefaultTextHint(hints, "default_fn", [](const QString& text) { return text + "5"; });
        QWidget form;
        const EditorMetaData editor = createEditorFromHints(&form, hints);
        editor.setValue(1.0);
        buttonOf(editor)->click();
        QCOMPARE(editOf(editor)->text(), QString("1.0005"));
        QCOMPARE(given(editor), QString("double 1.0004999999999999"));
    }

    // --- enum boxes

    void anEnumBoxIsAChildWithoutMargins()
    {
        QWidget form;
        const EditorMetaData editor = createEditorFromHints(&form, hintsOf(fullEnumBox()));
        QVERIFY(qobject_cast<MultiEditEnumBox*>(editor.widget));
        QCOMPARE(editor.widget->parentWidget(), &form);
        QCOMPARE(editor.widget->layout()->contentsMargins(), QMargins());
        QVERIFY(!listOf(editor)->isEditable());
        QCOMPARE(listOf(editor)->itemText(0), QString("S235"));
        QVERIFY(listOf(editor)->itemIcon(0).isNull());
        QCOMPARE(listOf(editor)->sizeAdjustPolicy(), QComboBox::AdjustToContents);

        const std::unique_ptr<QWidget> alone(
            createEditorFromHints(nullptr, hintsOf(fullEnumBox())).widget);
        QVERIFY(!alone->parentWidget());
    }

    void anEnumBoxWithANullFunctionIsReportedAndNotBuilt()
    {
        expectAssert("eqFn");
        QCOMPARE(
            built(hintsOf(enumBox({{"equal_value_fn", equalHint(nullptr)}, {"values", steels()}})),
                picked()),
            QString("nothing"));
    }

    void anEnumBoxComparesByItsFunction()
    {
        QWidget form;
        const EqualHint sameHundred = [](const boost::any& a, const boost::any& b) {
            return boost::any_cast<int>(a) / 100 == boost::any_cast<int>(b) / 100;
        };
        const EditorMetaData editor = createEditorFromHints(&form,
            hintsOf(enumBox({{"equal_value_fn", equalHint(sameHundred)}, {"values", steels()}})));
        editor.setValue(399);
        QCOMPARE(given(editor), QString("int 355"));
    }

    // --- the three functions

    void theFunctionsAreThoseOfTheControl_data()
    {
        columns<HintList, boost::any, QString>("hints", "value", "text");
        row("a line edit", lineEdit("double"), boost::any(1.5), "1.500");
        row("an enum box", fullEnumBox(), boost::any(355), "S355");
    }
    void theFunctionsAreThoseOfTheControl()
    {
        QFETCH(HintList, hints);
        QFETCH(boost::any, value);
        QFETCH(QString, text);
        QWidget form;
        const EditorMetaData editor = createEditorFromHints(&form, hintsOf(hints));
        const auto shown = [&] {
            return listOf(editor) ? listOf(editor)->currentText() : editOf(editor)->text();
        };
        editor.setValue(value);
        QCOMPARE(shown(), text);
        QCOMPARE(given(editor), describe(value));
        editor.forceVaries();
        QCOMPARE(shown(), getVariesString());
        QCOMPARE(given(editor), "varies, " + describe(untouched));
        editor.setValue(value);
        QCOMPARE(given(editor), describe(value));
    }

    void aRefusedTextGivesWhatAClearedOneGives()
    {
        Hints hints = hintsOf(lineEdit("double", {{"optional", true}}));
        setDefaultTextHint(hints, "default_fn", [](const QString& text) { return text; });
        QCOMPARE(built(hints, entered("abc")), QString("empty as \"abc\""));
        QCOMPARE(built(hints, entered("")), QString("empty as \"\""));
    }

    void theFunctionsOutliveTheWidget_data()
    {
        columns<HintList, boost::any, End>("hints", "value", "end");
        const std::vector<std::pair<std::string, End>> ends = {
            {"is destroyed", [](auto&, QWidget* editor) { delete editor; }},
            {"goes with its parent", [](auto& form, QWidget*) { form.reset(); }},
            {"is destroyed later",
                [](auto&, QWidget* editor) {
                    editor->deleteLater();
                    QCoreApplication::sendPostedEvents(editor, QEvent::DeferredDelete);
                }},
        };
        for (const auto& [name, end] : ends) {
            row(("a line edit " + name).c_str(), lineEdit("double"), boost::any(1.5), end);
            row(("an enum box " + name).c_str(), fullEnumBox(), boost::any(355), end);
        }
    }
    void theFunctionsOutliveTheWidget()
    {
        QFETCH(HintList, hints);
        QFETCH(boost::any, value);
        QFETCH(End, end);
        auto form = std::make_unique<QWidget>();
        EditorMetaData editor = createEditorFromHints(form.get(), hintsOf(hints));
        const EditorMetaData copy = editor;
        editor.setValue(value);

        // A part of the widget is told of while the widget is half destroyed.
        int told = 0;
        const auto use = [&told, &value, copy] {
            ++told;
            boost::any out = untouched;
            copy.setValue(value);
            copy.forceVaries();
            QVERIFY(!copy.getValue(out));
            QCOMPARE(out, untouched);
        };
        connect(editor.widget, &QObject::destroyed, this, use);
        for (const QWidget* part : editor.widget->findChildren<QWidget*>())
            connect(part, &QObject::destroyed, this, use);
        end(form, editor.widget);
        QVERIFY(told > 1);
        use();

        const EditorMetaData moved = std::move(editor);
        boost::any out = untouched;
        QVERIFY(!moved.getValue(out));
        QCOMPARE(out, untouched);
    }

    // --- editors of the application

    void aRegisteredEditorIsAsked()
    {
        QWidget form;
        Hints hints = hintsOf({{"editor", "own"s}, {"colour", 7}});
        boost::any set;
        const Registered registered("own", [&](QWidget* parent, const Hints& asked) {
            EditorMetaData made;
            made.widget = new QWidget(parent);
            made.setValue = [&set](const boost::any& value) { set = value; };
            made.getValue = [colour = readHint<int>(asked, "colour")](boost::any& value) {
                value = colour;
                return true;
            };
            return made;
        });
        const EditorMetaData editor = createEditorFromHints(&form, hints);
        QCOMPARE(editor.widget->parentWidget(), &form);
        editor.setValue(5);
        QCOMPARE(set, boost::any(5));
        QVERIFY(!editor.forceVaries);
        QCOMPARE(given(editor), QString("int 7"));
    }

    void aRegisteredEditorWinsUntilItIsUnregistered_data()
    {
        columns<std::string, QString>("name", "without");
        row("lineedit", "lineedit"s, "built-in");
        row("enumbox", "enumbox"s, "built-in");
        row("one of the application", "own"s, "nothing");
        row("a name with a zero character", "lineedit\0x"s, "nothing");
    }
    void aRegisteredEditorWinsUntilItIsUnregistered()
    {
        QFETCH(std::string, name);
        QFETCH(QString, without);
        QCOMPARE(editorOf(name), without);
        registerEditor(name, label("first"));
        QCOMPARE(editorOf(name), QString("first"));
        registerEditor(name, label("second"));
        QCOMPARE(editorOf(name), QString("second"));
        unregisterEditor("unknown");
        unregisterEditor("");
        QCOMPARE(editorOf(name), QString("second"));

        QWidget form;
        Hints hints;
        setTextHint(hints, "editor", name);
        const EditorMetaData stays = createEditorFromHints(&form, hints);
        unregisterEditor(name);
        QCOMPARE(editorOf(name), without);
        QCOMPARE(stays.widget->objectName(), QString("second"));
        unregisterEditor(name);
        QCOMPARE(editorOf(name), without);
    }

    void anEditorWithoutANameIsNeverAsked()
    {
        const Registered registered("", label("nameless"));
        QCOMPARE(editorOf(""), QString("nothing"));
        QCOMPARE(built(Hints(), widgetName()), QString("nothing"));
    }

    void anEmptyFunctionThrows()
    {
        const Registered registered("lineedit", EditorCreator());
        QCOMPARE(editorOf("lineedit"),
            QString("boost::bad_function_call: call to empty boost::function"));
    }

    void whatACreatorThrowsGoesOn()
    {
        const Registered registered("own", [](QWidget*, const Hints&) -> EditorMetaData {
            throw std::logic_error("from the creator");
        });
        QCOMPARE(editorOf("own"), QString("std::logic_error: from the creator"));
        QCOMPARE(editorOf("own"), QString("std::logic_error: from the creator"));
    }

    // The sanitizers see whether the running creator outlives its entry.
    void aCreatorMayChangeTheTable_data()
    {
        columns<std::function<void()>, QString>("change", "after");
        const auto cell = [](auto change) { return std::function<void()>(change); };
        row("unregister itself", cell([] { unregisterEditor("lineedit"); }), "built-in");
        row("replace itself", cell([] { registerEditor("lineedit", label("next")); }), "next");
        row("empty itself", cell([] { registerEditor("lineedit", {}); }),
            "boost::bad_function_call: call to empty boost::function");
        row("register others", cell([] {
            for (int i = 0; i < 100; ++i)
                registerEditor(std::to_string(i), label("other"));
        }),
            "itself");
    }
    void aCreatorMayChangeTheTable()
    {
        QFETCH(std::function<void()>, change);
        bool alive = false;
        {
            const Registered registered(
                "lineedit", [&change, life = lifeIn(alive)](QWidget* parent, const Hints& hints) {
                    change();
                    return label(*life ? "itself" : "gone")(parent, hints);
                });
            QCOMPARE(editorOf("lineedit"), QString("itself"));
            QTEST(editorOf("lineedit"), "after");
        }
        QVERIFY(!alive);
        for (int i = 0; i < 100; ++i)
            unregisterEditor(std::to_string(i));
    }

    void aCreatorMayBuildOnTheEditorThatItReplaces()
    {
        EditorCreator framed;
        framed = [&framed](QWidget* parent, const Hints& hints) {
            unregisterEditor("lineedit");
            EditorMetaData editor = createEditorFromHints(parent, hints);
            registerEditor("lineedit", framed);
            editor.widget->setObjectName("framed");
            return editor;
        };
        const Registered registered("lineedit", framed);
        QCOMPARE(editorOf("lineedit"), QString("framed"));
        QCOMPARE(built(hintsOf(lineEdit("int")), entered("12")), QString("int 12 as \"12\""));
        QCOMPARE(editorOf("lineedit"), QString("framed"));
    }
};

VRN_TEST(TestEditorMetaData)
#include "tst_editor_meta_data.moc"
