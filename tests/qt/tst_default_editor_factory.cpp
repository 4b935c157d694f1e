#include <vrn/base/any_predicates.h>
#include <vrn/qt/chained_validator.h>
#include <vrn/qt/default_editor_factory.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/multi_edit_line_edit_with_reset_button.h>
#include <vrn/qt/multi_edit_value.h>
#include <vrn/qt/unit_validator.h>

#include "factory_fixture.h"
#include "support/catching_application.h"
#include "support/life.h"
#include "support/table.h"
#include "support/test_main.h"

#include <boost/make_shared.hpp>

#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;
using namespace std::string_literals;

namespace {

using vrn::units::IConverter;
using vrn::units::UnitId::UnitId;

boost::any resetHint(const ResetHint& fn)
{
    return fn;
}

boost::any editHint(const EditHint& fn)
{
    return fn;
}

HintList steelBox(HintList more = {})
{
    more.emplace_back("entries", steels());
    more.emplace_back("is_equal", equalHint(&vrn::any_equal<int>));
    return more;
}

HintList resetTo(int shown, int reported, HintList more = {})
{
    more.emplace_back("reset_callback",
        resetHint([shown, reported](int id, boost::any& show, boost::any& report) {
            show = shown + id;
            report = reported;
        }));
    return more;
}

/// With a kind for lengths, as an application adds it.
std::shared_ptr<DefaultValidatorFactory> validators()
{
    auto factory = std::make_shared<DefaultValidatorFactory>();
    factory->add<IConverter::quantity>("", [](const Hints& hints) {
        auto validator = std::make_unique<UnitValidator>(vrn::units::Context(), UnitId::GEO_LENGTH);
        validator->setEmptyValueAllowed(readHint<bool>(hints, "optional"));
        return validator;
    });
    return factory;
}

using Probe = std::function<QString(const Editor&)>;

QLineEdit* editOf(const Editor& editor)
{
    return editor.widget->findChild<QLineEdit*>();
}

QToolButton* buttonOf(const Editor& editor)
{
    return editor.widget->findChild<QToolButton*>();
}

QComboBox* listOf(const Editor& editor)
{
    return editor.widget->findChild<QComboBox*>();
}

QString given(const Editor& editor)
{
    return describe(editor.control->getCurrentValue());
}

/// What the editor gives and shows when the user has pasted `text` and pressed Enter.
Probe entered(const QString& text)
{
    return [text](const Editor& editor) {
        editOf(editor)->clear();
        editOf(editor)->insert(text);
        QTest::keyClick(editOf(editor), Qt::Key_Return);
        return shownAs(editor.control->getCurrentValue(), editOf(editor)->text());
    };
}

Probe className()
{
    return [](const Editor& editor) {
        return QString(editor.widget->metaObject()->className()).section("::", -1);
    };
}

/// What the editor gives and shows after a text and a click on the button.
Probe clicked()
{
    return [](const Editor& editor) {
        QTest::keyClicks(editOf(editor), "7");
        buttonOf(editor)->click();
        return shownAs(editor.control->getCurrentValue(), editOf(editor)->text());
    };
}

/// What the box gives for its last name.
Probe picked()
{
    return [](const Editor& editor) {
        QComboBox* list = listOf(editor);
        list->setCurrentIndex(list->count() - 1);
        return QStringLiteral("%1 of %2").arg(given(editor)).arg(list->count());
    };
}

Probe editable()
{
    return [](const Editor& editor) {
        return listOf(editor)->isEditable() ? QStringLiteral("editable") : QStringLiteral("fixed");
    };
}

Probe icons()
{
    return [](const Editor& editor) {
        QStringList found;
        for (int i = 0; i < listOf(editor)->count(); ++i)
            found << (listOf(editor)->itemIcon(i).isNull() ? "none" : "icon");
        return found.join(", ");
    };
}

QString built(const DefaultEditorFactory& factory, const std::string& name, const Hints& hints,
    const Probe& probe)
{
    return outcome([&] {
        const std::unique_ptr<Editor> editor = factory.create(name, hints);
        if (!editor)
            return QStringLiteral("null");
        const std::unique_ptr<QWidget> widget(editor->widget);
        if (editor->widget->parentWidget())
            return QStringLiteral("a child");
        return probe(*editor);
    });
}

// --- the callback kind

/// One editor of the callback kind, with what may happen to it.
struct Scene
{
    std::unique_ptr<DefaultEditorFactory> factory;
    std::unique_ptr<QWidget> form;
    std::unique_ptr<Editor> editor;
    QPointer<QWidget> widget;
    MultiEditControlBase* control = nullptr;
    QStringList log;

    static Scene* current;

    void edit(const std::function<bool(QWidget*, boost::any&)>& fn)
    {
        factory = std::make_unique<DefaultEditorFactory>(validators());
        Hints hints;
        setEditHint(hints, "callback", fn);
        setEqualHint(hints, "is_equal", [](const boost::any& a, const boost::any& b) {
            if (Scene::current)
                Scene::current->log << "compare " + describe(a) + " with " + describe(b);
            return vrn::any_equal<int>(a, b);
        });
        editor = factory->create("callback", hints);
        widget = editor->widget;
        control = editor->control;
        form = std::make_unique<QWidget>();
    }

    Scene() { current = this; }
    ~Scene()
    {
        current = nullptr;
        delete widget;
    }
};

Scene* Scene::current = nullptr;

using Step = std::function<void(Scene&)>;
using Change = std::function<void(std::unique_ptr<DefaultEditorFactory>&)>;

/// Opens a dialog, does it there, and closes the dialog.
Step inDialog(const Step& step)
{
    return [step](Scene& scene) {
        QDialog dialog;
        QTimer::singleShot(0, &dialog, [&] {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            step(scene);
            QCoreApplication::processEvents();
            dialog.accept();
        });
        dialog.exec();
    };
}

/// Tells the control's state when the widget goes.
class LastLook : public QObject
{
public:
    explicit LastLook(Scene& scene)
        : m_control(scene.control)
    {
        scene.widget->installEventFilter(this);
    }

