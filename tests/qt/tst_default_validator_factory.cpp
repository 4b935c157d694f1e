#include <vrn/base/any_predicates.h>
#include <vrn/qt/chained_validator.h>
#include <vrn/qt/default_validator_factory.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/named_value_list_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/string_edit_validator.h>

#include "default_validator_factory_p.h"
#include "factory_fixture.h"
#include "support/table.h"
#include "support/test_main.h"

#include <QLineEdit>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;
using namespace std::string_literals;

namespace {

using Kinds = std::vector<ValidatorKind>;
using Factory = DefaultValidatorFactory;
using FactoryPtr = std::unique_ptr<Factory>;
using Creator = Factory::Creator;

const boost::any untouched = 42;

boost::any links(const Kinds& kinds)
{
    return kinds;
}

boost::any word(unsigned short value)
{
    return value;
}

/// What the end of editing makes of `text`, and how that is written.
QString entered(IValidator* validator, const QString& text)
{
    if (!validator)
        return "no validator";
    boost::any value = untouched;
    if (!validator->validateWhenFinished(text, value, {}))
        return "refused";
    return shownAs(value, validator->reformat(value, {}));
}

/// The same for a validator that is made from hints.
QString entered(
    const Factory& factory, const boost::any& kind, const Hints& hints, const QString& text)
{
    return outcome([&] {
        return entered(factory.create(boost::any_cast<ValidatorKind>(kind), hints).get(), text);
    });
}

/// What a chain reads in `text`. The links also clamp and write nothing.
QString chainedBy(const Hints& hints, const Factory& factory, const QString& text)
{
    return outcome([&] {
        const auto chain = factory.create(kindOf<ChainedValidator>(), hints);
        boost::any value;
        return chain->validateWhenFinished(text, value, {}) ? describe(value)
                                                            : QStringLiteral("refused");
    });
}

QString chained(const Factory& factory, const Kinds& kinds, const QString& text)
{
    Hints hints;
    setHint<Kinds>(hints, "chained_validators", kinds);
    return chainedBy(hints, factory, text);
}

template <typename T>
bool is(const IValidator& validator)
{
    return dynamic_cast<const T*>(&validator) != nullptr;
}

using IsClass = bool (*)(const IValidator&);

/// A creator of whole numbers that are at most `max`.
Creator atMost(int max)
{
    return [max](const Hints&) { return std::make_unique<IntegerValidator<int>>(0, max, true); };
}

using Change = std::function<void(FactoryPtr&)>;
using Again = std::function<std::unique_ptr<IValidator>(Factory&, const Hints&)>;

std::unique_ptr<IValidator> makeInNewFactory(Factory& /*factory*/, const Hints& hints)
{
    Factory made;
    made.add<ChainedValidator>(
        "again", [&](const Hints& sameHints) { return makeInNewFactory(made, sameHints); });
    return made.create(kindOf<ChainedValidator>(), hints);
}

} // namespace

Q_DECLARE_METATYPE(Again)
Q_DECLARE_METATYPE(IsClass)
Q_DECLARE_METATYPE(Change)

class TestDefaultValidatorFactory : public HintsTest
{
    Q_OBJECT

private Q_SLOTS:
    // --- kinds

    void theKinds_data()
    {
        columns<boost::any, IsClass>("kind", "isClass");
        row("text", kind<std::string>(), IsClass(&is<StringEditValidator>));
        row("int", kind<int>(), IsClass(&is<IntegerValidator<int>>));
        row("unsigned int", kind<unsigned int>(), IsClass(&is<IntegerValidator<unsigned int>>));
        row("unsigned short", kind<unsigned short>(),
            IsClass(&is<IntegerValidator<unsigned short>>));
        row("double", kind<double>(), IsClass(&is<DoubleEditValidator>));
        row("colour", kind<std::string>("color"), IsClass(&is<StringEditValidator>));
        row("named values", kind<NamedValueList>(), IsClass(&is<NamedValueListValidator>));
        row("yes or no", kind<bool>(), IsClass(&is<NamedValueListValidator>));
        row("chain", kind<ChainedValidator>(), IsClass(&is<ChainedValidator>));
    }
    void theKinds()
    {
        QFETCH(boost::any, kind);
        QFETCH(IsClass, isClass);
        const auto key = boost::any_cast<ValidatorKind>(kind);
        Factory factory;
        QVERIFY(factory.exists(key));
        const Hints hints = hintsOf(
            {{"entries", steels()}, {"is_equal", equalHint(&vrn::any_equal<int>)}, {"unknown", 1}});
        QVERIFY(isClass(*factory.create(key, hints)));
        QCOMPARE(outcome([&] {
            factory.add(key, atMost(1));
            return QString("added");
        }),
            duplicateKey);
        QVERIFY(isClass(*factory.create(key, hints)));

        // The same type with another name is free.
        const ValidatorKind own(key.first, "own");
        QVERIFY(!factory.exists(own));
        factory.add(own, atMost(1));
        QCOMPARE(entered(factory, own, {}, "5"), QString("int 1 as \"1\""));
    }

