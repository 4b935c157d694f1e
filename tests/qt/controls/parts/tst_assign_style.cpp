#include <vrn/qt/assign_style.h>

#include <QTemporaryDir>
#include <QWidget>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <sys/stat.h>

using namespace vrn::qt;
using vrn::test::columns;
using vrn::test::row;

class TestAssignStyle : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFileBecomesTheStyleSheet_data()
    {
        columns<QString, QByteArray>("name", "contents");
        row("a rule", "a.qss", QByteArray("QWidget { color: red; }"));
        row("an empty file", "a.qss", QByteArray());
        row("line ends stay", "a.qss", QByteArray("QWidget {\r\n color: red;\n}\n"));
        row("letters outside ASCII", "a.qss", QByteArray("QLabel#größe { color: red; }"));
        row("a name outside ASCII", QString::fromUtf8("größe Ω 鋼.qss"),
            QByteArray("QWidget { color: red; }"));
        row("a name with quotes and a line break", "it's \"a\"\nstyle.qss",
            QByteArray("QWidget { color: red; }"));
    }
    void theFileBecomesTheStyleSheet()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, contents);
        QWidget widget;
        widget.setStyleSheet("QWidget { color: blue; }");
        assign_style(&widget, write(name, contents));
        QCOMPARE(widget.styleSheet(), QString::fromUtf8(contents));
    }

    void theStyleTakesEffect()
    {
        QWidget widget;
        assign_style(&widget, write("a.qss", "QWidget { color: #123456; }"));
        widget.ensurePolished();
        QCOMPARE(widget.palette().color(QPalette::WindowText), QColor("#123456"));
    }

    void whatCannotBeReadLeavesTheStyleAlone_data()
    {
        columns<QString>("path");
        row("no path", QString());
        row("a missing file", "%1/missing.qss");
        row("a missing folder", "%1/missing/a.qss");
        row("a folder", "%1");
        row("a file in the place of a folder", "%1/a.qss/b.qss");
        row("a file that fails when it is read", "/proc/self/mem");
        row("a name too long for a file", "%1/" + QString(300, 'a'));
    }
    void whatCannotBeReadLeavesTheStyleAlone()
    {
        QFETCH(QString, path);
        write("a.qss", "QWidget { color: red; }");
        if (path.contains("%1"))
            path = path.arg(m_folder.path());
        QWidget widget;
        widget.setStyleSheet("QWidget { color: blue; }");
        assign_style(&widget, path.toStdString());
        QCOMPARE(widget.styleSheet(), QString("QWidget { color: blue; }"));
    }

    void aFileWithoutPermissionLeavesTheStyleAlone()
    {
        const std::string file = write("a.qss", "QWidget { color: red; }");
        QVERIFY(::chmod(file.c_str(), 0) == 0);
        // Nothing is forbidden to the superuser.
        const bool isReadable = QFile(QString::fromStdString(file)).open(QIODevice::ReadOnly);
        QWidget widget;
        widget.setStyleSheet("QWidget { color: blue; }");
        assign_style(&widget, file);
        QCOMPARE(widget.styleSheet(),
            isReadable ? QString("QWidget { color: red; }") : QString("QWidget { color: blue; }"));
    }

    void aPathThatIsNotUtf8IsAMissingFile()
    {
        QWidget widget;
        widget.setStyleSheet("QWidget { color: blue; }");
        assign_style(&widget, m_folder.path().toStdString() + "/\xff\xfe.qss");
        QCOMPARE(widget.styleSheet(), QString("QWidget { color: blue; }"));
    }

    void whatIsNoTextIsTakenAsItIs_data()
    {
        columns<QByteArray, bool>("contents", "isParsed");
        QByteArray noise;
        for (int i = 0; i < 4096; ++i)
            noise += char(i * 7 % 256);
        row("every byte", noise, true); // Qt reads up to the zero byte.
        row("the begin of a picture", QByteArray("\x89PNG\r\n\x1a\n"), false);
    }
    void whatIsNoTextIsTakenAsItIs()
    {
        QFETCH(QByteArray, contents);
        QFETCH(bool, isParsed);
        QWidget widget;
        if (!isParsed) {
            QString complaint; // Qt's own words.
            QDebug(&complaint) << "Could not parse stylesheet of object" << &widget;
            expectWarning(complaint.trimmed());
        }
        assign_style(&widget, write("a.qss", contents));
        QCOMPARE(widget.styleSheet(), QString::fromStdString(contents.toStdString()));
        widget.ensurePolished();
    }

    void aNullWidgetIsReported()
    {
        expectAssert("widget");
        assign_style(nullptr, write("a.qss", "QWidget { color: red; }"));
    }

private:
    std::string write(const QString& name, const QByteArray& contents)
    {
        QFile file(m_folder.filePath(name));
        const bool written = file.open(QIODevice::WriteOnly)
            && file.write(contents) == contents.size();
        if (!written)
            QTest::qFail("the file could not be written", __FILE__, __LINE__);
        return file.fileName().toStdString();
    }

    const QTemporaryDir m_folder;
};

VRN_TEST(TestAssignStyle)
#include "tst_assign_style.moc"
