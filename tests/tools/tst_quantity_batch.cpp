#include "quantity_process.h"

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

using vrn::test::columns;
using vrn::test::quantityEnvironment;
using vrn::test::row;
using vrn::test::runInShell;
using vrn::test::runQuantity;

namespace {

/// Of the process, in KiB; -1 if it cannot be read.
int residentMemory(qint64 processId)
{
    QFile file(QStringLiteral("/proc/%1/status").arg(processId));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QRegularExpression line(QStringLiteral("VmRSS:\\s*(\\d+) kB"));
    const auto match = line.match(QString::fromLatin1(file.readAll()));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

} // namespace

class TestQuantityBatch : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("answer");
        const auto row = [](const char* name, const QByteArray& line, const char* answer) {
            QTest::newRow(name) << line << QString::fromUtf8(answer);
        };
        row("parse", "parse\tGEO_LENGTH\t1 ft", "ok\t1001\t0.30480000000000002");
        row("parse by id", "parse\t1001\t1.5", "ok\t1001\t1.5");
        row("parse for a unit", "parse\t16\t1 m", "ok\t16\t1000");
        row("parse infinity", "parse\t1001\t1/0", "ok\t1001\tinf");
        row("parse a refused text", "parse\tGEO_LENGTH\t1 kN", "none");
        row("parse nothing", "parse\tGEO_LENGTH\t", "none");
        row("format", "format\tGEO_LENGTH\t1.5", "ok\t1.500 m");
        row("format infinity", "format\t1001\t-inf", "ok\t-inf m");
        row("show", "show\tGEO_LENGTH\t5 mm", "ok\t0.005 m");
        row("show a refused text", "show\tGEO_LENGTH\t5 mmm", "none");
        row("show a text beyond ASCII", "show\t5\t12 °", "ok\t12.00 °");

        row("entry", "entry\tGEO_LENGTH\t5' 6\"", "ok\t1001\t1.6764000000000001");
        row("entry for a unit", "entry\t16\t1 m + 1 cm", "ok\t16\t1010");
        row("entry of a text beyond ASCII", "entry\tGEO_AREA\t3 m²", "ok\t1002\t3");
        row("entry of a refused text", "entry\tGEO_LENGTH\t12 kN",
            "none\t3\tkN is a force; a length is wanted: m, cm, mm, ft, in");
        row("entry of a text that is not finished", "entry\tLOAD_POINT\t12 k",
            "none\t3\t… kN, kip");
        row("entry of a refused text with a backslash", "entry\t1001\t1 \\\\",
            "none\t2\t\"\\\\\" does not belong here");
        row("entry for an unknown id", "entry\t5000\t1 m", "error\tInvalid unit id.");

        row("an escaped tab is a blank", "parse\t1001\t1\\tm", "ok\t1001\t1");
        row("an escaped null character is none", "parse\t1001\t1\\0m", "none");
        row("an escaped backslash is none", "parse\t1001\t1\\\\m", "none");
        row("a null character as it is", QByteArray("parse\t1001\t1\0m", 14), "none");