    void otherKindsAreUnknown_data()
    {
        columns<boost::any>("kind");
        row("float", kind<float>());
        row("long", kind<long>());
        row("a wide text", kind<std::wstring>());
        row("a QString", kind<QString>());
        row("a quantity, until the application adds it", kind<vrn::units::IConverter::quantity>());
        row("a text with another name", kind<std::string>("colour"));
        row("the name in capitals", kind<std::string>("Color"));
        row("a name of another type", kind<int>("color"));
    }
    void otherKindsAreUnknown()
    {
        QFETCH(boost::any, kind);
        const Factory factory;
        QVERIFY(!factory.exists(boost::any_cast<ValidatorKind>(kind)));
        QCOMPARE(entered(factory, kind, {}, "1"), unknownKey);
    }

    // --- hints

    // With every other hint in `others`, the one of `key` is missing, given or wrong.
    void everyHint_data()
    {
        columns<boost::any, HintList, std::string, boost::any, boost::any, QString, QString,
            QString>("kind", "others", "key", "given", "wrong", "text", "missing", "whenGiven");
        const HintList none;
        const HintList steelEntries = {{"entries", steels()}};
        const HintList steelEqual = {{"is_equal", equalHint(&vrn::any_equal<int>)}};
        const QString textAbcdef = "std::string \"abcdef\" as \"abcdef\"";
        const QString zero = "empty as \"0\"";
        const QString empty = "empty as \"\"";
        // clang-format off
        row("text: length", kind<std::string>(), none, "max_length"s, boost::any(3), boost::any(std::size_t(3)), "abcdef", textAbcdef, "std::string \"abc\" as \"abc\"");
        row("text: length, the default", kind<std::string>(), none, "max_length"s, boost::any(2147483647), boost::any(2147483647L), "abcdef", textAbcdef, textAbcdef);
        row("int: optional", kind<int>(), none, "optional"s, boost::any(true), boost::any(1), "", zero, empty);
        row("int: not optional", kind<int>(), none, "optional"s, boost::any(false), boost::any("false"s), "", zero, zero);
        row("int: minimum", kind<int>(), none, "minimum"s, boost::any(5), boost::any(5.0), "-2147483648", "int -2147483648 as \"-2147483648\"", "int 5 as \"5\"");
        row("int: maximum", kind<int>(), none, "maximum"s, boost::any(5), boost::any(5U), "2147483647", "int 2147483647 as \"2147483647\"", "int 5 as \"5\"");
        row("unsigned int: optional", kind<unsigned int>(), none, "optional"s, boost::any(true), boost::any(1U), "", zero, empty);
        row("unsigned int: not optional", kind<unsigned int>(), none, "optional"s, boost::any(false), boost::any(0U), "", zero, zero);
        row("unsigned int: minimum", kind<unsigned int>(), none, "minimum"s, boost::any(5U), boost::any(5), "0", "unsigned int 0 as \"0\"", "unsigned int 5 as \"5\"");
        row("unsigned int: maximum", kind<unsigned int>(), none, "maximum"s, boost::any(5U), boost::any(word(5)), "4294967295", "unsigned int 4294967295 as \"4294967295\"", "unsigned int 5 as \"5\"");
        row("unsigned short: optional", kind<unsigned short>(), none, "optional"s, boost::any(true), boost::any(word(1)), "", zero, empty);
        row("unsigned short: not optional", kind<unsigned short>(), none, "optional"s, boost::any(false), boost::any(word(0)), "", zero, zero);
        row("unsigned short: minimum", kind<unsigned short>(), none, "minimum"s, word(5), boost::any(5), "0", "unsigned short 0 as \"0\"", "unsigned short 5 as \"5\"");
        row("unsigned short: maximum", kind<unsigned short>(), none, "maximum"s, word(5), boost::any(short(5)), "65535", "unsigned short 65535 as \"65535\"", "unsigned short 5 as \"5\"");
        row("double: precision", kind<double>(), none, "precision"s, boost::any(1), boost::any(1U), "1.375", "double 1.375 as \"1.375\"", "double 1.375 as \"1.4\"");
        row("double: optional", kind<double>(), none, "optional"s, boost::any(true), boost::any(1), "", "double 0 as \"0.000\"", empty);
        row("double: not optional", kind<double>(), none, "optional"s, boost::any(false), boost::any(0), "", "double 0 as \"0.000\"", "double 0 as \"0.000\"");
        row("double: minimum", kind<double>(), none, "minimum"s, boost::any(2.0), boost::any(2), "1.5", "double 1.5 as \"1.500\"", "double 2 as \"2.000\"");
        row("double: maximum", kind<double>(), none, "maximum"s, boost::any(1.0), boost::any(1.0F), "1.5", "double 1.5 as \"1.500\"", "double 1 as \"1.000\"");
        row("named values: entries", kind<NamedValueList>(), steelEqual, "entries"s, boost::any(steels()), boost::any(std::vector<std::pair<QString, boost::any>>()), "S355", "no validator", "int 355 as \"S355\"");
        row("named values: equality", kind<NamedValueList>(), steelEntries, "is_equal"s, equalHint(&vrn::any_equal<int>), boost::any(std::function<bool(const boost::any&, const boost::any&)>(&vrn::any_equal<int>)), "S355", "no validator", "int 355 as \"S355\"");
        row("chain: links", kind<ChainedValidator>(), none, "chained_validators"s, links({kindOf<int>()}), boost::any(std::deque<ValidatorKind>({kindOf<int>()})), "12", "refused", "int 12 as \"12\"");
        // clang-format on
    }
    void everyHint()
    {
        QFETCH(boost::any, kind);
        QFETCH(HintList, others);
        QFETCH(std::string, key);
        QFETCH(boost::any, given);
        QFETCH(boost::any, wrong);
        QFETCH(QString, text);
        QFETCH(QString, missing);
        const Factory factory;
        Hints hints = hintsOf(others);
        if (missing == "no validator")
            expectAssert("nvl && equal_fn");
        QCOMPARE(entered(factory, kind, hints, text), missing);
        put(hints, key, given);
        QTEST(entered(factory, kind, hints, text), "whenGiven");

        const boost::any noValue;
        for (const boost::any& other : {wrong, noValue}) {
            put(hints, key, other);
            expectWrongHint();
            QCOMPARE(entered(factory, kind, hints, text), wrongType);
            QCOMPARE(wrongHint(), wrongHint(key, other, given));
        }
        // Only the tree itself is read, not a branch of it.
        Hints whole = hintsOf(others);
        put(whole, "validator." + key, wrong);
        if (missing == "no validator")
            expectAssert("nvl && equal_fn");
        QCOMPARE(entered(factory, kind, whole, text), missing);
    }