    QString state;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::DeferredDelete)
            state = m_control->dataVaries() ? "varies" : describe(m_control->getCurrentValue());
        return false;
    }

private:
    MultiEditControlBase* m_control;
};

} // namespace

Q_DECLARE_METATYPE(Probe)
Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(DefaultEditorFactory::Creator)
Q_DECLARE_METATYPE(Step)
Q_DECLARE_METATYPE(std::vector<int>)

class TestDefaultEditorFactory : public HintsTest
{
    Q_OBJECT

private Q_SLOTS:
    // --- names

    void theNames()
    {
        DefaultEditorFactory factory(validators());
        for (const std::string name : {"lineedit", "unit", "named_value_list", "yes_no",
                 "multi_edit_line_edit_with_reset_button", "callback"}) {
            QVERIFY(factory.exists(name));
            QCOMPARE(outcome([&] {
                factory.add(name, {});
                return QString("added");
            }),
                duplicateKey);
        }
        for (const std::string& name : {""s, "enumbox"s, "LineEdit"s, "lineedit\0"s}) {
            QVERIFY(!factory.exists(name));
            QCOMPARE(built(factory, name, {}, className()), unknownKey);
        }
    }

    void anEditorOfTheApplicationIsAdded_data()
    {
        columns<DefaultEditorFactory::Creator, QString>("creator", "result");
        using Creator = DefaultEditorFactory::Creator;
        row("its editor", Creator([](const Hints& hints) {
            auto* field = MultiEditLineEdit::create(
                nullptr, {}, new DoubleEditValidator, 0, ExpandHorizontal);
            field->setObjectName(QString::number(readHint<int>(hints, "number")));
            return std::unique_ptr<Editor>(new Editor{field, field});
        }),
            "7");
        row("null", Creator([](const Hints&) { return nullptr; }), "null");
        row("an empty function", Creator(), "std::bad_function_call");
    }
    void anEditorOfTheApplicationIsAdded()
    {
        QFETCH(DefaultEditorFactory::Creator, creator);
        DefaultEditorFactory factory(nullptr);
        factory.add("own", creator);
        QVERIFY(factory.exists("own"));
        QTEST(built(factory, "own", hintsOf({{"number", 7}}),
                  [](const Editor& editor) { return editor.widget->objectName(); }),
            "result");
    }

    // --- hints

