#include <vrn/qt/cppdb_table_view_base.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_fixture.h"

using namespace vrn::test;

// Runs on a machine of a German user, with a decimal comma.
class TestTableViewUserLocale : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCOMPARE(QLocale().decimalPoint(), ','); }

    void numbersAreCopiedWithAComma_data()
    {
        columns<QString, QString>("selected", "text");
        row("one cell", "0,0", "1,50");
        row("a block", "0,0:1,2", "1,50\ta\t5\n1.234,50\tb\t6\n");
    }
    void numbersAreCopiedWithAComma()
    {
        QFETCH(QString, selected);
        QFETCH(QString, text);
        Table table("dtw", "1.5,'a',5 | 1234.5,'b',6");
        select(table.view, selected);
        pressCopy(table.view);
        QCOMPARE(clipboard(), text);
    }

    // Paste reads in the C locale.
    void theyAreRefusedOnTheWayBack_data()
    {
        columns<QString, QString, QString>("copied", "pasted", "content");
        row("one cell", "0,0", "1,0", "1.5,'a',5 | 1234.5,'b',6");
        row("one with a point between its thousands", "1,0", "0,0", "1.5,'a',5 | 1234.5,'b',6");
        row("a block at a corner: the other columns are pasted", "0,0:0,2", "1,0",
            "1.5,'a',5 | 1234.5,'a',5");
        row("a block on several cells", "0,0:0,2", "1,0:1,2", "1.5,'a',5 | 1234.5,'a',5");
    }
    void theyAreRefusedOnTheWayBack()
    {
        QFETCH(QString, copied);
        QFETCH(QString, pasted);
        QFETCH(QString, content);
        Table table("dtw", "1.5,'a',5 | 1234.5,'b',6");
        select(table.view, copied);
        pressCopy(table.view);
        select(table.view, pasted);
        pressPaste(table.view);
        QCOMPARE(table.model.content(), content);
    }

    // In the C locale, a comma before three digits stands between thousands.
    void exactlyThreeDecimalsAreTakenForThousands()
    {
        Table table("n", "1.5 | 1234.5 | 2.5");
        select(table.view, "0,0");
        pressCopy(table.view);
        QCOMPARE(clipboard(), QString("1,500"));
        select(table.view, "2,0");
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("1.5 | 1234.5 | 1500.0"));
        select(table.view, "1,0");
        pressCopy(table.view);
        QCOMPARE(clipboard(), QString("1.234,500"));
        select(table.view, "2,0");
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("1.5 | 1234.5 | 1500.0"));
    }

    void aPointIsRead()
    {
        Table table("ntw", "1.5,'a',5 | 2.5,'b',6");
        select(table.view, "0,0");
        setClipboard("7.25");
        pressPaste(table.view);
        QCOMPARE(table.model.content(), QString("7.25,'a',5 | 2.5,'b',6"));
    }
};

VRN_TEST(TestTableViewUserLocale)
#include "tst_table_view_user_locale.moc"
