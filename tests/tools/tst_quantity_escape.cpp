#include "escape.h"
#include "usage_error.h"

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <random>

using vrn::quantity_tool::escape;
using vrn::quantity_tool::printable;
using vrn::quantity_tool::unescape;
using vrn::quantity_tool::UsageError;
using vrn::test::columns;
using vrn::test::row;

class TestQuantityEscape : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void bothWays_data()
    {
        columns<QByteArray, QByteArray>("plain", "escaped");
        row("nothing", QByteArray(""), QByteArray(""));
        row("a text that needs no escapes", QByteArray("12 °C"), QByteArray("12 °C"));
        row("a tab", QByteArray("1\t2"), QByteArray("1\\t2"));
        row("a line feed", QByteArray("1\n"), QByteArray("1\\n"));
        row("a carriage return", QByteArray("\r1"), QByteArray("\\r1"));
        row("a null character", QByteArray("1\0002", 3), QByteArray("1\\02"));
        row("a backslash", QByteArray("\\"), QByteArray("\\\\"));
        row("a backslash before a letter", QByteArray("\\t"), QByteArray("\\\\t"));
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

    void whatATerminalShows_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("shown");
        const auto row = [](const char* name, const QByteArray& text, const char* shown) {
            QTest::newRow(name) << text << QByteArray(shown);
        };
        row("nothing", "", "");
        row("letters", "12 m", "12 m");
        row("letters of two, three and four bytes", "°€\xf0\x9d\x84\x9e", "°€\xf0\x9d\x84\x9e");
        row("the first and the last letter of ASCII", " ~", " ~");
        row("a backslash", "\\n", "\\n");
        row("a line feed is a blank", "1\n2", "1 2");
        row("a tab", "\t", "\\t");
        row("a carriage return", "\r", "\\r");
        row("a null character", QByteArray("\0", 1), "\\0");
        row("the start of a terminal's command", "\x1b[2J", "\\x1b[2J");
        row("the last of the first control characters", "\x1f", "\\x1f");
        row("a delete", "\x7f", "\\x7f");
        row("the first of the second control characters", "\xc2\x80", "\\xc2\\x80");
        row("the last of the second control characters", "\xc2\x9f", "\\xc2\\x9f");
        row("the letter after them", "\xc2\xa0", "\xc2\xa0");
        row("a byte that begins nothing",
            "a\xff"
            "b",
            "a\\xffb");
        row("a byte that continues nothing", "\x80", "\\x80");
        row("a letter cut short", "\xe2\x82", "\\xe2\\x82");
        row("a letter cut short by another", "\xe2\x82m", "\\xe2\\x82m");
        row("a letter cut short by a control character", "\xe2\x1b", "\\xe2\\x1b");
        row("a letter in more bytes than it needs", "\xc1\xa1", "\\xc1\\xa1");
        row("half of a surrogate pair", "\xed\xa0\x80", "\\xed\\xa0\\x80");
        row("beyond the last letter", "\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80");
    }
    void whatATerminalShows()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, shown);
        QCOMPARE(printable(text.toStdString()), shown.toStdString());
    }

    void anyBytesCanBeShown()
    {
        std::mt19937 random(vrn::test::randomSeed());
        for (int i = 0; i < 10000; ++i) {
            std::string text(random() % 20, ' ');
            for (char& character : text)
                character = static_cast<char>(random() % 256);
            const auto shown = QByteArray::fromStdString(printable(text));
            QVERIFY(QString::fromUtf8(shown).toUtf8() == shown);
            for (const QChar character : QString::fromUtf8(shown))
                QVERIFY(character.category() != QChar::Other_Control);
            QCOMPARE(printable(shown.toStdString()), shown.toStdString());
        }
    }
};

VRN_TEST(TestQuantityEscape)
#include "tst_quantity_escape.moc"
