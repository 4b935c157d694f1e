#include "escape.h"
#include "usage_error.h"

#include "support/random_seed.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <random>

using vrn::quantity_tool::escape;
using vrn::quantity_tool::unescape;
using vrn::quantity_tool::UsageError;

class TestQuantityEscape : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void bothWays_data()
    {
        QTest::addColumn<QByteArray>("plain");
        QTest::addColumn<QByteArray>("escaped");
        QTest::newRow("nothing") << QByteArray("") << QByteArray("");
        QTest::newRow("a text without need") << QByteArray("12 °C") << QByteArray("12 °C");
        QTest::newRow("a tab") << QByteArray("1\t2") << QByteArray("1\\t2");
        QTest::newRow("a line feed") << QByteArray("1\n") << QByteArray("1\\n");
        QTest::newRow("a carriage return") << QByteArray("\r1") << QByteArray("\\r1");
        QTest::newRow("a null character") << QByteArray("1\0002", 3) << QByteArray("1\\02");
        QTest::newRow("a backslash") << QByteArray("\\") << QByteArray("\\\\");
        QTest::newRow("a backslash before a letter") << QByteArray("\\t") << QByteArray("\\\\t");
    }
    void bothWays()
    {
        QFETCH(QByteArray, plain);
        QFETCH(QByteArray, escaped);
        QCOMPARE(escape(plain.toStdString()), escaped.toStdString());
        QCOMPARE(unescape(escaped.toStdString()), plain.toStdString());
    }

    void anyBytesComeBackFromOneField()
    {
        std::mt19937 random(vrn::test::randomSeed());
        const std::string favourites("\t\n\r\0\\tnr0", 9);
        for (int i = 0; i < 10000; ++i) {
            std::string text(random() % 20, ' ');
            for (char& character : text) {
                character = random() % 2 ? favourites[random() % favourites.size()]
                                         : static_cast<char>(random() % 256);
            }
            const std::string escaped = escape(text);
            QCOMPARE(escaped.find_first_of(std::string("\t\n\r\0", 4)), std::string::npos);
            QCOMPARE(unescape(escaped), text);
        }
    }

    void otherEscapesAreRefused()
    {
        QVERIFY_EXCEPTION_THROWN(unescape("\\x"), UsageError);
        QVERIFY_EXCEPTION_THROWN(unescape("1 \\T"), UsageError);
        QVERIFY_EXCEPTION_THROWN(unescape("\\"), UsageError);
        QVERIFY_EXCEPTION_THROWN(unescape("1\\\\\\"), UsageError);
    }
};

VRN_TEST(TestQuantityEscape)
#include "tst_quantity_escape.moc"