    // With every other hint in `others`, the one of `key` is missing, given or wrong.
    void everyHint_data()
    {
        columns<std::string, HintList, std::string, boost::any, boost::any, Probe, QString,
            QString>("name", "others", "key", "given", "wrong", "probe", "missing", "whenGiven");
        const HintList none;
        const std::string line = "lineedit";
        const std::string unit = "unit";
        const std::string reset = "multi_edit_line_edit_with_reset_button";
        const std::string list = "named_value_list";
        const boost::any aKind = kind<int>();
        const boost::any quantity = kind<IConverter::quantity>();
        const boost::any noKind = std::type_index(typeid(int));
        const QString plain = "MultiEditLineEdit";
        const QString withReset = "MultiEditLineEditWithResetButton";
        const boost::any edit = editHint([](QWidget*, boost::any&) { return false; });
        const boost::any equal = equalHint(&vrn::any_equal<int>);
        const PixmapPtrList oneIcon = {boost::make_shared<QPixmap>(8, 8)};
        // clang-format off
        row("lineedit: kind", line, none, "validator.kind"s, aKind, noKind, entered("12"), "empty as \"12\"", "int 12 as \"12\"");
        row("lineedit: an unknown kind", line, none, "validator.kind"s, kind<float>(), boost::any("float"s), entered("12"), "empty as \"12\"", unknownKey);
        row("lineedit: hints of the kind", line, HintList{{"validator.kind", aKind}}, "validator.maximum"s, boost::any(5), boost::any(5U), entered("12"), "int 12 as \"12\"", "int 5 as \"5\"");
        row("lineedit: optional", line, HintList{{"validator.kind", kind<double>()}}, "validator.optional"s, boost::any(true), boost::any(1), className(), plain, withReset);
        row("lineedit: not optional", line, none, "validator.optional"s, boost::any(false), boost::any(0), className(), plain, plain);
        row("lineedit: optional without a kind", line, none, "validator.optional"s, boost::any(true), boost::any("true"s), className(), plain, withReset);
        row("lineedit: optional is a hint of the kind too", line, HintList{{"validator.kind", aKind}}, "validator.optional"s, boost::any(true), boost::any(1), entered(""), "int 0 as \"0\"", "empty as \"\"");
        row("unit: kind", unit, none, "validator.kind"s, quantity, noKind, entered("150 cm"), "empty as \"150 cm\"", "1.5 of unit 1001 as \"1.500 m\"");
        row("unit: a kind of another validator", unit, none, "validator.kind"s, aKind, boost::any(1), entered("12"), "empty as \"12\"", "empty as \"12\"");
        row("unit: an unknown kind", unit, none, "validator.kind"s, kind<float>(), boost::any(1), entered("12"), "empty as \"12\"", unknownKey);
        row("unit: optional", unit, none, "validator.optional"s, boost::any(true), boost::any(1), className(), plain, withReset);
        row("unit: optional is a hint of the kind too", unit, HintList{{"validator.kind", quantity}}, "validator.optional"s, boost::any(true), boost::any(1), entered(""), "0 of unit 1001 as \"0.000 m\"", "empty as \"\"");
        row("reset button: kind", reset, resetTo(3, 4), "validator.kind"s, aKind, noKind, entered("12"), "empty as \"12\"", "int 12 as \"12\"");
        row("reset button: optional is only a hint of the kind", reset, resetTo(3, 4, {{"validator.kind", aKind}}), "validator.optional"s, boost::any(true), boost::any(1), entered(""), "int 0 as \"0\"", "empty as \"\"");
        row("reset button: function", reset, HintList{{"validator.kind", aKind}}, "reset_callback"s, resetTo(3, 4).at(0).second, boost::any(boost::function<void(int, boost::any&, boost::any&)>()), clicked(), "ptree_bad_path: No such node (reset_callback)", "int 4 as \"3\"");
        row("named values: entries", list, HintList{{"is_equal", equal}}, "entries"s, boost::any(steels()), boost::any(QStringList("S235")), picked(), "null", "int 355 of 2");
        row("named values: equality", list, HintList{{"entries", steels()}}, "is_equal"s, equal, boost::any(std::function<bool(const boost::any&, const boost::any&)>(&vrn::any_equal<int>)), picked(), "null", "int 355 of 2");
        row("named values: editable", list, steelBox(), "editable"s, boost::any(true), boost::any(1), editable(), "fixed", "editable");
        row("named values: not editable", list, steelBox(), "editable"s, boost::any(false), boost::any("no"s), editable(), "fixed", "fixed");
        row("named values: kind", list, steelBox({{"editable", true}}), "validator.kind"s, aKind, noKind, entered("12"), "empty as \"12\"", "int 12 as \"12\"");
        row("named values: an unknown kind", list, steelBox({{"editable", true}}), "validator.kind"s, kind<float>(), noKind, entered("12"), "empty as \"12\"", unknownKey);
        row("named values: icons", list, steelBox(), "pixmaps"s, boost::any(oneIcon), boost::any(std::deque<QPixmap>()), icons(), "none, none", "icon, none");
        row("callback: function", "callback"s, HintList{{"is_equal", equal}}, "callback"s, edit, boost::any(boost::function<bool(QWidget*, boost::any&)>()), className(), "null", "QWidget");
        row("callback: an empty function", "callback"s, HintList{{"is_equal", equal}}, "callback"s, editHint({}), boost::any(1), className(), "null", "null");
        row("callback: equality", "callback"s, HintList{{"callback", edit}}, "is_equal"s, equal, boost::any(1), className(), "null", "QWidget");
        // clang-format on
    }
    void everyHint()
    {
        QFETCH(std::string, name);
        QFETCH(HintList, others);
        QFETCH(std::string, key);
        QFETCH(boost::any, given);
        QFETCH(boost::any, wrong);
        QFETCH(Probe, probe);
        QFETCH(QString, missing);
        QFETCH(QString, whenGiven);
        const DefaultEditorFactory factory(validators());
        const auto expectReport = [&](const QString& result) {
            if (result == "null")
                expectAssert(name == "callback" ? "callback && equal_fn" : "nvl && equal_fn");
            // Enter in a field without a validator.
            if (name != "named_value_list" && result.startsWith("empty as \"1"))
                expectAssert("m_validator");
        };
        Hints hints = hintsOf(others);
        expectReport(missing);
        QCOMPARE(built(factory, name, hints, probe), missing);
        put(hints, key, given);
        expectReport(whenGiven);
        QCOMPARE(built(factory, name, hints, probe), whenGiven);

        // A kind reads its hints first, and gets those below "validator" alone.
        const QString ofKind = QStringLiteral("validator.");
        const bool isReadByKind = key != "validator.kind" && QString(key.c_str()).startsWith(ofKind)
            && hints.get_child_optional("validator.kind");
        const std::string path = isReadByKind ? key.substr(std::size_t(ofKind.size())) : key;
        const boost::any noValue;
        for (const boost::any& other : {wrong, noValue}) {
            put(hints, key, other);
            expectWrongHint();
            QCOMPARE(built(factory, name, hints, probe), wrongType);
            QCOMPARE(wrongHint(), wrongHint(path, other, given));
        }
    }

    void hintsThatAreNotRead_data()
    {
        columns<bool, std::string, HintList, Probe, QString>(
            "withValidators", "name", "hints", "probe", "result");
        const HintList lists = {{"entries", 1}, {"is_equal", 1}, {"editable", 1}, {"pixmaps", 1},
            {"reset_callback", 1}, {"callback", 1}, {"optional", 1}, {"editor", 1}};
        const HintList validator = {{"validator", 1}, {"validator.kind", 1},
            {"validator.optional", 1}, {"validator.type", 1}};
        const HintList kinds = {{"validator.kind", 1}};
        const auto with = [](HintList list, const HintList& more) {
            list.insert(list.end(), more.begin(), more.end());
            return list;
        };
        const std::string reset = "multi_edit_line_edit_with_reset_button";
        const std::string list = "named_value_list";
        row("by a line edit", true, "lineedit"s, with(lists, {{"validator", 1}}), className(),
            "MultiEditLineEdit");
        row("by a unit", true, "unit"s, with(lists, {{"validator", 1}}), className(),
            "MultiEditLineEdit");
        row("by yes or no", true, "yes_no"s, with(lists, validator), picked(), "bool false of 2");
        row("by a list that is not editable", true, list, steelBox(validator), picked(),
            "int 355 of 2");
        row("without a validator factory: by a line edit", false, "lineedit"s, kinds, className(),
            "MultiEditLineEdit");
        row("without a validator factory: by a unit", false, "unit"s, kinds, className(),
            "MultiEditLineEdit");
        row("without a validator factory: by a reset button", false, reset, resetTo(3, 4, kinds),
            className(), "MultiEditLineEditWithResetButton");
        row("without a validator factory: by an editable list", false, list,
            steelBox({{"editable", true}, {"validator.kind", 1}}), editable(), "editable");
        row("by a reset button without a kind", true, reset,
            resetTo(3, 4, {{"validator.optional", 1}}), className(),
            "MultiEditLineEditWithResetButton");
        row("by a callback", true, "callback"s,
            with(validator,
                {{"callback", editHint([](QWidget*, boost::any&) { return false; })},
                    {"is_equal", equalHint(&vrn::any_equal<int>)}, {"entries", 1}}),
            className(), "QWidget");
    }
    void hintsThatAreNotRead()
    {
        QFETCH(bool, withValidators);
        QFETCH(std::string, name);
        QFETCH(HintList, hints);
        QFETCH(Probe, probe);
        const DefaultEditorFactory factory(withValidators ? validators() : nullptr);
        QTEST(built(factory, name, hintsOf(hints), probe), "result");
    }

