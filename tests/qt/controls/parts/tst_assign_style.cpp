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

namespace {

struct BlueWidget : QWidget
{
    static inline const QString style = "QWidget { color: blue; }";
    BlueWidget() { setStyleSheet(style); }
};

const QByteArray red = "QWidget { color: red; }";

} // namespace

class TestAssignStyle : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFileBecomesTheStyleSheet_data()
    {
        columns<QString, QByteArray>("name", "contents");
        row("a rule", "a.qss", red);
        row("an empty file", "a.qss", QByteArray());
        row("line ends stay", "a.qss", QByteArray("QWidget {\r\n color: red;\n}\n"));
        row("letters outside ASCII", "a.qss", QByteArray("QLabel#größe { color: red; }"));
        row("a name outside ASCII", QString::fromUtf8("größe Ω 鋼.qss"), red);
        row("a name with quotes and a line break", "it's \"a\"\nstyle.qss", red);
    }
    void theFileBecomesTheStyleSheet()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, contents);
        BlueWidget widget;
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
        columns<QByteArray>("path");
        const QByteArray folder = m_folder.path().toLocal8Bit();
        row("no path", QByteArray());
        row("a missing file", folder + "/missing.qss");
        row("a missing folder", folder + "/missing/a.qss");
        row("a folder", folder);
        row("a file in the place of a folder", folder + "/a.qss/b.qss");
        row("a file that fails when it is read", QByteArray("/proc/self/mem"));
        row("a name too long for a file", folder + '/' + QByteArray(300, 'a'));
        row("a path that is not UTF-8", folder + "/\xff\xfe.qss");
    }
    void whatCannotBeReadLeavesTheStyleAlone()
    {
        QFETCH(QByteArray, path);
        write("a.qss", red);
        BlueWidget widget;
        assign_style(&widget, path.toStdString());
        QCOMPARE(widget.styleSheet(), BlueWidget::style);
    }

    void aFileWithoutPermissionLeavesTheStyleAlone()
    {
        const std::string file = write("a.qss", red);
        QVERIFY(::chmod(file.c_str(), 0) == 0);
        // The superuser may read any file.
        const bool isReadable = QFile(QString::fromStdString(file)).open(QIODevice::ReadOnly);
        BlueWidget widget;
        assign_style(&widget, file);
        QCOMPARE(widget.styleSheet(), isReadable ? QString(red) : BlueWidget::style);
    }

    void whatIsNotATextIsTakenAsItIs_data()
    {
        columns<QByteArray, bool>("contents", "isParsed");
        QByteArray noise;
        for (int i = 0; i < 4096; ++i)
            noise += char(i * 7 % 256);
        row("every byte", noise, true); // Qt reads up to the zero byte.
        row("the beginning of a picture", QByteArray("\x89PNG\r\n\x1a\n"), false);
    }
    void whatIsNotATextIsTakenAsItIs()
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
        assign_style(nullptr, write("a.qss", red));
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
