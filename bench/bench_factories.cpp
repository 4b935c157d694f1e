#include <vrn/q/input_context.h>
#include <vrn/qt/chained_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/factories.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/named_value_list_validator.h>
#include <vrn/qt/string_edit_validator.h>
#include <vrn/qt/unit_validator.h>

#include <vrn/base/any_predicates.h>

#include <QLayout>
#include <QWidget>

#include <limits>
#include <memory>
#include <unordered_map>
#include <vector>

#include "comparison.h"

namespace bench {
namespace {

using namespace vrn::qt;

constexpr std::size_t editors = 200;
constexpr int validators = 1000;

// --- a form ------------------------------------------------------------------------------

// One kind of editor: described, and made by hand.
struct Kind
{
    Hints hints;
    std::function<void(QWidget*)> make;
};

Hints lineEdit(const char* type)
{
    Hints hints;
    setTextHint(hints, "editor", "lineedit");
    setTextHint(hints, "validator.type", type);
    return hints;
}

void makeLineEdit(QWidget* form, IValidator* validator)
{
    MultiEditLineEdit::create(form, QString(), validator, 1, ExpandHorizontal);
}

std::vector<Kind> kindsOfForm()
{
    using Integers = std::numeric_limits<int>;
    const NamedValueList grades = {{QStringLiteral("S235"), 235}, {QStringLiteral("S355"), 355}};
    std::vector<Kind> kinds;
    kinds.push_back({lineEdit("string"), [](QWidget* form) {
                         auto* validator = new StringEditValidator(256);
                         makeLineEdit(form, validator);
                         validator->setStorageType(StringEditValidator::StorageTypeUtf8String);
                     }});
    kinds.push_back(
        {lineEdit("double"), [](QWidget* form) { makeLineEdit(form, new DoubleEditValidator); }});
    kinds.push_back(
        {lineEdit("int"), [](QWidget* form) {
             makeLineEdit(form, new IntegerValidator<int>(Integers::min(), Integers::max(), true));
         }});
    kinds.push_back({lineEdit("unit"), [](QWidget* form) {
                         makeLineEdit(form,
                             new UnitValidator(vrn::units::get_active_input_context(),
                                 vrn::units::UnitId::GEO_LENGTH));
                     }});
    setHint<vrn::units::UnitId::UnitId>(
        kinds.back().hints, "validator.unit_id", vrn::units::UnitId::GEO_LENGTH);
    kinds.push_back({Hints(), [grades](QWidget* form) {
                         auto* box = MultiEditEnumBox::create(
                             form, QString(), &vrn::any_equal<int>);
                         box->setValues(grades);
                         box->layout()->setContentsMargins(0, 0, 0, 0);
                     }});
    setTextHint(kinds.back().hints, "editor", "enumbox");
    setHint<NamedValueList>(kinds.back().hints, "values", grades);
    setEqualHint(kinds.back().hints, "equal_value_fn", &vrn::any_equal<int>);
    return kinds;
}

// The time to destroy the form counts on both sides.
void addForm()
{
    const auto kinds = std::make_shared<std::vector<Kind>>(kindsOfForm());
    add({"factory/form of 200 editors", "create() for each", 1.3,
        [=] {
            QWidget form;
            for (std::size_t i = 0; i < editors; ++i) {
                if (!createEditorFromHints(&form, (*kinds)[i % kinds->size()].hints).widget)
                    qFatal("no editor was made");
            }
        },
        [=] {
            QWidget form;
            for (std::size_t i = 0; i < editors; ++i)
                (*kinds)[i % kinds->size()].make(&form);
        }});
}

// The same from a factory, whose editors have no parent.
void addFactoryForm()
{
    const auto factory = std::make_shared<DefaultEditorFactory>(
        std::make_shared<DefaultValidatorFactory>());
    Hints hints;
    setHint<ValidatorKind>(hints, "validator.kind", kindOf<double>());
    setHint<double>(hints, "validator.minimum", 0.0);
    setHint<double>(hints, "validator.maximum", 1.0);
    add({"factory/200 editors of a factory", "create() for each", 1.3,
        [=] {
            for (std::size_t i = 0; i < editors; ++i)
                delete factory->create("lineedit", hints)->widget;
        },
        [=] {
            for (std::size_t i = 0; i < editors; ++i) {
                delete MultiEditLineEdit::create(
                    nullptr, QString(), new DoubleEditValidator(0.0, 1.0), 0, ExpandHorizontal);
            }
        }});
}

// --- validators --------------------------------------------------------------------------

using Direct = std::function<std::unique_ptr<IValidator>()>;

// What the factory cannot do without: finding the kind, and each hint that it reads. The
// bound is for the sum of these and the constructor.
struct LookUps
{
    std::unordered_map<ValidatorKind, int, boost::hash<ValidatorKind>> kinds;
    std::vector<std::string> keys;