    // In the order in which the hints are read, the first wrong one is told of.
    void theOrderOfReading_data()
    {
        columns<std::string, HintList, QString, std::string>("name", "hints", "result", "path");
        const std::string line = "lineedit";
        const std::string reset = "multi_edit_line_edit_with_reset_button";
        const std::string list = "named_value_list";
        const boost::any unknown = kind<float>();
        const boost::any anInt = kind<int>();
        const boost::any equal = equalHint(&vrn::any_equal<int>);
        const boost::any wrong = short(0);
        const std::string none;
        // clang-format off
        row("an unknown kind before a wrong validator.optional", line, HintList{{"validator.kind", unknown}, {"validator.optional", wrong}}, unknownKey, none);
        row("an unknown kind before a wrong validator.optional of a unit", "unit"s, HintList{{"validator.kind", unknown}, {"validator.optional", wrong}}, unknownKey, none);
        row("a wrong kind before a wrong validator.optional", line, HintList{{"validator.kind", wrong}, {"validator.optional", wrong}}, wrongType, "validator.kind"s);
        row("a wrong hint of the kind before a wrong validator.optional", line, HintList{{"validator.kind", kind<std::string>()}, {"validator.max_length", wrong}, {"validator.optional", wrong}}, wrongType, "max_length"s);
        row("a validator.optional that the kind does not read", line, HintList{{"validator.kind", kind<std::string>()}, {"validator.optional", wrong}}, wrongType, "validator.optional"s);
        row("an unknown kind before a missing reset_callback", reset, HintList{{"validator.kind", unknown}}, unknownKey, none);
        row("an unknown kind before a wrong reset_callback", reset, HintList{{"validator.kind", unknown}, {"reset_callback", wrong}}, unknownKey, none);
        row("a wrong hint of the kind before a missing reset_callback", reset, HintList{{"validator.kind", anInt}, {"validator.minimum", wrong}}, wrongType, "minimum"s);
        row("wrong entries before a wrong is_equal", list, HintList{{"entries", wrong}, {"is_equal", wrong}}, wrongType, "entries"s);
        row("a wrong is_equal before missing entries", list, HintList{{"is_equal", wrong}}, wrongType, "is_equal"s);
        row("wrong entries before a missing is_equal", list, HintList{{"entries", wrong}}, wrongType, "entries"s);
        row("missing entries before a wrong editable", list, HintList{{"is_equal", equal}, {"editable", wrong}, {"pixmaps", wrong}}, "null", none);
        row("a wrong editable before an unknown kind", list, steelBox({{"editable", wrong}, {"validator.kind", unknown}}), wrongType, "editable"s);
        row("an unknown kind before wrong pixmaps", list, steelBox({{"editable", true}, {"validator.kind", unknown}, {"pixmaps", wrong}}), unknownKey, none);
        row("a wrong hint of the kind before wrong pixmaps", list, steelBox({{"editable", true}, {"validator.kind", anInt}, {"validator.minimum", wrong}, {"pixmaps", wrong}}), wrongType, "minimum"s);
        row("a wrong callback before a wrong is_equal", "callback"s, HintList{{"callback", wrong}, {"is_equal", wrong}}, wrongType, "callback"s);
        row("a wrong is_equal before a missing callback", "callback"s, HintList{{"is_equal", wrong}}, wrongType, "is_equal"s);
        row("a wrong callback before a missing is_equal", "callback"s, HintList{{"callback", wrong}}, wrongType, "callback"s);
        row("a wrong is_equal before an empty callback", "callback"s, HintList{{"callback", editHint({})}, {"is_equal", wrong}}, wrongType, "is_equal"s);
        // clang-format on
    }
    void theOrderOfReading()
    {
        QFETCH(std::string, name);
        QFETCH(HintList, hints);
        QFETCH(QString, result);
        if (result == wrongType)
            expectWrongHint();
        else if (result == "null")
            expectAssert("nvl && equal_fn");
        QCOMPARE(
            built(DefaultEditorFactory(validators()), name, hintsOf(hints), className()), result);
        if (result == wrongType)
            QTEST(reported("path"), "path");
    }

    void optionalIsReadWithoutAValidatorFactory()
    {
        const DefaultEditorFactory factory(nullptr);
        Hints hints = hintsOf({{"validator.kind", kind<int>()}, {"validator.optional", true}});
        QCOMPARE(built(factory, "lineedit", hints, className()),
            QString("MultiEditLineEditWithResetButton"));
        setHint<int>(hints, "validator.optional", 1);
        expectWrongHint();
        QCOMPARE(built(factory, "lineedit", hints, className()), wrongType);
    }

    // --- line edits

