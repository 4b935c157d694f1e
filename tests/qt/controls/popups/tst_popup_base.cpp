#include "controls/popups/popup_base_p.h"

#include <QEnterEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPointer>
#include <QVBoxLayout>
#include <QWindow>

#include "support/test_main.h"
#include "support/test_object.h"

#include <functional>
#include <memory>

using namespace vrn::test;
using vrn::qt::detail::PopupBase;

namespace {

// A popup with something to show, or nothing.
class SizedPopup : public PopupBase
{
public:
    using PopupBase::PopupBase;

    QSize sizeHint() const override { return hint; }

    QSize hint = QSize(60, 20);
    std::function<void()> onHide;

protected:
    void hideEvent(QHideEvent* event) override
    {
        PopupBase::hideEvent(event);
        if (onHide)
            onHide();
    }
};

// A window with two fields, one of which has a popup. The offscreen platform
// makes any window active that is shown, popups too, once events are processed;
// tests look before that.
struct Form
{
    Form()
        : owner(new QLineEdit(&window))
        , other(new QLineEdit(&window))
        , popup(new SizedPopup(owner))
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(other);
        layout->addWidget(owner);
    }

    bool showActive()
    {
        other->setFocus();
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    QWidget window;
    QLineEdit* owner;
    QLineEdit* other;
    SizedPopup* popup;
};

void sendFocus(QObject* receiver, QEvent::Type type, Qt::FocusReason reason)
{
    QFocusEvent event(type, reason);
    QCoreApplication::sendEvent(receiver, &event);
}

void sendEnter(QWidget* receiver)
{
    QEnterEvent event(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(receiver, &event);
}

// Opacity is kept in 255 steps.
bool isAbout(qreal opacity, qreal expected)
{
    return qAbs(opacity - expected) < 1.0 / 255;
}

bool isOnScreen(const QWidget* widget)
{
    return widget->windowHandle() && widget->windowHandle()->isVisible();
}

// Notes the focus events that arrive behind the filters.
class FocusEdit : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

    QList<Qt::FocusReason> reasons; ///< Why the focus came.
    int focusOuts = 0;

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        reasons << event->reason();
        QLineEdit::focusInEvent(event);
    }
    void focusOutEvent(QFocusEvent* event) override
    {
        ++focusOuts;
        QLineEdit::focusOutEvent(event);
    }
};

void addFocusReasons()
{
    QTest::addColumn<int>("reason");
    QTest::newRow("mouse") << int(Qt::MouseFocusReason);
    QTest::newRow("tab") << int(Qt::TabFocusReason);
    QTest::newRow("backtab") << int(Qt::BacktabFocusReason);
    QTest::newRow("popup") << int(Qt::PopupFocusReason);
    QTest::newRow("shortcut") << int(Qt::ShortcutFocusReason);
    QTest::newRow("menu bar") << int(Qt::MenuBarFocusReason);
    QTest::newRow("other") << int(Qt::OtherFocusReason);
}

} // namespace

