#include <vrn/base/any_predicates.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/factories.h>
#include <vrn/qt/layouters.h>
#include <vrn/qt/table_view.h>
#include <vrn/qt/validators.h>
#include <vrn/units/units.h>

#include <boost/function.hpp>
#include <boost/make_shared.hpp>
#include <boost/regex.hpp>
#include <boost/throw_exception.hpp>

#include <QClipboard>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopeGuard>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QToolButton>

#include "document_table.h"
#include "support/catching_application.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <typeinfo>

using namespace vrn::qt;
using namespace vrn::units;
using vrn::test::codeOf;
using vrn::test::columns;
using vrn::test::row;
using vrn::test::ThroughQt;

namespace {

using Code = std::function<void()>;

struct OfTheApplication
{};

/// Whether an exception is exactly of a type. Boost throws a type derived from it, which
/// adds the place of the throw.
using IsOfType = bool (*)(const std::exception&);

template <typename T>
bool isOfType(const std::exception& error)
{
    return typeid(error) == typeid(T) || typeid(error) == typeid(boost::wrapexcept<T>);
}

const QMap<QString, IsOfType>& types()
{
    static const QMap<QString, IsOfType> byName = {
        {"vrn::units::UnknownUnit", &isOfType<UnknownUnit>},
        {"boost::regex_error", &isOfType<boost::regex_error>},
        {"boost::bad_any_cast", &isOfType<boost::bad_any_cast>},
        {"boost::bad_function_call", &isOfType<boost::bad_function_call>},
        {"boost::property_tree::ptree_bad_path", &isOfType<boost::property_tree::ptree_bad_path>},
        {"std::bad_function_call", &isOfType<std::bad_function_call>},
        {"std::filesystem::filesystem_error", &isOfType<std::filesystem::filesystem_error>},
        {"std::out_of_range", &isOfType<std::out_of_range>},
        {"std::logic_error", &isOfType<std::logic_error>},
        {"std::invalid_argument", &isOfType<std::invalid_argument>},
        {"bond::CoreException", &isOfType<bond::CoreException>},
    };
    return byName;
}

constexpr std::bitset<32> noFlags;

constexpr auto gapAmongUnits = static_cast<UnitId::UnitId>(12);
constexpr auto gapAmongKinds = static_cast<UnitId::UnitId>(1035);
constexpr auto negativeId = static_cast<UnitId::UnitId>(-1);

/// A context in which `kind` is shown in `unit`.
Context showing(UnitId::UnitId kind, UnitId::UnitId unit)
{
    UnitFormat format;
    format.unit_id = unit;
    return Context(0, {{kind, format}});
}

/// What Enter does to `text` in a field.
Code enter(IValidator* validator, const QString& text)
{
    const IValidator::pointer shared(validator);
    return [=] {
        const std::unique_ptr<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, shared, 0, ExpandHorizontal));
        field->edit()->setText(text);
        field->onEditingFinished();
    };
}

Code validate(const Context& context, UnitId::UnitId id)
{
    return [=] {
        boost::any value;
        UnitValidator(context, id).validate("12", value, noFlags);
    };
}

Code write(const Context& context, UnitId::UnitId id)
{
    return [=] { UnitValidator(context, id).reformat(IConverter::quantity{id, 1.0}, noFlags); };
}

Code convert(IConverter::quantity q, UnitId::UnitId id)
{
    return [=] { Context().converter().convert(q, id); };
}

Code format(const Context& context, UnitId::UnitId id)
{
    return [=] { context.format({id, 1.0}, std::locale::classic()); };
}

template <typename Call>
Code withGroupOfTwo(Call call)
{
    return [=] {
        QWidget parent;
        HBoxLayouter row;
        row.onCreate(&parent);
        MultiEditCheckBoxGroup group(&parent, row, {"x", "y"}, {});
        call(group);
    };
}

struct NotAnInt : public IntegerValidator<int>
{
    NotAnInt()
        : IntegerValidator(0, 9, true)
    {}

    bool validate(const QString& /*text*/, boost::any& value, const std::bitset<32>& /*f*/) override
    {
        value = 1.5;
        return true;
    }
};

void pickWhileItVaries()
{
    MultiEditFilePicker picker(nullptr, TypeofPathFile);
    picker.forceVaries();
    QMetaObject::invokeMethod(&picker, "onPick");
}

// What a link to itself leads to cannot be found out.
void pickBeyondALoop()
{
    const QTemporaryDir folder;
    const QString loop = folder.filePath("loop");
    QVERIFY(QFile::link("loop", loop));
    MultiEditFilePicker picker(nullptr, TypeofPathFileInFolder);
    picker.setValue((loop + "/a/b.txt").toStdString());
    QMetaObject::invokeMethod(&picker, "onPick");
}

