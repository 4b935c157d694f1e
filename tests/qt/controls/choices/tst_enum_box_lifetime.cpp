#include "enum_box_fixture.h"
#include "group_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QSignalSpy>

#include <functional>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Step = std::function<void(MultiEditEnumBox&)>;

QList<MultiEditLineEdit*> shellsIn(const QWidget& parent)
{
    return parent.findChildren<MultiEditLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

Q_DECLARE_METATYPE(Step)

// What becomes of an editable box, its list, the edit of the list, the control around the
// edit and their parent, whichever goes first. Slots that destroy are tried elsewhere, by
// the injection of foreign code into every control.
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
        deleteDeferred();
        TestObject::cleanup();
    }

    void aSlotMayMakeTheBoxAList()
    {
        m_box->setEditable(true, strength());
        showActive(*m_form);
        connect(m_box, &SimpleEnumBox::valueChanged, m_box, [this] { m_box->setEditable(false); });
        type(*m_box, "460");
        pressEnter(*m_box);
        QVERIFY(!comboOf(*m_box).isEditable());
        deleteDeferred();
        QCOMPARE(shellsIn(*m_form).size(), 0);
    }

    void nothingIsLeftWhicheverGoesFirst_data()
    {
        QTest::addColumn<bool>("focused");
        QTest::addColumn<Step>("act");
        const auto row = [](const QByteArray& name, const Step& act) {
            QTest::newRow(name.constData()) << false << act;
            QTest::newRow((name + ", with the focus in the edit").constData()) << true << act;
        };
        // clang-format off
        row("the box", [](MultiEditEnumBox& b) { delete &b; });
        row("the parent, the box before the control", [](MultiEditEnumBox& b) { delete b.parentWidget(); });
        row("the parent, the control before the box", [](MultiEditEnumBox& b) { b.raise(); delete b.parentWidget(); });
        row("the control", [](MultiEditEnumBox& b) { delete shellsIn(*b.parentWidget()).front(); });
        row("the list", [](MultiEditEnumBox& b) { delete &comboOf(b); });
        row("the edit, by another edit", [](MultiEditEnumBox& b) { comboOf(b).setLineEdit(new QLineEdit); });
        row("the edit, by the list", [](MultiEditEnumBox& b) { comboOf(b).setEditable(false); });
        row("the edit, by the box", [](MultiEditEnumBox& b) { b.setEditable(false); });
        row("the layout", [](MultiEditEnumBox& b) { delete b.layout(); });
        // clang-format on
    }

    void nothingIsLeftWhicheverGoesFirst()
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
        // A window that is destroyed takes the focus from the edit while everything still lives.
        if (m_form)
            QCOMPARE(changed, 0);
        if (m_box)
            disconnect(m_box, &SimpleEnumBox::valueChanged, this, nullptr);
        deleteDeferred();
        QCoreApplication::processEvents();
        if (m_form && !m_box)
            QCOMPARE(shellsIn(*m_form).size(), 0);
    }

    void withoutItsControlTheBoxCanBeMadeEditableAgain_data()
    {
        QTest::addColumn<Step>("lose");
        const auto row = [](const char* name, const Step& lose) { QTest::newRow(name) << lose; };
        // clang-format off
        row("the control was destroyed", [](MultiEditEnumBox& b) { delete shellsIn(*b.parentWidget()).front(); });
        row("the list has another edit", [](MultiEditEnumBox& b) { comboOf(b).setLineEdit(new QLineEdit); });
        row("the list is no longer editable", [](MultiEditEnumBox& b) { comboOf(b).setEditable(false); });
        row("the list has long been a mere list", [](MultiEditEnumBox& b) { comboOf(b).setEditable(false); deleteDeferred(); });
        row("the box has long been a mere list", [](MultiEditEnumBox& b) { b.setEditable(false); deleteDeferred(); });
        // clang-format on
    }

    void withoutItsControlTheBoxCanBeMadeEditableAgain()
    {
        QFETCH(Step, lose);
        m_box->setEditable(true, strength());
        showActive(*m_form);
        lose(*m_box);
        m_box->setEditable(true, strength());
        deleteDeferred();
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
            deleteDeferred();
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

private:
    QPointer<QWidget> m_form;
    QPointer<MultiEditEnumBox> m_box;
};

VRN_TEST(TestEnumBoxLifetime)
#include "tst_enum_box_lifetime.moc"
