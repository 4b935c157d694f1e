#include <vrn/qt/cppdb_table_view_base.h>

#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_fixture.h"

#include <stdexcept>
#include <vector>

using namespace vrn::test;

namespace {

// Where the limit of time is larger, the text is smaller: a tenth of it, in a tenth of the time.
constexpr bool isShipped = timeLimitMs(1) == 1;
constexpr int lots = (isShipped ? 50 : 5) * 1024 * 1024;
constexpr int msForLots = isShipped ? 2000 : 200;

QString lotsOf(const QString& text)
{
    return text.repeated(lots / int(text.size()));
}

/// Where a text is pasted in a table of three rows.
void addSelections(
    const QByteArray& name, const QString& text, const std::vector<const char*>& selections)
{
    for (const char* selected : selections)
        QTest::addRow("%s on %s", name.constData(), selected) << text << selected;
}

} // namespace

/// What the clipboard may hold. What each text gives is tested in tst_table_view_paste.
class TestTableViewBadInput : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aHostileTextIsPastedOrRefused_data()
    {
        columns<QString, QString>("text", "selected");
        const std::vector<const char*> selections = {"0,0", "0,1", "2,2", "0,0:2,2"};
        for (const auto& [name, text] : hostileTexts()) {
            addSelections(name, text, selections);
            addSelections(
                name + " as a cell of a block", "1\t" + text + "\n" + text + "\t2\n", selections);
        }
    }
    void aHostileTextIsPastedOrRefused()
    {
        QFETCH(QString, text);
        QFETCH(QString, selected);
        Table table("ntw", "1.0,'a',1 | 2.0,'b',2 | 3.0,'c',3");
        select(table.view, selected);
        setClipboard(text);
        verifyTakesAtMost(timeLimitMs(500), "the paste", [&] {
            try {
                pressPaste(table.view);
            } catch (const std::out_of_range&) {
                // The block has two or three lines.
            }
        });
        verifyTakesAtMost(timeLimitMs(500), "the copy", [&] { pressCopy(table.view); });
    }

    void lotsOfTextArePastedInTime_data()
    {
        columns<QString, QString>("text", "several");
        const QString block = "1,0:2,1";
        const QString cellsOfARow = "1,0:1,1"; // Each of them reads all of the text.
        row("a text", lotsOf("x"), cellsOfARow);
        row("a number", lotsOf("7"), cellsOfARow);
        row("lines", lotsOf("7\n"), block);
        row("lines of cells", lotsOf("7\tx\t9\n"), block);
        row("cells of two lines", lotsOf("7\t").replace(lots / 2, 1, '\n'), block);
        row("cells of one line, all of them empty", lotsOf("\t"), block);
        row("line breaks", lotsOf("\n"), block);
        row("letters of three bytes", lotsOf(QString::fromUtf8("→\n")), block);
    }
    void lotsOfTextArePastedInTime()
    {
        QFETCH(QString, text);
        QFETCH(QString, several);
        for (const QString& selected : {QString("0,1"), several}) {
            Table table("ntw", "1.0,'a',1 | 2.0,'b',2 | 3.0,'c',3");
            int rowsToMake = 100;
            table.view.setCreateNewRowHandler([&](int, const auto&) {
                if (rowsToMake-- > 0)
                    table.model.append("4.0,'d',4");
            });
            select(table.view, selected);
            setClipboard(text);
            verifyTakesAtMost(timeLimitMs(msForLots), qPrintable("the paste on " + selected), [&] {
                try {
                    pressPaste(table.view);
                } catch (const std::out_of_range&) {
                    // There is but one line.
                }
            });
        }
    }
};

VRN_TEST(TestTableViewBadInput)
#include "tst_table_view_bad_input.moc"