/// What Ctrl and `key` do to `rows` selected cells of a table, with a block of two lines on the
/// clipboard.
Code pressInTable(int key, int rows, const IValidator::pointer& validator)
{
    return [=] {
        QStandardItemModel model(rows, 1);
        model.setData(
            model.index(0, 0), QVariant::fromValue<boost::any>(std::string("x")), EditRole);
        boost::function<IValidator::pointer(int)> getColumnValidator;
        if (validator)
            getColumnValidator = [=](int) { return validator; };
        detail::CppDbTableViewBase view(&model, getColumnValidator, nullptr);
        view.setModel(&model);
        view.selectAll();
        QApplication::clipboard()->setText("1\n2\n");
        QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
        view.keyPressEvent(&event);
    };
}

void hookWithoutAFunction()
{
    const std::unique_ptr<SimpleLineEdit> field(
        SimpleLineEdit::create(nullptr, {}, new StringEditValidator(9), 0, ExpandHorizontal));
    const OnValueChangedHook hook(field.get(), {});
    Q_EMIT field->valueChanged();
}

Hints editorHints(const char* editor)
{
    Hints hints;
    setTextHint(hints, "editor", editor);
    return hints;
}

void anEnumBoxWithoutValues()
{
    Hints hints = editorHints("enumbox");
    setEqualHint(hints, "equal_value_fn", &vrn::any_equal<int>);
    createEditorFromHints(nullptr, hints);
}

void anEmptyRegisteredFunction()
{
    registerEditor("empty", {});
    const auto end = qScopeGuard([] { unregisterEditor("empty"); });
    createEditorFromHints(nullptr, editorHints("empty"));
}

/// Hints for a number whose maximum is a text.
Hints wrongMaximum(const std::string& branch)
{
    Hints hints;
    setHint<ValidatorKind>(hints, branch + "kind", kindOf<double>());
    setTextHint(hints, branch + "maximum", "9");
    return hints;
}

DefaultEditorFactory editorFactory()
{
    return DefaultEditorFactory(std::make_shared<DefaultValidatorFactory>());
}

StringEditValidator* withPattern(const wchar_t* pattern)
{
    auto* validator = new StringEditValidator(9);
    validator->setAllowedRegex(pattern);
    return validator;
}