    void hintsTogether_data()
    {
        columns<boost::any, HintList, QString, QString>("kind", "hints", "text", "result");
        const HintList decimals = {
            {"precision", 1}, {"minimum", 1.0}, {"maximum", 2.0}, {"optional", true}};
        const HintList reversed = {{"minimum", 5}, {"maximum", 3}, {"optional", true}};
        const QString longText(100000, 'x');
        row("a text without a limit", kind<std::string>(), HintList(), longText,
            "std::string \"" + longText + "\" as \"" + longText + "\"");
        row("a negative length does not limit", kind<std::string>(), HintList{{"max_length", -1}},
            "abcdef", "std::string \"abcdef\" as \"abcdef\"");
        row("a number within its range", kind<double>(), decimals, "1.5", "double 1.5 as \"1.5\"");
        row("a number below it", kind<double>(), decimals, "-1", "double 1 as \"1.0\"");
        row("a number above it", kind<double>(), decimals, "3", "double 2 as \"2.0\"");
        row("no number", kind<double>(), decimals, "", "empty as \"\"");
        row("no number where the range is reversed", kind<int>(), reversed, "", "empty as \"\"");
        row("hints of other kinds are not read", kind<int>(),
            HintList{{"max_length", "1"s}, {"precision", 1.0}, {"entries", 1}, {"kind", 1},
                {"chained_validators", 1}},
            "12", "int 12 as \"12\"");
        row("a colour reads no hints", kind<std::string>("color"),
            HintList{{"max_length", "1"s}, {"optional", 1}}, "#123456",
            "std::wstring \"#123456\" as \"#123456\"");
        row("yes or no reads no hints", kind<bool>(), HintList{{"entries", 1}, {"is_equal", 1}},
            "Yes", "bool true as \"Yes\"");
    }
    void hintsTogether()
    {
        QFETCH(boost::any, kind);
        QFETCH(HintList, hints);
        QFETCH(QString, text);
        QTEST(entered(Factory(), kind, hintsOf(hints), text), "result");
    }

    void aTextOfNoLengthIsReported()
    {
        expectAssert("m_maxLen > 0", {"m_maxLen"});
        QCOMPARE(entered(Factory(), kind<std::string>(), hintsOf({{"max_length", 0}}), "abc"),
            QString("std::string \"\" as \"\""));
    }

