#include <vrn/qt/toolbar.h>

#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "support/catching_application.h"
#include "support/modal_dialog.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <functional>
#include <stdexcept>

using namespace vrn::qt;
using vrn::test::CatchingApplication;
using vrn::test::columns;
using vrn::test::row;
using vrn::test::ThroughQt;
using vrn::test::WhenOpen;

namespace {

using Press = std::function<void(QPushButton*)>;
using Deed = std::function<void()>;

void destroyDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

Q_DECLARE_METATYPE(Press)
Q_DECLARE_METATYPE(Deed)

// What the functions of buttons may do.
class TestToolbarCallbacks : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        CatchingApplication::instance().caught.clear();
        m_window = std::make_unique<QWidget>();
        m_toolbar = new Toolbar(nullptr, ExpandHorizontal);
        auto* layout = new QVBoxLayout(m_window.get());
        layout->addWidget(m_toolbar);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        QVERIFY(CatchingApplication::instance().caught.empty());
        TestObject::cleanup();
    }

    void anEmptyFunctionDoesNothing() { add("x", {})->click(); }

    void onClickedWithoutAButtonDoesNothing()
    {
        add("x", [] { QFAIL("called"); });
        QVERIFY(QMetaObject::invokeMethod(m_toolbar, "onClicked"));
    }

    void aForeignButtonDoesNothing()
    {
        add("x", [] { QFAIL("called"); });
        QPushButton foreign;
        QVERIFY(connect(&foreign, SIGNAL(clicked()), m_toolbar, SLOT(onClicked())));
        foreign.click();
    }

    void eachButtonHasItsOwnFunction()
    {
        QString log;
        auto* a = add("a", [&] { log += 'a'; });
        auto* b = add("b", [&] { log += 'b'; });
        b->click();
        a->click();
        b->click();
        QCOMPARE(log, QString("bab"));
    }

    void aDisabledButtonDoesNothing()
    {
        auto* button = add("x", [] { QFAIL("called"); });
        m_toolbar->setButtonsEnabled(false, 1);
        QTest::mouseClick(button, Qt::LeftButton);
    }

    void anExceptionIsShown_data()
    {
        columns<QByteArray>("what");
        row("plain", QByteArray("boom"));
        row("empty", QByteArray());
        row("outside ASCII", QByteArray("Träger Ω 鋼"));
        row("two lines", QByteArray("first\nsecond"));
        row("markup is text", QByteArray("invalid <b>deque</b>"));
        row("place markers are text", QByteArray("%1 of %2"));
        row("not UTF-8", QByteArray("bad \xff byte"));
    }
    void anExceptionIsShown()
    {
        QFETCH(QByteArray, what);
        auto* button = add("x", [&] { throw std::runtime_error(what.toStdString()); });
        WhenOpen<QMessageBox> user([&](QMessageBox& box) {
            QCOMPARE(box.windowTitle(), QString("Varnelik: Exception"));
            QCOMPARE(box.text(), "An exception occurred:\n" + QString::fromUtf8(what));
            QCOMPARE(box.textFormat(), Qt::PlainText);
            QCOMPARE(box.icon(), QMessageBox::Warning);
            QCOMPARE(int(box.standardButtons()), int(QMessageBox::Ok));
            QCOMPARE(box.parentWidget(), m_toolbar.data());
            box.button(QMessageBox::Ok)->click();
        });
        button->click();
        QCOMPARE(user.count, 1);
        QVERIFY(m_window->findChildren<QMessageBox*>().isEmpty());
    }

    void afterAnExceptionTheToolbarGoesOn()
    {
        int calls = 0;
        auto* bad = add("bad", [] { throw std::logic_error("boom"); });
        auto* good = add("good", [&] { ++calls; });
        WhenOpen<QMessageBox> user([](QMessageBox& box) { box.reject(); });
        bad->click();
        good->click();
        bad->click();
        QCOMPARE(user.count, 2);
        QCOMPARE(calls, 1);
        QVERIFY(bad->isEnabled());
        // The toolbar no longer counts the function as running.
        const QPointer<QPushButton> alive(bad);
        m_toolbar->clear();
        QVERIFY(!alive);
    }

    void anotherExceptionPasses()
    {
        const ThroughQt throughQt;
        auto* button = add("x", [] { throw 42; });
        WhenOpen<QMessageBox> user([](QMessageBox& box) { box.reject(); });
        QVERIFY_EXCEPTION_THROWN(button->click(), int);
        QCOMPARE(user.count, 0);
        const QPointer<QPushButton> alive(button);
        m_toolbar->clear();
        QVERIFY(!alive);
    }

    void aFunctionMayClearTheToolbar_data() { addWaysToPress(); }
    void aFunctionMayClearTheToolbar()
    {
        QFETCH(Press, press);
        const auto resource = std::make_shared<int>();
        add("other", {});
        const QPointer<QPushButton> button(add("x", [this, resource] {
            m_toolbar->clear();
            QCOMPARE(m_toolbar->layout()->count(), 0);
            for (const auto* left : m_toolbar->findChildren<QPushButton*>())
                QVERIFY(left->isHidden());
            // Only the new button has that name.
            auto* successor = m_toolbar->addButtonWithText("x", "text", "", {}, 1);
            QCOMPARE(m_toolbar->findChild<QPushButton*>("x"), successor);
            m_toolbar->setButtonsEnabled(false, 1);
            QVERIFY(!successor->isEnabled());
        }));
        press(button);
        destroyDeferred();
        QVERIFY(!button);
        QCOMPARE(resource.use_count(), 1L);
        QCOMPARE(m_toolbar->findChildren<QPushButton*>().size(), 1);
    }

    void aClearedButtonCallsNothingMore()
    {
        int calls = 0;
        QPushButton* button = nullptr;
        button = add("x", [&] {
            ++calls;
            m_toolbar->clear();
            button->click();
        });
        button->click();
        QCOMPARE(calls, 1);
    }

    void aFunctionMayAddButtons_data() { addWaysToPress(); }
    void aFunctionMayAddButtons()
    {
        QFETCH(Press, press);
        auto* button = add("x", [this] {
            for (int i = 0; i < 100; ++i)
                m_toolbar->addButtonWithText("new", "text", "", {}, 1);
        });
        press(button);
        press(button);
        QCOMPARE(m_toolbar->findChildren<QPushButton*>("new").size(), 200);
    }

    void aFunctionMayDestroyWhatItRunsFor_data()
    {
        columns<Press, Deed>("press", "destroy");
        for (const auto& [way, press] : waysToPress()) {
            const auto add = [&way = way, &press = press](const QString& what, const Deed& deed) {
                row(qPrintable(what + ", pressed " + way), press, deed);
            };
            add("its button", [this] { delete m_toolbar->findChild<QPushButton*>("x"); });
            add("the toolbar", [this] { delete m_toolbar; });
            add("the toolbar later", [this] { m_toolbar->deleteLater(); });
            add("the window", [this] { m_window.reset(); });
        }
    }
    void aFunctionMayDestroyWhatItRunsFor()
    {
        QFETCH(Press, press);
        QFETCH(Deed, destroy);
        const auto resource = std::make_shared<int>(7);
        int seen = 0;
        const QPointer<QPushButton> button(add("x", [&seen, destroy, resource] {
            destroy();
            seen = *resource; // Of the copy that runs.
        }));
        press(button);
        QCOMPARE(seen, 7);
        destroyDeferred();
        QVERIFY(!button);
        QCOMPARE(resource.use_count(), 1L);
        if (m_toolbar)
            m_toolbar->setButtonsEnabled(false, 1);
    }

    void anExceptionIsShownWhateverHappensToTheToolbar_data()
    {
        columns<Deed, Deed>("before", "whileItIsShown");
        const Deed clear = [this] { m_toolbar->clear(); };
        const Deed destroy = [this] { delete m_toolbar; };
        row("cleared before", clear, Deed());
        row("destroyed before", destroy, Deed());
        row("cleared while the box is open", Deed(), clear);
        row("destroyed while the box is open", Deed(), destroy);
    }
    void anExceptionIsShownWhateverHappensToTheToolbar()
    {
        QFETCH(Deed, before);
        QFETCH(Deed, whileItIsShown);
        const QPointer<QPushButton> button(add("x", [&] {
            if (before)
                before();
            throw std::runtime_error("boom");
        }));
        WhenOpen<QMessageBox> user([&](QMessageBox& box) {
            QCOMPARE(box.text(), QString("An exception occurred:\nboom"));
            QCOMPARE(box.parentWidget(), m_toolbar.data());
            const QPointer<QMessageBox> open(&box);
            if (whileItIsShown)
                whileItIsShown();
            if (open)
                open->reject();
        });
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(user.count, 1);
        destroyDeferred();
        QVERIFY(!button);
    }

    void aSlotOfTheButtonMayClearTheToolbar_data() { addWaysToPress(); }
    void aSlotOfTheButtonMayClearTheToolbar()
    {
        QFETCH(Press, press);
        const QPointer<QPushButton> button(add("x", {}));
        connect(button, &QPushButton::clicked, m_toolbar, [this] { m_toolbar->clear(); });
        press(button);
        QVERIFY(!button);
    }

    void aFunctionMayClickAnotherButton()
    {
        QStringList log;
        const QPointer<QPushButton> inner(add("inner", [&] {
            m_toolbar->clear();
            log << "inner";
        }));
        const QPointer<QPushButton> outer(add("outer", [&] {
            inner->click();
            log << "outer";
        }));
        outer->click();
        QCOMPARE(log, QStringList({"inner", "outer"}));
        destroyDeferred();
        QVERIFY(!inner && !outer);
    }

private:
    QPushButton* add(const char* id, const boost::function<void()>& fn)
    {
        auto* button = m_toolbar->addButtonWithText(id, "text", "tip", fn, 1);
        QCoreApplication::processEvents(); // It gets its place.
        return button;
    }

    static QList<QPair<QString, Press>> waysToPress()
    {
        return {{"by click()", [](QPushButton* button) { button->click(); }},
            {"by the mouse",
                [](QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }},
            {"by the space bar", [](QPushButton* button) {
                 button->setFocus();
                 QTest::keyClick(button, Qt::Key_Space);
             }}};
    }

    static void addWaysToPress()
    {
        columns<Press>("press");
        for (const auto& [way, press] : waysToPress())
            row(qPrintable(way), press);
    }

    std::unique_ptr<QWidget> m_window;
    QPointer<Toolbar> m_toolbar;
};

VRN_TEST_IN(TestToolbarCallbacks, CatchingApplication)
#include "tst_toolbar_callbacks.moc"
