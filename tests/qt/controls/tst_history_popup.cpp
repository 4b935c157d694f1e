#include "controls/history_popup_p.h"

#include <boost/make_shared.hpp>

#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWindow>

#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::test;
using vrn::ValueHistory;
using vrn::ValueHistoryMemoryStorage;
using vrn::qt::detail::HistoryPopup;

namespace {

boost::shared_ptr<ValueHistory> historyOf(const QStringList& values)
{
    const auto history = boost::make_shared<ValueHistory>(
        L"key", boost::make_shared<ValueHistoryMemoryStorage>());
    for (const QString& value : values)
        history->add(value.toStdWString());
    return history;
}

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
    boost::shared_ptr<ValueHistory> history;
    HistoryPopup* popup;
    QListWidget* list;
};

bool isOnScreen(const QWidget* widget)
{
    return widget->windowHandle() && widget->windowHandle()->isVisible();
}

} // namespace

class TestHistoryPopup : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsAListAndNothingElse()
    {
        const Fixture f({});
        QVERIFY(f.list);
        auto* layout = qobject_cast<QVBoxLayout*>(f.popup->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(layout->sizeConstraint(), QLayout::SetNoConstraint);
        QCOMPARE(layout->count(), 1);
        QCOMPARE(layout->itemAt(0)->widget(), f.list);
        QCOMPARE(f.list->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(f.list->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(f.list->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(f.list->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    }

    void aClickLeavesTheFocusInTheField()
    {
        const Fixture f({});
        QCOMPARE(f.list->focusPolicy(), Qt::NoFocus);
    }

    void showingListsTheValuesNewestFirst_data()
    {
        QTest::addColumn<QStringList>("added");
        QTest::addColumn<QStringList>("rows");
        const QString accented = QString::fromUtf8("S\u00e4ule \U0001F600");
        QTest::newRow("none") << QStringList() << QStringList();
        QTest::newRow("one") << QStringList{"1"} << QStringList{"1"};
        QTest::newRow("two") << QStringList{"1", "2"} << QStringList{"2", "1"};
        QTest::newRow("the last five of six")
            << QStringList{"1", "2", "3", "4", "5", "6"} << QStringList{"6", "5", "4", "3", "2"};
        QTest::newRow("not sorted") << QStringList{"b", "a", "c"} << QStringList{"c", "a", "b"};
        QTest::newRow("characters of every plane")
            << QStringList{accented} << QStringList{accented};
    }
    void showingListsTheValuesNewestFirst()
    {
        QFETCH(QStringList, added);
        QFETCH(QStringList, rows);
        const Fixture f(added);
        QCOMPARE(f.list->count(), 0);
        f.popup->show();
        QCOMPARE(f.rows(), rows);
        f.popup->hide();
        f.popup->show();
        QCOMPARE(f.rows(), rows);
    }

    void eachShowReadsTheHistoryAnew()
    {
        const Fixture f({"1"});
        f.popup->show();
        const QSize size = f.popup->size();
        f.history->add(L"a much longer second value");
        QCOMPARE(f.rows(), QStringList({"1"}));
        f.popup->hide();
        f.popup->show();
        QCOMPARE(f.rows(), QStringList({"a much longer second value", "1"}));
        QVERIFY(f.popup->height() > size.height());
        QVERIFY(f.popup->width() > size.width());
    }

    void anotherHistoryReplacesTheFirst()
    {
        const Fixture f({"1"});
        f.popup->show();
        f.popup->hide();
        f.popup->setValueHistory(historyOf({"2"}));
        f.popup->show();
        QCOMPARE(f.rows(), QStringList({"2"}));
    }

    void withoutAHistoryTheListIsCleared()
    {
        const Fixture f({"1"});
        f.popup->show();
        f.popup->hide();
        f.popup->setValueHistory(nullptr);
        f.popup->show();
        QCOMPARE(f.rows(), QStringList());
        QCOMPARE(f.popup->size(), QSize(0, 0));
    }

    void aHistoryWithoutAKeyOffersNothing()
    {
        const Fixture f({});
        f.popup->setValueHistory(
            boost::make_shared<ValueHistory>(L"", boost::make_shared<ValueHistoryMemoryStorage>()));
        f.popup->show();
        QCOMPARE(f.list->count(), 0);
    }

    void theSizeIsThatOfTheRows_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::newRow("one short value") << QStringList{"1"};
        QTest::newRow("five values") << QStringList{"1", "2", "3", "4", "5"};
        QTest::newRow("a long value") << QStringList{"1", QString(80, QLatin1Char('W'))};
        QTest::newRow("two lines in a value") << QStringList{"1\n2", "3"};
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
        QTest::addColumn<QStringList>("values");
        const QString lines = QString("a line\n").repeated(10);
        QTest::newRow("a short value") << QStringList{"1"};
        QTest::newRow("a long value") << QStringList{"1", QString(80, QLatin1Char('W'))};
        QTest::newRow("values of many lines") << QStringList{lines + "1", lines + "2"};
        QTest::newRow("a value that no screen holds")
            << QStringList{QString(9000, QLatin1Char('W'))};
    }
    void theListFillsThePopup()
    {
        QFETCH(QStringList, values);
        const Fixture f({"before"});
        f.popup->show();
        f.popup->hide();
        f.popup->setValueHistory(historyOf(values));
        f.popup->show();
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

    void withoutEntriesTheSizeIsZero()
    {
        const Fixture f({});
        QCOMPARE(f.popup->sizeHint(), QSize(0, 0));
        f.popup->show();
        QCOMPARE(f.popup->sizeHint(), QSize(0, 0));
        QCOMPARE(f.popup->size(), QSize(0, 0));
        QVERIFY(!isOnScreen(f.popup));
    }

    void itComesToTheScreenWithItsFirstEntry()
    {
        const Fixture f({});
        f.popup->show();
        QVERIFY(!isOnScreen(f.popup));
        f.popup->hide();
        f.history->add(L"1");
        f.popup->show();
        QVERIFY(isOnScreen(f.popup));
        f.popup->hide();
        f.popup->setValueHistory(nullptr);
        f.popup->show();
        QVERIFY(!isOnScreen(f.popup));
    }

    void aClickChoosesAValue_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("text");
        QTest::newRow("the first") << 0 << "three";
        QTest::newRow("one in the middle") << 1 << " two ";
        QTest::newRow("the last") << 2 << "one";
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

    void keysChooseNothing_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Down") << int(Qt::Key_Down);
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Enter") << int(Qt::Key_Enter);
        QTest::newRow("Space") << int(Qt::Key_Space);
        QTest::newRow("F2") << int(Qt::Key_F2);
    }
    void keysChooseNothing()
    {
        QFETCH(int, key);
        const Fixture f({"one", "two"});
        QSignalSpy selected(f.popup, &HistoryPopup::itemSelected);
        f.popup->show();
        f.list->setCurrentRow(0);
        QTest::keyClick(f.list, static_cast<Qt::Key>(key));
        QCOMPARE(selected.count(), 0);
    }

    void showingChoosesNothing()
    {
        const Fixture f({"one", "two"});
        QSignalSpy selected(f.popup, &HistoryPopup::itemSelected);
        f.popup->show();
        f.popup->hide();
        f.popup->show();
        QCOMPARE(selected.count(), 0);
    }
};

VRN_TEST_MAIN(TestHistoryPopup)
#include "tst_history_popup.moc"
