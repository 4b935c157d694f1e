#include <vrn/qt/chained_validator.h>
#include <vrn/qt/conversion_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/forward_validator.h>

#include "recording_validator.h"
#include "support/life.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <boost/make_shared.hpp>

using vrn::qt::ChainedValidator;
using vrn::qt::ConversionValidator;
using vrn::qt::DoubleEditValidator;
using vrn::qt::ForwardValidator;
using vrn::qt::IValidator;
using vrn::test::columns;
using vrn::test::patternOfFlags;
using vrn::test::RecordingValidator;
using vrn::test::row;

namespace {

const std::bitset<32> noFlags;

// The only target of a forwarder. Whatever it is asked, it takes itself away from it.
struct LeavingValidator : public IValidator
{
    LeavingValidator(ForwardValidator* forwarder, bool& alive)
        : m_forwarder(forwarder)
        , m_life(vrn::test::lifeIn(alive))
    {}

    bool validate(const QString&, boost::any&, const std::bitset<32>&) override
    {
        return outlivesItsCall();
    }

    QString reformat(const boost::any&, const std::bitset<32>&) override
    {
        return outlivesItsCall() ? "alive" : "destroyed";
    }

private:
    bool outlivesItsCall()
    {
        const bool* const isAlive = m_life.get();
        m_forwarder->setValidator(nullptr);
        return *isAlive;
    }

    ForwardValidator* m_forwarder;
    std::shared_ptr<bool> m_life;
};

std::unique_ptr<IValidator> chainOf(std::unique_ptr<IValidator> member)
{
    std::deque<std::unique_ptr<IValidator>> members;
    members.push_back(std::make_unique<DoubleEditValidator>());
    members.push_back(std::move(member));
    return std::make_unique<ChainedValidator>(std::move(members));
}

} // namespace