    void run(const ValidatorKind& kind, const Hints& hints) const
    {
        if (kinds.find(kind) == kinds.end())
            qFatal("the kind is missing");
        for (const std::string& key : keys) {
            if (hints.find(key) == hints.not_found())
                qFatal("a hint is missing");
        }
    }
};

void addKind(
    const std::string& name, const ValidatorKind& kind, const Hints& hints, const Direct& direct)
{
    const auto factory = std::make_shared<DefaultValidatorFactory>();
    LookUps lookUps;
    // As many as the factory has.
    lookUps.kinds = {{kindOf<std::string>(), 0}, {kindOf<int>(), 0}, {kindOf<unsigned int>(), 0},
        {kindOf<unsigned short>(), 0}, {kindOf<double>(), 0}, {kindOf<std::string>("color"), 0},
        {kindOf<NamedValueList>(), 0}, {kindOf<bool>(), 0}, {kindOf<ChainedValidator>(), 0}};
    for (const auto& [key, hint] : hints)
        lookUps.keys.push_back(key);
    add({"factory/validator for " + name, "the constructor and the look-ups", 1.5,
        [=] {
            for (int i = 0; i < validators; ++i) {
                if (!factory->create(kind, hints))
                    qFatal("no validator was made");
            }
        },
        [=] {
            for (int i = 0; i < validators; ++i) {
                lookUps.run(kind, hints);
                if (!direct())
                    qFatal("no validator was made");
            }
        }});
}

template <typename T>
void addIntegerKind(const std::string& name)
{
    Hints hints;
    setHint<bool>(hints, "optional", true);
    setHint<T>(hints, "minimum", T(1));
    setHint<T>(hints, "maximum", T(9));
    addKind(name, kindOf<T>(), hints, [] {
        auto validator = std::make_unique<IntegerValidator<T>>(T(1), T(9), true);
        validator->setEmptyValueAllowed(true);
        return validator;
    });
}

void addTextKinds()
{
    Hints hints;
    setHint<int>(hints, "max_length", 40);
    addKind("a text", kindOf<std::string>(), hints, [] {
        auto validator = std::make_unique<StringEditValidator>(40);
        validator->setStorageType(StringEditValidator::StorageTypeUtf8String);
        return validator;
    });
    addKind("a colour", kindOf<std::string>("color"), Hints(), [] {
        auto validator = std::make_unique<StringEditValidator>(7);
        validator->setAllowedRegex(L"#\\d\\d\\d\\d\\d\\d");
        return validator;
    });
}

void addDoubleKind()
{
    Hints hints;
    setHint<int>(hints, "precision", 2);
    setHint<bool>(hints, "optional", true);
    setHint<double>(hints, "minimum", 0.0);
    setHint<double>(hints, "maximum", 1.0);
    addKind("a double", kindOf<double>(), hints, [] {
        auto validator = std::make_unique<DoubleEditValidator>(2, 0.0, 1.0, true);
        validator->setEmptyValueAllowed(true);
        return validator;
    });
}

void addListKinds()
{
    const NamedValueList grades = {{QStringLiteral("S235"), 235}, {QStringLiteral("S355"), 355}};
    Hints hints;
    setHint<NamedValueList>(hints, "entries", grades);
    setEqualHint(hints, "is_equal", &vrn::any_equal<int>);
    addKind("named values", kindOf<NamedValueList>(), hints, [grades] {
        auto validator = std::make_unique<NamedValueListValidator>(grades);
        validator->set_equal_to(&vrn::any_equal<int>);
        return validator;
    });

    const NamedValueList yesNo = {{QStringLiteral("Yes"), true}, {QStringLiteral("No"), false}};
    addKind("yes and no", kindOf<bool>(), Hints(), [yesNo] {
        auto validator = std::make_unique<NamedValueListValidator>(yesNo);
        validator->set_equal_to(&vrn::any_equal<bool>);
        return validator;
    });

    Hints chain;
    setHint<std::vector<ValidatorKind>>(chain, "chained_validators", {kindOf<bool>()});
    addKind("a chain", kindOf<ChainedValidator>(), chain, [yesNo] {
        std::deque<std::unique_ptr<IValidator>> links;
        auto link = std::make_unique<NamedValueListValidator>(yesNo);
        link->set_equal_to(&vrn::any_equal<bool>);
        links.push_back(std::move(link));
        return std::make_unique<ChainedValidator>(std::move(links));
    });
}

} // namespace

void addFactoryComparisons()
{
    addForm();
    addFactoryForm();
    addTextKinds();
    addIntegerKind<int>("an int");
    addIntegerKind<unsigned int>("an unsigned int");
    addIntegerKind<unsigned short>("an unsigned short");
    addDoubleKind();
    addListKinds();
}

} // namespace bench