    // The header of IntegerValidator tells the rule. A double is written by another one.
    void aMinimumAboveTheMaximumIsNotReported_data()
    {
        columns<boost::any, HintList, QString, boost::any, QString>(
            "kind", "hints", "text", "value", "written");
        const HintList ints = {{"minimum", 5}, {"maximum", 3}};
        const HintList counts = {{"minimum", 5U}, {"maximum", 3U}};
        const HintList words = {{"minimum", word(5)}, {"maximum", word(3)}};
        const HintList doubles = {{"minimum", 5.0}, {"maximum", 3.0}};
        row("int: below both", kind<int>(), ints, "1", boost::any(5), "5");
        row("int: the maximum", kind<int>(), ints, "3", boost::any(5), "5");
        row("int: between them", kind<int>(), ints, "4", boost::any(5), "5");
        row("int: the minimum", kind<int>(), ints, "5", boost::any(3), "5");
        row("int: above both", kind<int>(), ints, "7", boost::any(3), "5");
        row("unsigned int: below both", kind<unsigned int>(), counts, "1", boost::any(5U), "5");
        row("unsigned int: above both", kind<unsigned int>(), counts, "7", boost::any(3U), "5");
        row("unsigned short: below both", kind<unsigned short>(), words, "1", word(5), "5");
        row("unsigned short: above both", kind<unsigned short>(), words, "7", word(3), "5");
        row("double: below both", kind<double>(), doubles, "1", boost::any(5.0), "5.000");
        row("double: between them", kind<double>(), doubles, "4", boost::any(5.0), "5.000");
        row("double: above both", kind<double>(), doubles, "7", boost::any(3.0), "3.000");
    }
    void aMinimumAboveTheMaximumIsNotReported()
    {
        QFETCH(boost::any, kind);
        QFETCH(HintList, hints);
        QFETCH(QString, text);
        QFETCH(QString, written);
        const auto key = boost::any_cast<ValidatorKind>(kind);
        const auto validator = Factory().create(key, hintsOf(hints));
        boost::any value;
        QVERIFY(validator->validateWhenFinished(text, value, {}));
        QTEST(value, "value");
        QVERIFY(validator->validate(text, value, {}));
        QCOMPARE(validator->reformat(value, {}), written);
    }

    // The field writes the minimum, and reads that as the maximum.
    void aFieldWithAMinimumAboveTheMaximumGivesTheMaximum()
    {
        const boost::shared_ptr<IValidator> validator(
            Factory().create(kindOf<int>(), hintsOf({{"minimum", 5}, {"maximum", 3}})));
        QWidget form;
        auto* field = SimpleLineEdit::create(&form, "Count", validator, 0, ExpandHorizontal);
        for (const char* text : {"1", "4", "7"}) {
            field->edit()->clear();
            QTest::keyClicks(field->edit(), text);
            QTest::keyClick(field->edit(), Qt::Key_Return);
            QCOMPARE(field->edit()->text(), QString("5"));
            QCOMPARE(field->getValue(), boost::any(3));
        }
    }

    // --- colours