class TestForwardValidator : public vrn::test::TestObject
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

    void itDoesNotForwardToItself()
    {
        const auto validator = boost::make_shared<vrn::qt::ForwardValidator>(m_target);
        expectAssert("!forwardsToItself");
        validator->setValidator(validator);
        QCOMPARE(validator->getValidator(), static_cast<vrn::qt::IValidator*>(m_target.get()));
    }

    void itDoesNotForwardToItselfThroughAnother_data()
    {
        columns<bool, int>("converts", "between");
        row("one forwarder between", false, 1);
        row("five forwarders between", false, 5);
        row("one conversion between", true, 1);
        row("five conversions between", true, 5);
    }

    void itDoesNotForwardToItselfThroughAnother()
    {
        QFETCH(bool, converts);
        QFETCH(int, between);
        const auto first = boost::make_shared<ForwardValidator>(m_target);
        IValidator::pointer last = first;
        for (int i = 0; i < between; ++i) {
            if (converts)
                last = boost::make_shared<ConversionValidator>(last);
            else
                last = boost::make_shared<ForwardValidator>(last);
        }
        expectAssert("!forwardsToItself");
        first->setValidator(last);
        QCOMPARE(first->getValidator(), static_cast<IValidator*>(m_target.get()));
        boost::any value;
        QVERIFY(last->validate("text", value, noFlags));
    }

    void itDoesNotForwardToAChainThatItIsPartOf_data()
    {
        columns<bool>("nested");
        row("as a member", false);
        row("as a member of a member", true);
    }

    void itDoesNotForwardToAChainThatItIsPartOf()
    {
        QFETCH(bool, nested);
        auto owned = std::make_unique<ForwardValidator>(m_target);
        ForwardValidator* member = owned.get();
        auto chain = chainOf(std::move(owned));
        if (nested)
            chain = chainOf(std::move(chain));
        const IValidator::pointer shared(chain.release());
        // One more step, so that the chain is also reached through a forwarder.
        const auto outer = boost::make_shared<ForwardValidator>(shared);
        expectAssert("!forwardsToItself");
        member->setValidator(outer);
        QCOMPARE(member->getValidator(), static_cast<IValidator*>(m_target.get()));
        boost::any value;
        QVERIFY(outer->validate("text", value, noFlags));
    }

    void itForwardsToAnotherOfTheSameTarget()
    {
        const auto first = boost::make_shared<ForwardValidator>(m_target);
        const IValidator::pointer chain(chainOf(std::make_unique<ForwardValidator>(m_target)));
        first->setValidator(chain);
        QCOMPARE(first->getValidator(), chain.get());
        boost::any value;
        QVERIFY(first->validate("text", value, noFlags));
    }

    void aTargetMayBeExchangedWhileItIsAsked_data()
    {
        columns<int>("operation");
        row("at a keystroke", 0);
        row("when editing ends", 1);
        row("formatting for an edit", 2);
        row("formatting for display", 3);
    }

    void aTargetMayBeExchangedWhileItIsAsked()
    {
        QFETCH(int, operation);
        bool alive = false;
        ForwardValidator forward(nullptr);
        forward.setValidator(boost::make_shared<LeavingValidator>(&forward, alive));
        boost::any value;
        switch (operation) {
        case 0:
            QVERIFY(forward.validate("text", value, noFlags));
            break;
        case 1:
            QVERIFY(forward.validateWhenFinished("text", value, noFlags));
            break;
        case 2:
            QCOMPARE(forward.reformat(value, noFlags), QString("alive"));
            break;
        case 3:
            QCOMPARE(forward.reformatForDisplay(value, noFlags), QString("alive"));
            break;
        }
        QVERIFY(!alive);
        QVERIFY(!forward.getValidator());
    }

    void withoutATargetItRefusesEveryTextAndShowsNothing()
    {
        ForwardValidator forward(nullptr);
        // Not even the blank before the postfix is shown.
        forward.setPostfix("mm");
        boost::any value = 7;
        for (const QString& text : {QString("1.5"), QString(""), QString()}) {
            QVERIFY(!forward.validate(text, value, noFlags));
            QVERIFY(!forward.validateWhenFinished(text, value, noFlags));
            QCOMPARE(value, boost::any(7));
        }
        for (const boost::any& shown :
            {boost::any(1.5), boost::any(QString("text")), boost::any()}) {
            QVERIFY(forward.reformat(shown, noFlags).isEmpty());
            QVERIFY(forward.reformatForDisplay(shown, noFlags).isEmpty());
        }
    }

    void aTextGoesToTheTargetAsItIs_data()
    {
        columns<bool, bool>("accepts", "acceptsWhenFinished");
        row("accepted by a keystroke alone", true, false);
        row("accepted at the end alone", false, true);
    }

    void aTextGoesToTheTargetAsItIs()
    {
        QFETCH(bool, accepts);
        QFETCH(bool, acceptsWhenFinished);
        m_target->accepts = accepts;
        m_target->acceptsWhenFinished = acceptsWhenFinished;
        m_target->parsed = 1.5;
        m_target->parsedWhenFinished = 2.5;
        ForwardValidator forward(m_target);
        const QString text = QString(100000, ' ') + QChar(0) + QChar(0xD83D);
        boost::any value = 7;
        QCOMPARE(forward.validate(text, value, patternOfFlags), accepts);
        QCOMPARE(value, boost::any(1.5));
        QVERIFY(m_target->lastText == text);
        QCOMPARE(m_target->lastValue, boost::any(7));
        QVERIFY(m_target->lastFlags == patternOfFlags);
        QCOMPARE(forward.validateWhenFinished(text, value, ~patternOfFlags), acceptsWhenFinished);
        QCOMPARE(value, boost::any(2.5));
        QVERIFY(m_target->lastText == text);
        QCOMPARE(m_target->lastValue, boost::any(1.5));
        QVERIFY(m_target->lastFlags == ~patternOfFlags);
        QCOMPARE(m_log, QStringList({"validate", "validateWhenFinished"}));
    }

    void formattingGoesToTheTarget()
    {
        m_target->formatted = "1.500";
        m_target->displayed = "1.500 in the target's unit";
        ForwardValidator forward(m_target);
        QCOMPARE(forward.reformat(1.5, patternOfFlags), QString("1.500"));
        QCOMPARE(m_target->lastValue, boost::any(1.5));
        QVERIFY(m_target->lastFlags == patternOfFlags);
        QCOMPARE(forward.reformatForDisplay(2.5, ~patternOfFlags),
            QString("1.500 in the target's unit"));
        QCOMPARE(m_target->lastValue, boost::any(2.5));
        QVERIFY(m_target->lastFlags == ~patternOfFlags);
        QCOMPARE(m_log, QStringList({"reformat", "reformatForDisplay"}));
    }

    void theTargetsPostfixIsShownAndNotItsOwn()
    {
        const auto target = boost::make_shared<DoubleEditValidator>();
        target->setPostfix("mm");
        ForwardValidator forward(target);
        forward.setPostfix("inch");
        QCOMPARE(forward.reformatForDisplay(1.5, noFlags), QString("1.500 mm"));
    }

    void theHintIsItsOwnAndNotTheTargets()
    {
        m_target->setEditHintFunction([](const QString&) { return QString("target"); });
        ForwardValidator forward(m_target);
        QVERIFY(forward.getEditHint("text").isEmpty());
        forward.setEditHintFunction([](const QString&) { return QString("forwarder"); });
        QCOMPARE(forward.getEditHint("text"), QString("forwarder"));
    }

    void theTargetIsToldAndReplaced()
    {
        ForwardValidator forward(m_target);
        QCOMPARE(forward.getValidator(), m_target.get());
        const auto other = boost::make_shared<RecordingValidator>();
        other->formatted = "other";
        forward.setValidator(other);
        QCOMPARE(forward.getValidator(), other.get());
        QCOMPARE(forward.reformat(1.5, noFlags), QString("other"));
        QVERIFY(m_log.isEmpty());
        forward.setValidator(nullptr);
        QVERIFY(!forward.getValidator());
        QVERIFY(forward.reformat(1.5, noFlags).isEmpty());
    }

    void theTargetIsShared()
    {
        ForwardValidator forward(m_target);
        QCOMPARE(m_target.use_count(), 2L);
        forward.setValidator({});
        QCOMPARE(m_target.use_count(), 1L);
    }

private:
    boost::shared_ptr<RecordingValidator> m_target;
    QStringList m_log;
};

VRN_TEST(TestForwardValidator)
#include "tst_forward_validator.moc"
