#include "controls/popups/edit_hint_popup_p.h"

#include <QLabel>
#include <QMouseEvent>
#include <QSignalSpy>

#include "qt/controls/popups/popup_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::test;
using vrn::qt::detail::EditHintPopup;

namespace {

struct Fixture
{
    Fixture()
        : popup(new EditHintPopup(&owner))
        , label(popup->findChild<QLabel*>())
    {}

    QLineEdit owner;
    EditHintPopup* popup;
    QLabel* label;
};

// An active window with a field that has the focus and a hint, which covers another field.
class PressedForm : public QObject
{
public:
    PressedForm()
        : owner(new QLineEdit(&window))
        , below(new QLineEdit(&window))
        , hint(new EditHintPopup(owner))
    {
        window.setGeometry(100, 100, 300, 200);
        owner->setGeometry(10, 10, 200, 24);
        below->setGeometry(10, 40, 200, 24);
        window.installEventFilter(this);
        below->installEventFilter(this);
        hint->setHint("from 1 to 100");
    }

    bool show()
    {
        below->setFocus();
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            return false;
        owner->setFocus();
        hint->move(below->mapToGlobal(QPoint(0, 0)));
        hint->show();
        return hint->isVisible() && owner->hasFocus();
    }

    // As events of the window system, at once: the offscreen platform would otherwise make
    // the hint active in between.
    void press(QEvent::Type type, Qt::MouseButton button) const
    {
        send(type, button, button);
        send(QEvent::MouseButtonRelease, button, Qt::NoButton);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool press = event->type() == QEvent::MouseButtonPress;
        const bool release = event->type() == QEvent::MouseButtonRelease;
        if (watched == &window && press)
            ++windowPresses;
        if (watched == below && press)
            pressed << static_cast<QMouseEvent*>(event)->button();
        if (watched == below && release)
            released << static_cast<QMouseEvent*>(event)->button();
        return false;
    }

    QWidget window;
    QLineEdit* owner;
    QLineEdit* below;
    EditHintPopup* hint;
    QList<Qt::MouseButton> pressed;
    QList<Qt::MouseButton> released;
    int windowPresses = 0;

private:
    void send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons) const
    {
        const QPointF position = hint->rect().center();
        QMouseEvent event(
            type, position, hint->mapToGlobal(position.toPoint()), button, buttons, {});
        QCoreApplication::sendEvent(hint->windowHandle(), &event);
    }
};

} // namespace

class TestEditHintPopup : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsALabelAndNothingElse()
    {
        const Fixture f;
        verifyHoldsAlone(f.popup, f.label);
        QCOMPARE(f.label->text(), QString());
    }

    void itsSizeIsThatOfItsText_data()
    {
        columns<QString>("hint");
        row("a word", "metres");
        row("a long text", QString("at least 1, at most 100; ").repeated(4));
        row("two lines", "from 1\nto 100");
        row("a blank", " ");
    }
    void itsSizeIsThatOfItsText()
    {
        QFETCH(QString, hint);
        const Fixture f;
        f.popup->setHint(hint);
        QCOMPARE(f.label->text(), hint);
        QCOMPARE(f.popup->sizeHint(), f.label->sizeHint());
        QVERIFY(!f.popup->sizeHint().isEmpty());
        QCOMPARE(f.popup->size(), f.popup->sizeHint());
        f.popup->show();
        QCOMPARE(f.popup->size(), f.popup->sizeHint());
        QVERIFY(isOnScreen(f.popup));
    }

    void withoutATextItsSizeIsZero_data()
    {
        columns<bool>("hadAText");
        row("a new one", false);
        row("one that had a text", true);
    }
    void withoutATextItsSizeIsZero()
    {
        QFETCH(bool, hadAText);
        const Fixture f;
        if (hadAText) {
            f.popup->setHint("metres");
            f.popup->setHint("");
        }
        QCOMPARE(f.label->text(), QString());
        QCOMPARE(f.popup->sizeHint(), QSize(0, 0));
        f.popup->show();
        QCOMPARE(f.popup->size(), QSize(0, 0));
        QVERIFY(!isOnScreen(f.popup));
    }

    void itGrowsAndShrinksWhileItIsShown()
    {
        const Fixture f;
        f.popup->setHint("short");
        QVERIFY2(f.popup->isHidden(), "a hint alone does not show it");
        f.popup->show();
        const int narrow = f.popup->width();
        f.popup->setHint("a much longer hint than before");
        QVERIFY(f.popup->width() > narrow);
        f.popup->setHint("short");
        QCOMPARE(f.popup->width(), narrow);
    }

    void aPressGoesToWhatIsBelow()
    {
        PressedForm f;
        QVERIFY(f.show());
        f.press(QEvent::MouseButtonPress, Qt::LeftButton);
        QVERIFY(f.below->hasFocus());
        QCOMPARE(f.pressed, QList<Qt::MouseButton>{Qt::LeftButton});
        QCOMPARE(f.released, QList<Qt::MouseButton>{Qt::LeftButton});
        QVERIFY2(f.hint->isHidden(), "as it is when its own field loses the focus");
    }

    void anyButtonGoesToWhatIsBelow()
    {
        PressedForm f;
        QVERIFY(f.show());
        f.below->setFocusPolicy(Qt::NoFocus);
        f.below->setContextMenuPolicy(Qt::CustomContextMenu);
        QSignalSpy menu(f.below, &QWidget::customContextMenuRequested);
        f.press(QEvent::MouseButtonPress, Qt::RightButton);
        QCOMPARE(f.pressed, QList<Qt::MouseButton>{Qt::RightButton});
        QCOMPARE(f.released, QList<Qt::MouseButton>{Qt::RightButton});
        QCOMPARE(menu.count(), 1);
        QVERIFY(f.hint->isVisible());
    }

    void aDoubleClickGoesToWhatIsBelow()
    {
        PressedForm f;
        QVERIFY(f.show());
        f.below->setFocusPolicy(Qt::NoFocus);
        f.below->setText("word");
        f.press(QEvent::MouseButtonDblClick, Qt::LeftButton);
        QCOMPARE(f.below->selectedText(), QString("word"));
    }

    void aPressBesideTheWindowGoesNowhere()
    {
        PressedForm f;
        QVERIFY(f.show());
        f.hint->move(f.window.frameGeometry().bottomRight() + QPoint(10, 10));
        f.press(QEvent::MouseButtonPress, Qt::LeftButton);
        QCOMPARE(f.windowPresses, 0);
        QVERIFY(f.owner->hasFocus());
        QVERIFY(f.hint->isVisible());
    }
};

VRN_TEST(TestEditHintPopup)
#include "tst_edit_hint_popup.moc"