        row("an unknown id", "parse\t5000\t1 m", "error\tInvalid unit id.");
        row("an id that no unit has", "parse\t12\t1 m", "error\tInvalid unit id.");
        row("an id that no unit has, to format", "format\t12\t1", "error\tunit_id");
        row("a negative id", "format\t-1\t1", "error\tInvalid unit id.");
        row("the least id", "format\t-2147483648\t1", "error\tInvalid unit id.");
        row("an id that is not a 32-bit number", "format\t2147483648\t1",
            "error\tno kind has the name \"2147483648\"");
        row("an unknown kind", "show\tGEO_WIDTH\t1", "error\tno kind has the name \"GEO_WIDTH\"");
        row("no kind", "show\t\t1", "error\tno kind has the name \"\"");
        row("an unknown command", "weigh\t1001\t1", "error\tthere is no command \"weigh\"");
        row("an empty line", "", "error\ta line has three fields with a tab between them");
        row("two fields", "parse\t1001", "error\ta line has three fields with a tab between them");
        row("four fields", "parse\t1001\t1\tm",
            "error\ta line has three fields with a tab between them");
        row("a value that is not a number", "format\t1001\t1 m", "error\t\"1 m\" is no number");
        row("no value", "format\t1001\t", "error\t\"\" is no number");
        row("an unknown escape", "parse\t1001\t\\x", "error\t\\\\x stands for no character");
        row("a backslash at the end", "parse\t1001\t1\\", "error\ta backslash ends the text");
        row("bytes that are not UTF-8", "parse\t1001\t1 \xff", "error\tthe text is not UTF-8");
    }
    void answers()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, answer);
        const auto outcome = runQuantity({"batch"}, line + "\n");
        QCOMPARE(outcome.output, answer + "\n");
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.status, 0);
    }

    void settingsHoldForAllLines()
    {
        const auto outcome = runQuantity(
            {"batch", "--system", "8", "--locale", "de_DE.UTF-8", "--override", "1001:precision=3"},
            "show\t1001\t1,5\nformat\t1001\t304,8\nformat\t1001\t304.8\n");
        QCOMPARE(outcome.output,
            QString("ok\t1,500 ft\nerror\t\"304,8\" is no number\nok\t1.000,000 ft\n"));
    }

    // The library asserts before it throws. That must not appear on standard error.
    void aValueThatCannotBeShownIsAnErrorOfItsLine()
    {
        const auto outcome = runQuantity(
            {"batch", "--system", "7"}, "format\t1001\t2\nformat\t1100\t1\nformat\t1001\t3\n");
        QCOMPARE(outcome.output,
            QString("ok\t2000.000 mm\nerror\tIncompatible units.\nok\t3000.000 mm\n"));
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.status, 0);
    }

    void withoutALineThereIsNoAnswer() { QCOMPARE(runQuantity({"batch"}).output, QString()); }

    void theLastLineNeedsNoLineFeed()
    {
        QCOMPARE(runQuantity({"batch"}, "show\t1001\t1\nshow\t1001\t2").output,
            QString("ok\t1.000 m\nok\t2.000 m\n"));
    }

    void aLineIsAnsweredBeforeTheNextOneIsWhole()
    {
        QProcess process;
        process.start(QStringLiteral(VRN_QUANTITY), {"batch"});
        process.write("show\t1001\t1\nshow\t10");
        QVERIFY(process.waitForReadyRead());
        QCOMPARE(process.readAllStandardOutput(), QByteArray("ok\t1.000 m\n"));
        process.write("01\t2\n");
        QVERIFY(process.waitForReadyRead());
        QCOMPARE(process.readAllStandardOutput(), QByteArray("ok\t2.000 m\n"));
        process.closeWriteChannel();
        QVERIFY(process.waitForFinished());
    }

    void outputThatCannotBeWrittenEndsIt_data()
    {
        columns<QByteArray>("input");
        row("at the first wait for more", QByteArray("show\t1001\t1\n"));
        // More than any buffer between the answers and the file holds.
        row("among many lines", QByteArray("show\t1001\t1\n").repeated(100000));
    }
    void outputThatCannotBeWrittenEndsIt()
    {
        QFETCH(QByteArray, input);
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        process.start(QStringLiteral(VRN_QUANTITY), {"batch"});
        // The input stays open: the program has no other reason to end.
        process.write(input);
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.readAllStandardError(),
            QByteArray("vrn-quantity: standard output cannot be written\n"));
        QCOMPARE(process.exitCode(), 2);
    }

    // This line is answered after the end of the input.
    void outputThatCannotBeWrittenAtTheEndIsReported()
    {
        const auto outcome = runInShell("exec vrn-quantity batch > /dev/full", "show\t1001\t1");
        QCOMPARE(outcome.errors, QString("vrn-quantity: standard output cannot be written\n"));
        QCOMPARE(outcome.status, 2);
    }

    void aReaderThatHasGoneEndsIt()
    {
        const auto outcome = runInShell("trap '' PIPE; timeout 60 yes 'bad line' 2> /dev/null | { "
                                        "vrn-quantity batch; echo $? >&2; } "
                                        "| head -n 1");
        QCOMPARE(
            outcome.output, QString("error\ta line has three fields with a tab between them\n"));
        QCOMPARE(outcome.errors, QString("vrn-quantity: standard output cannot be written\n2\n"));
    }

    void memoryDoesNotGrowWithTheLines()
    {
        constexpr int linesOfAPortion = 20000;
        constexpr int portions = 50;
        QByteArray portion;
        for (int i = 0; i < linesOfAPortion / 5; ++i) {
            const QByteArray number = QByteArray::number(i);
            portion += "parse\tGEO_LENGTH\t" + number + ".5 ft\n";
            portion += "format\tMAT_STRESS\t" + number + "e3\n";
            portion += "show\tLOAD_LINE\t" + number + " kip/ft\n";
            portion += "parse\tGEO_LENGTH\t" + number + " kN\n";
            portion += "format\t" + QByteArray::number(5000 + i) + "\t1\n";
        }

        QProcess process;
        // Sanitized builds hold freed memory back. The program itself does not grow by that.
        auto environment = quantityEnvironment();
        environment.insert("ASAN_OPTIONS", "quarantine_size_mb=1");
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(VRN_QUANTITY), {"batch"});
        int memoryAtFirst = 0;
        QByteArray first;
        for (int i = 0; i < portions; ++i) {
            process.write(portion);
            QByteArray answers;
            while (answers.count('\n') < linesOfAPortion) {
                QVERIFY(process.waitForReadyRead());
                answers += process.readAllStandardOutput();
            }
            if (i == 0) {
                first = answers;
                memoryAtFirst = residentMemory(process.processId());
                QVERIFY(memoryAtFirst > 0);
            }
            QVERIFY(answers == first);
        }
        QCOMPARE(first.count("ok\t"), linesOfAPortion / 5 * 3);
        QCOMPARE(first.count("none\n"), linesOfAPortion / 5);
        QCOMPARE(first.count("error\tInvalid unit id.\n"), linesOfAPortion / 5);

        const int growth = residentMemory(process.processId()) - memoryAtFirst;
        QVERIFY2(growth < 512, qPrintable(QStringLiteral("grown by %1 KiB").arg(growth)));
        process.closeWriteChannel();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
    }
};

VRN_TEST(TestQuantityBatch)
#include "tst_quantity_batch.moc"
