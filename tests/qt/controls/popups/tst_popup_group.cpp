#include "controls/popups/popup_group_p.h"

#include <QApplication>
#include <QScreen>
#include <QSignalSpy>

#include "controls/line_edits/line_edit_impl_p.h"
#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "qt/controls/popups/popup_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <memory>

using namespace vrn::test;
using vrn::qt::detail::EditHintPopup;
using vrn::qt::detail::HistoryPopup;
using vrn::qt::detail::LineEditImpl;
using vrn::qt::detail::PopupGroup;

namespace {

// A frameless window of the given height, whose position is therefore exact.
QWidget* makeWindow(QWidget* parent, int height)
{
    auto* window = new QWidget(parent, Qt::Tool | Qt::FramelessWindowHint);
    window->resize(50, height);
    return window;
}

const QPoint farAway(700, 500);

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
        for (QWidget* popup : popups)
            popup->move(farAway);
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

    // Where they stand below the edit with a gap of 5, or where the fixture has put them.
    QList<QPoint> due(bool stacked) const
    {
        QList<QPoint> result;
        QPoint p = below();
        for (const QWidget* popup : popups) {
            if (popup)
                result << (stacked ? p : farAway);
            p.ry() += popup ? popup->height() + 5 : 0;
        }
        return result;
    }

    QList<QPoint> stacked() const { return due(true); }
    QList<QPoint> scattered() const { return due(false); }
    void focusEdit() const { sendFocus(edit, QEvent::FocusIn); }

    QWidget window;
    QLineEdit* edit;
    PopupGroup* group;
    QWidget* popups[3];
};

// A window with a field that has a history, and another field.
struct LineEditForm : OwnerForm<LineEditImpl>
{
    LineEditForm()
        : OwnerForm(new LineEditImpl(0))
    {
        owner->setValueHistory(historyOf({"1"}));
    }

    bool showWithFocus()
    {
        const bool active = showActive();
        owner->setFocus();
        return active && owner->hasFocus();
    }