    void aLineEditHasAFrameAndNoCaption()
    {
        const DefaultEditorFactory factory(validators());
        for (const bool isOptional : {false, true}) {
            const auto editor = factory.create(
                "lineedit", hintsOf({{"validator.optional", isOptional}}));
            const std::unique_ptr<QWidget> widget(editor->widget);
            QCOMPARE(editor->widget->styleSheet(), QString());
            QVERIFY(qobject_cast<QHBoxLayout*>(editor->widget->layout()));
            QVERIFY(editOf(*editor)->accessibleName().isEmpty());
            QCOMPARE(dynamic_cast<QWidget*>(editor->control), editor->widget);
            QCOMPARE(buttonOf(*editor) != nullptr, isOptional);
        }
    }

    // The chain gives 12 while the user types. Then the field shows what the chain writes.
    void aChainHasTheBoundsOfWhatItWrites()
    {
        const Hints hints = hintsOf({{"validator.kind", kind<ChainedValidator>()},
            {"validator.chained_validators", std::vector<ValidatorKind>({kindOf<int>()})},
            {"validator.maximum", 5}});
        QCOMPARE(built(DefaultEditorFactory(validators()), "lineedit", hints, entered("12")),
            QString("int 5 as \"5\""));
        QCOMPARE(built(DefaultEditorFactory(validators()), "lineedit", hints,
                     [](const Editor& editor) {
                         QTest::keyClicks(editOf(editor), "12");
                         return given(editor);
                     }),
            QString("int 12"));
    }

    void theResetFunctionGetsTheIdAndTwoEmptyValues()
    {
        QString arguments;
        const Hints hints = hintsOf({{"validator.kind", kind<int>()},
            {"reset_callback", resetHint([&](int id, boost::any& shown, boost::any& reported) {
                 arguments =
                     QStringLiteral("%1, %2, %3").arg(id).arg(describe(shown), describe(reported));
             })}});
        QCOMPARE(built(DefaultEditorFactory(validators()), "multi_edit_line_edit_with_reset_button",
                     hints, clicked()),
            QString("empty as \"0\""));
        QCOMPARE(arguments, QString("0, empty, empty"));
    }

    void theButtonOfAnOptionalLineEditClears_data()
    {
        columns<std::string, HintList, QString>("name", "hints", "result");
        row("an int", "lineedit"s, HintList{{"validator.kind", kind<int>()}}, "empty as \"\"");
        row("a double", "lineedit"s, HintList{{"validator.kind", kind<double>()}}, "empty as \"\"");
        row("a quantity", "unit"s, HintList{{"validator.kind", kind<IConverter::quantity>()}},
            "empty as \"\"");
    }
    void theButtonOfAnOptionalLineEditClears()
    {
        QFETCH(std::string, name);
        QFETCH(HintList, hints);
        hints.emplace_back("validator.optional", true);
        QTEST(built(DefaultEditorFactory(validators()), name, hintsOf(hints), clicked()), "result");
    }

    // The kind does not read "optional".
    void theButtonOfAnOptionalTextGivesNoValueToo()
    {
        expectAssert("value.type() == typeid(std::wstring) || value.type() == typeid(std::string)",
            {"value.type().name()"});
        QCOMPARE(
            built(DefaultEditorFactory(validators()), "lineedit",
                hintsOf({{"validator.kind", kind<std::string>()}, {"validator.optional", true}}),
                clicked()),
            QString("empty as \"\""));
    }

    void aLineEditWithoutAValidatorTakesText_data()
    {
        columns<bool, std::string, HintList>("withValidators", "name", "hints");
        const HintList anInt = {{"validator.kind", kind<int>()}};
        row("no validator factory", false, "lineedit"s, anInt);
        row("no hints", true, "lineedit"s, HintList());
        row("a kind that makes none", true, "lineedit"s,
            HintList{{"validator.kind", kind<int>("none")}});
        row("a unit with another kind", true, "unit"s, anInt);
        row("a unit without hints", true, "unit"s, HintList());
        row("a reset button", true, "multi_edit_line_edit_with_reset_button"s, resetTo(3, 4));
        row("an optional line edit", true, "lineedit"s, HintList{{"validator.optional", true}});
    }
    void aLineEditWithoutAValidatorTakesText()
    {
        QFETCH(bool, withValidators);
        QFETCH(std::string, name);
        QFETCH(HintList, hints);
        auto factory = validators();
        factory->add<int>("none", [](const Hints&) { return nullptr; });
        const auto editor =
            DefaultEditorFactory(withValidators ? factory : nullptr).create(name, hintsOf(hints));
        const std::unique_ptr<QWidget> widget(editor->widget);
        auto* field = qobject_cast<MultiEditLineEdit*>(editor->widget);
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        QTest::keyClicks(editOf(*editor), "ab");
        QVERIFY(field->isValueValid());
        expectAssert("m_validator");
        expectAssert("ok", {}, "getValue() failed to validate");
        QVERIFY(editor->control->getCurrentValue().empty());
        for (const QString text : {"12", "", "some text"}) {
            expectAssert("m_validator"); // Enter needs one.
            QCOMPARE(entered(text)(*editor), shownAs(boost::any(), text));
            QCOMPARE(valueChanged.count(), 1);
            valueChanged.clear();
            editor->control->forceVaries();
            QVERIFY(editor->control->dataVaries());
        }
    }

    void aResetFunctionGetsTheIdAndTwoEmptyValues()
    {
        int seenId = -1;
        bool cameEmpty = false;
        Hints hints = hintsOf({{"validator.kind", kind<std::string>()}});
        setResetHint(hints, "reset_callback", [&](int id, boost::any& show, boost::any& report) {
            seenId = id;
            cameEmpty = show.empty() && report.empty();
            show = "Auto"s;
        });
        QCOMPARE(built(DefaultEditorFactory(validators()), "multi_edit_line_edit_with_reset_button",
                     hints, clicked()),
            QString("empty as \"Auto\""));
        QCOMPARE(seenId, 0);
        QVERIFY(cameEmpty);
    }