class TestPopupBase : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsAHiddenWindowThatItsOwnerOwns()
    {
        QLineEdit owner;
        const PopupBase popup(&owner);
        QCOMPARE(popup.parentWidget(), &owner);
        QVERIFY(popup.isWindow());
        QVERIFY(popup.isHidden());
    }

    void itLooksAsAllPopupsDo()
    {
        QLineEdit owner;
        const PopupBase popup(&owner);
        QCOMPARE(popup.windowType(), Qt::Tool);
        QVERIFY(popup.windowFlags() & Qt::FramelessWindowHint);
        QCOMPARE(
            popup.styleSheet(), QString("* {  border: 1px solid gray; background-color:white;}"));
        QCOMPARE(popup.contentsMargins(), QMargins(0, 0, 0, 0));
        QVERIFY(isAbout(popup.windowOpacity(), 0.7));
        QVERIFY(popup.testAttribute(Qt::WA_MouseTracking));
        QCOMPARE(popup.sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(popup.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    }

    void itAsksForNoActivationWhenShown()
    {
        QLineEdit owner;
        PopupBase popup(&owner);
        QVERIFY(popup.testAttribute(Qt::WA_ShowWithoutActivating));
    }

    void itDiesWithItsOwner()
    {
        auto owner = std::make_unique<QLineEdit>();
        const QPointer<PopupBase> popup = new PopupBase(owner.get());
        owner.reset();
        QVERIFY(popup.isNull());
    }

    void anOwnerMayOutliveItsPopup()
    {
        QLineEdit owner;
        delete new PopupBase(&owner);
        sendFocus(&owner, QEvent::FocusIn, Qt::TabFocusReason);
        sendFocus(&owner, QEvent::FocusOut, Qt::TabFocusReason);
    }

    void focusInOfTheOwnerShowsIt_data()
    {
        addFocusReasons();
        QTest::newRow("active window") << int(Qt::ActiveWindowFocusReason);
    }
    void focusInOfTheOwnerShowsIt()
    {
        QFETCH(int, reason);
        QLineEdit owner;
        SizedPopup popup(&owner);
        sendFocus(&owner, QEvent::FocusIn, static_cast<Qt::FocusReason>(reason));
        QVERIFY(popup.isVisible());
        QVERIFY(isOnScreen(&popup));
    }

    void focusOutOfTheOwnerHidesIt_data() { addFocusReasons(); }
    void focusOutOfTheOwnerHidesIt()
    {
        QFETCH(int, reason);
        QLineEdit owner;
        SizedPopup popup(&owner);
        sendFocus(&owner, QEvent::FocusIn, Qt::TabFocusReason);
        sendFocus(&owner, QEvent::FocusOut, static_cast<Qt::FocusReason>(reason));
        QVERIFY(popup.isHidden());
    }

    void focusOutBecauseOfAnotherWindowLeavesIt()
    {
        QLineEdit owner;
        SizedPopup popup(&owner);
        sendFocus(&owner, QEvent::FocusIn, Qt::TabFocusReason);
        sendFocus(&owner, QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QVERIFY(popup.isVisible());
    }

    void focusOutToThePopupLeavesIt()
    {
        QLineEdit owner;
        SizedPopup popup(&owner);
        popup.show();
        QApplication::setActiveWindow(&popup);
        popup.setFocus();
        QCOMPARE(QApplication::focusWidget(), &popup);
        sendFocus(&owner, QEvent::FocusOut, Qt::MouseFocusReason);
        QVERIFY(popup.isVisible());
    }

    void itsWindowTakesNoFocusAndItsFlagsStay()
    {
        QLineEdit owner;
        SizedPopup popup(&owner);
        popup.show();
        QVERIFY(popup.windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        QVERIFY(!popup.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    }

    void itGoesWhenItsOwnerIsHidden()
    {
        QLineEdit owner;
        owner.show();
        SizedPopup popup(&owner);
        popup.show();
        owner.hide();
        QVERIFY(popup.isHidden());
    }

    void focusStaysWhereItWent()
    {
        Form form;
        QVERIFY(form.showActive());
        form.owner->setFocus();
        QVERIFY(form.popup->isVisible());
        QCOMPARE(QApplication::focusWidget(), form.owner);
        form.other->setFocus(Qt::TabFocusReason);
        QVERIFY(form.popup->isHidden());
        QCOMPARE(QApplication::focusWidget(), form.other);
    }

    // Hiding a window makes some platforms move the focus.
    void aFocusThatTheHidingMovesComesBackWithTheOtherReason()
    {
        Form form;
        FocusEdit receiver(&form.window);
        FocusEdit thief(&form.window);
        receiver.show();
        thief.show();
        QVERIFY(form.showActive());
        receiver.setFocus(Qt::TabFocusReason);
        form.popup->show();
        form.popup->onHide = [&thief] { thief.setFocus(); };
        sendFocus(form.owner, QEvent::FocusOut, Qt::TabFocusReason);
        QCOMPARE(thief.reasons.size(), decltype(thief.reasons.size())(1));
        QCOMPARE(QApplication::focusWidget(), &receiver);
        QCOMPARE(receiver.reasons.last(), Qt::OtherFocusReason);
    }

    void onlyItsOwnerShowsAndHidesIt()
    {
        QLineEdit owner;
        QLineEdit other;
        SizedPopup popup(&owner);
        other.installEventFilter(&popup);
        sendFocus(&other, QEvent::FocusIn, Qt::TabFocusReason);
        QVERIFY(popup.isHidden());
        popup.show();
        sendFocus(&other, QEvent::FocusOut, Qt::TabFocusReason);
        QVERIFY(popup.isVisible());
    }

    void theOwnerGetsItsEventsToo()
    {
        FocusEdit owner;
        SizedPopup popup(&owner);
        sendFocus(&owner, QEvent::FocusIn, Qt::TabFocusReason);
        QCOMPARE(owner.reasons, QList<Qt::FocusReason>{Qt::TabFocusReason});
        sendFocus(&owner, QEvent::FocusOut, Qt::TabFocusReason);
        QCOMPARE(owner.focusOuts, 1);
    }

    void otherEventsOfTheOwnerChangeNothing()
    {
        QLineEdit owner;
        SizedPopup popup(&owner);
        owner.resize(200, 30);
        QTest::keyClick(&owner, Qt::Key_A);
        QVERIFY(popup.isHidden());
        popup.show();
        owner.resize(100, 30);
        QTest::keyClick(&owner, Qt::Key_A);
        QVERIFY(popup.isVisible());
    }

    void ofAnOwnerOutOfSightItWaits_data()
    {
        QTest::addColumn<bool>("shownInSight");
        QTest::newRow("shown in sight and scrolled away") << true;
        QTest::newRow("shown out of sight") << false;
    }
    void ofAnOwnerOutOfSightItWaits()
    {
        QFETCH(bool, shownInSight);
        Form form;
        QVERIFY(form.showActive());
        const QPoint inSight = form.owner->pos();
        const QPoint outOfSight(10, -200);
        if (!shownInSight)
            form.owner->move(outOfSight);
        form.owner->setFocus();
        QCOMPARE(form.popup->isVisible(), shownInSight);

        form.owner->move(outOfSight);
        form.popup->followOwner();
        QVERIFY(form.popup->isHidden());
        form.popup->show();
        QVERIFY(form.popup->isHidden());

        form.owner->move(inSight);
        form.popup->followOwner();
        QVERIFY(form.popup->isVisible());
        QVERIFY(isOnScreen(form.popup));
    }

    void hiddenItDoesNotComeWithItsOwner_data()
    {
        QTest::addColumn<bool>("byFocus");
        QTest::newRow("hidden by the program") << false;
        QTest::newRow("hidden because the owner lost the focus") << true;
    }
    void hiddenItDoesNotComeWithItsOwner()
    {
        QFETCH(bool, byFocus);
        Form form;
        QVERIFY(form.showActive());
        const QPoint inSight = form.owner->pos();
        form.owner->move(10, -200);
        form.owner->setFocus();
        if (byFocus)
            form.other->setFocus();
        else
            form.popup->hide();
        form.owner->move(inSight);
        form.popup->followOwner();
        QVERIFY(form.popup->isHidden());
    }

    // Window managers minimise popups with their window, before or after the hide.
    void itIsNeverShownMinimised_data()
    {
        QTest::addColumn<bool>("hidden");
        QTest::newRow("minimised while it stands") << false;
        QTest::newRow("minimised and hidden") << true;
    }
    void itIsNeverShownMinimised()
    {
        QFETCH(bool, hidden);
        QLineEdit owner;
        SizedPopup popup(&owner);
        popup.show();
        popup.setWindowState(Qt::WindowMinimized);
        if (hidden)
            popup.hide();
        sendFocus(&owner, QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QVERIFY(popup.isVisible());
        QVERIFY(!popup.isMinimized());
        QVERIFY(!popup.windowHandle()->windowStates().testFlag(Qt::WindowMinimized));
    }

    void deactivationOfItsWindowHidesIt()
    {
        QLineEdit owner;
        SizedPopup popup(&owner);
        popup.show();
        QEvent event(QEvent::WindowDeactivate);
        QCoreApplication::sendEvent(&popup, &event);
        QVERIFY(popup.isHidden());
    }

    void aSwitchToAnotherWindowHidesIt()
    {
        QWidget another;
        another.show();
        Form form;
        QVERIFY(form.showActive());
        form.owner->setFocus();
        QVERIFY(form.popup->isVisible());
        QApplication::setActiveWindow(&another);
        QVERIFY(form.popup->isHidden());
    }

    void theMouseMakesItClearer()
    {
        QLineEdit owner;
        SizedPopup popup(&owner);
        popup.show();
        sendEnter(&popup);
        QVERIFY(isAbout(popup.windowOpacity(), 0.9));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&popup, &leave);
        QVERIFY(isAbout(popup.windowOpacity(), 0.7));
    }

    void withNothingToShowItIsNotOnTheScreen_data()
    {
        QTest::addColumn<QSize>("hint");
        QTest::addColumn<bool>("onScreen");
        QTest::newRow("a size") << QSize(60, 20) << true;
        QTest::newRow("one pixel") << QSize(1, 1) << true;
        QTest::newRow("the size (0, 0)") << QSize(0, 0) << false;
    }
    void withNothingToShowItIsNotOnTheScreen()
    {
        QFETCH(QSize, hint);
        QFETCH(bool, onScreen);
        QLineEdit owner;
        SizedPopup popup(&owner);
        popup.hint = hint;
        sendFocus(&owner, QEvent::FocusIn, Qt::TabFocusReason);
        QCOMPARE(popup.size(), hint);
        QCOMPARE(isOnScreen(&popup), onScreen);
        sendFocus(&owner, QEvent::FocusOut, Qt::TabFocusReason);
        QVERIFY(popup.isHidden());
        QVERIFY(!isOnScreen(&popup));
    }

    // A size that is set before there is a native window takes another way in Qt.
    void sizedToNothingBeforeItsFirstShowItIsNotOnTheScreen()
    {
        QLineEdit owner;
        SizedPopup popup(&owner);
        popup.hint = QSize(0, 0);
        popup.resize(0, 0);
        popup.show();
        QVERIFY(!isOnScreen(&popup));
    }

    void itComesAndGoesWithItsContent()
    {
        QLineEdit owner;
        SizedPopup popup(&owner);
        for (const QSize size : {QSize(60, 20), QSize(0, 0), QSize(30, 10)}) {
            popup.hint = size;
            popup.resize(size);
            popup.show();
            QCOMPARE(isOnScreen(&popup), !size.isEmpty());
            popup.hide();
            QVERIFY(!isOnScreen(&popup));
        }
    }
};

VRN_TEST(TestPopupBase)
#include "tst_popup_base.moc"