    EditHintPopup* hint() const { return owner->findChild<EditHintPopup*>(); }
    HistoryPopup* history() const { return owner->findChild<HistoryPopup*>(); }
    bool hasBothPopups() const { return hint()->isVisible() && history()->isVisible(); }
    bool hasNoPopup() const { return hint()->isHidden() && history()->isHidden(); }
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
        edit->resize(80, 30); // It has no popups to move.
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
        f.popups[0]->setFixedSize(0, 0);
        f.focusEdit();
        QCOMPARE(f.popups[1]->pos(), p + QPoint(0, 5));
    }

    void eventsReposition_data()
    {
        columns<QString, int, bool, bool>("watched", "type", "atOnce", "later");
        row("Move of the edit", "edit", int(QEvent::Move), true, true);
        row("Resize of the edit", "edit", int(QEvent::Resize), true, true);
        row("FocusIn of the edit", "edit", int(QEvent::FocusIn), true, true);
        row("FocusOut of the edit", "edit", int(QEvent::FocusOut), false, false);
        row("Show of the edit", "edit", int(QEvent::Show), false, false);
        row("Enter of the edit", "edit", int(QEvent::Enter), false, false);
        row("KeyPress of the edit", "edit", int(QEvent::KeyPress), false, false);
        // A popup has its final size only after its show.
        row("Show of a popup", "popup", int(QEvent::Show), false, true);
        row("Move of a popup", "popup", int(QEvent::Move), false, false);
        row("Resize of a popup", "popup", int(QEvent::Resize), false, false);
        row("FocusIn of a popup", "popup", int(QEvent::FocusIn), false, false);
        row("Hide of a popup", "popup", int(QEvent::Hide), false, false);
        row("Move of a stranger", "stranger", int(QEvent::Move), false, false);
        row("Resize of a stranger", "stranger", int(QEvent::Resize), false, false);
        row("FocusIn of a stranger", "stranger", int(QEvent::FocusIn), false, false);
        row("Show of a stranger", "stranger", int(QEvent::Show), false, false);
    }
    void eventsReposition()
    {
        QFETCH(QString, watched);
        QFETCH(int, type);
        QFETCH(bool, atOnce);
        QFETCH(bool, later);
        const Fixture f;
        QLineEdit stranger;
        QWidget* object = watched == "edit" ? f.edit : &stranger;
        if (watched == "popup")
            object = f.popups[1];
        QEvent event(static_cast<QEvent::Type>(type));
        QVERIFY2(!f.group->eventFilter(object, &event), "the event passes");
        QCOMPARE(f.positions(), f.due(atOnce));
        QTest::qWait(10);
        QCOMPARE(f.positions(), f.due(later));
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
        columns<int>("generations");
        row("its parent", 1);
        row("its parent's parent", 2);
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

    void manyMovesAreSignalledOnce()
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
        row("room for all", 100, QList<int>{0, 25, 60});
        row("a pixel too little for the last", 99, QList<int>{0, 25, -40});
        row("room for the first", 20, QList<int>{0, -30, -75});
        row("no room", 0, QList<int>{-20, -55, -100});
        row("an edit half out of the screen", -12, QList<int>{-20, -55, -100});
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

    void withoutRoomAnywherePopupsStackBelow()
    {
        const QRect screen = QApplication::primaryScreen()->availableGeometry();
        const Fixture f;
        for (QWidget* popup : f.popups)
            popup->resize(50, screen.height());
        f.focusEdit();
        QCOMPARE(f.positions(), f.stacked());
    }

    void aPopupThatIsShownRepositionsAfterTheShow_data() { addPopups(); }
    void aPopupThatIsShownRepositionsAfterTheShow()
    {
        QFETCH(int, popup);
        const Fixture f;
        f.popups[popup]->show();
        QCOMPARE(f.positions(), f.scattered());
        f.popups[popup]->resize(50, 77);
        QTRY_COMPARE(f.positions(), f.stacked());
    }

    void aPopupThatIsGoneLeavesNoGap_data() { addPopups(); }
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

    // The hint was shown empty, so Qt sends no event for its second show().
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
        form.owner->showEditHint("from 1 to 100");
        QVERIFY(form.hasBothPopups());
        const QPoint p = form.owner->mapToGlobal(QPoint(0, form.owner->height()));
        QTRY_COMPARE(form.hint()->pos(), p);
        QTRY_COMPARE(form.history()->pos(), p + QPoint(0, form.hint()->height() + 5));
    }

    void withoutAHintTheHistoryKeepsItsGapBelowTheField()
    {
        LineEditForm form;
        QVERIFY(form.showWithFocus());
        QVERIFY(form.history()->isVisible());
        QTRY_COMPARE(
            form.history()->pos(), form.owner->mapToGlobal(QPoint(0, form.owner->height() + 5)));
    }

    void aHintThatGrowsAboveTheEditDoesNotCoverIt()
    {
        LineEditForm form;
        form.window.move(100, QApplication::primaryScreen()->availableGeometry().bottom() - 60);
        QVERIFY(form.showWithFocus());
        form.owner->showEditHint("from 1 to 100");
        const EditHintPopup* hint = form.hint();
        const auto top = [&form] { return form.owner->mapToGlobal(QPoint(0, 0)).y(); };
        QTRY_COMPARE(hint->geometry().bottom() + 1, top());
        form.owner->showEditHint("from 1\nto 100\nor nothing");
        QCOMPARE(hint->geometry().bottom() + 1, top());
    }

    void leavingTheFieldForAnotherHidesBoth()
    {
        LineEditForm form;
        QVERIFY(form.showWithFocus());
        form.owner->showEditHint("from 1 to 100");
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
        form.owner->showEditHint("from 1 to 100");
        QVERIFY(form.hasBothPopups());
        QApplication::setActiveWindow(&another);
        QVERIFY(form.hasNoPopup());
    }

private:
    static void addPopups()
    {
        columns<int>("popup");
        row("the first", 0);
        row("the second", 1);
        row("the last", 2);
    }
};

VRN_TEST(TestPopupGroup)
#include "tst_popup_group.moc"
