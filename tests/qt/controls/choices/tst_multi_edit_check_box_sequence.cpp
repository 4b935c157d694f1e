#include <vrn/qt/multi_edit_check_box.h>

#include "group_fixture.h"
#include "support/any_to_string.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QCheckBox>

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
    bool suspended = false;
    // What the slots of valueChanged() are to find as the current value, one for
    // each signal of the last action.
    QStringList due;

    void click()
    {
        checked = varies || !checked;
        varies = false;
        emitSignals(1);
    }

    void setChecked(bool value)
    {
        const bool changes = varies || checked != value;
        checked = value;
        varies = false;
        emitSignals(changes ? 2 : 1);
    }

    void readValue(bool value)
    {
        if (fresh) {
            const bool changes = checked != value;
            checked = value;
            fresh = false;
            emitSignals(changes ? 1 : 0);
        } else if (checked != value) {
            varies = true;
        }
    }

    void reset()
    {
        const bool changes = varies || checked;
        checked = false;
        varies = false;
        fresh = true;
        emitSignals(changes ? 1 : 0);
    }

    void forceVaries()
    {
        varies = true;
        fresh = false;
    }

    QString shown() const { return varies ? "varies" : checked ? "checked" : "unchecked"; }

private:
    void emitSignals(int count)
    {
        for (int i = 0; i < count && !suspended; ++i)
            due << describe(varies ? boost::any() : boost::any(checked));
    }
};

const QStringList actions = {"click", "Space", "setChecked", "setValue", "readValue",
    "readValue of no bool", "reset", "forceVaries", "suspend", "resume"};

class CheckBoxSubject : public vrn::test::Subject
{
public:
    CheckBoxSubject()
        : m_control(MultiEditCheckBox::create("Visible", &m_form))
        , m_box(m_control->findChild<QCheckBox*>())
    {
        QObject::connect(m_control, &MultiEditCheckBox::valueChanged,
            [this] { m_found << describe(m_control->getCurrentValue()); });
        m_form.show();
    }

    QString perform(int action, unsigned argument) override
    {
        const bool value = argument % 2 != 0;
        m_found.clear();
        m_model.due.clear();
        switch (action) {
        case 0:
            clickOn(m_box);
            m_model.click();
            break;
        case 1:
            QTest::keyClick(m_box, Qt::Key_Space);
            m_model.click();
            break;
        case 2:
            m_control->setChecked(value);
            m_model.setChecked(value);
            break;
        case 3:
            m_control->setValue(value);
            m_model.setChecked(value);
            break;
        case 4:
            m_control->readValue(value);
            if (!m_model.varies)
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
        const bool isPartial = m_box->checkState() == Qt::PartiallyChecked;
        if (isPartial != m_control->dataVaries() || m_box->isTristate() != isPartial)
            return "the box does not show whether the control varies";
        const boost::any current = isPartial ? boost::any() : boost::any(m_box->isChecked());
        if (!(m_control->getCurrentValue() == current))
            return "the current value is not the one shown";
        if (m_found != m_model.due)
            return vrn::test::foundInstead(m_found, m_model.due);
        const QString shown = isPartial ? "varies" : m_box->isChecked() ? "checked" : "unchecked";
        return shown == m_model.shown() ? QString() : shown + " instead of " + m_model.shown();
    }

    QWidget m_form;
    MultiEditCheckBox* m_control;
    QCheckBox* m_box;
    QStringList m_found;
    Model m_model;
};

} // namespace

class TestMultiEditCheckBoxSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void anySequenceFollowsTheTables()
    {
        vrn::test::runRandomSequences(actions, [] { return std::make_unique<CheckBoxSubject>(); });
    }
};

VRN_TEST(TestMultiEditCheckBoxSequence)
#include "tst_multi_edit_check_box_sequence.moc"
