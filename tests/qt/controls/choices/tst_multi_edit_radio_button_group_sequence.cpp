#include <vrn/base/any_predicates.h>
#include <vrn/qt/multi_edit_radio_button_group.h>

#include "group_fixture.h"
#include "support/any_to_string.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QRadioButton>

#include <memory>

using namespace vrn::qt;
using vrn::test::clickOn;

namespace {

using vrn::test::describe;

constexpr int buttonCount = 4;
constexpr int none = -1;

// The value of button `index`; the values are not in the order of the buttons.
int valueOf(int index)
{
    return index ^ 2;
}

// What the tables of the control come to. The checked button is an index.
struct Model
{
    bool fresh = true;
    bool varies = false;
    int checked = 0;
    // What the slots of valueChanged() are to find as the current value, one for
    // each signal of the last action.
    QStringList due;

    void click(int index)
    {
        check(index);
        changed();
    }

    void setValue(int index)
    {
        check(index);
        changed();
    }

    void readValue(int index)
    {
        if (fresh) {
            setValue(index);
            fresh = false;
        } else if (!varies && checked != index) {
            forceVaries();
            due << describe(current());
        }
    }

    void reset()
    {
        fresh = true;
        setValue(0);
    }

    void forceVaries()
    {
        varies = true;
        fresh = false;
        checked = none;
    }

    boost::any current() const { return varies ? boost::any() : boost::any(valueOf(checked)); }

private:
    void check(int index) { checked = index; }

    void changed()
    {
        varies = false;
        due << describe(current());
    }
};

QString describe(bool varies, int checked)
{
    return QString("%1button %2 checked").arg(varies ? "varies, " : "").arg(checked);
}

const QStringList actions = {
    "click", "Space", "arrow key", "setSelected", "setValue", "readValue", "reset", "forceVaries"};

class RadioGroupSubject : public vrn::test::Subject
{
public:
    RadioGroupSubject(QWidget* form, bool useButtonGroup)
        : m_group(createGroup(form, useButtonGroup))
        , m_buttons(m_group->findChildren<QRadioButton*>())
    {
        QObject::connect(m_group.get(), &MultiEditRadioButtonGroup::valueChanged,
            [this] { m_found << describe(m_group->getCurrentValue()); });
        m_group->resize(form->size());
        m_group->show();
    }

    QString perform(int action, unsigned argument) override
    {
        const int index = int(argument % buttonCount);
        m_found.clear();
        m_model.due.clear();
        switch (action) {
        case 0:
            clickOn(m_buttons.at(index));
            m_model.click(index);
            break;
        case 1:
            QTest::keyClick(m_buttons.at(index), Qt::Key_Space);
            m_model.click(index);
            break;
        case 2: {
            // Down or up to the next button, if there is one. From the checked button Qt
            // checks it, from others it takes only the focus.
            m_buttons.at(index)->setFocus();
            const bool isDown = argument % 8 < buttonCount;
            QTest::keyClick(m_buttons.at(index), isDown ? Qt::Key_Down : Qt::Key_Up);
            const int next = isDown ? index + 1 : index - 1;
            if (0 <= next && next < buttonCount && m_model.checked == index)
                m_model.click(next);
            break;
        }
        case 3:
            // It would check a button of a group that goes on to vary.
            if (m_model.varies)
                break;
            m_group->setSelected(valueOf(index));
            m_model.checked = index;
            break;
        case 4:
            m_group->setValue(valueOf(index));
            m_model.setValue(index);
            break;
        case 5:
            m_group->readValue(valueOf(index));
            m_model.readValue(index);
            break;
        case 6:
            m_group->reset();
            m_model.reset();
            break;
        case 7:
            m_group->forceVaries();
            m_model.forceVaries();
            break;
        }
        return difference();
    }

private:
    static MultiEditRadioButtonGroup* createGroup(QWidget* form, bool useButtonGroup)
    {
        NamedValueList values;
        for (int i = 0; i < buttonCount; ++i)
            values.emplace_back(QString::number(i), valueOf(i));
        return MultiEditRadioButtonGroup::create("Grade", values, &vrn::any_equal<int>,
            &vrn::any_less<int>, form, nullptr, true, useButtonGroup);
    }

    QString difference() const
    {
        int checked = none;
        for (int i = 0; i < buttonCount; ++i) {
            if (!m_buttons.at(i)->isChecked())
                continue;
            if (checked != none)
                return "several buttons checked";
            checked = i;
        }
        if (m_found != m_model.due)
            return vrn::test::foundInstead(m_found, m_model.due);
        if (!(m_group->getCurrentValue() == m_model.current()))
            return "the current value is not the one due";
        const QString shown = describe(m_group->dataVaries(), checked);
        const QString due = describe(m_model.varies, m_model.checked);
        return shown == due ? QString() : shown + " instead of " + due;
    }

    std::unique_ptr<MultiEditRadioButtonGroup> m_group;
    QList<QRadioButton*> m_buttons;
    QStringList m_found;
    Model m_model;
};

} // namespace

class TestMultiEditRadioButtonGroupSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void anySequenceFollowsTheTables_data()
    {
        QTest::addColumn<bool>("useButtonGroup");
        QTest::newRow("in a button group") << true;
        QTest::newRow("without one") << false;
    }

    void anySequenceFollowsTheTables()
    {
        QFETCH(bool, useButtonGroup);
        // Arrow keys move the focus of the application, so it has an active window.
        QWidget form;
        form.resize(200, 200);
        // A button that is clicked by a key paints itself at once.
        form.setUpdatesEnabled(false);
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        vrn::test::runRandomSequences(
            actions, [&] { return std::make_unique<RadioGroupSubject>(&form, useButtonGroup); });
    }
};

VRN_TEST(TestMultiEditRadioButtonGroupSequence)
#include "tst_multi_edit_radio_button_group_sequence.moc"
