#include "controls/popups/history_popup_p.h"

#include <QListWidget>
#include <QSignalSpy>

#include "qt/controls/popups/popup_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::test;
using vrn::ValueHistory;
using vrn::ValueHistoryMemoryStorage;
using vrn::qt::detail::HistoryPopup;

namespace {

using History = boost::shared_ptr<ValueHistory>;

// A popup at a field, with the history of `values`.
struct Fixture
{
    explicit Fixture(const QStringList& values)
        : history(historyOf(values))
        , popup(new HistoryPopup(&owner))
        , list(popup->findChild<QListWidget*>())
    {
        popup->setValueHistory(history);
    }

    void showAnew() const
    {
        popup->hide();
        popup->show();
    }

    QStringList rows() const
    {
        QStringList texts;
        for (int row = 0; row < list->count(); ++row)
            texts << list->item(row)->text();
        return texts;
    }

    void click(int row, Qt::MouseButton button = Qt::LeftButton) const
    {
        const QPoint position = list->visualItemRect(list->item(row)).center();
        QTest::mouseClick(list->viewport(), button, {}, position);
    }

    QLineEdit owner;
    History history;
    HistoryPopup* popup;
    QListWidget* list;
};

} // namespace

Q_DECLARE_METATYPE(History)

class TestHistoryPopup : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsAListAndNothingElse()
    {
        const Fixture f({});
        verifyHoldsAlone(f.popup, f.list);
        QCOMPARE(f.list->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(f.list->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        // A click leaves the focus in the field.
        QCOMPARE(f.list->focusPolicy(), Qt::NoFocus);
    }

    void showingListsTheValuesNewestFirst()
    {
        const QString accented = QString::fromUtf8("S\u00e4ule \U0001F600");
        const Fixture f({"b", "a", accented, "c"});
        QSignalSpy selected(f.popup, &HistoryPopup::itemSelected);
        QCOMPARE(f.list->count(), 0);
        for (int time = 0; time < 2; ++time) {
            f.showAnew();
            QCOMPARE(f.rows(), QStringList({"c", accented, "a", "b"}));
        }
        QCOMPARE(selected.count(), 0);
    }

    void eachShowReadsTheHistoryAnew()
    {
        const Fixture f({"1"});
        f.popup->show();
        const QSize size = f.popup->size();
        f.history->add(L"a much longer second value");
        QCOMPARE(f.rows(), QStringList({"1"}));
        f.showAnew();
        QCOMPARE(f.rows(), QStringList({"a much longer second value", "1"}));
        QVERIFY(f.popup->height() > size.height());
        QVERIFY(f.popup->width() > size.width());
        f.popup->setValueHistory(historyOf({"2"}));
        f.showAnew();
        QCOMPARE(f.rows(), QStringList({"2"}));
    }

    void withoutEntriesTheSizeIsZero_data()
    {
        columns<History>("history");
        row("no history", History());
        row("a history without entries", historyOf({}));
        row("a history without a key",
            boost::make_shared<ValueHistory>(L"", boost::make_shared<ValueHistoryMemoryStorage>()));
    }
    void withoutEntriesTheSizeIsZero()
    {
        QFETCH(History, history);
        const Fixture f({"1"});
        QCOMPARE(f.popup->sizeHint(), QSize(0, 0));
        f.popup->show();
        QVERIFY(isOnScreen(f.popup));
        f.popup->setValueHistory(history);
        f.showAnew();
        QCOMPARE(f.list->count(), 0);
        QCOMPARE(f.popup->sizeHint(), QSize(0, 0));
        QCOMPARE(f.popup->size(), QSize(0, 0));
        QVERIFY(!isOnScreen(f.popup));
        f.popup->setValueHistory(f.history);
        f.showAnew();
        QVERIFY(isOnScreen(f.popup));
    }

    void theSizeIsThatOfTheRows_data()
    {
        columns<QStringList>("values");
        row("one short value", QStringList{"1"});
        row("five values", QStringList{"1", "2", "3", "4", "5"});
        row("a long value", QStringList{"1", QString(80, QLatin1Char('W'))});
        row("two lines in a value", QStringList{"1\n2", "3"});
    }
    void theSizeIsThatOfTheRows()
    {
        QFETCH(QStringList, values);
        const Fixture f(values);
        f.popup->show();
        const int frame = f.list->frameWidth();
        QVERIFY(frame > 0);
        int height = 2 * frame;
        for (int row = 0; row < f.list->count(); ++row)
            height += f.list->sizeHintForRow(row);
        const QSize expected(f.list->sizeHintForColumn(0) + 2 * frame + 20, height);
        QCOMPARE(f.popup->sizeHint(), expected);
        QCOMPARE(f.popup->size(), expected);
        QCOMPARE(f.popup->minimumSize(), expected);
        QCOMPARE(f.popup->maximumSize(), expected);
        QVERIFY(isOnScreen(f.popup));
    }

    void theListFillsThePopup_data()
    {
        columns<QStringList>("values");
        const QString lines = QString("a line\n").repeated(10);
        row("a short value", QStringList{"1"});
        row("a long value", QStringList{"1", QString(80, QLatin1Char('W'))});
        row("values of many lines", QStringList{lines + "1", lines + "2"});
        row("a value that no screen holds", QStringList{QString(9000, QLatin1Char('W'))});
    }
    void theListFillsThePopup()
    {
        QFETCH(QStringList, values);
        const Fixture f({"before"});
        f.popup->show();
        f.popup->setValueHistory(historyOf(values));
        f.showAnew();
        QCOMPARE(f.list->geometry(), f.popup->rect());
    }

    void noValueIsElided()
    {
        const Fixture f({"1", QString("a long name of a section ").repeated(4)});
        f.popup->show();
        for (int row = 0; row < f.list->count(); ++row)
            QVERIFY(
                f.list->visualItemRect(f.list->item(row)).width() >= f.list->sizeHintForColumn(0));
    }

    void aClickChoosesAValue_data()
    {
        columns<int, QString>("row", "text");
        row("the first", 0, "three");
        row("one in the middle", 1, " two ");
        row("the last", 2, "one");
    }
    void aClickChoosesAValue()
    {
        QFETCH(int, row);
        QFETCH(QString, text);
        const Fixture f({"one", " two ", "three"});
        QSignalSpy selected(f.popup, &HistoryPopup::itemSelected);
        f.popup->show();
        f.click(row);
        QCOMPARE(selected.count(), 1);
        QCOMPARE(selected[0][0].toString(), text);
        f.click(row);
        QCOMPARE(selected.count(), 2);
        QCOMPARE(selected[1][0].toString(), text);
    }

    void aClickBesideTheRowsChoosesNothing()
    {
        const Fixture f({"one"});
        QSignalSpy selected(f.popup, &HistoryPopup::itemSelected);
        f.popup->show();
        f.popup->setFixedSize(200, 200);
        QTest::mouseClick(f.list->viewport(), Qt::LeftButton, {}, QPoint(50, 150));
        QCOMPARE(selected.count(), 0);
    }

    void keysChooseNothing()
    {
        const Fixture f({"one", "two"});
        QSignalSpy selected(f.popup, &HistoryPopup::itemSelected);
        f.popup->show();
        f.list->setCurrentRow(0);
        for (const Qt::Key key :
            {Qt::Key_Down, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_F2})
            QTest::keyClick(f.list, key);
        QCOMPARE(selected.count(), 0);
    }
};

VRN_TEST(TestHistoryPopup)
#include "tst_history_popup.moc"
