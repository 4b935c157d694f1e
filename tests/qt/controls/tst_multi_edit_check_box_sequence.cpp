#include <vrn/qt/multi_edit_check_box.h>

#include "group_fixture.h"
#include "support/any_to_string.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QCheckBox>
#include <QSignalSpy>

using namespace vrn::qt;
using vrn::test::clickOn;

namespace {

// What the tables of the control come to.
struct Model
{
    bool fresh = true;
    bool varies = false;
    bool checked = false;
    bool suspended = false;
    int due = 0;

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
            emitSignals(checked != value ? 1 : 0);
            checked = value;
            fresh = false;
        } else if (checked != value) {
            varies = true;
        }
    }

    void reset()
    {
        emitSignals(varies || checked ? 1 : 0);
        checked = false;
        varies = false;
        fresh = true;
    }

    void forceVaries()
    {
        varies = true;
        fresh = false;
    }

    QString shown() const
    {
        return QString("%1, %2 signals")
            .arg(varies       ? "varies"
                    : checked ? "checked"
                              : "unchecked")
            .arg(due);
    }

private:
    void emitSignals(int count) { due += suspended ? 0 : count; }
};

const QStringList actions = {"click", "Space", "setChecked", "setValue", "readValue",
    "readValue of no bool", "reset", "forceVaries", "suspend", "resume"};

class CheckBoxSubject : public vrn::test::Subject
{
public:
    CheckBoxSubject()
        : m_control(MultiEditCheckBox::create("Visible", &m_form))
        , m_box(m_control->findChild<QCheckBox*>())
        , m_valueChanged(m_control, &MultiEditCheckBox::valueChanged)
    {
        m_form.show();
    }

    QString perform(int action, unsigned argument) override
    {
        const bool value = argument % 2 != 0;
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
        const QString shown = QString("%1, %2 signals")
                                  .arg(isPartial               ? "varies"
                                          : m_box->isChecked() ? "checked"
                                                               : "unchecked")
                                  .arg(m_valueChanged.count());
        return shown == m_model.shown() ? QString() : shown + " instead of " + m_model.shown();
    }

    QWidget m_form;
    MultiEditCheckBox* m_control;
    QCheckBox* m_box;
    QSignalSpy m_valueChanged;
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

VRN_TEST_MAIN(TestMultiEditCheckBoxSequence)
#include "tst_multi_edit_check_box_sequence.moc"
