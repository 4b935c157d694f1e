#include <vrn/qt/cppdb_table_view_base.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_clipboard.h"
#include "support/x11_input.h"
#include "table_fixture.h"

using namespace vrn::test;

namespace {

/// A view in an active window, in which keys of the X server arrive.
struct ShownTable : public Table
{
    using Table::Table;

    bool show()
    {
        view.resize(400, 300);
        view.show();
        view.setFocus();
        return QTest::qWaitForWindowActive(&view);
    }
};

} // namespace

/// The clipboard between the view and another program.
class TestTableViewClipboard : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void anotherProgramReadsWhatIsCopied_data()
    {
        columns<QString, QString>("selected", "text");
        row("one cell", "0,1", "a");
        row("one cell with a letter of two bytes", "1,1", QString::fromUtf8("ü\xF0\x9F\x98\x80"));
        row("an empty value", "2,0", "");
        row("a block", "0,0:2,1", QString::fromUtf8("1.500\ta\n2.500\tü\xF0\x9F\x98\x80\n\tc\n"));
        row("a block with a hole", "0,0 1,1", QString::fromUtf8("1.500\n\tü\xF0\x9F\x98\x80\n"));
    }
    void anotherProgramReadsWhatIsCopied()
    {
        QFETCH(QString, selected);
        QFETCH(QString, text);
        ShownTable table("nt", QString::fromUtf8("1.5,'a' | 2.5,'ü\xF0\x9F\x98\x80' | -,'c'"));
        QVERIFY(table.show());
        select(table.view, selected);
        x11::press({"ctrl+c"});
        QTRY_COMPARE(clipboard(), text);
        QCOMPARE(x11::readClipboard(), text);
    }

    void anotherProgramReadsWhatIsCut()
    {
        ShownTable table("nt", "1.5,'a' | 2.5,'b'");
        QVERIFY(table.show());
        select(table.view, "0,0:0,1");
        x11::press({"ctrl+x"});
        QTRY_COMPARE(table.model.content(), QString("-,- | 2.5,'b'"));
        QCOMPARE(x11::readClipboard(), QString("1.500\ta\n"));
    }

    void aTextOfAnotherProgramIsPasted_data()
    {
        columns<QString, QString, QString>("text", "selected", "content");
        row("on one cell", "7", "1,0", "1.5,'a' | 7.0,'b' | 3.5,'c'");
        row("on several cells", QString::fromUtf8("ü\xF0\x9F\x98\x80"), "0,1:1,1",
            QString::fromUtf8("1.5,'ü\xF0\x9F\x98\x80' | 2.5,'ü\xF0\x9F\x98\x80' | 3.5,'c'"));
        row("a block at its corner", "7\tx\n8\ty\n", "0,0", "7.0,'x' | 8.0,'y' | 3.5,'c'");
        row("a block on several cells", "7\tx\n8\ty\n", "1,0:2,1", "1.5,'a' | 7.0,'x' | 8.0,'y'");
        row("a block with a line break of two characters", "7\tx\r\n8\ty\r\n", "0,0",
            "7.0,'x\r' | 8.0,'y\r' | 3.5,'c'");
        row("a block without a final line break", QString::fromUtf8("7\tx\n8\tyü"), "0,0",
            "7.0,'x' | 8.0,'y' | 3.5,'c'");
        row("a block that makes new rows", "7\tx\n8\ty\n9\tz\n", "2,0",
            "1.5,'a' | 2.5,'b' | 7.0,'x' | 8.0,'y' | 9.0,'z'");
    }
    void aTextOfAnotherProgramIsPasted()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        QFETCH(QString, content);
        ShownTable table("nt", "1.5,'a' | 2.5,'b' | 3.5,'c'");
        table.view.setCreateNewRowHandler([&](int, const auto& values) {
            table.model.append(TypedModel::textOf(values.at(0).value()) + ','
                + TypedModel::textOf(values.at(1).value()));
        });
        QVERIFY(table.show());
        select(table.view, selected);
        x11::writeClipboard(text);
        QTRY_COMPARE(clipboard(), text);
        x11::press({"ctrl+v"});
        QTRY_COMPARE(table.model.content(), content);
    }

    // X11 passes half a mebi in pieces.
    void aLongTextGoesToAnotherProgramAndBack()
    {
        const int rows = 6; // A model tester looks at all cells for each that is written.
        const QString letters(100000, 'x');
        const QString content = QString(" | 34.5,'%1'").arg(letters).repeated(rows).mid(3);
        const QString text = QString("34.500\t%1\n").arg(letters).repeated(rows);
        ShownTable table("nt", content);
        QVERIFY(table.show());
        table.view.selectAll();
        pressCopy(table.view);
        QVERIFY(x11::readClipboard() == text);
        pressDelete(table.view);
        QVERIFY(table.model.content() != content);
        x11::writeClipboard(text);
        QTRY_VERIFY(!QApplication::clipboard()->ownsClipboard());
        select(table.view, "0,0");
        pressPaste(table.view);
        QVERIFY(table.model.content() == content);
    }
};

VRN_TEST(TestTableViewClipboard)
#include "tst_table_view_clipboard.moc"