/// The code of each row, by what the row says of "By" and "When".
const QMap<QString, QList<Code>>& cases()
{
    const IConverter::quantity metre{UnitId::METRE, 1.0};
    const IConverter::quantity unknown{gapAmongUnits, 1.0};
    static const QMap<QString, QList<Code>> byRow = {
        {"DistanceEditValidator: there is a unit after the number that it does not know, as in "
         "\"3 furlong\"",
            {enter(new DistanceEditValidator(UnitId::METRE, 0.0, 9.0, true), "3 furlong")}},
        {"StringEditValidator: the first text is validated, and the pattern does not compile",
            {enter(withPattern(L"("), "x")}},
        {"UnitValidator: a value is written, by Enter too, and its kind is shown in a unit that it "
         "does not list: MAT_ELSUP_M3 and INERTIA_POINT in system 7, and any kind after an "
         "override to such a unit",
            {enter(new UnitValidator(Context(7), UnitId::MAT_ELSUP_M3), "3 kip/ft"),
                enter(new UnitValidator(Context(7), UnitId::INERTIA_POINT), "3 tm2"),
                write(Context(7), UnitId::MAT_ELSUP_M3),
                write(showing(UnitId::GEO_LENGTH, UnitId::KILONEWTON), UnitId::GEO_LENGTH)}},
        {"UnitValidator: a text is validated, and its id, or the unit in which that is shown, is "
         "neither a unit nor a kind; or it is a kind, and the system is not one of 0 to 9",
            {validate(Context(), gapAmongUnits), validate(Context(), gapAmongKinds),
                validate(Context(), negativeId),
                validate(showing(UnitId::GEO_LENGTH, gapAmongUnits), UnitId::GEO_LENGTH),
                validate(showing(UnitId::GEO_LENGTH, gapAmongKinds), UnitId::GEO_LENGTH),
                validate(Context(10), UnitId::GEO_LENGTH)}},
        {"UnitValidator: a value is written, and its id is negative, or 1000 or more and not a "
         "kind; or it is a kind, and the system is not one of 0 to 9",
            {write(Context(), gapAmongKinds), write(Context(), negativeId),
                write(Context(-1), UnitId::GEO_LENGTH)}},
        {"UnitValidator: a value is written, and its id is below 1000 and not a unit, or the unit "
         "in which it is shown does not exist",
            {write(Context(), gapAmongUnits),
                write(showing(UnitId::GEO_LENGTH, gapAmongUnits), UnitId::GEO_LENGTH),
                write(showing(UnitId::GEO_LENGTH, gapAmongKinds), UnitId::GEO_LENGTH)}},
        {"IntegerValidator: editing ends, and the validate of a class derived from it has left a "
         "value of another type",
            {enter(new NotAnInt, "1")}},
        {"MultiEditFilePicker: its button is clicked while it varies", {&pickWhileItVaries}},
        {"MultiEditFilePicker that picks a folder for a file: its button is clicked, and the file "
         "system does not tell whether the folder exists",
            {&pickBeyondALoop}},
        {"CppDbTableViewBase: a block is pasted on several cells, and there is a row of them for "
         "which it has no line",
            {pressInTable(Qt::Key_V, 3, boost::make_shared<StringEditValidator>(9))}},
        {"CppDbTableViewBase: cells are copied or pasted, and the function that gives the "
         "validators is empty",
            {pressInTable(Qt::Key_C, 1, nullptr), pressInTable(Qt::Key_C, 2, nullptr),
                pressInTable(Qt::Key_V, 1, nullptr), pressInTable(Qt::Key_V, 2, nullptr)}},
        {"MultiEditCheckBoxGroup: it is given an index past the end",
            {withGroupOfTwo([](auto& group) { group.getValue(2); }),
                withGroupOfTwo([](auto& group) { group.setValue(2, true); }),
                withGroupOfTwo([](auto& group) { group.readValue(2, true); }),
                withGroupOfTwo([](auto& group) { group.dataVaries(2); }),
                withGroupOfTwo([](auto& group) { group.setEnabled(2, true); })}},
        {"OnValueChangedHook: the signal comes, and the function is empty",
            {&hookWithoutAFunction}},
        {"Converter: it is asked before set_unit_provider()",
            {[] { Converter().can_convert(UnitId::METRE, UnitId::METRE); },
                [=] { Converter().convert(metre, UnitId::METRE); },
                [=] { Converter().to_base(metre); },
                [] { Converter().from_base(1.0, UnitId::METRE); }}},
        {"Converter, Context: a quantity is converted to a unit that does not fit, or written in "
         "one",
            {convert(metre, UnitId::KILONEWTON), format(Context(7), UnitId::INERTIA_POINT)}},
        {"IUnitProvider, Converter, Context: an id is neither a unit nor a kind, or the other "
         "spellings of a kind are asked for",
            {[] { VarnelikUnitProvider().get_dimension(gapAmongUnits); },
                [] { VarnelikUnitProvider().get_factor(gapAmongUnits); },
                [] { VarnelikUnitProvider().get_symbol(gapAmongKinds); },
                [] { VarnelikUnitProvider().get_compatible_units(negativeId); },
                [] { VarnelikUnitProvider().get_alternative_symbols(gapAmongUnits); },
                [] { VarnelikUnitProvider().get_alternative_symbols(UnitId::GEO_LENGTH); },
                convert(metre, gapAmongUnits), format(Context(), gapAmongUnits),
                [unknown] { Context().converter().to_base(unknown); },
                [] { Context().converter().from_base(1.0, gapAmongUnits); },
                [] { Context().get_display_label(gapAmongUnits); }}},
        {"IFormatProvider, Context, EntryReader: an id is neither below 1000 nor a kind, or the "
         "digits or the "
         "dimension of an id below 1000 are asked for that is not a unit",
            {[] { UnitsetFormatProvider().get_unit(gapAmongKinds); },
                [] { UnitsetFormatProvider().get_format(negativeId); },
                [] { UnitsetFormatProvider().get_label(gapAmongKinds); },
                [] { UnitsetFormatProvider().get_precision(gapAmongKinds); },
                [] { UnitsetFormatProvider().get_precision(gapAmongUnits); },
                [] { Context().get_display_dimension(gapAmongUnits); },
                [] { Context().get_display_label(gapAmongKinds); },
                [] { Context().parse(L"1", gapAmongUnits, std::locale::classic()); },
                [] { EntryReader(Context(), gapAmongKinds); },
                [] { EntryReader(Context(), gapAmongUnits); }, format(Context(), gapAmongKinds)}},
        {"createEditorFromHints(), ValidatorFactory, DefaultEditorFactory: a hint has another type "
         "than the one that is asked for",
            {[] {
                 Hints hints = editorHints("lineedit");
                 setHint<int>(hints, "optional", 1);
                 createEditorFromHints(nullptr, hints);
             },
                [] { DefaultValidatorFactory().create(kindOf<double>(), wrongMaximum("")); },
                [] { editorFactory().create("lineedit", wrongMaximum("validator.")); }}},
        {"createEditorFromHints(): an enum box is asked for without \"values\"; the same with the "
         "name of another hint that is needed",
            {&anEnumBoxWithoutValues}},
        {"createEditorFromHints(): the function that was registered for the editor is empty",
            {&anEmptyRegisteredFunction}},
        {"ValidatorFactory, DefaultEditorFactory: something is created by a name or a kind that "
         "was not added",
            {[] { DefaultValidatorFactory().create(kindOf<float>(), Hints()); },
                [] { editorFactory().create("slider", Hints()); }}},
        {"ValidatorFactory, DefaultEditorFactory: a name or a kind is added that is there already",
            {[] { DefaultValidatorFactory().add<int>("", {}); },
                [] { editorFactory().add("unit", {}); }}},
        {"ValidatorFactory, DefaultEditorFactory: the function that was added is empty",
            {[] {
                 DefaultValidatorFactory factory;
                 factory.add<float>("", {});
                 factory.create(kindOf<float>(), Hints());
             },
                [] {
                    DefaultEditorFactory factory = editorFactory();
                    factory.add("slider", {});
                    factory.create("slider", Hints());
                }}},
        {"UnitFormat: the value of its label is asked for, and there is none",
            {[] { UnitFormat().label.value(); }}},
    };
    return byRow;
}