    void anEmptyResetFunctionIsReportedAtTheClick()
    {
        const Hints hints = hintsOf(
            {{"validator.kind", kind<int>()}, {"reset_callback", resetHint({})}});
        expectAssert("fn");
        QCOMPARE(built(DefaultEditorFactory(validators()), "multi_edit_line_edit_with_reset_button",
                     hints, clicked()),
            QString("int 7 as \"7\""));
    }

    // --- lists

    void aNullFunctionCountsAsMissing_data()
    {
        columns<std::string, HintList>("name", "hints");
        const boost::any null = equalHint(nullptr);
        row("named_value_list", "named_value_list"s,
            HintList{{"entries", steels()}, {"is_equal", null}});
        row("callback", "callback"s,
            HintList{{"callback", editHint([](QWidget*, boost::any&) { return true; })},
                {"is_equal", null}});
    }
    void aNullFunctionCountsAsMissing()
    {
        QFETCH(std::string, name);
        QFETCH(HintList, hints);
        expectAssert(name == "callback" ? "callback && equal_fn" : "nvl && equal_fn");
        QCOMPARE(built(DefaultEditorFactory(validators()), name, hintsOf(hints), className()),
            QString("null"));
    }

    void aListIsAnEnumBox()
    {
        const auto editor =
            DefaultEditorFactory(validators()).create("named_value_list", hintsOf(steelBox()));
        const std::unique_ptr<QWidget> widget(editor->widget);
        QVERIFY(qobject_cast<MultiEditEnumBox*>(editor->widget));
        QCOMPARE(dynamic_cast<QWidget*>(editor->control), editor->widget);
    }

    void anEditableListTakesNamesAndTexts_data()
    {
        columns<bool, QString, QString>("withKind", "text", "result");
        row("a name", true, "S355", "int 355 as \"S355\"");
        row("a text of the validator", true, "12", "int 12 as \"12\"");
        row("a text that it refuses", true, "x", "empty as \"x\"");
        row("a name without a validator", false, "S355", "int 355 as \"S355\"");
        row("a text without a validator", false, "12", "empty as \"12\"");
    }
    void anEditableListTakesNamesAndTexts()
    {
        QFETCH(bool, withKind);
        QFETCH(QString, text);
        HintList hints = steelBox({{"editable", true}});
        if (withKind)
            hints.emplace_back("validator.kind", kind<int>());
        QTEST(built(DefaultEditorFactory(validators()), "named_value_list", hintsOf(hints),
                  entered(text)),
            "result");
    }

    // As setValues() leaves it: without icons a list adjusts to its contents.
    void theSizeOfAList_data()
    {
        columns<std::string, HintList, int>("name", "hints", "policy");
        const PixmapPtrList oneIcon = {boost::make_shared<QPixmap>(8, 8)};
        row("named values", "named_value_list"s, steelBox(), int(QComboBox::AdjustToContents));
        row("editable named values", "named_value_list"s, steelBox({{"editable", true}}),
            int(QComboBox::AdjustToContents));
        row("named values with icons", "named_value_list"s, steelBox({{"pixmaps", oneIcon}}),
            int(QComboBox::AdjustToMinimumContentsLengthWithIcon));
        row("yes or no", "yes_no"s, HintList(), int(QComboBox::AdjustToContents));
    }
    void theSizeOfAList()
    {
        QFETCH(std::string, name);
        QFETCH(HintList, hints);
        const auto editor = DefaultEditorFactory(validators()).create(name, hintsOf(hints));
        const std::unique_ptr<QWidget> widget(editor->widget);
        QTEST(int(listOf(*editor)->sizeAdjustPolicy()), "policy");
    }

    void yesOrNo()
    {
        const auto editor = DefaultEditorFactory(nullptr).create("yes_no", {});
        const std::unique_ptr<QWidget> widget(editor->widget);
        QVERIFY(qobject_cast<MultiEditEnumBox*>(editor->widget));
        QCOMPARE(listOf(*editor)->itemText(0), QString("Yes"));
        QCOMPARE(listOf(*editor)->itemText(1), QString("No"));
        QCOMPARE(given(*editor), QString("bool true"));
        editor->control->setValue(false);
        QCOMPARE(listOf(*editor)->currentText(), QString("No"));
        QCOMPARE(given(*editor), QString("bool false"));
        editor->control->reset();
        editor->control->readValue(true);
        editor->control->readValue(true);
        QVERIFY(!editor->control->dataVaries());
        editor->control->readValue(false);
        QVERIFY(editor->control->dataVaries());
    }

    void yesOrNoVariesWithAnythingElse_data()
    {
        columns<boost::any, bool>("second", "varies");
        row("the same", boost::any(true), false);
        row("the other one", boost::any(false), true);
        row("none", boost::any(), true);
        row("a number", boost::any(1), true);
        row("a text", boost::any("Yes"s), true);
    }
    void yesOrNoVariesWithAnythingElse()
    {
        QFETCH(boost::any, second);
        const auto editor = DefaultEditorFactory(nullptr).create("yes_no", {});
        const std::unique_ptr<QWidget> widget(editor->widget);
        editor->control->readValue(true);
        editor->control->readValue(second);
        QTEST(editor->control->dataVaries(), "varies");
    }

    // --- copies

