#include <vrn/qt/conversion_validator.h>
#include <vrn/qt/double_edit_validator.h>

#include "recording_validator.h"
#include "support/life.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <boost/make_shared.hpp>

#include <type_traits>

using vrn::qt::ConversionValidator;
using vrn::qt::DoubleEditValidator;
using vrn::qt::ForwardValidator;
using vrn::test::columns;
using vrn::test::lifeIn;
using vrn::test::patternOfFlags;
using vrn::test::RecordingValidator;
using vrn::test::row;

namespace {

const std::bitset<32> noFlags;

void toPercent(boost::any& value)
{
    if (double* number = boost::any_cast<double>(&value))
        *number *= 100.0;
}

void fromPercent(boost::any& value)
{
    if (double* number = boost::any_cast<double>(&value))
        *number /= 100.0;
}

} // namespace

class TestConversionValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_target = boost::make_shared<RecordingValidator>();
        m_target->log = &m_log;
        m_log.clear();
    }

    void isAForwarder()
    {
        static_assert(std::is_base_of_v<ForwardValidator, ConversionValidator>);
        ConversionValidator conversion(m_target);
        QCOMPARE(conversion.getValidator(), m_target.get());
    }

    void withoutFunctionsItForwardsEverything()
    {
        m_target->parsed = 1.5;
        m_target->parsedWhenFinished = 2.5;
        m_target->formatted = "formatted";
        m_target->displayed = "displayed";
        ConversionValidator conversion(m_target);
        boost::any value;
        QVERIFY(conversion.validate("text", value, noFlags));
        QCOMPARE(value, boost::any(1.5));
        QVERIFY(conversion.validateWhenFinished("text", value, noFlags));
        QCOMPARE(value, boost::any(2.5));
        QCOMPARE(conversion.reformat(3.5, patternOfFlags), QString("formatted"));
        QCOMPARE(m_target->lastValue, boost::any(3.5));
        QVERIFY(m_target->lastFlags == patternOfFlags);
        QCOMPARE(conversion.reformatForDisplay(4.5, ~patternOfFlags), QString("displayed"));
        QCOMPARE(m_target->lastValue, boost::any(4.5));
        QVERIFY(m_target->lastFlags == ~patternOfFlags);
    }

    void withoutATargetNothingIsAcceptedShownOrConverted()
    {
        int converted = 0;
        const auto count = [&](boost::any&) { ++converted; };
        ConversionValidator conversion(nullptr);
        conversion.setPostfix("mm");
        for (const bool converts : {false, true}) {
            if (converts)
                conversion.setConversionFn({}, count);
            boost::any value = 7;
            QVERIFY(!conversion.validate("1.5", value, noFlags));
            QVERIFY(!conversion.validateWhenFinished("1.5", value, noFlags));
            QCOMPARE(value, boost::any(7));
            if (converts)
                conversion.setConversionFn(&toPercent, count);
            QVERIFY(conversion.reformat(1.5, noFlags).isEmpty());
            QVERIFY(conversion.reformatForDisplay(1.5, noFlags).isEmpty());
        }
        QCOMPARE(converted, 0);
    }

    void anAcceptedTextIsConverted()
    {
        m_target->parsed = 50.0;
        m_target->parsedWhenFinished = 25.0;
        ConversionValidator conversion(m_target);
        conversion.setConversionFn({}, &fromPercent);
        const QString text = QString(100000, ' ') + QChar(0) + QChar(0xD83D);
        boost::any value = 7;
        QVERIFY(conversion.validate(text, value, patternOfFlags));
        QCOMPARE(value, boost::any(0.5));
        QVERIFY(m_target->lastText == text);
        QCOMPARE(m_target->lastValue, boost::any(7));
        QVERIFY(m_target->lastFlags == patternOfFlags);
        QVERIFY(conversion.validateWhenFinished(text, value, ~patternOfFlags));
        QCOMPARE(value, boost::any(0.25));
        QVERIFY(m_target->lastFlags == ~patternOfFlags);
        QCOMPARE(m_log, QStringList({"validate", "validateWhenFinished"}));
    }

    void aRefusedTextIsNotConverted()
    {
        int converted = 0;
        m_target->accepts = false;
        m_target->acceptsWhenFinished = false;
        m_target->parsed = 50.0;
        m_target->parsedWhenFinished = 25.0;
        ConversionValidator conversion(m_target);
        conversion.setConversionFn({}, [&](boost::any&) { ++converted; });
        boost::any value;
        QVERIFY(!conversion.validate("text", value, noFlags));
        QCOMPARE(value, boost::any(50.0));
        QVERIFY(!conversion.validateWhenFinished("text", value, noFlags));
        QCOMPARE(value, boost::any(25.0));
        QCOMPARE(converted, 0);
    }

    void theTypeIsWhatTheConversionLeaves_data()
    {
        columns<boost::any, boost::any>("parsed", "left");
        row("another type", boost::any(50.0), boost::any(QString("half")));
        row("no value for a value", boost::any(50.0), boost::any());
        row("a value for no value", boost::any(), boost::any(1));
    }

    void theTypeIsWhatTheConversionLeaves()
    {
        QFETCH(boost::any, parsed);
        QFETCH(boost::any, left);
        m_target->parsed = parsed;
        ConversionValidator conversion(m_target);
        boost::any seen = QString("never called");
        conversion.setConversionFn({}, [&](boost::any& value) {
            seen = value;
            value = left;
        });
        boost::any value;
        QVERIFY(conversion.validate("text", value, noFlags));
        QCOMPARE(seen, parsed);
        QCOMPARE(value, left);
    }

    void aValueIsConvertedBeforeItIsFormatted()
    {
        m_target->formatted = "formatted";
        m_target->displayed = "displayed";
        ConversionValidator conversion(m_target);
        conversion.setConversionFn(&toPercent, {});
        const boost::any value = 0.5;
        QCOMPARE(conversion.reformat(value, patternOfFlags), QString("formatted"));
        QCOMPARE(m_target->lastValue, boost::any(50.0));
        QVERIFY(m_target->lastFlags == patternOfFlags);
        QCOMPARE(value, boost::any(0.5));
        QCOMPARE(conversion.reformatForDisplay(value, ~patternOfFlags), QString("displayed"));
        QCOMPARE(m_target->lastValue, boost::any(50.0));
        QVERIFY(m_target->lastFlags == ~patternOfFlags);
        QCOMPARE(value, boost::any(0.5));
        QCOMPARE(m_log, QStringList({"reformat", "reformatForDisplay"}));
    }

    void aMissingValueIsConvertedToo()
    {
        ConversionValidator conversion(m_target);
        conversion.setConversionFn([](boost::any& value) { value = value.empty(); }, {});
        conversion.reformat({}, noFlags);
        QCOMPARE(m_target->lastValue, boost::any(true));
    }

    void eachFunctionWorksForItsOwnDirection()
    {
        m_target->parsed = 50.0;
        ConversionValidator conversion(m_target);
        boost::any value;

        conversion.setConversionFn(&toPercent, {});
        QVERIFY(conversion.validate("text", value, noFlags));
        QCOMPARE(value, boost::any(50.0));

        conversion.setConversionFn({}, &fromPercent);
        conversion.reformat(0.5, noFlags);
        QCOMPARE(m_target->lastValue, boost::any(0.5));
    }

    void bothFunctionsAreSetAtOnce()
    {
        m_target->parsed = 50.0;
        ConversionValidator conversion(m_target);
        conversion.setConversionFn(&toPercent, &fromPercent);
        conversion.setConversionFn({}, {});
        boost::any value;
        QVERIFY(conversion.validate("text", value, noFlags));
        QCOMPARE(value, boost::any(50.0));
        conversion.reformat(0.5, noFlags);
        QCOMPARE(m_target->lastValue, boost::any(0.5));
    }

    void aFunctionMayReplaceItself_data()
    {
        columns<int>("operation");
        row("at a keystroke", 0);
        row("when editing ends", 1);
        row("formatting for an edit", 2);
        row("formatting for display", 3);
    }

    void aFunctionMayReplaceItself()
    {
        QFETCH(int, operation);
        ConversionValidator conversion(m_target);
        bool alive = false;
        bool outlivesItsCall = false;
        const std::function<void(boost::any&)> none;
        auto replacing = [&, life = lifeIn(alive)](boost::any&) {
            const bool* const isAlive = life.get();
            bool& outlives = outlivesItsCall;
            conversion.setConversionFn(none, none);
            outlives = *isAlive;
        };
        boost::any value;
        if (operation < 2)
            conversion.setConversionFn(none, std::move(replacing));
        else
            conversion.setConversionFn(std::move(replacing), none);
        switch (operation) {
        case 0:
            QVERIFY(conversion.validate("text", value, noFlags));
            break;
        case 1:
            QVERIFY(conversion.validateWhenFinished("text", value, noFlags));
            break;
        case 2:
            conversion.reformat(value, noFlags);
            break;
        case 3:
            conversion.reformatForDisplay(value, noFlags);
            break;
        }
        QVERIFY(outlivesItsCall);
        QVERIFY(!alive);
    }

    // The range and the postfix are those of the form that is typed.
    void aShareTypedInPercent()
    {
        const auto percent = boost::make_shared<DoubleEditValidator>(1, 0.0, 100.0, true);
        percent->setPostfix("%");
        ConversionValidator share(percent);
        share.setPostfix("not used");
        share.setConversionFn(&toPercent, &fromPercent);
        boost::any value;
        QVERIFY(share.validate("150", value, noFlags));
        QCOMPARE(value, boost::any(1.5));
        QVERIFY(share.validateWhenFinished("150", value, noFlags));
        QCOMPARE(value, boost::any(1.0));
        QCOMPARE(share.reformat(0.25, noFlags), QString("25.0"));
        QCOMPARE(share.reformatForDisplay(0.25, noFlags), QString("25.0 %"));
        QCOMPARE(share.reformat(2.5, noFlags), QString("100.0"));
    }

    void theNewTargetIsConvertedAfterAnExchange()
    {
        ConversionValidator conversion(nullptr);
        conversion.setConversionFn({}, &fromPercent);
        m_target->parsed = 50.0;
        conversion.setValidator(m_target);
        boost::any value;
        QVERIFY(conversion.validate("text", value, noFlags));
        QCOMPARE(value, boost::any(0.5));
    }

private:
    boost::shared_ptr<RecordingValidator> m_target;
    QStringList m_log;
};

VRN_TEST(TestConversionValidator)
#include "tst_conversion_validator.moc"
