#include <vrn/qt/named_value_list_validator.h>

#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <utility>
#include <vector>

using namespace vrn::test;
using vrn::qt::NamedValueList;
using vrn::qt::NamedValueListValidator;

namespace {

const boost::any untouched = 42;

// Two entries have the name "oak" and two the value 3; "air" stands for nothing.
NamedValueList materials()
{
    return {
        {"oak", 1},
        {"steel", std::string("S235")},
        {"oak", 2},
        {"pine", 3},
        {"fir", 3},
        {"air", boost::any()},
        {"light steel", 4.5},
    };
}

// The comparisons that a validator has asked for.
std::vector<std::pair<boost::any, boost::any>> comparisons;

bool recordAndCompare(const boost::any& left, const boost::any& right)
{
    comparisons.emplace_back(left, right);
    return sameValue(left, right);
}

bool everythingIsEqual(const boost::any&, const boost::any&)
{
    return true;
}

bool nothingIsEqual(const boost::any&, const boost::any&)
{
    return false;
}

} // namespace

class TestNamedValueListValidator : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        comparisons.clear();
    }

    void aNameGivesItsValue_data()
    {
        columns<QString, bool, boost::any>("text", "accepted", "expected");
        row("a name", "steel", true, boost::any(std::string("S235")));
        row("the last name", "light steel", true, boost::any(4.5));
        row("of two equal names the first wins", "oak", true, boost::any(1));
        row("an entry whose own value is empty", "air", true, boost::any());
        row("a text that is in no entry", "glass", false, untouched);
        row("another case", "Steel", false, untouched);
        row("a blank before it", " steel", false, untouched);
        row("a blank after it", "steel ", false, untouched);
        row("the beginning of a name", "stee", false, untouched);
        row("more than a name", "steels", false, untouched);
        row("a zero character after it", QString("steel") + QChar(0), false, untouched);
        row("the value's text", "S235", false, untouched);
        row("an empty text", "", false, untouched);
        row("a null text", QString(), false, untouched);
    }
    void aNameGivesItsValue()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(boost::any, expected);
        const NamedValueList list = materials();
        NamedValueListValidator copying(list);
        NamedValueListValidator moving(materials());
        for (NamedValueListValidator* validator : {&copying, &moving}) {
            boost::any value = untouched;
            QCOMPARE(validator->validate(text, value, {}), accepted);
            QCOMPARE(value, expected);
            value = untouched;
            QCOMPARE(validator->validateWhenFinished(text, value, {}), accepted);
            QCOMPARE(value, expected);
        }
    }

    void namesAreComparedByTheirCharacters()
    {
        const QString composed = QString::fromUtf8("\u00e9");
        const QString decomposed = QString::fromUtf8("e\u0301");
        NamedValueListValidator validator(NamedValueList{{composed, 1}});
        boost::any value = untouched;
        QVERIFY(!validator.validate(decomposed, value, {}));
        QVERIFY(validator.validate(composed, value, {}));
    }

    void anEntryMayHaveAnEmptyName()
    {
        NamedValueListValidator validator(NamedValueList{{"", 1}});
        boost::any value = untouched;
        QVERIFY(validator.validate("", value, {}));
        QCOMPARE(value, boost::any(1));
    }

    void theListIsCopied()
    {
        NamedValueList list = {{"oak", 1}};
        NamedValueListValidator validator(list);
        validator.set_equal_to(&sameValue);
        list[0] = {"steel", 2};
        list.emplace_back("pine", 3);
        boost::any value = untouched;
        QVERIFY(validator.validate("oak", value, {}));
        QCOMPARE(value, boost::any(1));
        QVERIFY(!validator.validate("steel", value, {}));
        QVERIFY(!validator.validate("pine", value, {}));
        QCOMPARE(validator.reformat(3, {}), QString());
    }

    void theValueIsACopy()
    {
        NamedValueListValidator validator(materials());
        boost::any value;
        QVERIFY(validator.validate("steel", value, {}));
        *boost::any_cast<std::string>(&value) = "S355";
        QVERIFY(validator.validate("steel", value, {}));
        QCOMPARE(value, boost::any(std::string("S235")));
    }

    void validatingComparesNoValues()
    {
        NamedValueListValidator validator(materials());
        validator.set_equal_to(&recordAndCompare);
        boost::any value;
        validator.validate("steel", value, {});
        validator.validate("glass", value, {});
        QCOMPARE(comparisons.size(), std::size_t(0));
    }

    void theEmptyEntryStandsForNoValue_data()
    {
        columns<QString, QString, bool, boost::any>("emptyName", "text", "accepted", "expected");
        row("its name gives an empty value", "(none)", "(none)", true, boost::any());
        row("it is compared exactly", "(none)", "(None)", false, untouched);
        row("another text is refused", "(none)", "", false, untouched);
        row("names of the list stay", "(none)", "pine", true, boost::any(3));
        row("an equal name in the list wins", "pine", "pine", true, boost::any(3));
        row("its name may be empty", "", "", true, boost::any());
        row("its name may be null", QString(), "", true, boost::any());
    }
    void theEmptyEntryStandsForNoValue()
    {
        QFETCH(QString, emptyName);
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(boost::any, expected);
        NamedValueListValidator validator(materials());
        validator.enable_empty_value(emptyName);
        boost::any value = untouched;
        QCOMPARE(validator.validate(text, value, {}), accepted);
        QCOMPARE(value, expected);
    }

    void theNameOfTheEmptyEntryCanBeReplaced()
    {
        NamedValueListValidator validator(NamedValueList{{"oak", 1}});
        validator.set_equal_to(&sameValue);
        validator.enable_empty_value("(none)");
        validator.enable_empty_value("(nothing)");
        boost::any value = untouched;
        QVERIFY(!validator.validate("(none)", value, {}));
        QCOMPARE(value, untouched);
        QVERIFY(validator.validate("(nothing)", value, {}));
        QVERIFY(value.empty());
        QCOMPARE(validator.reformat({}, {}), QString("(nothing)"));
    }

    void aValueGivesItsName_data()
    {
        columns<boost::any, QString, QString>("value", "withoutEmptyEntry", "withEmptyEntry");
        row("a value", boost::any(4.5), "light steel", "light steel");
        row("of two equal values the first wins", boost::any(3), "pine", "pine");
        row("each of two equal names has its value", boost::any(2), "oak", "oak");
        row("a value that no entry has", boost::any(5), "", "");
        row("an equal number of another type", boost::any(3.0), "", "");
        row("no value, and an entry that equals it goes first", boost::any(), "air", "air");
    }
    void aValueGivesItsName()
    {
        QFETCH(boost::any, value);
        QFETCH(QString, withoutEmptyEntry);
        QFETCH(QString, withEmptyEntry);
        NamedValueListValidator validator(materials());
        validator.set_equal_to(&sameValue);
        QCOMPARE(validator.reformat(value, {}), withoutEmptyEntry);
        validator.enable_empty_value("(none)");
        QCOMPARE(validator.reformat(value, {}), withEmptyEntry);
    }

    void noValueGivesTheNameOfTheEmptyEntry()
    {
        NamedValueListValidator validator(NamedValueList{{"oak", 1}});
        validator.set_equal_to(&sameValue);
        QCOMPARE(validator.reformat({}, {}), QString());
        validator.enable_empty_value("(none)");
        QCOMPARE(validator.reformat({}, {}), QString("(none)"));
        QCOMPARE(validator.reformat(2, {}), QString());
    }

    void theEqualityDecidesAlone_data()
    {
        columns<bool, boost::any, QString>("equal", "value", "name");
        row("all equal: the first name", true, boost::any(3), "oak");
        row("all equal: the first name for no value too", true, boost::any(), "oak");
        row("none equal: no name", false, boost::any(3), "");
        row("none equal: that of the empty entry for no value", false, boost::any(), "(none)");
    }
    void theEqualityDecidesAlone()
    {
        QFETCH(bool, equal);
        QFETCH(boost::any, value);
        QFETCH(QString, name);
        NamedValueListValidator validator(materials());
        validator.enable_empty_value("(none)");
        validator.set_equal_to(equal ? &everythingIsEqual : &nothingIsEqual);
        QCOMPARE(validator.reformat(value, {}), name);
    }

    void theEqualityIsCalledInTheOrderOfTheListUpToTheFirstEqual()
    {
        NamedValueListValidator validator(materials());
        validator.set_equal_to(&nothingIsEqual);
        validator.set_equal_to(&recordAndCompare);
        QCOMPARE(validator.reformat(2, {}), QString("oak"));
        QCOMPARE(comparisons.size(), std::size_t(3));
        const boost::any entries[] = {1, std::string("S235"), 2};
        for (std::size_t i = 0; i < comparisons.size(); ++i) {
            QCOMPARE(comparisons[i].first, boost::any(2));
            QCOMPARE(comparisons[i].second, entries[i]);
        }
    }

    void withoutAnEqualityReformatReports()
    {
        NamedValueListValidator validator(materials());
        expectAssert("m_equalTo");
        QCOMPARE(validator.reformat(3, {}), QString());
        asserts().verify();
        validator.enable_empty_value("(none)");
        expectAssert("m_equalTo");
        QCOMPARE(validator.reformat({}, {}), QString("(none)"));
    }

    void withoutAnEqualityValidateWorks()
    {
        NamedValueListValidator validator(materials());
        boost::any value;
        QVERIFY(validator.validate("pine", value, {}));
        QCOMPARE(value, boost::any(3));
    }

    void anEmptyListRefusesEverything()
    {
        NamedValueListValidator validator{NamedValueList()};
        validator.set_equal_to(&sameValue);
        boost::any value = untouched;
        QVERIFY(!validator.validate("", value, {}));
        QVERIFY(!validator.validate("oak", value, {}));
        QCOMPARE(value, untouched);
        QCOMPARE(validator.reformat({}, {}), QString());
    }

    void flagsAreNotRead()
    {
        NamedValueListValidator validator(materials());
        validator.set_equal_to(&sameValue);
        for (const quint32 flags : {0U, 1U, ~0U}) {
            boost::any value = untouched;
            QVERIFY(!validator.validate("glass", value, flags));
            QCOMPARE(value, untouched);
            QVERIFY(validator.validate("light steel", value, flags));
            QCOMPARE(value, boost::any(4.5));
            QCOMPARE(validator.reformat(value, flags), QString("light steel"));
        }
    }

    void badInputIsRefusedInTime_data()
    {
        columns<QString>("text");
        for (const auto& [name, text] : hostileTexts())
            row(name.constData(), text);
    }
    void badInputIsRefusedInTime()
    {
        QFETCH(QString, text);
        NamedValueListValidator validator(materials());
        validator.enable_empty_value("(none)");
        boost::any value = untouched;
        verifyTakesAKeystroke("validate", [&] { QVERIFY(!validator.validate(text, value, {})); });
        QCOMPARE(value, untouched);
    }

    void badInputThatIsANameIsTakenInTime_data() { badInputIsRefusedInTime_data(); }
    void badInputThatIsANameIsTakenInTime()
    {
        QFETCH(QString, text);
        NamedValueList list;
        for (const auto& entry : hostileTexts())
            list.emplace_back(entry.second, entry.second);
        NamedValueListValidator validator(std::move(list));
        validator.set_equal_to(&sameValue);
        boost::any value = untouched;
        verifyTakesAKeystroke("validate", [&] { QVERIFY(validator.validate(text, value, {})); });
        QString shown;
        verifyTakesAKeystroke("reformat", [&] { shown = validator.reformat(value, {}); });
        QVERIFY(shown == text);
    }
};

VRN_TEST(TestNamedValueListValidator)
#include "tst_named_value_list_validator.moc"
