#include "controls/popups/popup_group_p.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QVBoxLayout>

#include "controls/line_edits/line_edit_impl_p.h"
#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <memory>

using namespace vrn::test;
using vrn::ValueHistory;
using vrn::qt::detail::EditHintPopup;
using vrn::qt::detail::HistoryPopup;
using vrn::qt::detail::LineEditImpl;
using vrn::qt::detail::PopupGroup;

namespace {

// A frameless window of the given height. Its position is its own.
QWidget* makeWindow(QWidget* parent, int height)
{
    auto* window = new QWidget(parent, Qt::Tool | Qt::FramelessWindowHint);
    window->resize(50, height);
    return window;
}

void sendFocus(QWidget* receiver, QEvent::Type type)
{
    QFocusEvent event(type, Qt::TabFocusReason);
    QCoreApplication::sendEvent(receiver, &event);
}

// A field in a window, with a group of three popups far from their places.
struct Fixture
{
    Fixture()
        : edit(new QLineEdit(&window))
        , group(new PopupGroup(edit))
        , popups{makeWindow(edit, 20), makeWindow(edit, 30), makeWindow(edit, 40)}
    {
        window.setGeometry(100, 100, 400, 300);
        edit->setGeometry(10, 20, 120, 24);
        for (QWidget* popup : popups)
            group->add(popup);
        window.show();
        QCoreApplication::processEvents();
        scatter();
    }

    void scatter()
    {
        for (QWidget* popup : popups) {
            if (popup)
                popup->move(700, 500);
        }
    }

    QPoint below() const { return edit->mapToGlobal(QPoint(0, edit->height())); }

    QList<QPoint> positions() const
    {
        QList<QPoint> result;
        for (const QWidget* popup : popups) {
            if (popup)
                result << popup->pos();
        }
        return result;
    }

    QList<QPoint> stacked() const
    {
        QList<QPoint> result;
        QPoint p = below();
        for (const QWidget* popup : popups) {
            if (!popup)
                continue;
            result << p;
            p.ry() += popup->height() + 5;
        }
        return result;
    }

    QList<QPoint> scattered() const
    {
        QList<QPoint> result;
        while (result.size() < positions().size())
            result << QPoint(700, 500);
        return result;
    }

    void focusEdit() const { sendFocus(edit, QEvent::FocusIn); }

    QWidget window;
    QLineEdit* edit;
    PopupGroup* group;
    QWidget* popups[3];
};

} // namespace

