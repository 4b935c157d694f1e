#include <QImage>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include "controls/line_edits/line_edit_impl_p.h"
#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "qt/controls/popups/popup_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

using namespace vrn::test;
using vrn::qt::detail::EditHintPopup;
using vrn::qt::detail::HistoryPopup;
using vrn::qt::detail::LineEditImpl;

namespace {

// A window with a field that has a hint and a history, and a plain field that has the
// focus at first.
struct Form
{
    Form()
        : plain(new QLineEdit)
        , edit(new LineEditImpl(0))
    {
        window.resize(300, 200);
        edit->setValueHistory(historyOf({"1", "2", "3"}));
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
        // They get their final place after the show, and the window manager then tells them
        // where they are.
        QTest::qWait(100);
    }

    QList<QWidget*> popups() const
    {
        return {edit->findChild<EditHintPopup*>(), edit->findChild<HistoryPopup*>()};
    }

    // As the server has it: the application believes in moves that it has asked for.
    static QPoint placeOnScreen(const QWidget* popup) { return x11::place(popup->winId()); }

    bool noPopupStands() const
    {
        const QList<QWidget*> all = popups();
        return std::none_of(all.begin(), all.end(), [](const QWidget* popup) {
            return popup->isVisible() || x11::isViewable(popup->winId());
        });
    }

    bool popupsStand() const
    {
        const QList<QWidget*> all = popups();
        return std::all_of(all.begin(), all.end(), [](const QWidget* popup) {
            return popup && popup->isVisible() && x11::isViewable(popup->winId());
        });
    }

    QPoint below() const { return edit->mapToGlobal(QPoint(0, edit->height())); }

    QWidget window;
    QLineEdit* plain;
    LineEditImpl* edit;
};

struct PlainForm : Form
{
    PlainForm()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(plain);
        layout->addWidget(edit);
        layout->addStretch();
    }
};

struct LowForm : Form
{
    LowForm()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(plain);
        layout->addStretch();
        layout->addWidget(edit);
    }
};

// The field is in a widget of a scroll area at the lower end of the window.
struct ScrolledForm : Form
{
    ScrolledForm()
        : area(new QScrollArea)
    {
        auto* content = new QWidget;
        auto* rows = new QVBoxLayout(content);
        auto* cell = new QWidget;
        (new QVBoxLayout(cell))->addWidget(edit);
        rows->addWidget(plain);
        rows->addWidget(cell);
        rows->addSpacing(800);
        area->setWidgetResizable(true);
        area->setFixedHeight(150);
        area->setWidget(content);
        auto* layout = new QVBoxLayout(&window);
        layout->addStretch();
        layout->addWidget(area);
    }

    void scroll(int value) const { area->verticalScrollBar()->setValue(value); }

    QScrollArea* area;
};

