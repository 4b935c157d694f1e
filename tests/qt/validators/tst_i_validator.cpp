#include <vrn/qt/i_validator.h>

#include "support/life.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cstdint>
#include <cstring>
#include <type_traits>

using vrn::qt::IValidator;
using vrn::test::columns;
using vrn::test::lifeIn;
using vrn::test::row;

namespace {

const std::bitset<32> noFlags;

// Only what an application's own validator must implement.
struct PlainValidator : public IValidator
{
    bool accepts = true;
    QString formatted;
    QString lastText;
    int validated = 0;
    std::bitset<32> lastFlags;
    bool* destroyed = nullptr;

    ~PlainValidator() override
    {
        if (destroyed)
            *destroyed = true;
    }

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        ++validated;
        lastText = text;
        lastFlags = flags;
        value = 1.5;
        return accepts;
    }

    QString reformat(const boost::any& value, const std::bitset<32>& flags) override
    {
        lastFlags = flags;
        return value.empty() ? QString() : formatted;
    }
};

#if defined(__x86_64__) && defined(__GXX_ABI_VERSION)
// The place of a virtual function in the table, as a pointer to member keeps it.
template <typename Function>
std::size_t slotOf(Function function)
{
    std::uintptr_t word = 0;
    std::memcpy(&word, &function, sizeof word);
    return (word - 1) / sizeof(void*);
}
#endif

} // namespace

class TestIValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAnInterfaceThatIsNotCopied()
    {
        static_assert(std::is_abstract_v<IValidator>);
        static_assert(std::has_virtual_destructor_v<IValidator>);
        static_assert(!std::is_copy_constructible_v<PlainValidator>);
        static_assert(!std::is_copy_assignable_v<PlainValidator>);
        static_assert(std::is_same_v<IValidator::pointer, boost::shared_ptr<IValidator>>);
        QCOMPARE(static_cast<std::size_t>(vrn::qt::ValidationFlagUserLocale), std::size_t(0));
    }

    void isDestroyedThroughTheInterface()
    {
        bool destroyed = false;
        auto* plain = new PlainValidator;
        plain->destroyed = &destroyed;
        IValidator::pointer validator(plain);
        validator.reset();
        QVERIFY(destroyed);
    }

#if defined(__x86_64__) && defined(__GXX_ABI_VERSION)
    // Applications derive from the interface: its table of virtual functions
    // is a binary contract. The destructor takes the slots 0 and 1.
    void theOperationsKeepTheirSlots()
    {
        QCOMPARE(slotOf(&IValidator::validate), std::size_t(2));
        QCOMPARE(slotOf(&IValidator::validateWhenFinished), std::size_t(3));
        QCOMPARE(slotOf(&IValidator::reformat), std::size_t(4));
        QCOMPARE(slotOf(&IValidator::reformatForDisplay), std::size_t(5));
    }
#endif

    void finishingValidatesAsAKeystrokeByDefault_data()
    {
        columns<bool>("accepts");
        row("an accepted text is accepted", true);
        row("a refused text is refused", false);
    }

    void finishingValidatesAsAKeystrokeByDefault()
    {
        QFETCH(bool, accepts);
        PlainValidator validator;
        validator.accepts = accepts;
        boost::any value;
        const std::bitset<32> flags(0x8000'0001U);
        QCOMPARE(validator.validateWhenFinished("text", value, flags), accepts);
        QCOMPARE(validator.validated, 1);
        QCOMPARE(validator.lastText, QString("text"));
        QVERIFY(validator.lastFlags == flags);
        QCOMPARE(value, boost::any(1.5));
    }

    void displayTextHasThePostfixAfterABlank_data()
    {
        columns<QString, QString, QString>("formatted", "postfix", "displayed");
        row("no postfix adds no blank", "1.5", "", "1.5");
        row("a null postfix adds no blank", "1.5", QString(), "1.5");
        row("a postfix stands after one blank", "1.5", "mm", "1.5 mm");
        row("a postfix keeps its own blanks", "1.5", " mm ", "1.5  mm ");
        row("a postfix of a blank counts", "1.5", " ", "1.5  ");
        row("an empty text gets the postfix too", "", "mm", " mm");
        row("no text and no postfix are nothing", "", "", "");
        row("a postfix is not a pattern", "%2", "%1", "%2 %1");
    }

    void displayTextHasThePostfixAfterABlank()
    {
        QFETCH(QString, formatted);
        QFETCH(QString, postfix);
        QFETCH(QString, displayed);
        PlainValidator validator;
        validator.formatted = formatted;
        validator.setPostfix(postfix);
        const std::bitset<32> flags(0x4000'0002U);
        QCOMPARE(validator.reformatForDisplay(1.5, flags), displayed);
        QVERIFY(validator.lastFlags == flags);
    }

    void thePostfixIsForDisplayOnly()
    {
        PlainValidator validator;
        validator.formatted = "1.5";
        validator.setPostfix("mm");
        QCOMPARE(validator.reformat(1.5, noFlags), QString("1.5"));
    }

    void aPostfixCanBeTakenBack()
    {
        PlainValidator validator;
        validator.formatted = "1.5";
        validator.setPostfix("mm");
        validator.setPostfix(QString());
        QCOMPARE(validator.reformatForDisplay(1.5, noFlags), QString("1.5"));
    }

    void withoutAFunctionThereIsNoHint()
    {
        const PlainValidator validator;
        QVERIFY(validator.getEditHint("text").isEmpty());
    }

    void theHintIsWhatItsFunctionSaysOfTheText()
    {
        PlainValidator validator;
        validator.setEditHintFunction([](const QString& text) { return "<" + text + ">"; });
        QCOMPARE(validator.getEditHint("text"), QString("<text>"));
        QCOMPARE(validator.getEditHint(QString()), QString("<>"));
    }

    void aHintFunctionIsReplacedAndTakenBack()
    {
        PlainValidator validator;
        validator.setEditHintFunction([](const QString&) { return QString("first"); });
        validator.setEditHintFunction([](const QString&) { return QString("second"); });
        QCOMPARE(validator.getEditHint("text"), QString("second"));
        validator.setEditHintFunction({});
        QVERIFY(validator.getEditHint("text").isEmpty());
    }

    void aHintFunctionMayReplaceItself()
    {
        PlainValidator validator;
        bool alive = false;
        validator.setEditHintFunction([&validator, life = lifeIn(alive)](const QString&) {
            const bool* const isAlive = life.get();
            validator.setEditHintFunction([](const QString&) { return QString("successor"); });
            return QString(*isAlive ? "alive" : "destroyed");
        });
        QCOMPARE(validator.getEditHint("text"), QString("alive"));
        QVERIFY(!alive);
        QCOMPARE(validator.getEditHint("text"), QString("successor"));
    }

    void aHintFunctionKeepsItsStateFromCallToCall()
    {
        PlainValidator validator;
        validator.setEditHintFunction(
            [calls = 0](const QString&) mutable { return QString::number(++calls); });
        QCOMPARE(validator.getEditHint("text"), QString("1"));
        QCOMPARE(validator.getEditHint("text"), QString("2"));
    }
};

VRN_TEST(TestIValidator)
#include "tst_i_validator.moc"