    void aColourHasSixDecimalDigits_data()
    {
        columns<QString, bool>("text", "accepted");
        row("six digits", "#123456", true);
        row("zeros", "#000000", true);
        row("one digit fewer", "#12345", false);
        row("one digit more", "#1234567", false);
        row("many digits more", "#123456123456", false);
        row("a letter among the digits", "#12a456", false);
        row("hexadecimal digits", "#ffffff", false);
        row("no number sign", "123456", false);
        row("seven digits without it", "1234567", false);
        row("a blank before it", " #123456", false);
        row("a line break after it", "#123456\n", false);
        row("a zero character after it", QString("#123456") + QChar(0), false);
        row("a zero character for the last digit", QString("#12345") + QChar(0), false);
        row("digits of another script", QString::fromUtf8("#١٢٣٤٥٦"), false);
        row("a character outside the basic plane", QString::fromUtf8("#12345\U0001F600"), false);
        row("nothing", "", false);
    }
    void aColourHasSixDecimalDigits()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        const auto validator = Factory().create(kindOf<std::string>("color"), {});
        const boost::any expected = accepted ? boost::any(text.toStdWString()) : untouched;
        boost::any value = untouched;
        QCOMPARE(validator->validate(text, value, {}), accepted);
        QCOMPARE(value, expected);
        value = untouched;
        QCOMPARE(validator->validateWhenFinished(text, value, {}), accepted);
        QCOMPARE(value, expected);
    }

    // --- yes or no

    void yesAndNo_data()
    {
        columns<QString, QString>("text", "result");
        row("yes", "Yes", "bool true as \"Yes\"");
        row("no", "No", "bool false as \"No\"");
        row("small letters", "yes", "refused");
        row("a number", "1", "refused");
        row("nothing", "", "refused");
    }
    void yesAndNo()
    {
        QFETCH(QString, text);
        QTEST(entered(Factory(), kind<bool>(), {}, text), "result");
    }

    void onlyABoolIsYesOrNo_data()
    {
        columns<boost::any, QString>("value", "text");
        row("true", boost::any(true), "Yes");
        row("false", boost::any(false), "No");
        row("none", boost::any(), "");
        row("an int", boost::any(1), "");
        row("a text", boost::any(std::wstring(L"Yes")), "");
    }
    void onlyABoolIsYesOrNo()
    {
        QFETCH(boost::any, value);
        QTEST(Factory().create(kindOf<bool>(), {})->reformat(value, {}), "text");
    }

    // --- named values

    void namedValuesNeedAFunctionAndNotANullOne()
    {
        expectAssert("nvl && equal_fn");
        QCOMPARE(entered(Factory(), kind<NamedValueList>(),
                     hintsOf({{"entries", steels()}, {"is_equal", equalHint(nullptr)}}), "S235"),
            QString("no validator"));
        expectAssert("nvl && equal_fn");
        QCOMPARE(entered(Factory(), kind<NamedValueList>(), {}, "S235"), QString("no validator"));
    }

    // Both are read before either is missed.
    void whatIsWrongInNamedValuesComesBeforeWhatIsMissing_data()
    {
        columns<HintList, std::string>("hints", "path");
        row("no entries and a wrong function", HintList{{"is_equal", 1}}, "is_equal"s);
        row("wrong entries and no function", HintList{{"entries", 1}}, "entries"s);
        row("both wrong", HintList{{"is_equal", 1}, {"entries", 1}}, "entries"s);
    }
    void whatIsWrongInNamedValuesComesBeforeWhatIsMissing()
    {
        QFETCH(HintList, hints);
        expectWrongHint();
        QCOMPARE(entered(Factory(), kind<NamedValueList>(), hintsOf(hints), "S235"), wrongType);
        QTEST(reported("path"), "path");
    }

    void theListIsCopied()
    {
        Hints hints = hintsOf(
            {{"entries", steels()}, {"is_equal", equalHint(&vrn::any_equal<int>)}});
        const auto validator = Factory().create(kindOf<NamedValueList>(), hints);
        setHint<NamedValueList>(hints, "entries", {});
        QCOMPARE(entered(validator.get(), "S235"), QString("int 235 as \"S235\""));
    }

    // --- chains

    void linksAnswerInTheirOrder_data()
    {
        columns<boost::any, HintList, QString, QString>("links", "hints", "text", "result");
        const boost::any numberOrText = links({kindOf<int>(), kindOf<std::string>()});
        const boost::any textOrNumber = links({kindOf<std::string>(), kindOf<int>()});
        const boost::any twoNumbers = links({kindOf<double>(), kindOf<int>()});
        const HintList none;
        row("the first", numberOrText, none, "12", "int 12");
        row("the second", numberOrText, none, "ab", "std::string \"ab\"");
        row("the other way round", textOrNumber, none, "12", "std::string \"12\"");
        row("all read the same hints", links({kindOf<double>(), kindOf<std::string>()}),
            HintList{{"precision", 1}, {"max_length", 2}}, "abc", "std::string \"ab\"");
        row("one that reads a hint of another type throws", twoNumbers, HintList{{"minimum", 2.0}},
            "1", wrongType);
        row("a kind twice", links({kindOf<int>(), kindOf<int>()}), none, "12", "int 12");
        row("an unknown link throws", links({kindOf<int>(), kindOf<float>()}), none, "12",
            unknownKey);
        row("a link with an empty creator throws", links({kindOf<int>("empty"), kindOf<int>()}),
            none, "12", "std::bad_function_call");
        row("no links", links({}), none, "12", "refused");
    }
    void linksAnswerInTheirOrder()
    {
        QFETCH(boost::any, links);
        QFETCH(HintList, hints);
        QFETCH(QString, text);
        QFETCH(QString, result);
        Hints tree = hintsOf(hints);
        put(tree, "chained_validators", links);
        if (result == wrongType)
            expectWrongHint();
        Factory factory;
        factory.add<int>("empty", {});
        QCOMPARE(chainedBy(tree, factory, text), result);
        // Whatever has come of it, the factory goes on.
        put(tree, "chained_validators", ::links({kindOf<std::string>()}));
        QCOMPARE(chainedBy(tree, factory, "x"), QString("std::string \"x\""));
    }

    // A chain takes what a link reads while the user types, and writes what a link writes.
    void theBoundsOfALinkCountOnlyInWhatIsWritten_data()
    {
        columns<boost::any, HintList, QString, QString>("links", "hints", "text", "result");
        const boost::any anInt = links({kindOf<int>()});
        const boost::any aDouble = links({kindOf<double>()});
        const boost::any namesOrInt = links({kindOf<bool>(), kindOf<int>()});
        row("an int above the maximum", anInt, HintList{{"maximum", 5}}, "12", "int 12 as \"5\"");
        row("an int below the minimum", anInt, HintList{{"minimum", 5}}, "-1", "int -1 as \"5\"");
        row("an int within", anInt, HintList{{"maximum", 5}}, "4", "int 4 as \"4\"");
        row("an int above the maximum, as the second link", namesOrInt, HintList{{"maximum", 5}},
            "12", "int 12 as \"5\"");
        row("an unsigned int", links({kindOf<unsigned int>()}), HintList{{"maximum", 5U}}, "12",
            "unsigned int 12 as \"5\"");
        row("an unsigned short", links({kindOf<unsigned short>()}), HintList{{"maximum", word(5)}},
            "12", "unsigned short 12 as \"5\"");
        row("a double", aDouble, HintList{{"maximum", 5.0}}, "12", "double 12 as \"5.000\"");
        row("a double below the minimum", aDouble, HintList{{"minimum", 5.0}}, "-1",
            "double -1 as \"5.000\"");
        row("no int is written as 0 whatever the bounds", anInt, HintList{{"minimum", 5}}, "",
            "empty as \"0\"");
        row("no double is zero, below the minimum", aDouble, HintList{{"minimum", 5.0}}, "",
            "double 0 as \"5.000\"");
        row("no number, if that is allowed", anInt, HintList{{"minimum", 5}, {"optional", true}},
            "", "empty as \"\"");
    }
    void theBoundsOfALinkCountOnlyInWhatIsWritten()
    {
        QFETCH(boost::any, links);
        QFETCH(HintList, hints);
        QFETCH(QString, text);
        Hints tree = hintsOf(hints);
        put(tree, "chained_validators", links);
        QTEST(entered(Factory(), kind<ChainedValidator>(), tree, text), "result");
    }

    void aLinkThatCannotBeMadeIsReportedAndLeftOut()
    {
        expectAssert("nvl && equal_fn");
        expectMissingLink();
        QCOMPARE(
            chained(Factory(), {kindOf<NamedValueList>(), kindOf<int>()}, "12"), QString("int 12"));
    }

    void aChainThatNamesItselfIsReportedAndLeftOut_data()
    {
        columns<boost::any, int, QString>("links", "times", "result");
        const ValidatorKind self = kindOf<ChainedValidator>();
        row("first", links({self, kindOf<int>()}), 1, "int 12");
        row("last", links({kindOf<int>(), self}), 1, "int 12");
        row("twice", links({self, kindOf<int>(), self}), 2, "int 12");
        row("alone", links({self}), 1, "refused");
        row("before an unknown link", links({self, kindOf<float>()}), 1, unknownKey);
    }
    void aChainThatNamesItselfIsReportedAndLeftOut()
    {
        QFETCH(boost::any, links);
        QFETCH(int, times);
        QFETCH(QString, result);
        const Factory first;
        const Factory copy = first;
        for (const Factory* factory : {&first, &copy}) {
            for (int i = 0; i < times; ++i)
                expectSelf();
            if (result != unknownKey)
                expectMissingLink();
            QCOMPARE(chained(*factory, boost::any_cast<Kinds>(links), "12"), result);
            QCOMPARE(chained(*factory, {kindOf<int>()}, "12"), QString("int 12"));
        }
    }

    void aChainMayMakeAnotherOneOfOtherHints()
    {
        Factory factory;
        factory.add<ChainedValidator>("inner", [&](const Hints& hints) {
            return factory.create(kindOf<ChainedValidator>(), hints.get_child("inner"));
        });
        Hints hints;
        setHint<Kinds>(
            hints, "chained_validators", {kindOf<int>(), kindOf<ChainedValidator>("inner")});
        setHint<Kinds>(hints, "inner.chained_validators", {kindOf<std::string>()});
        QCOMPARE(chainedBy(hints, factory, "ab"), QString("std::string \"ab\""));
    }

    // Each row adds the link "again" to the factory, which makes the chain once more.
    void aChainThatNamesItselfThroughAKindOfTheApplicationEndsToo_data()
    {
        columns<Again, boost::any, QString>("again", "links", "reports");
        const boost::any once = links({kindOf<ChainedValidator>("again"), kindOf<int>()});
        const boost::any twice = links(
            {kindOf<ChainedValidator>("again"), kindOf<ChainedValidator>("again"), kindOf<int>()});
        const Again withTheseHints = [](Factory& factory, const Hints& hints) {
            return factory.create(kindOf<ChainedValidator>(), hints);
        };
        const Again withACopy = [](Factory& factory, const Hints& hints) {
            return factory.create(kindOf<ChainedValidator>(), Hints(hints));
        };
        const Again elsewhere = [](Factory& factory, const Hints& hints) {
            Factory other;
            other.add<ChainedValidator>("again", [&factory](const Hints& sameHints) {
                return factory.create(kindOf<ChainedValidator>(), sameHints);
            });
            return other.create(kindOf<ChainedValidator>(), hints);
        };
        row("with the same hints", withTheseHints, once, "self, missing");
        row("with a copy of them", withACopy, once, "self, missing");
        row("with two copies of them", withACopy, twice,
            "self, " + QStringList(QVector<QString>(100, "self, missing").toList()).join(", "));
        row("through another factory", elsewhere, once, "self, missing");
        row("through one that is made each time", Again(&makeInNewFactory), once, "self, missing");
    }
    void aChainThatNamesItselfThroughAKindOfTheApplicationEndsToo()
    {
        QFETCH(Again, again);
        QFETCH(boost::any, links);
        QFETCH(QString, reports);
        Factory factory;
        factory.add<ChainedValidator>(
            "again", [&](const Hints& hints) { return again(factory, hints); });
        for (int i = 0; i < 2; ++i) {
            for (const QString& report : reports.split(", "))
                report == "self" ? expectSelf() : expectMissingLink();
            QCOMPARE(chained(factory, boost::any_cast<Kinds>(links), "12"), QString("int 12"));
        }
    }

    void aChainMayMakeAnotherOneInAnotherFactory()
    {
        Factory factory;
        Factory other;
        factory.add<int>("other",
            [&](const Hints& hints) { return other.create(kindOf<ChainedValidator>(), hints); });
        other.add<int>("other", atMost(5));
        QCOMPARE(chained(factory, {kindOf<int>("other")}, "4"), QString("int 4"));
    }

    // --- copies: links are looked up in the first factory

    void linksAreLookedUpInTheFirstFactory()
    {
        Factory first;
        Factory copy = first;
        copy.add<int>("of the copy", atMost(1));
        first.add<int>("of the first", atMost(2));
        const Factory copyOfCopy = copy;

        QCOMPARE(entered(copy, kind<int>("of the copy"), {}, "5"), QString("int 1 as \"1\""));
        for (const Factory* factory : {&std::as_const(first), &std::as_const(copy), &copyOfCopy}) {
            QCOMPARE(chained(*factory, {kindOf<int>("of the first")}, "1"), QString("int 1"));
            QCOMPARE(chained(*factory, {kindOf<int>("of the copy")}, "1"), unknownKey);
        }
        // A copy that is assigned has the creators of the other one.
        Factory assigned;
        assigned.add<int>("of the assigned", atMost(3));
        assigned = copy;
        QCOMPARE(chained(assigned, {kindOf<int>("of the first")}, "1"), QString("int 1"));
        QCOMPARE(chained(assigned, {kindOf<int>("of the assigned")}, "1"), unknownKey);
    }

    void copiesOutliveTheFirstFactory()
    {
        auto first = std::make_unique<Factory>();
        first->add<int>("of the first", atMost(2));
        auto copy = std::make_unique<Factory>(*first);
        Factory assigned;
        assigned = *first;
        const Factory copyOfCopy = *copy;
        first.reset();
        copy.reset();
        for (const Factory* factory : {&std::as_const(assigned), &copyOfCopy}) {
            QCOMPARE(entered(*factory, kind<int>(), {}, "12"), QString("int 12 as \"12\""));
            QCOMPARE(chained(*factory, {kindOf<int>("of the first")}, "1"), QString("int 1"));
            QCOMPARE(chained(*factory, {kindOf<int>("of the copy")}, "1"), unknownKey);
        }
    }

    void aFactoryThatWasMovedToFindsNoLinks_data()
    {
        columns<bool>("assigned");
        row("by construction", false);
        row("by assignment", true);
    }
    void aFactoryThatWasMovedToFindsNoLinks()
    {
        QFETCH(bool, assigned);
        auto first = std::make_unique<Factory>();
        std::unique_ptr<Factory> moved;
        if (assigned) {
            moved = std::make_unique<Factory>();
            *moved = std::move(*first);
        } else {
            moved = std::make_unique<Factory>(std::move(*first));
        }
        QVERIFY(!first->exists(kindOf<int>()));
        QCOMPARE(chained(*first, {}, "12"), unknownKey);
        QCOMPARE(entered(*moved, kind<int>(), {}, "12"), QString("int 12 as \"12\""));
        QCOMPARE(chained(*moved, {}, "12"), QString("refused"));
        QCOMPARE(chained(*moved, {kindOf<int>()}, "12"), unknownKey);

        // What the first one gets now can be a link again.
        first->add<int>("", atMost(2));
        QCOMPARE(chained(*moved, {kindOf<int>()}, "12"), QString("int 12"));
        const Factory copy = *moved;
        first.reset();
        moved.reset();
        QCOMPARE(chained(copy, {kindOf<int>()}, "12"), QString("int 12"));
        QCOMPARE(chained(copy, {kindOf<double>()}, "12"), unknownKey);
    }

    void aFactoryMovedBackIsWholeAgain()
    {
        Factory first;
        Factory second(std::move(first));
        first = std::move(second);
        QCOMPARE(chained(first, {kindOf<int>()}, "12"), QString("int 12"));
        Factory& same = first;
        first = std::move(same);
        QCOMPARE(chained(first, {kindOf<int>()}, "12"), QString("int 12"));
    }

    void factoriesAreAssignedInCircles()
    {
        auto a = std::make_unique<Factory>();
        auto b = std::make_unique<Factory>(*a);
        auto c = std::make_unique<Factory>();
        *a = *b;
        QCOMPARE(chained(*a, {kindOf<int>()}, "12"), QString("int 12"));
        *a = *c;
        *c = *b;
        c.reset();
        QCOMPARE(chained(*a, {kindOf<int>()}, "12"), QString("int 12"));
        a.reset();
        QCOMPARE(chained(*b, {kindOf<int>()}, "12"), QString("int 12"));
    }

    // The sanitizers see whether what runs outlives the factory.
    void aLinkMayChangeItsFactory_data()
    {
        columns<Change, QString>("change", "result");
        const QString twelve = "int 12";
        row("nothing", Change([](FactoryPtr&) {}), twelve);
        row("add to it", Change([](FactoryPtr& factory) {
            for (int i = 0; i < 1000; ++i)
                factory->add<int>(std::to_string(i), atMost(2));
        }),
            twelve);
        row("assign to it", Change([](FactoryPtr& factory) { *factory = Factory(); }), twelve);
        row("move from it", Change([](FactoryPtr& factory) { Factory(std::move(*factory)); }),
            unknownKey);
        row("destroy it", Change([](FactoryPtr& factory) { factory.reset(); }), twelve);
    }
    void aLinkMayChangeItsFactory()
    {
        QFETCH(Change, change);
        auto factory = std::make_unique<Factory>();
        factory->add<double>("changing", [&change, &factory](const Hints&) {
            change(factory);
            return std::make_unique<NamedValueListValidator>(NamedValueList());
        });
        QTEST(chained(*factory, {kindOf<double>("changing"), kindOf<int>()}, "12"), "result");
    }

    // --- whole trees

    void aWholeTree_data()
    {
        columns<HintList, QString>("hints", "result");
        row("no validator", HintList{{"editor", "lineedit"s}, {"kind", kind<int>()}},
            "no validator");
        row("a validator without a kind", HintList{{"validator.minimum", 5}}, "no validator");
        row("a validator without a value", HintList{{"validator", boost::any()}}, "no validator");
        row("a kind", HintList{{"validator.kind", kind<int>()}}, "int 12 as \"12\"");
        row("hints of the validator",
            HintList{{"validator.kind", kind<int>()}, {"validator.maximum", 5}, {"maximum", 3}},
            "int 5 as \"5\"");
        row("a kind that makes none", HintList{{"validator.kind", kind<int>("none")}},
            "no validator");
        row("a kind with an empty creator", HintList{{"validator.kind", kind<int>("empty")}},
            "std::bad_function_call");
        row("an unknown kind", HintList{{"validator.kind", kind<float>()}}, unknownKey);
        row("a kind of another type", HintList{{"validator.kind", boost::any("int"s)}}, wrongType);
        row("a type alone", HintList{{"validator.kind", boost::any(std::type_index(typeid(int)))}},
            wrongType);
        row("a kind without a value", HintList{{"validator.kind.more", 1}}, wrongType);
    }
    void aWholeTree()
    {
        QFETCH(HintList, hints);
        QFETCH(QString, result);
        Factory factory;
        factory.add<int>("none", [](const Hints&) { return nullptr; });
        factory.add<int>("empty", {});
        if (result == wrongType)
            expectWrongHint();
        QCOMPARE(outcome([&] {
            return entered(createValidatorFromHints(&factory, hintsOf(hints)).get(), "12");
        }),
            result);
        if (result == wrongType)
            QCOMPARE(reported("path"), "validator.kind"s);
        // Without a factory nothing is read.
        QVERIFY(!createValidatorFromHints(nullptr, hintsOf(hints)));
    }

private:
    void expectSelf() { expectAssert("!namesItself", {}, "a chain is a link of itself"); }
    void expectMissingLink() { expectAssert("missing == m_members.end()", {"missing"}); }
};

VRN_TEST(TestDefaultValidatorFactory)
#include "tst_default_validator_factory.moc"
