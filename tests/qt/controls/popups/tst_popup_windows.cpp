#include <QImage>
#include <QLineEdit>
#include <QScreen>
#include <QVBoxLayout>

#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "controls/line_edits/line_edit_impl_p.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

using namespace vrn::test;
using vrn::qt::detail::EditHintPopup;
using vrn::qt::detail::HistoryPopup;
using vrn::qt::detail::LineEditImpl;

namespace {

boost::shared_ptr<vrn::ValueHistory> historyOf(const std::vector<std::wstring>& values)
{
    const auto history = boost::make_shared<vrn::ValueHistory>(
        L"key", boost::make_shared<vrn::ValueHistoryMemoryStorage>());
    for (const std::wstring& value : values)
        history->add(value);
    return history;
}

// A window with a plain field, which has the focus at first, and one that has a
// hint and a history.
struct Form
{
    Form()
        : edit(new LineEditImpl(0))
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(new QLineEdit);
        layout->addWidget(edit);
        layout->addStretch();
        window.resize(300, 200);
        edit->setValueHistory(historyOf({L"1", L"2", L"3"}));
    }

    bool showActive()
    {
        window.show();
        return QTest::qWaitForWindowActive(&window);
    }

    void showPopups() const
    {
        edit->setFocus();
        edit->showEditHint("a number");
        QTRY_VERIFY(popupsStand());
    }

    QList<QWidget*> popups() const
    {
        return {edit->findChild<EditHintPopup*>(), edit->findChild<HistoryPopup*>()};
    }

    bool popupsStand() const
    {
        const QList<QWidget*> all = popups();
        return std::all_of(all.begin(), all.end(), [](const QWidget* popup) {
            return popup && popup->isVisible() && x11::isViewable(popup->winId());
        });
    }

    QWidget window;
    LineEditImpl* edit;
};

// The lower left part of the screen, where a task bar has its buttons.
QImage taskBar()
{
    QScreen* screen = QApplication::primaryScreen();
    const QSize size(screen->size().width() * 2 / 3, 40);
    return screen->grabWindow(0, 0, screen->size().height() - 40, size.width(), size.height())
        .toImage();
}

} // namespace

// Popups as the window manager sees them.
class TestPopupWindows : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // The first test: later ones have sent keys, by whose time some window managers go.
    void theyLeaveTheActivationToTheirWindow()
    {
        Form form;
        QVERIFY(form.showActive());
        form.showPopups();
        QTest::qWait(200);
        QVERIFY(form.window.isActiveWindow());
        QCOMPARE(x11::activeWindow(), form.window.winId());
        QVERIFY(form.popupsStand());
    }

    void aMinimisedWindowComesBackWithItsPopups_data()
    {
        QTest::addColumn<bool>("byKeyboard");
        QTest::newRow("by its task bar button") << false;
        QTest::newRow("by Alt+Tab") << true;
    }
    void aMinimisedWindowComesBackWithItsPopups()
    {
        QFETCH(bool, byKeyboard);
        Form form;
        QVERIFY(form.showActive());
        form.showPopups();
        const QString normal = x11::property(form.window.winId(), "WM_STATE");
        QVERIFY(normal.contains("Normal"));

        // What a popup keeps of the first time shows the second time.
        for (int time = 0; time < 3; ++time) {
            x11::minimise(form.window.winId());
            QTRY_VERIFY(x11::property(form.window.winId(), "WM_STATE").contains("Iconic"));
            QTRY_VERIFY(!form.window.isActiveWindow());
            QVERIFY(!form.popups()[0]->isVisible());
            QVERIFY(!form.popups()[1]->isVisible());

            if (byKeyboard)
                x11::press({"alt+Tab"});
            else
                x11::activate(form.window.winId());
            QTRY_VERIFY(form.window.isActiveWindow());
            QTRY_VERIFY(form.popupsStand());
            QCOMPARE(x11::property(form.window.winId(), "WM_STATE"), normal);
            for (const QWidget* popup : form.popups()) {
                QVERIFY(!popup->isMinimized());
                QVERIFY(x11::property(popup->winId(), "WM_STATE").contains("Normal"));
            }
        }
        x11::type("5");
        QTRY_COMPARE(form.edit->text(), QString("5"));
    }

    // A window manager goes by the first type that it knows.
    void theyAreKnownAsToolTips()
    {
        Form form;
        QVERIFY(form.showActive());
        form.showPopups();
        for (const QWidget* popup : form.popups()) {
            const QString types = x11::property(popup->winId(), "_NET_WM_WINDOW_TYPE");
            QVERIFY2(types.contains("= _NET_WM_WINDOW_TYPE_TOOLTIP, _NET_WM_WINDOW_TYPE_UTILITY,"),
                qPrintable(types));
            const QString state = x11::property(popup->winId(), "_NET_WM_STATE");
            QVERIFY2(state.endsWith("="), qPrintable(state));
        }
    }

    void theyHaveNoButtonInTheTaskBar()
    {
        Form form;
        QVERIFY(form.showActive());
        // A bar takes its time to draw.
        QTest::qWait(500);
        const QImage before = taskBar();
        form.showPopups();
        QTest::qWait(500);
        QCOMPARE(taskBar(), before);
    }
};

VRN_TEST(TestPopupWindows)
#include "tst_popup_windows.moc"