// The lower left part of the screen, where a task bar shows its buttons.
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
    // This test comes first: once keys have been sent, some window managers go by the time of
    // the last one.
    void theyLeaveTheActivationToTheirWindow()
    {
        PlainForm form;
        QVERIFY(form.showActive());
        form.showPopups();
        QTest::qWait(200);
        QVERIFY(form.window.isActiveWindow());
        QCOMPARE(x11::activeWindow(), form.window.winId());
        QVERIFY(form.popupsStand());
    }

    void aMinimisedWindowComesBackWithItsPopups_data()
    {
        columns<bool>("byKeyboard");
        row("by its task bar button", false);
        row("by Alt+Tab", true);
    }
    void aMinimisedWindowComesBackWithItsPopups()
    {
        QFETCH(bool, byKeyboard);
        PlainForm form;
        QVERIFY(form.showActive());
        form.showPopups();
        const QString normal = x11::property(form.window.winId(), "WM_STATE");
        QVERIFY(normal.contains("Normal"));

        // What a popup keeps from the first time shows the second time.
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

    void theyFollowTheField_data()
    {
        columns<QString>("by");
        row("as the form is scrolled", "scrolling");
        row("as the window grows and its layout shifts the form", "growing");
        row("as the window moves", "moving");
    }
    void theyFollowTheField()
    {
        QFETCH(QString, by);
        ScrolledForm form;
        QVERIFY(form.showActive());
        form.showPopups();
        const QPoint before = form.below();
        QTRY_COMPARE(form.placeOnScreen(form.popups()[0]), before);

        if (by == "scrolling")
            form.scroll(30);
        else if (by == "growing")
            form.window.resize(form.window.size() + QSize(0, 100));
        else
            form.window.move(form.window.pos() + QPoint(40, 60));
        QTRY_VERIFY(form.below() != before);
        QTRY_COMPARE(form.placeOnScreen(form.popups()[0]), form.below());
        const QPoint next(0, form.popups()[0]->height() + 5);
        QTRY_COMPARE(form.placeOnScreen(form.popups()[1]), form.below() + next);
        QVERIFY(form.popupsStand());
    }

    void theyAreAwayWhileTheFieldIsScrolledOutOfSight()
    {
        ScrolledForm form;
        QVERIFY(form.showActive());
        form.showPopups();
        for (int time = 0; time < 2; ++time) {
            form.scroll(500);
            QTRY_VERIFY(form.noPopupStands());
            // The field still has the keyboard focus, and hints are shown for what is typed.
            form.edit->showEditHint("another number");
            QTest::qWait(100);
            QVERIFY(form.noPopupStands());

            form.scroll(20);
            QTRY_VERIFY(form.popupsStand());
            QTRY_COMPARE(form.placeOnScreen(form.popups()[0]), form.below());
            QVERIFY(form.edit->hasFocus());
            QVERIFY(form.window.isActiveWindow());
        }
        form.scroll(500);
        QTRY_VERIFY(form.noPopupStands());
        form.edit->clearFocus();
        form.scroll(0);
        QTest::qWait(100);
        QVERIFY(form.noPopupStands());
    }

    void theyDoNotCoverTheField_data()
    {
        QTest::addColumn<int>("room");
        for (const int room : {200, 60, 30, 10, 0})
            QTest::addRow("%d pixels above the end of the screen", room) << room;
    }
    void theyDoNotCoverTheField()
    {
        QFETCH(int, room);
        const QRect screen = QApplication::primaryScreen()->availableGeometry();
        LowForm form;
        form.window.setWindowFlags(Qt::FramelessWindowHint);
        QVERIFY(form.showActive());
        form.window.move(100, screen.bottom() + 1 - room - form.window.height());
        QTRY_COMPARE(form.below().y(), screen.bottom() + 1 - room);
        form.showPopups();
        // The window manager may move them.
        QTest::qWait(200);
        QVERIFY(form.popupsStand());
        const QRect field(form.edit->mapToGlobal(QPoint(0, 0)), form.edit->size());
        for (const QWidget* popup : form.popups()) {
            const QRect place(form.placeOnScreen(popup), popup->size());
            QVERIFY(!place.intersects(field));
            QVERIFY(screen.contains(place));
        }
    }

    void aPressOnTheHintGoesToTheWidgetBelow_data()
    {
        columns<bool>("takesFocus");
        row("a button that takes the focus, so that the hint goes", true);
        row("a button that leaves the focus, so that the hint stays", false);
    }
    void aPressOnTheHintGoesToTheWidgetBelow()
    {
        QFETCH(bool, takesFocus);
        PlainForm form;
        auto* button = new QPushButton("Apply");
        button->setFocusPolicy(takesFocus ? Qt::StrongFocus : Qt::NoFocus);
        qobject_cast<QVBoxLayout*>(form.window.layout())->insertWidget(2, button);
        QSignalSpy clicked(button, &QPushButton::clicked);
        QVERIFY(form.showActive());
        form.showPopups();
        const QWidget* hint = form.popups()[0];
        QTRY_COMPARE(form.placeOnScreen(hint), form.below());
        const QPoint place = form.below() + QPoint(20, hint->height() - 4);
        QCOMPARE(form.window.childAt(form.window.mapFromGlobal(place)), button);

        x11::click(place);
        QTRY_COMPARE(clicked.count(), 1);
        QVERIFY(!button->isDown());
        QCOMPARE(button->hasFocus(), takesFocus);
        QTRY_COMPARE(form.edit->hasFocus(), !takesFocus);
        QTRY_COMPARE(hint->isVisible(), !takesFocus);
        QVERIFY(form.window.isActiveWindow());
    }

    // A window manager goes by the first type that it knows.
    void theyAreKnownAsToolTips()
    {
        PlainForm form;
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
        PlainForm form;
        QVERIFY(form.showActive());
        // A task bar takes some time to draw.
        QTest::qWait(500);
        const QImage before = taskBar();
        form.showPopups();
        QTest::qWait(500);
        QCOMPARE(taskBar(), before);
    }
};

VRN_TEST(TestPopupWindows)
#include "tst_popup_windows.moc"
