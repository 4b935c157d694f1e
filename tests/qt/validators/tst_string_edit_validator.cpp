#include <vrn/qt/string_edit_validator.h>

#include <boost/regex.hpp>

#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <limits>
#include <locale>

using namespace vrn::test;
using vrn::qt::StringEditValidator;

namespace {

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

const boost::any untouched = 42;

boost::any wide(const QString& text)
{
    return text.toStdWString();
}

boost::any utf8(const QString& text)
{
    return text.toUtf8().toStdString();
}

// A text with a zero character between the two.
QString zeroBetween(const QString& left, const QString& right)
{
    return left + QChar(0) + right;
}

// Rules that no installed locale has, so that a result can come from nowhere
// else: a wide hyphen is a letter with the upper case '=' ...
class WideRules : public std::ctype<wchar_t>
{
protected:
    bool do_is(mask m, wchar_t c) const override
    {
        return c == L'-' ? (m & alpha) != 0 : std::ctype<wchar_t>::do_is(m, c);
    }
    wchar_t do_toupper(wchar_t c) const override
    {
        return c == L'-' ? L'=' : std::ctype<wchar_t>::do_toupper(c);
    }
    const wchar_t* do_toupper(wchar_t* begin, const wchar_t* end) const override
    {
        for (; begin != end; ++begin)
            *begin = do_toupper(*begin);
        return end;
    }
};

// ... and a narrow one has the upper case '_'.
class NarrowRules : public std::ctype<char>
{
protected:
    char do_toupper(char c) const override
    {
        return c == '-' ? '_' : std::ctype<char>::do_toupper(c);
    }
    const char* do_toupper(char* begin, const char* end) const override
    {
        for (; begin != end; ++begin)
            *begin = do_toupper(*begin);
        return end;
    }
};

// Makes those rules the global ones while it lives.
class GlobalRules
{
public:
    GlobalRules()
        : m_previous(std::locale::global(
            std::locale(std::locale(std::locale::classic(), new WideRules), new NarrowRules)))
    {}
    ~GlobalRules() { std::locale::global(m_previous); }

    GlobalRules(const GlobalRules&) = delete;
    GlobalRules& operator=(const GlobalRules&) = delete;

private:
    std::locale m_previous;
};

} // namespace

