#include <vrn/qt/cppdb_table_view_base.h>

#include <QImage>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_fixture.h"

#include <stdexcept>

using namespace vrn::test;
using vrn::qt::detail::CppDbTableViewBase;

namespace {

using NewRow = CppDbTableViewBase::NewRow;

QString textOf(const NewRow& values)
{
    QStringList texts;
    for (const auto& value : values)
        texts << (value ? TypedModel::textOf(*value) : QString("refused"));
    return texts.join(',');
}

/// A handler that appends one row of its own to the model, and logs what it is given.
auto appendTo(TypedModel& model, QStringList& calls)
{
    return [&](int column, const NewRow& values) {
        calls << QString("%1: %2").arg(column).arg(textOf(values));
        model.append(QString(",'new'").repeated(model.columnCount()).mid(1));
    };
}

} // namespace

class TestTableViewPaste : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextWithoutSeparatorsGoesToEachCell_data()
    {
        columns<QString, QString, QString>("text", "selected", "content");
        row("one cell", "7", "1,0", "1.0,'a',5 | 7.0,'b',6");
        row("several cells, each through its own validator", "7", "0,0:1,2",
            "7.0,'7',7 | 7.0,'7',7");
        row("cells with holes between them", "7", "0,0 1,2", "7.0,'a',5 | 2.0,'b',7");
        row("what one validator refuses, others take", "x", "0,0:0,2", "1.0,'x',5 | 2.0,'b',6");
        row("an empty text, which is a value for some", "", "0,0:0,1", "-,'',5 | 2.0,'b',6");
        row("a number with a decimal comma is refused", "1,5", "0,0:0,1",
            "1.0,'1,5',5 | 2.0,'b',6");
        row("a carriage return does not separate", "1\r2", "0,1", "1.0,'1\r2',5 | 2.0,'b',6");
    }
    void aTextWithoutSeparatorsGoesToEachCell()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        QFETCH(QString, content);
        Table table("ntw", "1.0,'a',5 | 2.0,'b',6");
        select(table.view, selected);
        setClipboard(text);
        pressPaste(table.view);
        QCOMPARE(table.model.content(), content);
        QCOMPARE(clipboard(), text);
    }

    void aSingleLineIsASingleText_data()
    {
        columns<QString, QString>("text", "validated");
        row("without a line break", "ab", "ab");
        row("with one at the end, which the validator gets", "ab\n", "ab\n");
        row("a line break alone", "\n", "\n");
    }
    void aSingleLineIsASingleText()
    {
        QFETCH(QString, text);
        QFETCH(QString, validated);
        Table table("t", "'a' | 'b' | 'c'");
        select(table.view, "0,0 2,0");
        setClipboard(text);
        pressPaste(table.view);
        QCOMPARE(table.columns.at(0)->log,
            (QStringList{"validate " + validated, "validate " + validated}));
        QCOMPARE(table.model.content(), QString("'%1' | 'b' | '%1'").arg(validated));
    }

    void whereALineBreakIsTheLastCharacterGoes_data()
    {
        columns<QString, QStringList>("text", "cells");
        row("the final line break of a block", "a\nb\n", QStringList{"a", "b"});
        row("the last letter of a text without one", "a\nbc", QStringList{"a", "b"});
        row("a last letter of two bytes", QString::fromUtf8("a\nbü"), QStringList{"a", "b"});
        row("the only letter of the last line", QString::fromUtf8("a\nü"), QStringList{"a", ""});
        row("a last character outside the basic plane", QString::fromUtf8("a\nb\xF0\x9F\x98\x80"),
            QStringList{"a", "b"});
        row("an accent on the last letter", QString::fromUtf8("a\nbe\xCC\x81"),
            QStringList{"a", "be"});
        row("half of a character", QString("a\nb") + QChar(0xD83D), QStringList{"a", "b"});
        row("the second of two final line breaks", "a\n\n", QStringList{"a", ""});
        row("nothing where there is only a tab", "a\tb", QStringList{"a", "b"});
        row("not even a final tab", "a\t", QStringList{"a", ""});
        row("a final tab", "a\nb\t", QStringList{"a", "b"});
        row("the line break after a carriage return, which stays", "a\r\nb\r\n",
            QStringList{"a\r", "b\r"});
    }
    void whereALineBreakIsTheLastCharacterGoes()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, cells);
        Table table("tttt", "'1','2','3','4' | '1','2','3','4' | '1','2','3','4'");
        select(table.view, "0,0");
        setClipboard(text);
        pressPaste(table.view);
        QStringList due;
        for (const QString& cell : cells)
            due << "validate " + cell;
        QStringList asked;
        for (int column = 0; column < 4; ++column)
            asked << table.columns.at(column)->log;
        QCOMPARE(asked, due);
    }

    void aBlockHasItsCornerAtTheOneCell_data()
    {
        columns<QString, QString, QString>("text", "corner", "content");
        const char* all = "7\tx\t9\n8\ty\t0\n";
        row("at the corner of the table", all, "0,0", "7.0,'x',9 | 8.0,'y',0 | 3.0,'c',3");
        row("at the last row: the lines below it are dropped", all, "2,0",
            "1.0,'a',1 | 2.0,'b',2 | 7.0,'x',9");
        row("at the last column: the cells next to it are dropped", "7\t8\n9\t10\n", "0,2",
            "1.0,'a',7 | 2.0,'b',9 | 3.0,'c',3");
        row("at the last cell", "7\t8\n9\t10\n", "2,2", "1.0,'a',1 | 2.0,'b',2 | 3.0,'c',7");
        row("a line alone", "7\tx", "1,0", "1.0,'a',1 | 7.0,'x',2 | 3.0,'c',3");
        row("a column alone", "x\ny\n", "1,1", "1.0,'a',1 | 2.0,'x',2 | 3.0,'y',3");
        row("a column of two, one of them cut", "xy\nz", "1,1",
            "1.0,'a',1 | 2.0,'xy',2 | 3.0,'',3");
        row("lines that differ in length", "7\n8\ty\n\tz\n", "0,0",
            "7.0,'a',1 | 8.0,'y',2 | -,'z',3");
        row("an empty cell is a value for some validators", "7\t\t\n\t\t5\n", "0,0",
            "7.0,'',1 | -,'',5 | 3.0,'c',3");
        row("an empty line is an empty cell", "7\n\n9\n", "0,0", "7.0,'a',1 | -,'b',2 | 9.0,'c',3");
        row("cells that are refused stay", "?\tx\t?\n8\ty\t?\n", "0,0",
            "1.0,'x',1 | 8.0,'y',2 | 3.0,'c',3");
        row("a decimal comma is refused", "1,5\t1,5\n", "0,0",
            "1.0,'1,5',1 | 2.0,'b',2 | 3.0,'c',3");
        row("a carriage return belongs to the last cell of its line", "1.5\tx\r\n2.5\ty\r\n", "0,0",
            "1.5,'x\r',1 | 2.5,'y\r',2 | 3.0,'c',3");
        row("a number before one is read all the same", "7\r\n8\r\n", "0,0",
            "7.0,'a',1 | 8.0,'b',2 | 3.0,'c',3");
    }
    void aBlockHasItsCornerAtTheOneCell()
    {
        QFETCH(QString, text);
        QFETCH(QString, corner);
        QFETCH(QString, content);
        Table table("ntwtt", "1.0,'a',1 | 2.0,'b',2 | 3.0,'c',3");
        select(table.view, corner);
        setClipboard(text);
        pressPaste(table.view);
        QCOMPARE(table.model.content(), content);
    }

    void aBlockIsLaidOverTheSelectedCells_data()
    {
        columns<QString, QString, QString>("text", "selected", "content");
        const char* all = "7\tx\t9\n8\ty\t0\n6\tz\t4\n";
        row("cells of the size of the block", all, "0,0:2,2", "7.0,'x',9 | 8.0,'y',0 | 6.0,'z',4");
        row("fewer cells than the block has", all, "0,0:1,1", "7.0,'x',1 | 8.0,'y',2 | 3.0,'c',3");
        row("the corner is that of the cells", "x\t9\ny\t0\n", "1,1:2,2",
            "1.0,'a',1 | 2.0,'x',9 | 3.0,'y',0");
        row("cells past the end of a line stay", "7\n8\ty\n", "0,0:1,2",
            "7.0,'a',1 | 8.0,'y',2 | 3.0,'c',3");
        row("holes in the selection", all, "0,0 1,1 2,2", "7.0,'a',1 | 2.0,'y',2 | 3.0,'c',4");
        row("a corner that is not selected itself", all, "0,1 1,0",
            "1.0,'x',1 | 8.0,'b',2 | 3.0,'c',3");
        row("a selection from its last row on", all, "1,0:1,1 0,0:0,1",
            "7.0,'x',1 | 8.0,'y',2 | 3.0,'c',3");
        row("cells that are refused stay", "?\tx\n8\t?\n", "0,0:1,0",
            "1.0,'a',1 | 8.0,'b',2 | 3.0,'c',3");
        row("an empty cell is a value for some validators", "\t\n\t\n", "0,0:1,1",
            "-,'',1 | -,'',2 | 3.0,'c',3");
        row("a carriage return belongs to the last cell of its line", "1.5\tx\r\n2.5\ty\r\n",
            "0,0:1,1", "1.5,'x\r',1 | 2.5,'y\r',2 | 3.0,'c',3");
    }
    void aBlockIsLaidOverTheSelectedCells()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        QFETCH(QString, content);
        Table table("ntw", "1.0,'a',1 | 2.0,'b',2 | 3.0,'c',3");
        QStringList calls;
        table.view.setCreateNewRowHandler(appendTo(table.model, calls));
        select(table.view, selected);
        setClipboard(text);
        pressPaste(table.view);
        QCOMPARE(table.model.content(), content);
        QCOMPARE(calls, QStringList());
    }

    void aSelectionTallerThanTheBlockThrows_data()
    {
        columns<QString, QString, QString>("text", "selected", "content");
        row("after the rows above it", "7\t8\n9\t10\n", "0,0:2,0", "7.0,'a' | 9.0,'b' | 3.0,'c'");
        row("a line alone", "7\tx", "0,0:2,1", "7.0,'x' | 2.0,'b' | 3.0,'c'");
        row("before them, if the lower rows are selected first", "7\tx", "1,0:2,1 0,0:0,1",
            "1.0,'a' | 2.0,'b' | 3.0,'c'");
        row("while cells past the end of a line stay", "7\n8\n", "0,0:2,1",
            "7.0,'a' | 8.0,'b' | 3.0,'c'");
    }
    void aSelectionTallerThanTheBlockThrows()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        QFETCH(QString, content);
        Table table("nt", "1.0,'a' | 2.0,'b' | 3.0,'c'");
        select(table.view, selected);
        setClipboard(text);
        try {
            pressPaste(table.view);
            QFAIL("nothing is thrown");
        } catch (const std::out_of_range& error) {
            QCOMPARE(error.what(), "invalid vector<T> subscript");
        }
        QCOMPARE(table.model.content(), content);
    }

    void theValidatorIsAskedWithoutFlags_data()
    {
        columns<QString, QString>("text", "selected");
        row("a text", "7", "0,0");
        row("a block at its corner", "7\n8\n", "0,0");
        row("a block on several cells", "7\n8\n", "0,0:1,0");
    }
    void theValidatorIsAskedWithoutFlags()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        Table table("n", "1.0 | 2.0");
        table.columns.at(0)->flags.set();
        select(table.view, selected);
        setClipboard(text);
        pressPaste(table.view);
        QCOMPARE(table.columns.at(0)->flags, std::bitset<32>());
        QCOMPARE(table.model.content().left(3), QString("7.0"));
    }

    void aClipboardWithoutTextIsNotPasted()
    {
        Table table("nt", "1.0,'a' | 2.0,'b'");
        select(table.view, "0,0:1,1");
        QImage picture(2, 2, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QApplication::clipboard()->setImage(picture);
        pressPaste(table.view);
        QApplication::clipboard()->clear();
        pressPaste(table.view);
        QCOMPARE(table.model.writes, QStringList());
        QCOMPARE(table.columns.at(0)->log, QStringList());
    }

    void linesBelowTheTableGoToTheHandler_data()
    {
        columns<QString, QString, QStringList, QString>("text", "corner", "calls", "content");
        row("none where the block fits", "7\tx\n8\ty\n", "0,0", QStringList(), "7.0,'x' | 8.0,'y'");
        row("the one that does not fit", "7\tx\n8\ty\n", "1,0", QStringList{"0: 8.0,'y'"},
            "1.0,'a' | 7.0,'x' | 'new','new'");
        row("all but the first from the last row on", "7\n8\n9\n6\n", "1,0",
            QStringList{"0: 8.0", "0: 9.0", "0: 6.0"},
            "1.0,'a' | 7.0,'b' | 'new','new' | 'new','new' | 'new','new'");
        row("with the column of the corner", "x\ny\n", "1,1", QStringList{"1: 'y'"},
            "1.0,'a' | 2.0,'x' | 'new','new'");
        row("unset where the text is refused", "7\tx\n?\ty\n", "1,0", QStringList{"0: refused,'y'"},
            "1.0,'a' | 7.0,'x' | 'new','new'");
        row("with the empty values of empty cells", "7\tx\n\t\n", "1,0", QStringList{"0: -,''"},
            "1.0,'a' | 7.0,'x' | 'new','new'");
        row("as wide as each line", "7\n8\ty\tz\n9\n", "1,0",
            QStringList{"0: 8.0,'y','z'", "0: 9.0"},
            "1.0,'a' | 7.0,'b' | 'new','new' | 'new','new'");
        row("past the last column, too", "x\tx\ty\nz\tw\tv\n", "1,1",
            QStringList{"1: 'z','w',refused"}, "1.0,'a' | 2.0,'x' | 'new','new'");
        row("unset past the last column that has a validator", "7\nz\t\t\t\tv\n", "1,1",
            QStringList{"1: 'z','',refused,refused,refused"}, "1.0,'a' | 2.0,'7' | 'new','new'");
        row("an empty line is one empty cell", "7\n\n", "1,0", QStringList{"0: -"},
            "1.0,'a' | 7.0,'b' | 'new','new'");
    }
    void linesBelowTheTableGoToTheHandler()
    {
        QFETCH(QString, text);
        QFETCH(QString, corner);
        QFETCH(QStringList, calls);
        QFETCH(QString, content);
        Table table("nttw", "1.0,'a' | 2.0,'b'");
        QStringList called;
        table.view.setCreateNewRowHandler(appendTo(table.model, called));
        select(table.view, corner);
        setClipboard(text);
        pressPaste(table.view);
        QCOMPARE(called, calls);
        QCOMPARE(table.model.content(), content);
    }

    void cellsAtACornerAreValidatedWhereTheyAreDropped_data()
    {
        columns<QString, QString, QStringList>("text", "corner", "asked");
        row("past the last column", "7\tx\ty\t9\n", "0,0",
            QStringList{"validate 7", "validate x", "validate y", "validate 9"});
        row("past it in the last column", "x\ty\n", "0,1", QStringList{"validate x", "validate y"});
        row("the first line below the last row, without a handler", "7\tx\n8\ty\n9\tz\n", "1,0",
            QStringList{"validate 7", "validate 8", "validate x", "validate y"});
    }
    void cellsAtACornerAreValidatedWhereTheyAreDropped()
    {
        QFETCH(QString, text);
        QFETCH(QString, corner);
        QFETCH(QStringList, asked);
        Table table("nttw", "1.0,'a' | 2.0,'b'");
        select(table.view, corner);
        setClipboard(text);
        pressPaste(table.view);
        QStringList log;
        for (int column = 0; column < 4; ++column)
            log << table.columns.at(column)->log;
        QCOMPARE(log, asked);
    }

    void theHandlerMayBeReplaced()
    {
        Table table("n", "1.0");
        QStringList first;
        QStringList second;
        table.view.setCreateNewRowHandler(appendTo(table.model, first));
        table.view.setCreateNewRowHandler([&](int column, const NewRow& values) {
            appendTo(table.model, second)(column, values);
            // Its own end.
            table.view.setCreateNewRowHandler({});
            second << "still alive";
        });
        select(table.view, "0,0");
        setClipboard("7\n8\n9\n");
        pressPaste(table.view);
        QCOMPARE(first, QStringList());
        QCOMPARE(second, (QStringList{"0: 8.0", "still alive"}));
        QCOMPARE(table.model.content(), QString("7.0 | 'new'"));
    }

    void whatTheHandlerDoesToTheRows_data()
    {
        columns<QString, int, QString>("deed", "calls", "content");
        row("it appends none: the paste ends", "nothing", 1, "1.0 | 7.0");
        row("it appends two: the next line has a row already", "two", 2,
            "1.0 | 7.0 | 0.5 | 9.0 | 0.5 | 0.5");
        row("it removes a row: the paste ends", "remove", 1, "7.0");
        row("it appends one and resets the model: the paste goes on", "reset", 3,
            "1.0 | 7.0 | 0.5 | 0.5 | 0.5");
        row("it puts the row at the beginning: the paste goes on", "prepend", 3,
            "0.5 | 0.5 | 0.5 | 1.0 | 7.0");
    }
    void whatTheHandlerDoesToTheRows()
    {
        QFETCH(QString, deed);
        QFETCH(int, calls);
        QFETCH(QString, content);
        int called = 0;
        Table table("n", "1.0 | 2.0");
        table.view.setCreateNewRowHandler([&](int, const NewRow&) {
            ++called;
            if (deed == "remove")
                table.model.remove(0);
            else if (deed == "prepend")
                table.model.insert(0, "0.5");
            else if (deed != "nothing")
                table.model.append("0.5");
            if (deed == "two")
                table.model.append("0.5");
            if (deed == "reset")
                table.model.reset();
        });
        select(table.view, "1,0");
        setClipboard("7\n8\n9\n6\n");
        pressPaste(table.view);
        QCOMPARE(called, calls);
        QCOMPARE(table.model.content(), content);
    }

    void aColumnWithoutAValidatorIsReportedAndSkipped_data()
    {
        columns<QString, QString, int, QString>("text", "selected", "reports", "content");
        row("a text", "7", "0,0:0,2", 1, "7.0,2.0,7.0 | 4.0,5.0,6.0");
        row("a block at its corner", "7\t7\t7\n8\t8\t8\n", "0,0", 2, "7.0,2.0,7.0 | 8.0,5.0,8.0");
        row("a block on several cells", "7\t7\t7\n8\t8\t8\n", "0,0:1,2", 2,
            "7.0,2.0,7.0 | 8.0,5.0,8.0");
        row("not past the end of the table", "7\t8\t9\n", "0,2", 0, "1.0,2.0,7.0 | 4.0,5.0,6.0");
    }
    void aColumnWithoutAValidatorIsReportedAndSkipped()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        QFETCH(int, reports);
        QFETCH(QString, content);
        Table table("n-n", "1.0,2.0,3.0 | 4.0,5.0,6.0");
        for (int i = 0; i < reports; ++i)
            expectAssert("validator", {"column"});
        select(table.view, selected);
        setClipboard(text);
        pressPaste(table.view);
        QCOMPARE(table.model.content(), content);
    }

    void anEmptyFunctionThrows_data()
    {
        columns<QString, QString>("text", "selected");
        row("a text", "7", "0,0");
        row("a block at its corner", "7\n8\n", "0,0");
        row("a block on several cells", "7\n8\n", "0,0:1,0");
    }
    void anEmptyFunctionThrows()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        TypedModel model("1.0 | 2.0");
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        expectAssert("m_getColumnValidator");
        CppDbTableViewBase view(&model, {}, nullptr);
        view.setModel(&model);
        select(view, selected);
        setClipboard(text);
        QVERIFY_EXCEPTION_THROWN(pressPaste(view), boost::bad_function_call);
        QCOMPARE(model.writes, QStringList());
    }

    void withoutItsModelABlockHasNoCorner()
    {
        TypedModel shown("1.0 | 2.0");
        const QAbstractItemModelTester tester(
            &shown, QAbstractItemModelTester::FailureReportingMode::QtTest);
        expectAssert("m_model");
        CppDbTableViewBase view(nullptr, Columns("n"), nullptr);
        view.setModel(&shown);
        select(view, "0,0");
        setClipboard("7\n8\n");
        expectAssert("m_model");
        pressPaste(view);
        QCOMPARE(shown.writes, QStringList());
        select(view, "0,0:1,0");
        pressPaste(view);
        QCOMPARE(shown.content(), QString("7.0 | 8.0"));
    }
};

VRN_TEST(TestTableViewPaste)
#include "tst_table_view_paste.moc"
