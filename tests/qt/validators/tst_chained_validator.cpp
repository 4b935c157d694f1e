#include <vrn/qt/chained_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/named_value_list_validator.h>

#include "recording_validator.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using vrn::qt::ChainedValidator;
using vrn::qt::DoubleEditValidator;
using vrn::qt::IntegerValidator;
using vrn::qt::IValidator;
using vrn::qt::NamedValueList;
using vrn::qt::NamedValueListValidator;
using vrn::test::columns;
using vrn::test::patternOfFlags;
using vrn::test::RecordingValidator;

namespace {

const std::bitset<32> noFlags;

using Members = std::deque<std::unique_ptr<IValidator>>;
using vrn::test::row;

template <typename... Validator>
Members chainOf(std::unique_ptr<Validator>... member)
{
    Members members;
    (members.push_back(std::move(member)), ...);
    return members;
}

std::unique_ptr<NamedValueListValidator> materials()
{
    auto list = std::make_unique<NamedValueListValidator>(
        NamedValueList{{"steel", boost::any(210000)}, {"wood", boost::any(11000)}});
    list->set_equal_to(&vrn::test::sameValue);
    return list;
}

} // namespace

class TestChainedValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_log.clear();
    }

    void anEmptyChainRefusesEveryTextAndKeepsTheValue()
    {
        ChainedValidator chain{Members()};
        boost::any value = 7;
        QVERIFY(!chain.validate("1.5", value, noFlags));
        QVERIFY(!chain.validate("", value, noFlags));
        QVERIFY(!chain.validateWhenFinished("1.5", value, noFlags));
        QCOMPARE(value, boost::any(7));
    }

    void anEmptyChainFormatsEveryValueAsAnEmptyText()
    {
        ChainedValidator chain{Members()};
        QVERIFY(chain.reformat(1.5, noFlags).isEmpty());
        QVERIFY(chain.reformatForDisplay(1.5, noFlags).isEmpty());
    }

    void theFirstThatAcceptsAnswers_data()
    {
        columns<bool, bool, bool, boost::any, QStringList>(
            "first", "second", "accepted", "value", "log");
        const QStringList one("1.validate");
        const QStringList both({"1.validate", "2.validate"});
        row("both would accept", true, true, true, boost::any(1), one);
        row("only the first accepts", true, false, true, boost::any(1), one);
        row("only the second accepts", false, true, true, boost::any(2), both);
        row("none accepts", false, false, false, boost::any(2), both);
    }

    void theFirstThatAcceptsAnswers()
    {
        QFETCH(bool, first);
        QFETCH(bool, second);
        QFETCH(bool, accepted);
        QFETCH(boost::any, value);
        QFETCH(QStringList, log);
        auto one = member("1", first, 1);
        auto two = member("2", second, 2);
        ChainedValidator chain(chainOf(std::move(one), std::move(two)));
        boost::any got = 7;
        QCOMPARE(chain.validate("text", got, noFlags), accepted);
        QCOMPARE(got, value);
        QCOMPARE(m_log, log);
    }

    void everyMemberSeesTheTextTheFlagsAndTheSameValue()
    {
        auto one = member("1", false, 1);
        auto two = member("2", false, 2);
        const RecordingValidator* first = one.get();
        const RecordingValidator* second = two.get();
        ChainedValidator chain(chainOf(std::move(one), std::move(two)));
        const QString text = QString(100000, ' ') + QChar(0) + QChar(0xD83D);
        boost::any value = 7;
        chain.validate(text, value, patternOfFlags);
        QVERIFY(first->lastText == text);
        QCOMPARE(first->lastValue, boost::any(7));
        QVERIFY(first->lastFlags == patternOfFlags);
        QVERIFY(second->lastText == text);
        QCOMPARE(second->lastValue, boost::any(1));
        QVERIFY(second->lastFlags == patternOfFlags);
    }

    // The value is not restored: it holds what the last writer left.
    void aRefusalKeepsWhatAnEarlierMemberWrote()
    {
        auto silent = member("2", false, 2);
        silent->writes = false;
        ChainedValidator chain(chainOf(member("1", false, 1), std::move(silent)));
        boost::any value = 7;
        QVERIFY(!chain.validate("text", value, noFlags));
        QCOMPARE(value, boost::any(1));
    }

    void finishingAsksTheMembersAsAKeystrokeDoes()
    {
        auto one = member("1", false, 1);
        auto two = member("2", true, 2);
        one->acceptsWhenFinished = true;
        two->parsedWhenFinished = 20;
        ChainedValidator chain(chainOf(std::move(one), std::move(two)));
        boost::any value;
        QVERIFY(chain.validateWhenFinished("text", value, noFlags));
        QCOMPARE(value, boost::any(2));
        QCOMPARE(m_log, QStringList({"1.validate", "2.validate"}));
    }

    void aNumberIsNotClampedInAChain()
    {
        ChainedValidator chain(chainOf(std::make_unique<DoubleEditValidator>(0.0, 1.0)));
        for (const double number : {0.5, 5.0, -5.0}) {
            boost::any value;
            QVERIFY(chain.validateWhenFinished(QString::number(number), value, noFlags));
            QCOMPARE(value, boost::any(number));
        }
    }

    // Also the 0 of a refused text, which the integer validator clamps alone.
    void aRefusedIntegerIsNotClampedInAChain()
    {
        ChainedValidator chain(chainOf(std::make_unique<IntegerValidator<int>>(5, 9, true)));
        boost::any value;
        QVERIFY(!chain.validateWhenFinished("steel", value, noFlags));
        QCOMPARE(value, boost::any(0));
    }

    void aNumberOrANameInOneField_data()
    {
        columns<QString, bool, boost::any>("text", "accepted", "value");
        row("a number is the first's", "1.5", true, boost::any(1.5));
        row("a name is the second's", "steel", true, boost::any(210000));
        row("an empty text is the first's zero", "", true, boost::any(0.0));
        row("a refused text keeps the first's zero", "stone", false, boost::any(0.0));
    }

    void aNumberOrANameInOneField()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(boost::any, value);
        ChainedValidator chain(chainOf(std::make_unique<DoubleEditValidator>(), materials()));
        boost::any got = 7;
        QCOMPARE(chain.validate(text, got, noFlags), accepted);
        QCOMPARE(got, value);
        got = 7;
        QCOMPARE(chain.validateWhenFinished(text, got, noFlags), accepted);
        QCOMPARE(got, value);
    }

    void theFirstThatFormatsToATextAnswers_data()
    {
        columns<QString, QString, QString, QStringList>("first", "second", "text", "log");
        const QStringList one("1.reformat");
        const QStringList both({"1.reformat", "2.reformat"});
        row("both have a text", "one", "two", "one", one);
        row("only the second has a text", "", "two", "two", both);
        row("the first has a null text", QString(), "two", "two", both);
        row("a blank is a text", " ", "two", " ", one);
        row("none has a text", "", "", "", both);
    }

    void theFirstThatFormatsToATextAnswers()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(QString, text);
        QFETCH(QStringList, log);
        auto one = member("1", true, 1);
        auto two = member("2", true, 2);
        one->formatted = first;
        two->formatted = second;
        const RecordingValidator* asked = one.get();
        ChainedValidator chain(chainOf(std::move(one), std::move(two)));
        QCOMPARE(chain.reformat(1.5, patternOfFlags), text);
        QCOMPARE(m_log, log);
        QCOMPARE(asked->lastValue, boost::any(1.5));
        QVERIFY(asked->lastFlags == patternOfFlags);
    }

    void onlyTheChainsPostfixIsShown()
    {
        auto number = std::make_unique<DoubleEditValidator>();
        number->setPostfix("member");
        ChainedValidator chain(chainOf(std::move(number)));
        QCOMPARE(chain.reformatForDisplay(1.5, noFlags), QString("1.500"));
        chain.setPostfix("chain");
        QCOMPARE(chain.reformatForDisplay(1.5, noFlags), QString("1.500 chain"));
    }

    void displayingAsksTheMembersToFormat()
    {
        auto one = member("1", true, 1);
        one->formatted = "one";
        one->displayed = "displayed";
        ChainedValidator chain(chainOf(std::move(one)));
        QCOMPARE(chain.reformatForDisplay(1.5, noFlags), QString("one"));
        QCOMPARE(m_log, QStringList("1.reformat"));
    }

    void aNullMemberIsReportedAndLeftOut()
    {
        auto one = member("1", false, 1);
        auto two = member("2", true, 2);
        two->formatted = "two";
        expectAssert("missing == m_members.end()", {"missing"});
        ChainedValidator chain(chainOf(std::unique_ptr<RecordingValidator>(), std::move(one),
            std::unique_ptr<RecordingValidator>(), std::move(two)));
        QCOMPARE(asserts().last().values.at(0).second, std::string("2"));
        boost::any value;
        QVERIFY(chain.validate("text", value, noFlags));
        QCOMPARE(value, boost::any(2));
        QCOMPARE(chain.reformat(1.5, noFlags), QString("two"));
        QCOMPARE(m_log, QStringList({"1.validate", "2.validate", "1.reformat", "2.reformat"}));
    }

    void aChainOfNullMembersIsEmpty()
    {
        expectAssert("missing == m_members.end()", {"missing"});
        ChainedValidator chain(chainOf(std::unique_ptr<RecordingValidator>()));
        boost::any value = 7;
        QVERIFY(!chain.validate("text", value, noFlags));
        QCOMPARE(value, boost::any(7));
        QVERIFY(chain.reformat(1.5, noFlags).isEmpty());
    }

    void theChainOwnsItsMembers()
    {
        struct Doomed : public RecordingValidator
        {
            explicit Doomed(int& count)
                : alive(count)
            {
                ++alive;
            }
            ~Doomed() override { --alive; }
            int& alive;
        };
        int alive = 0;
        {
            const ChainedValidator chain(
                chainOf(std::make_unique<Doomed>(alive), std::make_unique<Doomed>(alive)));
            QCOMPARE(alive, 2);
        }
        QCOMPARE(alive, 0);
    }

private:
    std::unique_ptr<RecordingValidator> member(const char* name, bool accepts, int parsed)
    {
        auto validator = std::make_unique<RecordingValidator>();
        validator->name = name;
        validator->log = &m_log;
        validator->accepts = accepts;
        validator->acceptsWhenFinished = accepts;
        validator->parsed = parsed;
        return validator;
    }

    QStringList m_log;
};

VRN_TEST(TestChainedValidator)
#include "tst_chained_validator.moc"