class TestStringEditValidator : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLimitOfZeroOffends()
    {
        expectAssert("m_maxLen > 0", {"m_maxLen"});
        StringEditValidator validator(0);
        boost::any value;
        QVERIFY(validator.validate("abc", value, {}));
        QCOMPARE(value, wide(""));
    }

    void everyOtherLimitIsFine()
    {
        for (const std::size_t limit : {std::size_t(1), unlimited}) {
            StringEditValidator validator(limit);
            boost::any value;
            QVERIFY(validator.validate("a", value, {}));
            QCOMPARE(value, wide("a"));
        }
    }

    void aTextOverTheLimitIsCut_data()
    {
        columns<int, QString, QString>("limit", "text", "kept");
        const QString faces = QString::fromUtf8("\U0001F600\U0001F601\U0001F602");
        row("maximum 3, abcd becomes abc", 3, "abcd", "abc");
        row("a text as long as the limit stays whole", 3, "abc", "abc");
        row("a shorter text stays whole", 3, "ab", "ab");
        row("an empty text stays empty", 3, "", "");
        row("blanks count and are not trimmed", 3, "  a b", "  a");
        row("a character outside the basic plane counts once", 2, faces,
            QString::fromUtf8("\U0001F600\U0001F601"));
        row("a combining mark counts", 1, QString::fromUtf8("e\u0301"), "e");
        row("a zero character counts", 2, zeroBetween("a", "bc"), zeroBetween("a", ""));
    }
    void aTextOverTheLimitIsCut()
    {
        QFETCH(int, limit);
        QFETCH(QString, text);
        QFETCH(QString, kept);
        StringEditValidator validator(static_cast<std::size_t>(limit));
        boost::any value;
        QVERIFY(validator.validate(text, value, {}));
        QCOMPARE(value, wide(kept));
    }

    void theStorageTypeSaysWhatIsStored_data()
    {
        columns<quint32, QString, boost::any>("type", "text", "stored");
        const quint32 asUtf8 = 0;
        const quint32 asWide = 1;
        const QString accented = QString::fromUtf8("S\u00e4ule \U0001F600");
        row("wide: a std::wstring", asWide, "abc", wide("abc"));
        row("wide: every character once", asWide, accented, wide(accented));
        row("wide: an empty text is an empty string", asWide, "", wide(""));
        row("wide: a zero character and what follows are stored", asWide, zeroBetween("a", "b"),
            wide(zeroBetween("a", "b")));
        row("UTF-8: a std::string", asUtf8, "abc", utf8("abc"));
        row("UTF-8: two and four bytes to a character", asUtf8, accented,
            boost::any(std::string("S\xc3\xa4ule \xf0\x9f\x98\x80")));
        row("UTF-8: an empty text is an empty string", asUtf8, "", utf8(""));
        row("UTF-8: a zero character and what follows are stored", asUtf8, zeroBetween("a", "b"),
            boost::any(std::string("a\0b", 3)));
        row("2: nothing is stored", quint32(2), "abc", untouched);
        row("all bits: nothing is stored", ~quint32(0), "abc", untouched);
    }
    void theStorageTypeSaysWhatIsStored()
    {
        QFETCH(quint32, type);
        QFETCH(QString, text);
        QFETCH(boost::any, stored);
        StringEditValidator validator(unlimited);
        validator.setStorageType(static_cast<StringEditValidator::StorageType>(type));
        boost::any value = untouched;
        QVERIFY(validator.validate(text, value, {}));
        QCOMPARE(value, stored);
    }

    void withoutSettersAWideStringIsStoredAsTyped()
    {
        StringEditValidator validator(unlimited);
        boost::any value = untouched;
        QVERIFY(validator.validate("aBc 1", value, {}));
        QCOMPARE(value, wide("aBc 1"));
    }

    void storageTypesHaveTheirNumbers()
    {
        QCOMPARE(int(StringEditValidator::StorageTypeUtf8String), 0);
        QCOMPARE(int(StringEditValidator::StorageTypeWideString), 1);
        QCOMPARE(sizeof(StringEditValidator::StorageType), std::size_t(4));
    }

    void aPatternDecides_data()
    {
        columns<QString, QString, bool>("pattern", "text", "accepted");
        row("it matches the whole text: [0-9] takes 1", "[0-9]", "1", true);
        row("it matches the whole text: [0-9] refuses 12", "[0-9]", "12", false);
        row("it matches from the first character", "[0-9]+", "a12", false);
        row("it matches to the last character", "[0-9]+", "12a", false);
        row("the longer branch is taken if the whole text needs it", "a|ab", "ab", true);
        row("it tells case", "[A-Z]+", "abc", false);
        row("an empty text is matched too", "[A-Z]+", "", false);
        row("an empty text may match", "[A-Z]*", "", true);
        row("Perl's classes", "\\d+\\s\\w+", "12 mm", true);
        row("Perl's look-ahead", "(?!0)\\d+", "012", false);
        row("back references", "(a|b)\\1", "ab", false);
        row("back references that hold", "(a|b)\\1", "bb", true);
        row("a point takes one character outside the basic plane", ".",
            QString::fromUtf8("\U0001F600"), true);
        row("a line break is no end", "[0-9]+", "1\n", false);
        row("what follows a zero character is not matched", "[0-9]+", zeroBetween("12", "ab"),
            true);
        row("what precedes a zero character is", "[0-9]+", zeroBetween("ab", "12"), false);
        row("the zero character itself is not", "[0-9]{2}", zeroBetween("12", ""), true);
        row("a text that begins with a zero is matched as empty", "[0-9]+", zeroBetween("", "12"),
            false);
        row("no pattern takes any text", "", "any text", true);
    }
    void aPatternDecides()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        StringEditValidator validator(unlimited);
        validator.setAllowedRegex(pattern.toStdWString());
        boost::any value = untouched;
        QCOMPARE(validator.validate(text, value, {}), accepted);
        QCOMPARE(value, accepted ? wide(text) : untouched);
    }

    void stepsComeInTheirOrder_data()
    {
        columns<QString, bool, QString, boost::any>("pattern", "upperCase", "text", "stored");
        row("upper case goes before the match: abc is ABC to [A-Z]+", "[A-Z]+", true, "abc",
            wide("ABC"));
        row("so a pattern of small letters refuses all", "[a-z]+", true, "abc", untouched);
        row("cutting goes before the match", "[a-z]+", false, "abcd1", wide("abcd"));
        row("the cut text must match", "[a-z]+[0-9]", false, "abcd1", untouched);
        row("without the flag the case stays", "", false, "abC", wide("abC"));
        row("with it signs and digits stay", "", true, "a-1", wide("A-1"));
    }
    void stepsComeInTheirOrder()
    {
        QFETCH(QString, pattern);
        QFETCH(bool, upperCase);
        QFETCH(QString, text);
        QFETCH(boost::any, stored);
        StringEditValidator validator(4);
        validator.setAllowedRegex(pattern.toStdWString());
        validator.setUpperCase(upperCase);
        boost::any value = untouched;
        const bool accepted = !sameValue(stored, untouched);
        QCOMPARE(validator.validate(text, value, {}), accepted);
        QCOMPARE(value, stored);
    }

    void settersReplaceWhatWasSetBefore()
    {
        StringEditValidator validator(unlimited);
        boost::any value;
        validator.setAllowedRegex(L"[A-Z]+");
        validator.setUpperCase(true);
        QVERIFY(validator.validate("abc", value, {}));
        validator.setUpperCase(false);
        QVERIFY(!validator.validate("abc", value, {}));
        validator.setAllowedRegex(L"[a-z]+");
        QVERIFY(validator.validate("abc", value, {}));
        QCOMPARE(value, wide("abc"));
        validator.setAllowedRegex(L"");
        validator.setStorageType(StringEditValidator::StorageTypeUtf8String);
        QVERIFY(validator.validate("1", value, {}));
        QCOMPARE(value, utf8("1"));
    }

    void inTheClassicLocaleOnlyAsciiHasUpperCase()
    {
        QVERIFY(std::locale() == std::locale::classic());
        const QString text = QString::fromUtf8("stra\u00dfe \u00e9\u03b1");
        const QString upper = QString::fromUtf8("STRA\u00dfE \u00e9\u03b1");
        StringEditValidator validator(unlimited);
        validator.setUpperCase(true);
        boost::any value;
        QVERIFY(validator.validate(text, value, {}));
        QCOMPARE(value, wide(upper));
        QCOMPARE(validator.reformat(wide(text), {}), upper);
        QCOMPARE(validator.reformat(utf8(text), {}), upper);
    }

    void upperCaseFollowsTheGlobalLocaleOfTheMoment()
    {
        StringEditValidator validator(unlimited);
        validator.setUpperCase(true);
        boost::any value;
        {
            const GlobalRules rules;
            QVERIFY(validator.validate("a-b", value, {}));
            QCOMPARE(value, wide("A=B"));
            // The rules for the character type in which the value is kept.
            QCOMPARE(validator.reformat(wide("a-b"), {}), QString("A=B"));
            QCOMPARE(validator.reformat(utf8("a-b"), {}), QString("A_B"));
        }
        QVERIFY(validator.validate("a-b", value, {}));
        QCOMPARE(value, wide("A-B"));
    }

    void upperCaseIsThatOfWideCharactersForEveryStorage()
    {
        const GlobalRules rules;
        StringEditValidator validator(unlimited);
        validator.setUpperCase(true);
        validator.setStorageType(StringEditValidator::StorageTypeUtf8String);
        boost::any value;
        QVERIFY(validator.validate("a-b", value, {}));
        QCOMPARE(value, utf8("A=B"));
    }

    void thePatternFollowsTheGlobalLocaleOfTheMoment()
    {
        StringEditValidator validator(unlimited);
        validator.setAllowedRegex(L"[[:alpha:]]+");
        boost::any value;
        QVERIFY(!validator.validate("a-b", value, {}));
        {
            const GlobalRules rules;
            QVERIFY(validator.validate("a-b", value, {}));
        }
        QVERIFY(!validator.validate("a-b", value, {}));
    }

    void flagsAreNotRead()
    {
        StringEditValidator validator(4);
        validator.setAllowedRegex(L"[A-Z.]+");
        validator.setUpperCase(true);
        for (const quint32 flags : {0U, 1U, ~0U}) {
            boost::any value = untouched;
            QVERIFY(!validator.validate("1", value, flags));
            QCOMPARE(value, untouched);
            QVERIFY(validator.validate("a.bcd", value, flags));
            QCOMPARE(value, wide("A.BC"));
            QCOMPARE(validator.reformat(value, flags), QString("A.BC"));
        }
    }

    void theEndOfEditingIsValidatedAsAKeystroke()
    {
        StringEditValidator validator(3);
        validator.setAllowedRegex(L"[a-z]+");
        boost::any value = untouched;
        QVERIFY(!validator.validateWhenFinished("1", value, {}));
        QCOMPARE(value, untouched);
        QVERIFY(validator.validateWhenFinished("abcd", value, {}));
        QCOMPARE(value, wide("abc"));
    }

    void aPatternThatDoesNotCompileThrowsAtEachValidation_data()
    {
        columns<QString>("pattern");
        row("an open group", "(");
        row("an open class", "[a-");
        row("a class from high to low", "[z-a]");
        row("nothing to repeat", "*");
        row("a lone backslash", "a\\");
    }
    void aPatternThatDoesNotCompileThrowsAtEachValidation()
    {
        QFETCH(QString, pattern);
        StringEditValidator validator(unlimited);
        validator.setAllowedRegex(pattern.toStdWString());
        QCOMPARE(validator.reformat(wide("abc"), {}), QString("abc"));
        boost::any value = untouched;
        for (const QString& text : {QString("abc"), QString("abc"), QString()}) {
            QVERIFY_EXCEPTION_THROWN(validator.validate(text, value, {}), boost::regex_error);
            QCOMPARE(value, untouched);
        }
        QVERIFY_EXCEPTION_THROWN(
            validator.validateWhenFinished("abc", value, {}), boost::regex_error);

        validator.setAllowedRegex(L"[a-c]+");
        QVERIFY(validator.validate("abc", value, {}));
        QCOMPARE(value, wide("abc"));
    }

    void reformatShowsTheString_data()
    {
        columns<bool, boost::any, QString>("upperCase", "value", "text");
        const QString accented = QString::fromUtf8("S\u00e4ule \U0001F600");
        row("a wide string", false, wide("abc"), "abc");
        row("a UTF-8 string", false, utf8("abc"), "abc");
        row("an empty wide string", false, wide(""), "");
        row("an empty UTF-8 string", false, utf8(""), "");
        row("wide characters of every plane", false, wide(accented), accented);
        row("UTF-8 characters of every plane", false, utf8(accented), accented);
        row("upper case: a stored abc shows as ABC", true, wide("abc"), "ABC");
        row("upper case of a UTF-8 string", true, utf8("abc"), "ABC");
        row("wide up to the first zero", false, wide(zeroBetween("ab", "cd")), "ab");
        row("UTF-8 up to the first zero", false, utf8(zeroBetween("ab", "cd")), "ab");
        row("the limit is not applied", false, wide("abcdef"), "abcdef");
        row("the pattern is not applied", false, wide("12"), "12");
    }
    void reformatShowsTheString()
    {
        QFETCH(bool, upperCase);
        QFETCH(boost::any, value);
        QFETCH(QString, text);
        for (const auto type : {StringEditValidator::StorageTypeUtf8String,
                 StringEditValidator::StorageTypeWideString}) {
            StringEditValidator validator(3);
            validator.setAllowedRegex(L"[a-c]+");
            validator.setUpperCase(upperCase);
            validator.setStorageType(type);
            QCOMPARE(validator.reformat(value, {}), text);
        }
    }

    void aValueOfAForeignTypeIsReported_data()
    {
        columns<boost::any>("value");
        row("none", boost::any());
        row("a number", boost::any(1.5));
        row("a QString", boost::any(QString("abc")));
        row("a literal", boost::any(static_cast<const char*>("abc")));
    }
    void aValueOfAForeignTypeIsReported()
    {
        QFETCH(boost::any, value);
        expectAssert("value.type() == typeid(std::wstring) || value.type() == typeid(std::string)",
            {"value.type().name()"});
        StringEditValidator validator(3);
        QCOMPARE(validator.reformat(value, {}), QString());
    }

    // A match that would take too long is given up and counts as a refusal; one
    // that ends is decided as the pattern says, however long the text.
    void aMatchEndsInTime_data()
    {
        columns<QString, QString, bool>("pattern", "text", "accepted");
        const auto times = [](int length, char c) { return QString(length, QLatin1Char(c)); };
        for (const int length : {64, 32767, 1024 * 1024}) {
            for (const char* pattern :
                {"(a+)+b", "(a|aa)+b", "(a*)*b", "(.*)*x", "(a|a)*b", "(.*a){12}b", "(a?){30}b",
                    "(\\w+\\s?)*!", "(a+)+\\1b", "(?:a{1,9}){1,9}?(a+)*b"}) {
                QTest::addRow("%s refuses %d times a", pattern, length)
                    << pattern << times(length, 'a') << false;
            }
        }
        const int length = 32767;
        const QString words = QString("abc ").repeated(length / 4);
        row("capitals", "[A-Z]+", times(length, 'A'), true);
        row("capitals and a digit", "[A-Z]+", times(length - 1, 'A') + "1", false);
        row("a name", "[A-Za-z_][A-Za-z0-9_]*", times(length, '_'), true);
        row("a name and a blank", "[A-Za-z_][A-Za-z0-9_]*", times(length - 1, 'a') + " ", false);
        const QString quantity("(\\d+[.,]?\\d*)(\\s*(mm|cm|m))?");
        row("a number", quantity, times(length, '7'), true);
        row("a number with a unit", quantity, times(length - 3, '7') + " mm", true);
        row("a number with a unit far off", quantity, "7" + times(length - 3, ' ') + "mm", true);
        row("words", "([a-z]+ )*[a-z]+", words + "abc", true);
        row("one long word", "([a-z]+ )*[a-z]+", times(length, 'a'), true);
        row("anything", ".*", times(length, 'a'), true);
        row("anything with an end", ".*;", times(length, 'a') + ";", true);
        row("a list of numbers", "\\d+(,\\d+)*", QString("12,").repeated(length / 3) + "1", true);
    }
    void aMatchEndsInTime()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        StringEditValidator validator(unlimited);
        validator.setAllowedRegex(pattern.toStdWString());
        boost::any value = untouched;
        bool valid = false;
        verifyTakesAKeystroke("validate", [&] { valid = validator.validate(text, value, {}); });
        QCOMPARE(valid, accepted);
        QVERIFY(sameValue(value, accepted ? wide(text) : untouched));
    }

    void badInputIsTakenOrRefusedInTime_data()
    {
        columns<QString, QString, quint32>("text", "pattern", "type");
        for (const auto& [name, text] : hostileTexts()) {
            for (const char* pattern : {"", "[A-Z]+", "(A+)+B"}) {
                QTest::addRow("%s against '%s', wide", name.constData(), pattern)
                    << text << pattern << quint32(1);
                QTest::addRow("%s against '%s', UTF-8", name.constData(), pattern)
                    << text << pattern << quint32(0);
            }
        }
    }
    void badInputIsTakenOrRefusedInTime()
    {
        QFETCH(QString, text);
        QFETCH(QString, pattern);
        QFETCH(quint32, type);
        StringEditValidator validator(unlimited);
        validator.setUpperCase(true);
        validator.setAllowedRegex(pattern.toStdWString());
        validator.setStorageType(static_cast<StringEditValidator::StorageType>(type));
        boost::any value = untouched;
        bool valid = false;
        verifyTakesAKeystroke("validate", [&] { valid = validator.validate(text, value, {}); });
        QString shown;
        verifyTakesAKeystroke("reformat", [&] {
            if (valid)
                shown = validator.reformat(value, {});
        });
        QCOMPARE(shown.isEmpty(), !valid || text.startsWith(QChar(0)));
        if (valid)
            QVERIFY(value.type() == (type == 1 ? typeid(std::wstring) : typeid(std::string)));
        else
            QCOMPARE(value, untouched);
        QVERIFY(valid || !pattern.isEmpty());
    }
};

VRN_TEST(TestStringEditValidator)
#include "tst_string_edit_validator.moc"
