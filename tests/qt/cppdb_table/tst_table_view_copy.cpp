#include <vrn/base/any_predicates.h>
#include <vrn/qt/cppdb_table_view_base.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_fixture.h"

using namespace vrn::test;
using vrn::qt::ValidationFlagUserLocale;
using vrn::qt::detail::CppDbTableViewBase;

namespace {

const std::bitset<32> userLocale(1U << ValidationFlagUserLocale);

} // namespace

class TestTableViewCopy : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneCellIsItsBareText_data()
    {
        columns<QString, QString, QString>("kind", "cell", "text");
        row("a number, with the decimals of its validator", "n", "1.5", "1.500");
        row("a text", "t", "'beam'", "beam");
        row("a text with a tab and a line break, not escaped", "t", "'a\tb\nc'", "a\tb\nc");
        row("an empty text", "t", "''", "");
        row("an empty value", "n", "-", "");
        row("an empty value in a column without a validator", "-", "-", "");
        row("no value: the clipboard stays", "n", "none", "before");
        row("a variant of another type: the clipboard stays", "n", "other", "before");
        row("no validator: the clipboard stays", "-", "1.5", "before");
    }
    void oneCellIsItsBareText()
    {
        QFETCH(QString, kind);
        QFETCH(QString, cell);
        QFETCH(QString, text);
        Table table(kind, "1.0 | 1.0");
        table.model.setData(table.model.index(1, 0), TypedModel::cellOf(cell), vrn::qt::EditRole);
        select(table.view, "1,0");
        pressCopy(table.view);
        QCOMPARE(clipboard(), text);
        QVERIFY(QApplication::clipboard()->mimeData()->hasText());
    }

    void aBlockIsRowsOfCells_data()
    {
        columns<QString, QString>("selected", "text");
        row("two cells of a row", "0,0:0,1", "1.000\ta\n");
        row("two cells of a column", "0,0:1,0", "1.000\n2.000\n");
        row("a block away from the corner", "1,1:2,2", "b\t6\nc\t7\n");
        row("a block that is selected from its last row on", "2,1:2,2 1,1:1,2", "b\t6\nc\t7\n");
        row("a hole in the middle", "0,0 0,2", "1.000\t\t5\n");
        row("a hole at the beginning of a row", "0,0 1,1", "1.000\n\tb\n");
        row("rows end at their last cell", "0,0:0,2 1,0", "1.000\ta\t5\n2.000\n");
        row("a row between that is not selected", "0,0 2,0", "1.000\n\n3.000\n");
        row("the far ends of a diagonal", "2,0 0,2", "\t\t5\n\n3.000\n");
        row("an empty value is an empty text", "0,3:1,3", "\n8\n");
        row("and has its separator", "0,2:0,3", "5\t\n");
        row("a cell without a value is a hole", "1,2:2,3", "6\t8\n7\n");
        row("and so is one of another type", "0,6:2,6", "y\n\nz\n");
        row("a column without a validator is left out at the end", "1,3:1,4", "8\n");
        row("and is a hole at the beginning", "1,4:1,5", "\tx\n");
        row("nothing but such cells: no rows at all", "0,4:1,4", "");
        row("rows that end with such cells", "0,5 1,4:2,4", "\tx\n");
        row("rows that begin with such cells", "0,4:1,4 2,5", "\n\n\tx\n");
    }
    void aBlockIsRowsOfCells()
    {
        QFETCH(QString, selected);
        QFETCH(QString, text);
        Table table("ntww-tt",
            "1.0,'a',5,-,1,'x','y' | 2.0,'b',6,8,2,'x',other | 3.0,'c',7,none,3,'x','z'");
        select(table.view, selected);
        pressCopy(table.view);
        QCOMPARE(clipboard(), text);
        QCOMPARE(table.model.writes, QStringList());
    }

    // What is not a text in UTF-16 has no place in UTF-8.
    void halfACharacterIsLeftOutOfABlock()
    {
        Table table("t", "'' | 'b'");
        const QString text = QStringLiteral("1") + QChar(0xDE00) + QStringLiteral("2");
        const auto names = boost::make_shared<vrn::qt::NamedValueListValidator>(
            vrn::qt::NamedValueList{{text, std::wstring()}, {"b", std::wstring(L"b")}});
        names->set_equal_to(&vrn::any_equal<std::wstring>);
        table.columns.at(0)->setValidator(names);
        select(table.view, "0,0:1,0");
        pressCopy(table.view);
        QCOMPARE(clipboard(), QString("12\nb\n"));
        select(table.view, "0,0");
        pressCopy(table.view);
        QCOMPARE(clipboard(), text);
    }

    void aWholeCharacterStays_data()
    {
        columns<QString>("text");
        row("one of two bytes", QString::fromUtf8("ü"));
        row("one of three bytes", QString::fromUtf8("→"));
        row("one outside the basic plane", QString::fromUtf8("\xF0\x9F\x98\x80"));
    }
    void aWholeCharacterStays()
    {
        QFETCH(QString, text);
        Table table("t", QString("'%1' | '%1'").arg(text));
        select(table.view, "0,0:1,0");
        pressCopy(table.view);
        QCOMPARE(clipboard(), text + "\n" + text + "\n");
    }

    void aValueThatTheValidatorDoesNotKnowIsReported()
    {
        Table table("n", "'beam' | 2.0");
        select(table.view, "0,0");
        expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        pressCopy(table.view);
        QCOMPARE(clipboard(), QString());
        select(table.view, "0,0:1,0");
        expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        pressCopy(table.view);
        QCOMPARE(clipboard(), QString("\n2.000\n"));
    }

    void theValidatorIsAskedInTheLocaleOfTheUser_data()
    {
        columns<QString, QStringList>("selected", "log");
        row("one cell", "0,0", QStringList{"reformat 1.0"});
        row("a block, without its empty values", "0,0:2,0",
            QStringList{"reformat 1.0", "reformat 3.0"});
    }
    void theValidatorIsAskedInTheLocaleOfTheUser()
    {
        QFETCH(QString, selected);
        QFETCH(QStringList, log);
        Table table("n", "1.0 | - | 3.0");
        select(table.view, selected);
        pressCopy(table.view);
        QCOMPARE(table.columns.at(0)->log, log);
        QCOMPARE(table.columns.at(0)->flags, userLocale);
    }

    void anEmptyFunctionThrows_data()
    {
        columns<QString, bool>("selected", "throws");
        row("one cell", "0,0", true);
        row("several cells", "0,0:1,0", true);
        row("several cells without values", "1,0 3,0", true);
        row("not one cell without a value, which is not written", "1,0", false);
        row("not an empty value alone", "2,0", false);
    }
    void anEmptyFunctionThrows()
    {
        QFETCH(QString, selected);
        QFETCH(bool, throws);
        TypedModel model("1.0 | none | - | none");
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        expectAssert("m_getColumnValidator");
        CppDbTableViewBase view(&model, {}, nullptr);
        view.setModel(&model);
        select(view, selected);
        setClipboard("before");
        if (throws) {
            QVERIFY_EXCEPTION_THROWN(pressCopy(view), boost::bad_function_call);
            QCOMPARE(clipboard(), QString("before"));
        } else {
            pressCopy(view);
        }
    }

    void aCellIsCopiedAndPasted()
    {
        Table table("nt", "1.5,'a' | 2.5,'b'");
        select(table.view, "0,0");
        pressCopy(table.view);
        select(table.view, "1,0");
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("1.5,'a' | 1.5,'b'"));
        QCOMPARE(table.columns.at(0)->log.last(), QString("validate 1.500"));
    }

    void aBlockIsCopiedAndPasted()
    {
        Table table("nt", "1.5,'a' | 2.5,'b' | 3.5,'c' | 4.5,'d'");
        select(table.view, "0,0:1,1");
        pressCopy(table.view);
        select(table.view, "2,0");
        pressPaste(table.view);
        // Were the final line break a line, the number in the last row would be an empty value.
        QCOMPARE(table.model.content(), QString("1.5,'a' | 2.5,'b' | 1.5,'a' | 2.5,'b'"));
        select(table.view, "0,0");
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("1.5,'a' | 2.5,'b' | 1.5,'a' | 2.5,'b'"));
        select(table.view, "1,0");
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("1.5,'a' | 1.5,'a' | 2.5,'b' | 2.5,'b'"));
    }
};

VRN_TEST(TestTableViewCopy)
#include "tst_table_view_copy.moc"
