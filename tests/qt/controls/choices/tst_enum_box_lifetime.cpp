#include "enum_box_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QSignalSpy>

#include <functional>
#include <memory>
#include <vector>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Step = std::function<void(MultiEditEnumBox&)>;

QList<MultiEditLineEdit*> shellsIn(const QWidget& parent)
{
    return parent.findChildren<MultiEditLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
}

void destroyWhatIsDue()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

Q_DECLARE_METATYPE(Step)

// An enum box, its list, the edit of the list, the control around the edit, and
// their parent: each may go first. What would be touched too late, the
// sanitizers see.
class TestEnumBoxLifetime : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = new QWidget;
        new QHBoxLayout(m_form);
        m_box = MultiEditEnumBox::create(m_form, "Steel", &vrn::any_equal<int>);
        m_form->layout()->addWidget(m_box);
        m_box->setValues(steels());
    }

    void cleanup()
    {
        delete m_form;
        destroyWhatIsDue();
        TestObject::cleanup();
    }

    void aSlotMayDestroyTheBoxLater_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::addColumn<Step>("act");
        const Step pickOne = [](MultiEditEnumBox& b) { pick(b, 2); };
        const Step arrow = [](MultiEditEnumBox& b) { QTest::keyClick(&comboOf(b), Qt::Key_Up); };
        const Step enter = [](MultiEditEnumBox& b) {
            type(b, "460");
            pressEnter(b);
        };
        const Step leave = [](MultiEditEnumBox& b) {
            type(b, "460");
            QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
            QCoreApplication::sendEvent(&comboOf(b), &event);
        };
        const Step set = [](MultiEditEnumBox& b) { b.setValue(355); };
        QTest::newRow("by a pick") << false << pickOne;
        QTest::newRow("by an arrow key") << false << arrow;
        QTest::newRow("by setValue") << false << set;
        QTest::newRow("by a pick in an editable box") << true << pickOne;
        QTest::newRow("by Enter") << true << enter;
        QTest::newRow("by leaving the edit") << true << leave;
    }

    void aSlotMayDestroyTheBoxLater()
    {
        QFETCH(bool, editable);
        QFETCH(Step, act);
        for (const bool withParent : {false, true}) {
            if (!m_form) {
                cleanup();
                init();
            }
            if (editable)
                m_box->setEditable(true, strength());
            showActive(*m_form);
            m_box->forceVaries();
            QWidget* victim = withParent ? m_form.data() : m_box.data();
            connect(m_box, &SimpleEnumBox::valueChanged, victim, &QObject::deleteLater);
            act(*m_box);
            QVERIFY(m_box);
            destroyWhatIsDue();
            QVERIFY(!m_box);
            delete m_form;
        }
    }

    // Where the box itself emits, and not Qt through it.
    void aSlotMayDestroyTheBoxAtOnce_data()
    {
        QTest::addColumn<Step>("act");
        QTest::newRow("in the first readValue")
            << Step([](MultiEditEnumBox& b) { b.readValue(355); });
        QTest::newRow("in setValue") << Step([](MultiEditEnumBox& b) { b.setValue(355); });
        QTest::newRow("in selectByName")
            << Step([](MultiEditEnumBox& b) { b.selectByName("S355"); });
        QTest::newRow("in selectByValue")
            << Step([](MultiEditEnumBox& b) { b.selectByValue(355); });
        QTest::newRow("in next") << Step([](MultiEditEnumBox& b) { b.next(); });
        QTest::newRow("in previous") << Step([](MultiEditEnumBox& b) {
            comboOf(b).setCurrentIndex(1);
            b.previous();
        });
    }

    void aSlotMayDestroyTheBoxAtOnce()
    {
        QFETCH(Step, act);
        for (const bool withParent : {false, true}) {
            for (const bool editable : {false, true}) {
                if (!m_form) {
                    cleanup();
                    init();
                }
                m_box->setEditable(editable, strength());
                QWidget* victim = withParent ? m_form.data() : m_box.data();
                connect(m_box, &SimpleEnumBox::valueChanged, victim, [victim] { delete victim; });
                act(*m_box);
                QVERIFY(!m_box);
                delete m_form;
            }
        }
    }

    void aSlotMayMakeTheBoxAList()
    {
        m_box->setEditable(true, strength());
        showActive(*m_form);
        connect(m_box, &SimpleEnumBox::valueChanged, m_box, [this] { m_box->setEditable(false); });
        type(*m_box, "460");
        pressEnter(*m_box);
        QVERIFY(!comboOf(*m_box).isEditable());
        destroyWhatIsDue();
        QCOMPARE(shellsIn(*m_form).size(), 0);
    }

    void whoeverGoesFirstNothingIsLeftBehind_data()
    {
        QTest::addColumn<bool>("focused");
        QTest::addColumn<Step>("act");
        const auto row = [](const QByteArray& name, const Step& act) {
            QTest::newRow(name.constData()) << false << act;
            QTest::newRow((name + ", with the focus in the edit").constData()) << true << act;
        };
        row("the box", [](MultiEditEnumBox& b) { delete &b; });
        row("the parent, the box before the control",
            [](MultiEditEnumBox& b) { delete b.parentWidget(); });
        row("the parent, the control before the box", [](MultiEditEnumBox& b) {
            b.raise();
            QVERIFY(b.parentWidget()->children().last() == &b);
            delete b.parentWidget();
        });
        row("the control", [](MultiEditEnumBox& b) { delete shellsIn(*b.parentWidget()).front(); });
        row("the list", [](MultiEditEnumBox& b) { delete &comboOf(b); });
        row("the edit, by the list",
            [](MultiEditEnumBox& b) { comboOf(b).setLineEdit(new QLineEdit); });
        row("the edit, by the list that is no longer editable",
            [](MultiEditEnumBox& b) { comboOf(b).setEditable(false); });
        row("the edit, by the box", [](MultiEditEnumBox& b) { b.setEditable(false); });
        row("the layout", [](MultiEditEnumBox& b) { delete b.layout(); });
    }

    void whoeverGoesFirstNothingIsLeftBehind()
    {
        QFETCH(bool, focused);
        QFETCH(Step, act);
        m_box->setEditable(true, strength());
        if (focused) {
            comboOf(*m_box).setFocus();
            showActive(*m_form);
            type(*m_box, "46");
        }
        int changed = 0;
        connect(m_box, &SimpleEnumBox::valueChanged, this, [&changed] { ++changed; });
        act(*m_box);
        // A window that goes takes the focus from the edit while all still live.
        if (m_form)
            QCOMPARE(changed, 0);
        if (m_box)
            disconnect(m_box, &SimpleEnumBox::valueChanged, this, nullptr);
        destroyWhatIsDue();
        QCoreApplication::processEvents();
        if (m_form && !m_box)
            QCOMPARE(shellsIn(*m_form).size(), 0);
    }

    void withoutItsControlTheBoxCanBeMadeEditableAnew_data()
    {
        QTest::addColumn<Step>("lose");
        QTest::newRow("the control was destroyed")
            << Step([](MultiEditEnumBox& b) { delete shellsIn(*b.parentWidget()).front(); });
        QTest::newRow("the list has another edit")
            << Step([](MultiEditEnumBox& b) { comboOf(b).setLineEdit(new QLineEdit); });
        QTest::newRow("the list is no longer editable")
            << Step([](MultiEditEnumBox& b) { comboOf(b).setEditable(false); });
        QTest::newRow("the list is no longer editable, since long")
            << Step([](MultiEditEnumBox& b) {
                   comboOf(b).setEditable(false);
                   destroyWhatIsDue();
               });
        QTest::newRow("the box is no longer editable, since long") << Step([](MultiEditEnumBox& b) {
            b.setEditable(false);
            destroyWhatIsDue();
        });
    }

    void withoutItsControlTheBoxCanBeMadeEditableAnew()
    {
        QFETCH(Step, lose);
        m_box->setEditable(true, strength());
        showActive(*m_form);
        lose(*m_box);
        m_box->setEditable(true, strength());
        destroyWhatIsDue();
        QCOMPARE(shellsIn(*m_form).size(), 1);
        comboOf(*m_box).setFocus();
        type(*m_box, "46x");
        QVERIFY(!m_box->isValueValid());
        type(*m_box, "460");
        QVERIFY(m_box->isValueValid());
        QCOMPARE(m_box->getCurrentValue(), boost::any(460));
    }

    void aBoxWithoutAParentTakesItsControlAlong()
    {
        QPointer<QWidget> shell;
        {
            const std::unique_ptr<MultiEditEnumBox> box(
                MultiEditEnumBox::create(nullptr, {}, &vrn::any_equal<int>));
            box->setEditable(true, strength());
            box->setEditable(false);
            box->setEditable(true, strength());
            destroyWhatIsDue();
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (qobject_cast<MultiEditLineEdit*>(window)) {
                    QVERIFY(!shell);
                    shell = window;
                }
            }
            QVERIFY(shell);
            QVERIFY(!shell->isVisible());
            showActive(*box);
            type(*box, "46");
            QVERIFY(!shell->isVisible());
        }
        QVERIFY(!shell);
    }

    void madeEditableBeforeItHasAParentTheControlComesAlong()
    {
        auto* box = MultiEditEnumBox::create(nullptr, {}, &vrn::any_equal<int>);
        box->setEditable(true, strength());
        QCOMPARE(shellsIn(*m_form).size(), 0);
        m_form->layout()->addWidget(box);
        QCOMPARE(shellsIn(*m_form).size(), 1);
        showActive(*m_form);
        QVERIFY(!shellsIn(*m_form).front()->isVisible());
    }

    void theParentMayGoAtEveryStepOfASequence()
    {
        const std::vector<Step> steps = {
            [](MultiEditEnumBox& b) { b.setEditable(true, strength()); },
            [](MultiEditEnumBox& b) { showActive(*b.window()); },
            [](MultiEditEnumBox& b) { comboOf(b).setFocus(); },
            [](MultiEditEnumBox& b) { b.forceVaries(); },
            [](MultiEditEnumBox& b) { type(b, "4"); },
            [](MultiEditEnumBox& b) { comboOf(b).showPopup(); },
            [](MultiEditEnumBox& b) { QTest::keyClick(comboOf(b).view(), Qt::Key_Down); },
            [](MultiEditEnumBox& b) { QTest::keyClick(comboOf(b).view(), Qt::Key_Return); },
            [](MultiEditEnumBox& b) { type(b, "46"); },
            [](MultiEditEnumBox& b) { pressEnter(b); },
            [](MultiEditEnumBox& b) { b.setEditable(false); },
            [](MultiEditEnumBox& b) { b.readValue(235); },
            [](MultiEditEnumBox& b) { pick(b, 3); },
            [](MultiEditEnumBox& b) { b.setEditable(true, strength()); },
            [](MultiEditEnumBox& b) { b.setValues({}); },
            [](MultiEditEnumBox& b) { b.reset(); },
        };
        for (std::size_t last = 0; last < steps.size(); ++last) {
            if (!m_form)
                init();
            for (std::size_t i = 0; i <= last; ++i)
                steps[i](*m_box);
            QVERIFY(m_box);
            delete m_form;
            QVERIFY(!m_box);
            QCoreApplication::processEvents();
        }
    }

    void thousandsOfBoxesLeaveNothing()
    {
        const int before = int(QApplication::allWidgets().size());
        for (int i = 0; i < 1000; ++i) {
            auto* box = MultiEditEnumBox::create(m_form, "Steel", &vrn::any_equal<int>);
            box->setValues(steels());
            box->setEditable(true, strength());
            box->forceVaries();
            delete box;
        }
        destroyWhatIsDue();
        QCOMPARE(int(QApplication::allWidgets().size()), before);
    }

private:
    QPointer<QWidget> m_form;
    QPointer<MultiEditEnumBox> m_box;
};

VRN_TEST(TestEnumBoxLifetime)
#include "tst_enum_box_lifetime.moc"
