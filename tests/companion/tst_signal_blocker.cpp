#include <vrn/companion_qt/signal_blocker.h>

#include <QSignalSpy>

#include "support/test_main.h"
#include "support/test_object.h"

#include <memory>
#include <stdexcept>

class TestSignalBlocker : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalsAreBlockedForAsLongAsItLives()
    {
        QObject object;
        QSignalSpy renamed(&object, &QObject::objectNameChanged);
        {
            const VRN_QT_SignalBlocker blocker(&object);
            QVERIFY(object.signalsBlocked());
            object.setObjectName("silent");
        }
        QVERIFY(!object.signalsBlocked());
        QCOMPARE(renamed.count(), 0);
        object.setObjectName("told");
        QCOMPARE(renamed.count(), 1);
    }

    void whatWasBlockedBeforeStaysBlocked()
    {
        QObject object;
        {
            const VRN_QT_SignalBlocker outer(&object);
            {
                const VRN_QT_SignalBlocker inner(&object);
            }
            QVERIFY(object.signalsBlocked());
        }
        QVERIFY(!object.signalsBlocked());
    }

    void theFormerStateComesBackAfterAChangeInBetween()
    {
        QObject object;
        object.blockSignals(true);
        {
            const VRN_QT_SignalBlocker blocker(&object);
            object.blockSignals(false);
        }
        QVERIFY(object.signalsBlocked());
    }

    void anExceptionEndsTheBlocking()
    {
        QObject object;
        const auto blockAndThrow = [&] {
            const VRN_QT_SignalBlocker blocker(&object);
            throw std::runtime_error("boom");
        };
        QVERIFY_EXCEPTION_THROWN(blockAndThrow(), std::runtime_error);
        QVERIFY(!object.signalsBlocked());
    }

    void theObjectMayGoFirst()
    {
        auto object = std::make_unique<QObject>();
        const VRN_QT_SignalBlocker blocker(object.get());
        object.reset();
    }

    void thereMayBeNoObject() { const VRN_QT_SignalBlocker blocker(nullptr); }
};

VRN_TEST(TestSignalBlocker)
#include "tst_signal_blocker.moc"