    void copiesOutliveTheFirstFactory_data()
    {
        columns<bool, bool>("moved", "assigned");
        row("a copy", false, false);
        row("a copy by assignment", false, true);
        row("a factory that was moved to", true, false);
        row("a factory that was moved to by assignment", true, true);
    }
    void copiesOutliveTheFirstFactory()
    {
        QFETCH(bool, moved);
        QFETCH(bool, assigned);
        auto first = std::make_unique<DefaultEditorFactory>(validators());
        const std::weak_ptr<DefaultValidatorFactory> shared = first->validators();
        const auto none = [](const Hints&) { return nullptr; };
        first->add("of both", none);
        DefaultEditorFactory other(nullptr);
        other.add("replaced", none);
        if (assigned && moved)
            other = std::move(*first);
        else if (assigned)
            other = *first;
        DefaultEditorFactory copy = assigned ? other : moved ? std::move(*first) : *first;
        QVERIFY(copy.exists("of both"));
        QVERIFY(!copy.exists("replaced"));
        QCOMPARE(built(*first, "lineedit", {}, className()),
            moved ? unknownKey : QString("MultiEditLineEdit"));
        QCOMPARE(first->validators() == nullptr, moved);
        copy.add("of the copy", none);
        first->add("of the first", none);
        QVERIFY(!first->exists("of the copy"));
        QVERIFY(!copy.exists("of the first"));
        first.reset();
        other = DefaultEditorFactory(nullptr);

        QCOMPARE(copy.validators(), shared.lock());
        copy.validators()->add<int>(
            "own", [](const Hints&) { return std::make_unique<DoubleEditValidator>(); });
        const Hints hints = hintsOf({{"validator.kind", kind<int>("own")}});
        QCOMPARE(built(copy, "lineedit", hints, entered("1")), QString("double 1 as \"1.000\""));
        QCOMPARE(built(copy, "named_value_list",
                     hintsOf(steelBox({{"editable", true}, {"validator.kind", kind<int>("own")}})),
                     entered("1")),
            QString("double 1 as \"1.000\""));
        copy = DefaultEditorFactory(nullptr);
        QVERIFY(shared.expired());
    }

    void assigningAFactoryToItselfChangesNothing()
    {
        DefaultEditorFactory factory(validators());
        DefaultEditorFactory& same = factory;
        for (const bool moved : {false, true}) {
            if (moved)
                factory = std::move(same);
            else
                factory = same;
            QCOMPARE(built(factory, "lineedit", hintsOf({{"validator.kind", kind<int>()}}),
                         entered("1")),
                QString("int 1 as \"1\""));
            QVERIFY(factory.validators());
        }
    }

    // The sanitizers see whether the running creator outlives its entry.
    void aCreatorMayChangeItsFactory_data()
    {
        columns<Change>("change");
        row("destroy it", Change([](auto& factory) { factory.reset(); }));
        row("assign to it",
            Change([](auto& factory) { *factory = DefaultEditorFactory(nullptr); }));
        row("add to it", Change([](auto& factory) {
            for (int i = 0; i < 1000; ++i)
                factory->add(std::to_string(i), {});
        }));
    }
    void aCreatorMayChangeItsFactory()
    {
        QFETCH(Change, change);
        auto factory = std::make_unique<DefaultEditorFactory>(validators());
        bool alive = false;
        factory->add("own", [&change, &factory, life = lifeIn(alive)](const Hints&) {
            change(factory);
            return std::make_unique<Editor>(Editor{*life ? new QWidget : nullptr, nullptr});
        });
        QCOMPARE(built(*factory, "own", {}, className()), QString("QWidget"));
        factory.reset();
        QVERIFY(!alive);
    }

    // A kind may do so too, while the editor is made.
    void aKindMayDestroyTheFactory()
    {
        auto factory = std::make_unique<DefaultEditorFactory>(validators());
        factory->validators()->add<int>("own", [&factory](const Hints&) {
            factory.reset();
            return std::make_unique<DoubleEditValidator>();
        });
        QCOMPARE(built(*factory, "lineedit", hintsOf({{"validator.kind", kind<int>("own")}}),
                     entered("1")),
            QString("double 1 as \"1.000\""));
        QVERIFY(!factory);
    }

    // --- the callback kind

    void aCallbackEditorIsAnEmptyWidgetAndAValue()
    {
        Scene scene;
        scene.edit([](QWidget*, boost::any&) { return false; });
        QVERIFY(!scene.widget->parentWidget());
        QVERIFY(!scene.widget->isVisible());
        QVERIFY(dynamic_cast<MultiEditValue*>(scene.control));
        QCOMPARE(scene.widget->property("vrn_property_delegate_filter_focus_out"), QVariant(true));
    }

    void theCallbackRunsAfterTheReturnToTheEventLoop()
    {
        Scene scene;
        int calls = 0;
        QWidget* seen = nullptr;
        scene.edit([&](QWidget* widget, boost::any&) {
            ++calls;
            seen = widget;
            return false;
        });
        QCOMPARE(calls, 0);
        QWidget* const widget = scene.widget;
        QTRY_VERIFY(!scene.widget);
        QCOMPARE(calls, 1);
        QCOMPARE(seen, widget);
        QTest::qWait(20);
        QCOMPARE(calls, 1);
    }

