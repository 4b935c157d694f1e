#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "support/test_main.h"
#include "support/test_object.h"

// Runs the program test_samples. Of its three classes only sample_fails fails.
class TestTestMain : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theArgumentsChooseTheClasses_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("started");
        QTest::addColumn<QString>("lastLine");

        QTest::newRow("all without a name")
            << QStringList() << 1
            << QStringList({"SampleFails", "SamplePasses", "SampleStartsAfresh"})
            << "1 of 3 test classes failed: sample_fails";
        QTest::newRow("two by name")
            << QStringList({"sample_starts_afresh", "sample_passes"}) << 0
            << QStringList({"SamplePasses", "SampleStartsAfresh"}) << "0 of 2 test classes failed";
        QTest::newRow("one that passes")
            << QStringList("sample_passes") << 0 << QStringList("SamplePasses")
            << "********* Finished testing of SamplePasses *********";
        QTest::newRow("one with two failures")
            << QStringList("sample_fails") << 2 << QStringList("SampleFails")
            << "********* Finished testing of SampleFails *********";
        QTest::newRow("no such class")
            << QStringList("sample_nobody_wrote") << 3
            << QStringList({"SampleFails", "SamplePasses", "SampleStartsAfresh"})
            << "3 of 3 test classes failed: sample_fails, sample_passes, sample_starts_afresh";
    }

    void theArgumentsChooseTheClasses()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QStringList, started);
        QFETCH(QString, lastLine);
        QCOMPARE(run(arguments), status);
        QCOMPARE(startedClasses(), started);
        QCOMPARE(m_output.trimmed().section('\n', -1), lastLine);
    }

    void otherArgumentsGoToTheClass()
    {
        QCOMPARE(run({"-silent", "sample_fails", "-maxwarnings", "0", "thisOne"}), 0);
        QVERIFY(m_output.contains("3 passed, 0 failed"));
    }

    void otherArgumentsGoToEachOfSeveralClasses()
    {
        QCOMPARE(run({"thisOne"}), 0);
        QCOMPARE(m_output.count("3 passed, 0 failed"), 3);
    }

    void theReportOfOneClassGoesToAFile()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("report");
        QCOMPARE(run({"sample_passes", "-o", file + ",txt"}), 0);
        QCOMPARE(startedClasses(), QStringList());
        QFile report(file);
        QVERIFY(report.open(QIODevice::ReadOnly));
        QVERIFY(report.readAll().contains("4 passed, 0 failed"));
    }

    void reportsOfSeveralClassesAreNotWrittenOverEachOther()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("report");
        QCOMPARE(run({"-o", file + ",txt"}), 1);
        QVERIFY(!QFile::exists(file));
        QVERIFY(m_errors.contains("-o"));
    }

private:
    int run(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral(VRN_TEST_SAMPLES), arguments);
        if (!process.waitForFinished())
            return -1;
        m_output = QString::fromUtf8(process.readAllStandardOutput());
        m_errors = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }

    // In alphabetical order.
    QStringList startedClasses() const
    {
        QStringList names;
        for (const QString& line : m_output.split('\n')) {
            if (line.contains("Start testing of"))
                names << line.section(' ', 4, 4);
        }
        names.sort();
        return names;
    }

    QString m_output;
    QString m_errors;
};

VRN_TEST(TestTestMain)
#include "tst_test_main.moc"