class TestPopupGroup : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itBelongsToTheEdit()
    {
        auto edit = std::make_unique<QLineEdit>();
        const QPointer<PopupGroup> group = new PopupGroup(edit.get());
        QCOMPARE(group->parent(), edit.get());
        edit.reset();
        QVERIFY(group.isNull());
    }

    void popupsStackBelowTheEditWithAGapOfFive()
    {
        const Fixture f;
        f.focusEdit();
        const QPoint p = f.edit->mapToGlobal(QPoint(0, 24));
        QCOMPARE(f.popups[0]->pos(), p);
        QCOMPARE(f.popups[1]->pos(), p + QPoint(0, 20 + 5));
        QCOMPARE(f.popups[2]->pos(), p + QPoint(0, 20 + 5 + 30 + 5));
    }

    void aPopupOfNoHeightKeepsItsGap()
    {
        const Fixture f;
        f.popups[0]->setFixedSize(0, 0);
        f.focusEdit();
        QCOMPARE(f.popups[0]->pos(), f.below());
        QCOMPARE(f.popups[1]->pos(), f.below() + QPoint(0, 5));
    }

    void popupsStackWhetherTheyAreShownOrNot()
    {
        const Fixture f;
        f.popups[1]->show();
        f.popups[1]->move(700, 500);
        f.focusEdit();
        QCOMPARE(f.positions(), f.stacked());
    }

    void theEditsEventsReposition_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("repositions");
        QTest::newRow("Move") << int(QEvent::Move) << true;
        QTest::newRow("Resize") << int(QEvent::Resize) << true;
        QTest::newRow("FocusIn") << int(QEvent::FocusIn) << true;
        QTest::newRow("FocusOut") << int(QEvent::FocusOut) << false;
        QTest::newRow("Show") << int(QEvent::Show) << false;
        QTest::newRow("Enter") << int(QEvent::Enter) << false;
        QTest::newRow("KeyPress") << int(QEvent::KeyPress) << false;
    }
    void theEditsEventsReposition()
    {
        QFETCH(int, type);
        QFETCH(bool, repositions);
        const Fixture f;
        QEvent event(static_cast<QEvent::Type>(type));
        QVERIFY(!f.group->eventFilter(f.edit, &event));
        QCOMPARE(f.positions(), repositions ? f.stacked() : f.scattered());
        QCoreApplication::processEvents();
        QCOMPARE(f.positions(), repositions ? f.stacked() : f.scattered());
    }

    void popupsFollowTheEdit()
    {
        const Fixture f;
        f.edit->move(40, 50);
        QCOMPARE(f.positions(), f.stacked());
        QCOMPARE(f.below(), f.window.mapToGlobal(QPoint(40, 50 + 24)));
        f.edit->resize(120, 60);
        QCOMPARE(f.positions(), f.stacked());
        QCOMPARE(f.below(), f.window.mapToGlobal(QPoint(40, 50 + 60)));
    }

    void shownPopupsFollowTheWindow()
    {
        Fixture f;
        f.popups[0]->show();
        QTRY_COMPARE(f.positions(), f.stacked());
        const QPoint before = f.below();
        f.window.move(180, 150);
        QTRY_VERIFY(f.below() != before);
        QTRY_COMPARE(f.positions(), f.stacked());
    }

    void popupsFollowWhatTheEditStandsIn_data()
    {
        QTest::addColumn<int>("generations");
        QTest::newRow("its parent") << 1;
        QTest::newRow("its parent's parent") << 2;
    }
    void popupsFollowWhatTheEditStandsIn()
    {
        QFETCH(int, generations);
        QWidget window;
        auto* outer = new QWidget(&window);
        auto* inner = new QWidget(outer);
        auto* edit = new QLineEdit(inner);
        PopupGroup group(edit);
        const std::unique_ptr<QWidget> popup(makeWindow(nullptr, 20));
        group.add(popup.get());
        QSignalSpy moved(&group, &PopupGroup::editMoved);
        const auto below = [edit] { return edit->mapToGlobal(QPoint(0, edit->height())); };
        QWidget* ancestor = generations == 1 ? inner : outer;
        window.resize(400, 300);
        window.show();
        QCoreApplication::processEvents();

        sendFocus(edit, QEvent::FocusIn);
        ancestor->move(60, 70);
        QCOMPARE(popup->pos(), below());
        QTRY_COMPARE(moved.count(), 1);
        ancestor->resize(50, 15);
        QTRY_COMPARE(moved.count(), 2);

        sendFocus(edit, QEvent::FocusOut);
        const QPoint before = popup->pos();
        ancestor->move(0, 0);
        QTest::qWait(10);
        QCOMPARE(popup->pos(), before);
        QCOMPARE(moved.count(), 2);
    }

    void manyMovesAreToldOnce()
    {
        const Fixture f;
        QSignalSpy moved(f.group, &PopupGroup::editMoved);
        f.edit->move(40, 50);
        f.edit->resize(120, 60);
        f.edit->move(10, 20);
        QCOMPARE(moved.count(), 0);
        QTRY_COMPARE(moved.count(), 1);
        QTest::qWait(10);
        QCOMPARE(moved.count(), 1);
    }

    // The popups of the fixture are 20, 30 and 40 pixels high; that is 100 with gaps.
    void withoutRoomBelowPopupsStackAboveTheEdit_data()
    {
        QTest::addColumn<int>("room");
        QTest::addColumn<QList<int>>("places"); // Below the edit, or above it if negative.
        QTest::newRow("room for all") << 100 << QList<int>{0, 25, 60};
        QTest::newRow("a pixel too little for the last") << 99 << QList<int>{0, 25, -40};
        QTest::newRow("room for the first") << 20 << QList<int>{0, -30, -75};
        QTest::newRow("no room") << 0 << QList<int>{-20, -55, -100};
        QTest::newRow("an edit half out of the screen") << -12 << QList<int>{-20, -55, -100};
    }
    void withoutRoomBelowPopupsStackAboveTheEdit()
    {
        QFETCH(int, room);
        QFETCH(QList<int>, places);
        const QRect screen = QApplication::primaryScreen()->availableGeometry();
        Fixture f;
        f.window.move(f.window.pos() + QPoint(0, screen.bottom() + 1 - room - f.below().y()));
        QCOMPARE(f.below().y(), screen.bottom() + 1 - room);
        f.focusEdit();
        const int bottom = f.below().y();
        const int top = bottom - f.edit->height();
        QList<int> found;
        for (const QWidget* popup : f.popups)
            found << popup->y() - (popup->y() < bottom ? top : bottom);
        QCOMPARE(found, places);
    }

    void withoutRoomAboveEitherPopupsStackBelow()
    {
        const QRect screen = QApplication::primaryScreen()->availableGeometry();
        const Fixture f;
        for (QWidget* popup : f.popups)
            popup->resize(50, screen.height());
        f.focusEdit();
        QCOMPARE(f.positions(), f.stacked());
    }

    // Only then has a popup the size that it will have.
    void aPopupThatIsShownRepositionsAfterTheShow_data()
    {
        QTest::addColumn<int>("popup");
        QTest::newRow("the first") << 0;
        QTest::newRow("the second") << 1;
        QTest::newRow("the last") << 2;
    }
    void aPopupThatIsShownRepositionsAfterTheShow()
    {
        QFETCH(int, popup);
        const Fixture f;
        f.popups[popup]->show();
        QCOMPARE(f.positions(), f.scattered());
        f.popups[popup]->resize(50, 77);
        QTRY_COMPARE(f.positions(), f.stacked());
    }

    void otherEventsOfAPopupChangeNothing_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("Move") << int(QEvent::Move);
        QTest::newRow("Resize") << int(QEvent::Resize);
        QTest::newRow("FocusIn") << int(QEvent::FocusIn);
        QTest::newRow("Hide") << int(QEvent::Hide);
    }
    void otherEventsOfAPopupChangeNothing()
    {
        QFETCH(int, type);
        const Fixture f;
        QEvent event(static_cast<QEvent::Type>(type));
        QVERIFY(!f.group->eventFilter(f.popups[1], &event));
        QTest::qWait(10);
        QCOMPARE(f.positions(), f.scattered());
    }

    void strangersChangeNothing_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("Move") << int(QEvent::Move);
        QTest::newRow("Resize") << int(QEvent::Resize);
        QTest::newRow("FocusIn") << int(QEvent::FocusIn);
        QTest::newRow("Show") << int(QEvent::Show);
    }
    void strangersChangeNothing()
    {
        QFETCH(int, type);
        const Fixture f;
        QLineEdit stranger;
        QEvent event(static_cast<QEvent::Type>(type));
        QVERIFY(!f.group->eventFilter(&stranger, &event));
        QTest::qWait(10);
        QCOMPARE(f.positions(), f.scattered());
    }

    void aShowPassesOn()
    {
        const Fixture f;
        QShowEvent event;
        QVERIFY(!f.group->eventFilter(f.popups[0], &event));
    }

    void aPopupThatIsGoneLeavesNoGap_data()
    {
        QTest::addColumn<int>("popup");
        QTest::newRow("the first") << 0;
        QTest::newRow("the second") << 1;
        QTest::newRow("the last") << 2;
    }
    void aPopupThatIsGoneLeavesNoGap()
    {
        QFETCH(int, popup);
        Fixture f;
        delete f.popups[popup];
        f.popups[popup] = nullptr;
        f.focusEdit();
        QCOMPARE(f.positions().size(), decltype(f.positions().size())(2));
        QCOMPARE(f.positions(), f.stacked());
    }

    void aPopupMayGoBetweenItsShowAndTheRepositioning()
    {
        Fixture f;
        f.popups[0]->show();
        delete f.popups[0];
        f.popups[0] = nullptr;
        QTRY_COMPARE(f.positions(), f.stacked());
    }

    void theGroupMayGoBetweenAShowAndTheRepositioning()
    {
        Fixture f;
        f.popups[0]->show();
        delete f.group;
        QTest::qWait(10);
        QCOMPARE(f.positions(), f.scattered());
    }

    void aGroupWithoutPopupsIsFine()
    {
        QLineEdit edit;
        new PopupGroup(&edit);
        edit.resize(80, 30);
        edit.move(5, 5);
    }

    // The hint stood empty, so its show() is none that Qt would tell of.
    void aHintThatComesLaterMovesTheHistoryDown()
    {
        QLineEdit edit;
        auto* hint = new EditHintPopup(&edit);
        auto* history = new HistoryPopup(&edit);
        auto* group = new PopupGroup(&edit);
        group->add(hint);
        group->add(history);
        const QPoint below = edit.mapToGlobal(QPoint(0, edit.height()));
        hint->show();
        QTRY_COMPARE(history->pos(), below + QPoint(0, 5));
        hint->setHint("from 1 to 100");
        hint->show();
        QVERIFY(hint->height() > 0);
        QTRY_COMPARE(history->pos(), below + QPoint(0, hint->height() + 5));
    }

    void theHintStandsAboveTheHistory()
    {
        LineEditForm form;
        QVERIFY(form.showWithFocus());
        form.edit->showEditHint("from 1 to 100");
        auto* hint = form.edit->findChild<EditHintPopup*>();
        auto* history = form.edit->findChild<HistoryPopup*>();
        QVERIFY(hint && hint->isVisible());
        QVERIFY(history && history->isVisible());
        const QPoint p = form.edit->mapToGlobal(QPoint(0, form.edit->height()));
        QTRY_COMPARE(hint->pos(), p);
        QTRY_COMPARE(history->pos(), p + QPoint(0, hint->height() + 5));
    }

    void aHintThatGrowsAboveTheEditDoesNotCoverIt()
    {
        LineEditForm form;
        form.window.move(100, QApplication::primaryScreen()->availableGeometry().bottom() - 60);
        QVERIFY(form.showWithFocus());
        form.edit->showEditHint("from 1 to 100");
        auto* hint = form.edit->findChild<EditHintPopup*>();
        const auto top = [&form] { return form.edit->mapToGlobal(QPoint(0, 0)).y(); };
        QTRY_COMPARE(hint->geometry().bottom() + 1, top());
        form.edit->showEditHint("from 1\nto 100\nor nothing");
        QCOMPARE(hint->geometry().bottom() + 1, top());
    }

    void withoutAHintTheHistoryKeepsItsGapBelowTheField()
    {
        LineEditForm form;
        QVERIFY(form.showWithFocus());
        auto* history = form.edit->findChild<HistoryPopup*>();
        QVERIFY(history && history->isVisible());
        QTRY_COMPARE(history->pos(), form.edit->mapToGlobal(QPoint(0, form.edit->height() + 5)));
    }

    void leavingTheFieldForAnotherHidesBoth()
    {
        LineEditForm form;
        QVERIFY(form.showWithFocus());
        form.edit->showEditHint("from 1 to 100");
        QVERIFY(form.hasBothPopups());
        form.other->setFocus(Qt::TabFocusReason);
        QVERIFY(form.hasNoPopup());
        QCOMPARE(QApplication::focusWidget(), form.other);
    }

    void switchingToAnotherWindowHidesBoth()
    {
        QWidget another;
        another.show();
        LineEditForm form;
        QVERIFY(form.showWithFocus());
        form.edit->showEditHint("from 1 to 100");
        QVERIFY(form.hasBothPopups());
        QApplication::setActiveWindow(&another);
        QVERIFY(form.hasNoPopup());
    }