    void whatACallbackLeads_data()
    {
        columns<std::vector<int>, boost::any, bool, QString, QStringList, QString>(
            "filled", "edited", "changed", "seen", "log", "state");
        using Values = std::vector<int>;
        const QStringList none;
        // After the fill the control is not fresh. "is_equal" is asked whether values differ.
        row("filled: a new value is not taken", Values{5}, boost::any(7), true, "int 5",
            QStringList("compare int 7 with int 5"), "int 5");
        row("filled: the same value varies", Values{5}, boost::any(5), true, "int 5",
            QStringList("compare int 5 with int 5"), "varies");
        row("filled: no change", Values{5}, boost::any(7), false, "int 5", none, "int 5");
        row("filled: an empty value", Values{5}, boost::any(), true, "int 5",
            QStringList("compare empty with int 5"), "int 5");
        row("not filled: the value is taken", Values{}, boost::any(7), true, "empty", none,
            "int 7");
        row("not filled: no change", Values{}, boost::any(7), false, "empty", none, "empty");
        row("filled with two that count as different", Values{5, 5}, boost::any(7), true, "empty",
            QStringList("compare int 5 with int 5"), "varies");
        row("filled with two that do not", Values{5, 6}, boost::any(7), true, "int 5",
            QStringList({"compare int 6 with int 5", "compare int 7 with int 5"}), "int 5");
    }
    void whatACallbackLeads()
    {
        QFETCH(std::vector<int>, filled);
        QFETCH(boost::any, edited);
        QFETCH(bool, changed);
        Scene scene;
        QString seen;
        scene.edit([&](QWidget*, boost::any& value) {
            seen = describe(value);
            value = edited;
            return changed;
        });
        LastLook lastLook(scene);
        for (const int value : filled)
            scene.control->readValue(value);
        QTRY_VERIFY(!scene.widget);
        QTEST(seen, "seen");
        QTEST(scene.log, "log");
        QTEST(lastLook.state, "state");
    }

    // Before, during and after the callback. The sanitizers look on.
    void anyoneMayGoAtAnyTime_data()
    {
        columns<Step, Step, Step, QStringList>("before", "during", "after", "log");
        const Step nothing = [](Scene&) {};
        const Step dropEditor = [](Scene& scene) { scene.editor.reset(); };
        const Step dropFactory = [](Scene& scene) { scene.factory.reset(); };
        const Step destroyWidget = [](Scene& scene) { delete scene.widget; };
        const Step destroyLater = [](Scene& scene) {
            scene.widget->deleteLater();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        const Step adopt = [](Scene& scene) { scene.widget->setParent(scene.form.get()); };
        const Step destroyForm = [](Scene& scene) { scene.form.reset(); };
        const Step both = [=](Scene& scene) {
            dropEditor(scene);
            destroyWidget(scene);
        };
        const Step all = [=](Scene& scene) {
            both(scene);
            dropFactory(scene);
        };
        const Step another = [](Scene& scene) {
            Hints hints;
            setEditHint(hints, "callback", [&scene](QWidget*, boost::any&) {
                scene.log << "another";
                return false;
            });
            setEqualHint(hints, "is_equal", &vrn::any_equal<int>);
            scene.factory->create("callback", hints);
        };
        const QStringList neverAsked;
        const QStringList notRead("asked");
        const QStringList read({"asked", "compare int 7 with int 5"});
        row("nothing goes", nothing, nothing, nothing, read);
        row("the editor before", dropEditor, nothing, nothing, read);
        row("the factory before", dropFactory, nothing, nothing, read);
        row("the widget before", destroyWidget, nothing, nothing, neverAsked);
        row("the widget before, by deleteLater", destroyLater, nothing, nothing, neverAsked);
        row("the widget's parent before", Step([=](Scene& scene) {
            adopt(scene);
            destroyForm(scene);
        }),
            nothing, nothing, neverAsked);
        row("all before", all, nothing, nothing, neverAsked);
        row("the editor during", nothing, dropEditor, nothing, read);
        row("the factory during", nothing, dropFactory, nothing, read);
        row("the widget during", nothing, destroyWidget, nothing, notRead);
        row("the widget's parent during", adopt, destroyForm, nothing, notRead);
        row("all during", nothing, all, nothing, notRead);
        row("a dialog during", nothing, inDialog(nothing), nothing, read);
        row("a dialog during, without the editor", dropEditor, inDialog(nothing), nothing, read);
        row("the editor in a dialog", nothing, inDialog(dropEditor), nothing, read);
        row("the widget in a dialog", nothing, inDialog(destroyWidget), nothing, notRead);
        row("the widget's parent in a dialog", adopt, inDialog(destroyForm), nothing, notRead);
        row("all in a dialog", nothing, inDialog(all), nothing, notRead);
        row("all in a dialog in a dialog", nothing, inDialog(inDialog(all)), nothing, notRead);
        row("another one is made in a dialog", nothing, inDialog(another), nothing,
            QStringList({"asked", "another", "compare int 7 with int 5"}));
        row("the editor after", nothing, nothing, dropEditor, read);
        row("the widget after", nothing, nothing, destroyWidget, read);
        row("the widget's parent after", adopt, nothing, destroyForm, read);
        row("all after", nothing, nothing, all, read);
    }
    void anyoneMayGoAtAnyTime()
    {
        QFETCH(Step, before);
        QFETCH(Step, during);
        QFETCH(Step, after);
        QFETCH(QStringList, log);
        bool alive = false;
        Scene scene;
        scene.edit([&scene, &during, life = lifeIn(alive)](QWidget*, boost::any& value) {
            scene.log << "asked";
            during(scene);
            value = 7;
            return *life;
        });
        scene.control->readValue(5);
        before(scene);
        while (scene.widget && scene.log.isEmpty())
            QCoreApplication::processEvents();
        const bool hasGone = log.isEmpty() || log.last() == "asked";
        QCOMPARE(scene.widget.isNull(), hasGone);
        after(scene);
        QTRY_VERIFY(!scene.widget);
        QTRY_VERIFY(!alive);
        QCOMPARE(scene.log, log);
    }

    void theWidgetGoesIfTheCallbackThrows()
    {
        const ThroughQt throughQt;
        Scene scene;
        scene.edit(
            [](QWidget*, boost::any&) -> bool { throw std::runtime_error("from the callback"); });
        QTRY_VERIFY(!scene.widget);
        QCOMPARE(CatchingApplication::instance().caught,
            std::vector<std::string>({"from the callback"}));
    }
};

VRN_TEST_IN(TestDefaultEditorFactory, CatchingApplication)
#include "tst_default_editor_factory.moc"