QString keyOf(const QStringList& row)
{
    QString key = row.at(2) + ": " + row.at(3);
    return key.remove('`');
}

QList<QStringList> rows()
{
    return vrn::test::tableRows("exceptions.md", {"Thrown", "`what()`", "By", "When"});
}

} // namespace

Q_DECLARE_METATYPE(Code)

/// Runs the tables of docs/exceptions.md: what they say is thrown, and they
/// name everything that is thrown here.
class TestExceptionsDocument : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachRowHasACaseAndEachCaseARow()
    {
        QStringList documented;
        for (const QStringList& row : rows())
            documented.append(keyOf(row));
        for (const QString& key : documented)
            QVERIFY2(cases().contains(key), qPrintable("no case: " + key));
        for (const QString& key : cases().keys())
            QVERIFY2(documented.count(key) == 1, qPrintable("not one row: " + key));
    }

    void aRow_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("text");
        for (const QStringList& row : rows())
            QTest::newRow(qPrintable(keyOf(row))) << codeOf(row.at(0)) << codeOf(row.at(1));
    }
    void aRow()
    {
        QFETCH(QString, type);
        QFETCH(QString, text);
        QVERIFY2(types().contains(type), qPrintable(type));
        // The tests of each class look at the reports.
        const auto catcher = vrn::smartassert::set_assert_handler([](const auto&) {});
        const auto end = qScopeGuard([&] { vrn::smartassert::set_assert_handler(catcher); });
        const ThroughQt throughQt;
        for (const Code& code : cases().value(QTest::currentDataTag())) {
            try {
                code();
                QFAIL("nothing is thrown");
            } catch (const std::exception& error) {
                QVERIFY2(types().value(type)(error), typeid(error).name());
                if (!text.isEmpty())
                    QCOMPARE(QString(error.what()), text);
            }
        }
    }

    void whatAFunctionThrowsPasses_data()
    {
        columns<Code>("code");
        const auto fail = [](const auto&...) { throw OfTheApplication(); };
        row("a hint", Code([=] {
            StringEditValidator validator(9);
            validator.setEditHintFunction([=](const QString& text) {
                fail();
                return text;
            });
            validator.getEditHint("x");
        }));
        row("a conversion", Code([=] {
            ConversionValidator validator(boost::make_shared<StringEditValidator>(9));
            validator.setConversionFn(fail, {});
            validator.reformat(std::string("x"), noFlags);
        }));
        row("a comparison", Code([] {
            MultiEditValue value(
                [](const boost::any&, const boost::any&) -> bool { throw OfTheApplication(); });
            value.readValue(1);
            value.readValue(1);
        }));
        row("the function of a button", Code([=] {
            MultiEditLineEditWithButton field(
                new StringEditValidator(9), 1, std::function<void(int)>(fail));
            field.getButton()->click();
        }));
        row("a saver", Code([=] {
            MultiEditValue value(&vrn::any_differ<int>);
            value.setCanBeSaved("x",
                [=](vrn::KeyValueStorage&) {
                    fail();
                    return true;
                },
                {});
            vrn::KeyValueStorage storage;
            value.save(storage);
        }));
        row("a loader", Code([=] {
            MultiEditValue value(&vrn::any_differ<int>);
            value.setCanBeSaved("x", {}, fail);
            value.load({});
        }));
        row("a slot", Code([=] {
            QWidget parent;
            auto* box = MultiEditCheckBox::create("x", &parent);
            QObject::connect(box, &MultiEditCheckBox::valueChanged, &parent, [=] { fail(); });
            box->setChecked(true);
        }));
    }
    void whatAFunctionThrowsPasses()
    {
        QFETCH(Code, code);
        const ThroughQt throughQt;
        QVERIFY_EXCEPTION_THROWN(code(), OfTheApplication);
    }
};

VRN_TEST(TestExceptionsDocument)
#include "tst_exceptions_document.moc"
