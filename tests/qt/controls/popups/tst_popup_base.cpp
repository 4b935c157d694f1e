#include "controls/popups/popup_base_p.h"

#include <QApplication>
#include <QEnterEvent>
#include <QPointer>

#include "qt/controls/popups/popup_fixture.h"
#include "support/table.h"
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

// A field that stands by itself.
struct Fixture
{
    QLineEdit owner;
    SizedPopup popup{&owner};
};

// Two fields in a window, one of which has a popup.
struct Form : OwnerForm<QLineEdit>
{
    SizedPopup* popup = new SizedPopup(owner);
};

// Opacity is kept in 255 steps.
bool isAbout(qreal opacity, qreal expected)
{
    return qAbs(opacity - expected) < 1.0 / 255;
}

// Notes the focus events that the filters let pass.
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

} // namespace

class TestPopupBase : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsAHiddenTranslucentWindowOfItsOwner()
    {
        QLineEdit owner;
        const PopupBase popup(&owner);
        QCOMPARE(popup.parentWidget(), &owner);
        QVERIFY(popup.isHidden());
        QCOMPARE(popup.windowType(), Qt::Tool);
        QVERIFY(popup.windowFlags() & Qt::FramelessWindowHint);
        QCOMPARE(
            popup.styleSheet(), QString("* {  border: 1px solid gray; background-color:white;}"));
        QCOMPARE(popup.contentsMargins(), QMargins(0, 0, 0, 0));
        QVERIFY(isAbout(popup.windowOpacity(), 0.7));
        QVERIFY(popup.testAttribute(Qt::WA_MouseTracking));
        QVERIFY(popup.testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(popup.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
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
        sendFocus(&owner, QEvent::FocusIn);
        sendFocus(&owner, QEvent::FocusOut);
    }

    void theFocusOfTheOwnerShowsAndHidesIt_data()
    {
        columns<int, bool>("reason", "hides");
        row("mouse", int(Qt::MouseFocusReason), true);
        row("tab", int(Qt::TabFocusReason), true);
        row("backtab", int(Qt::BacktabFocusReason), true);
        row("popup", int(Qt::PopupFocusReason), true);
        row("shortcut", int(Qt::ShortcutFocusReason), true);
        row("menu bar", int(Qt::MenuBarFocusReason), true);
        row("other", int(Qt::OtherFocusReason), true);
        row("another window becomes active", int(Qt::ActiveWindowFocusReason), false);
    }
    void theFocusOfTheOwnerShowsAndHidesIt()
    {
        QFETCH(int, reason);
        QFETCH(bool, hides);
        Fixture f;
        sendFocus(&f.owner, QEvent::FocusIn, static_cast<Qt::FocusReason>(reason));
        QVERIFY(f.popup.isVisible());
        QVERIFY(isOnScreen(&f.popup));
        sendFocus(&f.owner, QEvent::FocusOut, static_cast<Qt::FocusReason>(reason));
        QCOMPARE(f.popup.isHidden(), hides);
    }

    void focusOutToThePopupLeavesIt()
    {
        Fixture f;
        f.popup.show();
        QApplication::setActiveWindow(&f.popup);
        f.popup.setFocus();
        QCOMPARE(QApplication::focusWidget(), &f.popup);
        sendFocus(&f.owner, QEvent::FocusOut, Qt::MouseFocusReason);
        QVERIFY(f.popup.isVisible());
    }

    void itsWindowTakesNoFocusAndItsFlagsStay()
    {
        Fixture f;
        f.popup.show();
        QVERIFY(f.popup.windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        QVERIFY(!f.popup.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    }

    void itGoesWhenItsOwnerIsHidden()
    {
        Fixture f;
        f.owner.show();
        f.popup.show();
        f.owner.hide();
        QVERIFY(f.popup.isHidden());
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
        sendFocus(form.owner, QEvent::FocusOut);
        QCOMPARE(thief.reasons.size(), decltype(thief.reasons.size())(1));
        QCOMPARE(QApplication::focusWidget(), &receiver);
        QCOMPARE(receiver.reasons.last(), Qt::OtherFocusReason);
    }

    void onlyItsOwnerShowsAndHidesIt()
    {
        Fixture f;
        QLineEdit other;
        other.installEventFilter(&f.popup);
        sendFocus(&other, QEvent::FocusIn);
        QVERIFY(f.popup.isHidden());
        f.popup.show();
        sendFocus(&other, QEvent::FocusOut);
        QVERIFY(f.popup.isVisible());
    }

    void theOwnerGetsItsEventsToo()
    {
        FocusEdit owner;
        SizedPopup popup(&owner);
        sendFocus(&owner, QEvent::FocusIn);
        QCOMPARE(owner.reasons, QList<Qt::FocusReason>{Qt::TabFocusReason});
        sendFocus(&owner, QEvent::FocusOut);
        QCOMPARE(owner.focusOuts, 1);
    }

    void otherEventsOfTheOwnerChangeNothing()
    {
        Fixture f;
        f.owner.resize(200, 30);
        QTest::keyClick(&f.owner, Qt::Key_A);
        QVERIFY(f.popup.isHidden());
        f.popup.show();
        f.owner.resize(100, 30);
        QTest::keyClick(&f.owner, Qt::Key_A);
        QVERIFY(f.popup.isVisible());
    }

    void itWaitsWhileItsOwnerIsOutOfSight_data()
    {
        columns<bool>("shownInSight");
        row("shown in sight and scrolled away", true);
        row("shown out of sight", false);
    }
    void itWaitsWhileItsOwnerIsOutOfSight()
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

    void aHiddenPopupStaysHiddenWhenItsOwnerComesIntoSight_data()
    {
        columns<bool>("byFocus");
        row("hidden by the program", false);
        row("hidden because the owner lost the focus", true);
    }
    void aHiddenPopupStaysHiddenWhenItsOwnerComesIntoSight()
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
        columns<bool>("hidden");
        row("minimised while it is shown", false);
        row("minimised and hidden", true);
    }
    void itIsNeverShownMinimised()
    {
        QFETCH(bool, hidden);
        Fixture f;
        f.popup.show();
        f.popup.setWindowState(Qt::WindowMinimized);
        if (hidden)
            f.popup.hide();
        sendFocus(&f.owner, QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QVERIFY(f.popup.isVisible());
        QVERIFY(!f.popup.isMinimized());
        QVERIFY(!f.popup.windowHandle()->windowStates().testFlag(Qt::WindowMinimized));
    }

    void deactivationOfItsWindowHidesIt()
    {
        Fixture f;
        f.popup.show();
        QEvent event(QEvent::WindowDeactivate);
        QCoreApplication::sendEvent(&f.popup, &event);
        QVERIFY(f.popup.isHidden());
    }

    void theMouseMakesItClearer()
    {
        Fixture f;
        f.popup.show();
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QCoreApplication::sendEvent(&f.popup, &enter);
        QVERIFY(isAbout(f.popup.windowOpacity(), 0.9));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&f.popup, &leave);
        QVERIFY(isAbout(f.popup.windowOpacity(), 0.7));
    }

    void itIsOnTheScreenIfItHasSomethingToShow_data()
    {
        columns<QSize, bool, bool>("hint", "sizedFirst", "onScreen");
        row("a size", QSize(60, 20), false, true);
        row("one pixel", QSize(1, 1), false, true);
        row("the size (0, 0)", QSize(0, 0), false, false);
        // Qt does something else here.
        row("a size (0, 0) that is set before there is a window", QSize(0, 0), true, false);
    }
    void itIsOnTheScreenIfItHasSomethingToShow()
    {
        QFETCH(QSize, hint);
        QFETCH(bool, sizedFirst);
        QFETCH(bool, onScreen);
        Fixture f;
        f.popup.hint = hint;
        if (sizedFirst)
            f.popup.resize(hint);
        sendFocus(&f.owner, QEvent::FocusIn);
        QCOMPARE(f.popup.size(), hint);
        QCOMPARE(isOnScreen(&f.popup), onScreen);
        sendFocus(&f.owner, QEvent::FocusOut);
        QVERIFY(f.popup.isHidden());
        QVERIFY(!isOnScreen(&f.popup));
    }

    void itComesAndGoesWithItsContent()
    {
        Fixture f;
        for (const QSize size : {QSize(60, 20), QSize(0, 0), QSize(30, 10)}) {
            f.popup.hint = size;
            f.popup.resize(size);
            f.popup.show();
            QCOMPARE(isOnScreen(&f.popup), !size.isEmpty());
            f.popup.hide();
            QVERIFY(!isOnScreen(&f.popup));
        }
    }
};

VRN_TEST(TestPopupBase)
#include "tst_popup_base.moc"
