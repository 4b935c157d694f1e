#include <vrn/qt/cppdb_table_view_base.h>

#include <QSortFilterProxyModel>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_fixture.h"

using namespace vrn::test;
using vrn::qt::detail::CppDbTableViewBase;

namespace {

constexpr auto qtTest = QAbstractItemModelTester::FailureReportingMode::QtTest;

/// A view of two proxies, the upper one sorted by the first column whenever that changes. The
/// table is "3.0,'c' | 1.0,'a' | 2.0,'b'", so the view shows a, b and c.
struct SortedTable
{
    SortedTable()
    {
        below.setSourceModel(&model);
        below.setFilterKeyColumn(0);
        proxy.setSourceModel(&below);
        proxy.sort(0);
        view.setModel(&proxy);
    }

    Columns columns{"nt"};
    TypedModel model{"3.0,'c' | 1.0,'a' | 2.0,'b'"};
    QSortFilterProxyModel below;
    QSortFilterProxyModel proxy;
    QAbstractItemModelTester modelTester{&model, qtTest};
    QAbstractItemModelTester belowTester{&below, qtTest};
    QAbstractItemModelTester proxyTester{&proxy, qtTest};
    CppDbTableViewBase view{&proxy, columns, nullptr};
};

} // namespace

class TestTableViewProxies : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsThatAreSortedMeanwhileKeepTheirLines_data()
    {
        columns<QString, QString, QString>("text", "selected", "content");
        row("a block at its corner", "9\tx\n8\ty\n7\tz\n", "0,0", "7.0,'z' | 9.0,'x' | 8.0,'y'");
        row("a corner in the middle", "0.5\tx\n0.25\ty\n", "1,0", "0.25,'y' | 1.0,'a' | 0.5,'x'");
        row("a line alone", "9\tx", "0,0", "3.0,'c' | 9.0,'x' | 2.0,'b'");
        row("a block on several cells", "9\tx\n8\ty\n7\tz\n", "0,0:2,1",
            "7.0,'z' | 9.0,'x' | 8.0,'y'");
        row("a block on a column", "9\n8\n7\n", "0,0:2,0", "7.0,'c' | 9.0,'a' | 8.0,'b'");
        row("one text", "5", "0,0:1,1", "3.0,'c' | 5.0,'5' | 5.0,'5'");
    }
    void rowsThatAreSortedMeanwhileKeepTheirLines()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        QFETCH(QString, content);
        SortedTable table;
        select(table.view, selected);
        setClipboard(text);
        pressPaste(table.view);
        QCOMPARE(table.model.content(), content);
    }

    void clearWritesToTheRowsThatWereSelected()
    {
        SortedTable table;
        select(table.view, "1,0:2,1");
        pressDelete(table.view);
        QCOMPARE(table.model.content(), QString("-,- | 1.0,'a' | -,-"));
    }

    void copyIsInTheOrderOfTheView()
    {
        SortedTable table;
        select(table.view, "0,0:2,1");
        pressCopy(table.view);
        QCOMPARE(clipboard(), QString("1.000\ta\n2.000\tb\n3.000\tc\n"));
    }

    void rowsThatAreFilteredOutMeanwhileAreSkipped_data()
    {
        columns<QString>("selected");
        row("at a corner", "0,0");
        row("on several cells", "0,0:2,1");
    }
    void rowsThatAreFilteredOutMeanwhileAreSkipped()
    {
        QFETCH(QString, selected);
        SortedTable table;
        table.below.setFilterRegularExpression("[1-8]");
        select(table.view, selected);
        setClipboard("9\tx\n8\ty\n7\tz\n");
        QStringList calls;
        table.view.setCreateNewRowHandler([&](int, const auto&) { calls << "called"; });
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("7.0,'z' | 9.0,'a' | 8.0,'y'"));
        QCOMPARE(calls, QStringList());
    }

    void newRowsAreThoseOfTheModelOfTheView()
    {
        SortedTable table;
        QStringList calls;
        table.view.setCreateNewRowHandler([&](int column, const auto& values) {
            calls << QString("%1: %2").arg(column).arg(TypedModel::textOf(values[0].value()));
            // It is sorted to the beginning.
            table.model.append("0.5,'new'");
        });
        select(table.view, "2,0");
        setClipboard("9\tx\n8\ty\n7\tz\n");
        pressPaste(table.view);
        QCOMPARE(calls, (QStringList{"0: 8.0", "0: 7.0"}));
        QCOMPARE(
            table.model.content(), QString("9.0,'x' | 1.0,'a' | 2.0,'b' | 0.5,'new' | 0.5,'new'"));
    }

    // So the constructor gets the model of the view, unless these two are meant to differ.
    void theCornerCountsInTheModelOfTheConstructor()
    {
        Table table("nt", "3.0,'c' | 1.0,'a' | 2.0,'b'");
        QSortFilterProxyModel proxy;
        proxy.setSourceModel(&table.model);
        const QAbstractItemModelTester tester(&proxy, qtTest);
        proxy.sort(0);
        table.view.setModel(&proxy);
        select(table.view, "0,0");
        setClipboard("9\tx\n");
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("9.0,'x' | 1.0,'a' | 2.0,'b'"));
        // The other commands write to the cells of the view.
        setClipboard("7");
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("9.0,'x' | 7.0,'a' | 2.0,'b'"));
        select(table.view, "1,0");
        pressDelete(table.view);
        QCOMPARE(table.model.content(), QString("9.0,'x' | -,'a' | 2.0,'b'"));
    }

    void theModelOfTheConstructorMayBeSmaller()
    {
        Table table("nt", "1.0,'a' | 2.0,'b'");
        TypedModel small("5.0");
        const QAbstractItemModelTester tester(&small, qtTest);
        CppDbTableViewBase view(&small, table.columns, nullptr);
        view.setModel(&table.model);
        setClipboard("9\tx\n8\ty\n");
        for (const char* corner : {"0,1", "1,0", "1,1"}) {
            select(view, corner);
            pressPaste(view);
        }
        QCOMPARE(small.content(), QString("5.0"));
        QCOMPARE(table.model.content(), QString("1.0,'a' | 2.0,'b'"));
    }
};

VRN_TEST(TestTableViewProxies)
#include "tst_table_view_proxies.moc"