private:
    // A window with a field that has a history, and another field. The offscreen
    // platform makes any window active that is shown, popups too, once events are
    // processed; tests look before that.
    struct LineEditForm
    {
        LineEditForm()
            : other(new QLineEdit(&window))
            , edit(new LineEditImpl(0, &window))
        {
            auto* layout = new QVBoxLayout(&window);
            layout->addWidget(other);
            layout->addWidget(edit);
            const auto history = ValueHistory::create(L"", L"a key of this test");
            history->add(L"1");
            edit->setValueHistory(history);
        }

        bool showWithFocus()
        {
            window.show();
            window.activateWindow();
            other->setFocus();
            if (!QTest::qWaitForWindowActive(&window))
                return false;
            edit->setFocus();
            return edit->hasFocus();
        }

        bool hasBothPopups() const
        {
            return edit->findChild<EditHintPopup*>()->isVisible()
                && edit->findChild<HistoryPopup*>()->isVisible();
        }

        bool hasNoPopup() const
        {
            return edit->findChild<EditHintPopup*>()->isHidden()
                && edit->findChild<HistoryPopup*>()->isHidden();
        }

        QWidget window;
        QLineEdit* other;
        LineEditImpl* edit;
    };
};

VRN_TEST(TestPopupGroup)
#include "tst_popup_group.moc"
