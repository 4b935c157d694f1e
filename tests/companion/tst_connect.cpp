#include <vrn/companion_qt/connect.h>

#include <QSignalSpy>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using vrn::test::columns;
using vrn::test::row;

namespace {

class Bell : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void ring() { ++rings; }

Q_SIGNALS:
    void pressed();

public:
    int rings = 0;
};

class Door : public Bell
{
    Q_OBJECT
};

} // namespace

// Both forms of vrn_connect: by the names of signal and slot, and typed.
class TestConnect : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void byNameItConnectsAsOftenAsAskedAndSaysSo()
    {
        Bell button;
        Bell bell;
        const bool connected = vrn_connect(
            &button, SIGNAL(pressed()), &bell, SLOT(ring()), Qt::AutoConnection);
        QVERIFY(connected);
        Q_EMIT button.pressed();
        QCOMPARE(bell.rings, 1);
        QVERIFY(vrn_connect(&button, SIGNAL(pressed()), &bell, SLOT(ring()), Qt::AutoConnection));
        Q_EMIT button.pressed();
        QCOMPARE(bell.rings, 3);
    }

    void byNameTheTypeMayBeLeftOut()
    {
        Door button;
        Door bell;
        static_assert(
            std::is_same_v<decltype(vrn_connect(&button, SIGNAL(pressed()), &bell, SLOT(ring()))),
                bool>);
        QVERIFY(vrn_connect(&button, SIGNAL(pressed()), &bell, SLOT(ring())));
        Q_EMIT button.pressed();
        QCOMPARE(bell.rings, 1);
    }

    // Other code may store its address with this declaration.
    void byNameItIsOneFunction()
    {
        bool (*const byName)(const QObject*, const char*, const QObject*, const char*,
            Qt::ConnectionType) = &vrn_connect;
        Bell button;
        Bell bell;
        QVERIFY(byName(&button, SIGNAL(pressed()), &bell, SIGNAL(pressed()), Qt::AutoConnection));
        QSignalSpy pressed(&bell, &Bell::pressed);
        Q_EMIT button.pressed();
        QCOMPARE(pressed.count(), 1);
    }

    void byNameTheTypeCounts()
    {
        Bell button;
        Bell bell;
        QVERIFY(vrn_connect(&button, SIGNAL(pressed()), &bell, SLOT(ring()), Qt::QueuedConnection));
        Q_EMIT button.pressed();
        QCOMPARE(bell.rings, 0);
        QCoreApplication::processEvents();
        QCOMPARE(bell.rings, 1);
    }

    void byNameAFailureReturnsFalse_data()
    {
        columns<QByteArray, QByteArray, QString>("signal", "method", "warning");
        row("no such signal", QByteArray(SIGNAL(opened())), QByteArray(SLOT(ring())),
            "QObject::connect: No such signal Bell::opened()");
        row("no such slot", QByteArray(SIGNAL(pressed())), QByteArray(SLOT(open())),
            "QObject::connect: No such slot Bell::open()");
    }
    void byNameAFailureReturnsFalse()
    {
        QFETCH(QByteArray, signal);
        QFETCH(QByteArray, method);
        QFETCH(QString, warning);
        Bell button;
        Bell bell;
        expectWarning(warning); // Qt's own; nothing else is reported.
        QVERIFY(!vrn_connect(&button, signal, &bell, method, Qt::AutoConnection));
    }

    void typedItGivesTheConnection()
    {
        Bell button;
        Bell bell;
        const QMetaObject::Connection connection = vrn_connect(
            &button, &Bell::pressed, &bell, &Bell::ring);
        Q_EMIT button.pressed();
        QCOMPARE(bell.rings, 1);
        QVERIFY(QObject::disconnect(connection));
        Q_EMIT button.pressed();
        QCOMPARE(bell.rings, 1);
    }

    void typedAFailureIsReported()
    {
        const Bell* none = nullptr;
        Bell bell;
        expectWarning("QObject::connect(Bell, Bell): invalid nullptr parameter");
        expectAssert("connection");
        QVERIFY(!vrn_connect(none, &Bell::pressed, &bell, &Bell::ring));
    }
};

VRN_TEST(TestConnect)
#include "tst_connect.moc"
