#include <vrn/qt/multi_edit_group_box.h>

#include "group_fixture.h"
#include "support/any_to_string.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QVBoxLayout>

using namespace vrn::qt;
using vrn::test::clickOn;

namespace {

using vrn::test::describe;

// What the tables of the control come to.
struct Model
{
    bool fresh = true;
    bool varies = false;
    bool checked = false;
    bool enabled = true;
    bool suspended = false;
    // What the slots of valueChanged() are to find as the current value, one for
    // each signal of the last action.
    QStringList due;

    void click()
    {
        if (!enabled)
            return;
        checked = !checked;
        changed();
    }

    void setValue(bool value)
    {
        checked = value;
        changed();
    }

    void readValue(bool value)
    {
        if (fresh) {
            checked = value;
            fresh = false;
        } else if (!varies && checked != value) {
            forceVaries();
        }
    }

    void reset()
    {
        checked = false;
        enabled = true;
        varies = false;
        fresh = true;
    }

    void forceVaries()
    {
        varies = true;
        fresh = false;
        enabled = false;
    }

    boost::any current() const { return varies ? boost::any() : boost::any(checked); }

private:
    void changed()
    {
        varies = false;
        if (!suspended)
            due << describe(current());
    }
};

QString describe(bool varies, bool checked, bool enabled)
{
    return QString("%1%2%3").arg(
        varies ? "varies " : "", checked ? "checked" : "unchecked", enabled ? "" : " disabled");
}

const QStringList actions = {"click", "Space", "setChecked", "setValue", "readValue",
    "readValue of no bool", "reset", "forceVaries", "suspend", "resume"};

class GroupBoxSubject : public vrn::test::Subject
{
public:
    GroupBoxSubject()
        : m_control(MultiEditGroupBox::create("Fire protection", &m_form))
    {
        QObject::connect(m_control, &MultiEditGroupBox::valueChanged,
            [this] { m_found << describe(m_control->getCurrentValue()); });
        (new QVBoxLayout(&m_form))->addWidget(m_control);
        m_form.show();
    }

    QString perform(int action, unsigned argument) override
    {
        const bool value = argument % 2 != 0;
        m_found.clear();
        m_model.due.clear();
        switch (action) {
        case 0:
            clickOn(m_control);
            m_model.click();
            break;
        case 1:
            // A disabled box does not get the focus, and no key without it.
            m_control->setFocus();
            if (m_form.focusWidget() == m_control)
                QTest::keyClick(m_control, Qt::Key_Space);
            m_model.click();
            break;
        case 2:
            m_control->setChecked(value);
            m_model.checked = value;
            break;
        case 3:
            m_control->setValue(value);
            m_model.setValue(value);
            break;
        case 4:
            m_control->readValue(value);
            m_model.readValue(value);
            break;
        case 5:
            m_control->readValue(value ? boost::any(1) : boost::any());
            break;
        case 6:
            m_control->reset();
            m_model.reset();
            break;
        case 7:
            m_control->forceVaries();
            m_model.forceVaries();
            break;
        case 8:
            m_control->suspendValueChangedSignal();
            m_model.suspended = true;
            break;
        case 9:
            m_control->resumeValueChangedSignal();
            m_model.suspended = false;
            break;
        }
        return difference();
    }

private:
    QString difference() const
    {
        if (m_found != m_model.due)
            return vrn::test::foundInstead(m_found, m_model.due);
        if (!(m_control->getCurrentValue() == m_model.current()))
            return "the current value is not the one due";
        const QString shown = describe(
            m_control->dataVaries(), m_control->isChecked(), m_control->isEnabled());
        const QString due = describe(m_model.varies, m_model.checked, m_model.enabled);
        return shown == due ? QString() : shown + " instead of " + due;
    }

    QWidget m_form;
    MultiEditGroupBox* m_control;
    QStringList m_found;
    Model m_model;
};

} // namespace

class TestMultiEditGroupBoxSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void anySequenceFollowsTheTables()
    {
        vrn::test::runRandomSequences(actions, [] { return std::make_unique<GroupBoxSubject>(); });
    }
};

VRN_TEST(TestMultiEditGroupBoxSequence)
#include "tst_multi_edit_group_box_sequence.moc"
