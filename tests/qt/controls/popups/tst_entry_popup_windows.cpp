#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>

#include "qt/controls/popups/entry_form.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

using namespace vrn::test;

/// The keys of the list of completions, as a user presses them.
class TestEntryPopupWindows : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theKeysOfTheList_data()
    {
        columns<QString, QStringList, QString, bool>("typed", "keys", "text", "staysInField");
        row("Down and Enter take an entry", "12 f", QStringList({"Down", "Return"}), "12 ft", true);
        row("Down and Tab take an entry", "12 f", QStringList({"Down", "Tab"}), "12 ft", true);
        row("Escape drops the list", "12 f", QStringList({"Down", "Escape"}), "12 f", true);
        row("after Escape Tab leaves the field", "12 f", QStringList({"Down", "Escape", "Tab"}),
            "12 f", false);
        row("12 m and Tab never become mm", "12 m", QStringList({"Tab"}), "12.000 m", false);
        row("12 m and Enter neither", "12 m", QStringList({"Return"}), "12.000 m", true);
    }
    void theKeysOfTheList()
    {
        QFETCH(QString, typed);
        QFETCH(QStringList, keys);
        QFETCH(QString, text);
        QFETCH(bool, staysInField);
        EntryForm form;
        QVERIFY(form.showActive());
        x11::type(typed);
        QTRY_VERIFY(!form.offered().isEmpty() && x11::isViewable(form.popup()->winId()));
        QCOMPARE(x11::activeWindow(), form.window.winId());
        x11::press(keys);
        QTRY_COMPARE(form.edit->text(), text);
        QTRY_COMPARE(form.edit->hasFocus(), staysInField);
        QTRY_VERIFY(form.offered().isEmpty());
        QCOMPARE(x11::activeWindow(), form.window.winId());
    }

    void aClickTakesAnEntryAndTypingGoesOn()
    {
        EntryForm form;
        QVERIFY(form.showActive());
        x11::type("12 f");
        QTRY_VERIFY(!form.offered().isEmpty() && x11::isViewable(form.popup()->winId()));
        QTest::qWait(100);
        const auto* list = form.popup()->findChild<QListWidget*>();
        x11::click(list->viewport()->mapToGlobal(list->visualItemRect(list->item(0)).center()));
        QTRY_COMPARE(form.edit->text(), QString("12 ft"));
        x11::type(" + 1 m");
        QTRY_COMPARE(form.edit->text(), QString("12 ft + 1 m"));
    }

    void itStandsBelowItsFieldAndOnTheScreen()
    {
        EntryForm form;
        QVERIFY(form.showActive());
        x11::type("12");
        QTRY_VERIFY(!form.offered().isEmpty() && x11::isViewable(form.popup()->winId()));
        const auto isBelow = [&] {
            return x11::place(form.popup()->winId())
                == form.edit->mapToGlobal(QPoint(0, form.edit->height()));
        };
        QTRY_VERIFY(isBelow());
        form.window.move(form.window.pos() + QPoint(40, 30));
        QTRY_VERIFY(isBelow());
        const QRect screen = QApplication::primaryScreen()->geometry();
        form.window.move(screen.width() - 60, screen.height() - 120);
        QTRY_VERIFY(
            screen.contains(QRect(x11::place(form.popup()->winId()), form.popup()->size())));
    }
};

VRN_TEST(TestEntryPopupWindows)
#include "tst_entry_popup_windows.moc"
