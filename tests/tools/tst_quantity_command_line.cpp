#include "quantity_process.h"

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using vrn::test::columns;
using vrn::test::row;
using vrn::test::runInShell;
using vrn::test::runQuantity;

class TestQuantityCommandLine : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("output");
        const auto row = [](const char* name, const QStringList& arguments, const char* output) {
            QTest::newRow(name) << arguments << QString::fromUtf8(output);
        };
        // clang-format off
        row("convert to a symbol", {"convert", "12 kip/ft", "kN/m"}, "175.127 kN/m");
        row("convert to an id", {"convert", "12 kip/ft", "66"}, "175.127 kN/m");
        row("convert to a kind's id", {"convert", "1 mi", "1001"}, "1609.344 m");
        row("convert to a unit that is in no kind", {"convert", "5 ft", "dm"}, "15.240 dm");
        row("convert to another spelling of a symbol", {"convert", "1 m", "'"}, "3.281 ft");
        row("convert feet and inches", {"convert", "1' 3 1/2''", "mm"}, "394 mm");
        row("a number alone is in the target unit", {"convert", "12", "mm"}, "12 mm");
        row("a symbol is the unit that fits the target", {"convert", "1 kN/m3", "lb/ft3"}, "6.366 lb/ft3");
        row("megawatts to the watts of their scale", {"convert", "1 MW", "W"}, "1000000.000 W");
        row("kilowatts to the megawatts of their scale", {"convert", "1 kW", "MW"}, "0.001 MW");
        row("kilowatt hours to watt hours", {"convert", "1 kWh", "Wh"}, "1000.000 Wh");
        row("tons per metre to the kilograms of their scale", {"convert", "1 t/m", "kg/m"}, "1000.000 kg/m");
        row("a target with the digits of an override", {"convert", "12 kip/ft", "66", "--override", "66:precision=6"}, "175.126835 kN/m");
        row("a negative number", {"convert", "-5 m", "cm"}, "-500.0 cm");
        row("a text that looks like an option", {"convert", "--", "-.5 m", "cm"}, "-50.0 cm");

        row("parse by name", {"parse", "GEO_LENGTH", "1.5 m"}, "1001\t1.5");
        row("parse by id", {"parse", "1001", "1 ft"}, "1001\t0.30480000000000002");
        row("parse for a unit", {"parse", "16", "1 m"}, "16\t1000");
        row("parse a name that is not an identifier", {"parse", "TIME/FREQU.", "1 min"}, "1291\t60");
        row("parse in a system", {"parse", "GEO_LENGTH", "12", "--system", "6"}, "1001\t0.012");

        row("an entry", {"entry", "GEO_LENGTH", "3 m + 20 cm"}, "1001\t3.2000000000000002");
        row("an entry in a system", {"entry", "GEO_LENGTH", "12,5", "--system", "6", "--locale", "de_DE"}, "1001\t0.012500000000000001");

        row("format", {"format", "GEO_LENGTH", "1.5"}, "1.500 m");
        row("format in a system", {"format", "GEO_LENGTH", "0.3048", "--system", "8"}, "1.00 ft");
        row("the system before the command", {"--system", "8", "format", "1001", "0.3048"}, "1.00 ft");
        row("format infinity", {"format", "GEO_LENGTH", "inf"}, "inf m");
        row("format an exponent", {"format", "GEO_LENGTH", "1e3"}, "1000.000 m");
        row("format a negative value", {"format", "GEO_LENGTH", "-2"}, "-2.000 m");

        row("show", {"show", "GEO_LENGTH", "5 mm"}, "0.005 m");
        row("show by an override of all fields",
            {"show", "GEO_LENGTH", "1' 3 1/2''", "--override",
                "GEO_LENGTH:unit=215,precision=8,format=0,label=ft"},
            "1' 3 1/2 ''");
        row("an override by symbol", {"show", "1001", "1 m", "--override", "1001:unit=mm"}, "1000.000 mm");
        row("an override by symbol means the unit of the kind", {"format", "HEAT_FLUX", "1", "--override", "HEAT_FLUX:unit=W"}, "1000.000 W");
        row("an override keeps what it does not name", {"show", "1001", "1 m", "--system", "8", "--override", "1001:precision=4"}, "3.2808 ft");
        row("an override of a unit keeps the unit", {"format", "16", "1", "--override", "16:precision=2"}, "1.00 mm");
        row("a negative denominator is 4", {"format", "1001", "1", "--override", "1001:unit=215,precision=-1"}, "3' 3 1/4 ''");
        row("a denominator of 0 means fixed notation", {"format", "1001", "1.5", "--override", "1001:precision=0,format=2"}, "2 m");
        row("an empty label hides the unit", {"show", "1001", "1 m", "--override", "1001:label="}, "1.000");
        row("two overrides", {"show", "1001", "1 m", "--override", "1001:precision=1", "--override", "1001:unit=mm"}, "1000.0 mm");

        row("German texts", {"show", "GEO_LENGTH", "1.234,5", "--locale", "de_DE.UTF-8"}, "1.234,500 m");
        row("a locale without its UTF-8", {"convert", "1,5 m", "mm", "--locale", "de_DE"}, "1.500 mm");
        row("a comma ends the number elsewhere", {"convert", "1,5 m", "cm"}, "100.0 cm");
        // clang-format on
    }
    void answers()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, output);
        const auto outcome = runQuantity(arguments);
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.output, output + "\n");
        QCOMPARE(outcome.status, 0);
    }

    void refusals_data()
    {
        columns<QStringList>("arguments");
        row("no number", QStringList{"parse", "GEO_LENGTH", "m"});
        row("no text", QStringList{"parse", "GEO_LENGTH", ""});
        row("an unknown unit", QStringList{"show", "GEO_LENGTH", "12 furlong"});
        row("a unit of another kind", QStringList{"show", "GEO_LENGTH", "12 kN"});
        row("a unit that the kind does not list", QStringList{"parse", "GEO_LENGTH", "1 dm"});
        row("units that do not convert", QStringList{"convert", "1 kN", "m"});
        // Kinds list units of several dimensions, so it is not enough that two units share a kind.
        row("a duration for a frequency", QStringList{"convert", "1 sec", "1/sec"});
        row("an area for an area per length", QStringList{"convert", "1 cm2", "cm2/m"});
        row("a trailing blank", QStringList{"parse", "GEO_LENGTH", "12 m "});
        row("a text of two lines", QStringList{"parse", "GEO_LENGTH", "x\ny"});
    }
    void refusals()
    {
        QFETCH(QStringList, arguments);
        const auto outcome = runQuantity(arguments);
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.output, QString());
        QCOMPARE(outcome.errors.count('\n'), 1);
        QVERIFY(outcome.errors.startsWith("vrn-quantity: "));
    }

    void wrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char* name, const QStringList& arguments, const char* reason) {
            QTest::newRow(name) << arguments << QString(reason);
        };
        // clang-format off
        row("no command", {}, "command is missing");
        row("settings without command", {"--system", "8"}, "command is missing");
        row("two commands", {"list", "units", "convert", "1 m", "cm"}, "convert");
        row("an unknown command", {"weigh", "1 kg"}, "weigh");
        row("an unknown option", {"list", "units", "--yaml"}, "--yaml");
        row("a missing argument", {"convert", "1 m"}, "UNIT");
        row("too many arguments", {"show", "1001", "1", "m"}, "m");
        row("an unknown kind", {"parse", "GEO_WIDTH", "1 m"}, "GEO_WIDTH");
        row("an id that is not a kind", {"parse", "5000", "1 m"}, "Invalid unit id.");
        row("an id that is not a unit", {"convert", "1 m", "12"}, "Invalid unit id.");
        row("an unknown symbol", {"convert", "1 m", "furlong"}, "furlong");
        row("a value that is not a number", {"format", "1001", "1 m"}, "1 m");
        row("a value that no number holds", {"format", "1001", "1e999"}, "1e999");
        row("a system below 0", {"show", "1001", "1", "--system", "-1"}, "--system");
        row("a system above 9", {"show", "1001", "1", "--system", "10"}, "--system");
        row("a system that is not a number", {"show", "1001", "1", "--system", "x"}, "--system");
        row("an unknown locale", {"show", "1001", "1", "--locale", "xx_YY"}, "xx_YY");
        row("an unknown table", {"list", "factors"}, "factors");
        row("an override without kind", {"show", "1001", "1", "--override", "unit=13"}, "colon");
        row("an override without fields", {"show", "1001", "1", "--override", "1001:"}, "field=value");
        row("an override of no field", {"show", "1001", "1", "--override", "1001:digits=2"}, "digits");
        row("an override to no number", {"show", "1001", "1", "--override", "1001:format=fixed"}, "fixed");
        row("an override to no unit", {"show", "1001", "1", "--override", "1001:unit=furlong"}, "furlong");
        row("an override of no kind", {"show", "1001", "1", "--override", "999:unit=m"}, "Invalid unit id.");
        row("a value in a system whose display unit the kind does not list", {"format", "1100", "1", "--system", "7"}, "Incompatible units.");
        row("a value in a display unit of another kind",
            {"format", "GEO_LENGTH", "1", "--override", "GEO_LENGTH:unit=kN"},
            "Incompatible units.");
        row("a text in a display unit of another kind",
            {"show", "GEO_LENGTH", "1 m", "--override", "GEO_LENGTH:unit=kN"},
            "Incompatible units.");
        row("a message of two lines becomes one", {"parse", "GEO\nWIDTH", "1"}, "GEO WIDTH");
        // clang-format on
    }
    void wrongUsage()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, reason);
        const auto outcome = runQuantity(arguments);
        QCOMPARE(outcome.status, 2);
        QCOMPARE(outcome.output, QString());
        QCOMPARE(outcome.errors.count('\n'), 1);
        QVERIFY(outcome.errors.startsWith("vrn-quantity: "));
        QVERIFY2(outcome.errors.contains(reason), qPrintable(outcome.errors));
    }

    void messagesShowWhatATerminalWouldObey_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, const QStringList& arguments, const char* message) {
            QTest::newRow(name) << arguments << QString::fromUtf8(message);
        };
        // clang-format off
        row("the name of a kind", {"parse", "\x1b[31mGEO", "1"}, "no kind has the name \"\\x1b[31mGEO\"");
        row("a text that is refused", {"parse", "1001", "\r1\a m"}, "\"\\r1\\x07 m\" is no quantity of the kind 1001");
        row("an argument too many", {"show", "1001", "1", "\x1b"}, "The following argument was not expected: \\x1b");
        row("letters beyond ASCII stay", {"convert", "1 m", "Å"}, "no unit has the symbol \"Å\"");
        // clang-format on
    }
    void messagesShowWhatATerminalWouldObey()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QCOMPARE(runQuantity(arguments).errors, "vrn-quantity: " + message + "\n");
    }

    void messagesShowBytesThatAreNotUtf8()
    {
        const auto outcome = runInShell("exec vrn-quantity convert '1 m' $(printf 'k\\377m')");
        QCOMPARE(outcome.errors, QString("vrn-quantity: no unit has the symbol \"k\\xffm\"\n"));
        QCOMPARE(outcome.status, 2);
    }

    void outputThatCannotBeWritten_data()
    {
        QTest::addColumn<QString>("command");
        const QStringList commands{"convert '1 m' cm", "parse 1001 1", "format 1001 1",
            "show 1001 1", "list units", "list kinds", "list systems", "list units --json",
            "list kinds --json", "list systems --json", "batch", "--help", "show --help"};
        for (const QString& command : commands) {
            for (const QString redirection : {" > /dev/full", " >&-"})
                QTest::newRow(qPrintable(command + redirection)) << command + redirection;
        }
    }
    void outputThatCannotBeWritten()
    {
        QFETCH(QString, command);
        const auto outcome = runInShell("exec vrn-quantity " + command, "show\t1001\t1\n");
        QCOMPARE(outcome.errors, QString("vrn-quantity: standard output cannot be written\n"));
        QCOMPARE(outcome.status, 2);
    }

    void inputThatCannotBeRead()
    {
        const auto outcome = runInShell("exec vrn-quantity batch <&-");
        QCOMPARE(outcome.errors, QString("vrn-quantity: standard input: Bad file descriptor\n"));
        QCOMPARE(outcome.status, 2);
    }

    void helpIsNotAnError_data()
    {
        columns<QStringList, QString>("arguments", "expected");
        row("of the program", QStringList{"--help"}, "convert");
        row("of a command", QStringList{"show", "--help"}, "KIND");
    }
    void helpIsNotAnError()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, expected);
        const auto outcome = runQuantity(arguments);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QString());
        QVERIFY(outcome.output.contains(expected));
    }
};

VRN_TEST(TestQuantityCommandLine)
#include "tst_quantity_command_line.moc"
