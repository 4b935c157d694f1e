#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include "support/test_main.h"
#include "support/test_object.h"

class TestGalleryCommandLine : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void listNamesThePages()
    {
        QCOMPARE(run({"--list"}), 0);
        QCOMPARE(m_output,
            QString("line-edits\tLine edits\n"
                    "quantities\tQuantities\n"
                    "entry\tEntry\n"
                    "multi-edit\tMulti-edit\n"
                    "enum-boxes\tEnum boxes\n"
                    "groups\tGroups\n"
                    "files-and-toolbars\tFiles and toolbars\n"
                    "hints\tHints\n"
                    "properties\tProperties\n"
                    "tables\tTables\n"
                    "editor2d\t2D editor\n"));
    }

    void screenshotSavesThePageAndQuits()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("page.png");
        QCOMPARE(run({"--page", "line-edits", "--locale", "de_DE", "--screenshot", file}), 0);
        const QImage image(file);
        QVERIFY(image.width() > 600);
        QVERIFY(image.height() > 300);
    }

    void darkMakesTheGroundsDark()
    {
        QVERIFY(lightnessOfTheWindow({}) > 200);
        const int darkness = lightnessOfTheWindow({"--dark"});
        QVERIFY(darkness >= 0 && darkness < 80);
    }

    void aScreenshotThatCannotBeWrittenIsAnError()
    {
        QCOMPARE(run({"--screenshot", "/no/such/folder/page.png"}), 2);
        QVERIFY(m_errors.contains("/no/such/folder/page.png"));
    }

    void anUnknownLocaleIsAnError()
    {
        QCOMPARE(run({"--locale", "moon_MOON", "--list"}), 2);
        QVERIFY(m_errors.contains("moon_MOON"));
        QCOMPARE(run({"--locale", "C", "--list"}), 0);
    }

    void anUnknownPageIsAnError()
    {
        QCOMPARE(run({"--page", "moonlight"}), 2);
        QVERIFY(m_errors.contains("moonlight"));
    }

private:
    int lightnessOfTheWindow(const QStringList& arguments)
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("page.png");
        if (run(arguments + QStringList{"--screenshot", file}) != 0)
            return -1;
        const QImage image(file);
        return qGray(image.pixel(image.width() - 2, image.height() / 2));
    }

    int run(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral(VRN_GALLERY), arguments);
        if (!process.waitForFinished())
            return -1;
        m_output = QString::fromUtf8(process.readAllStandardOutput());
        m_errors = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }

    QString m_output;
    QString m_errors;
};

VRN_TEST(TestGalleryCommandLine)
#include "tst_gallery_command_line.moc"
