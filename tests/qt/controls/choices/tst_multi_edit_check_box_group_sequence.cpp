#include <vrn/qt/layouters.h>
#include <vrn/qt/multi_edit_check_box_group.h>

#include "group_fixture.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QCheckBox>

#include <array>

using namespace vrn::qt;
using vrn::test::clickOn;

namespace {

constexpr int boxCount = 4;

// What the tables of one box come to. Each operation returns the signals due.
struct Box
{
    bool fresh = true;
    bool varies = false;
    bool checked = false;
    bool enabled = true;

    int click()
    {
        checked = varies || !checked;
        varies = false;
        return 1;
    }

    int setChecked(bool value)
    {
        const bool changes = varies || checked != value;
        checked = value;
        varies = false;
        return changes ? 2 : 1;
    }

    int readValue(bool value)
    {
        if (varies)
            return 0;
        if (!fresh) {
            varies = checked != value;
            return 0;
        }
        const bool changes = checked != value;
        checked = value;
        fresh = false;
        return changes ? 1 : 0;
    }

    int reset()
    {
        const bool changes = varies || checked;
        varies = false;
        checked = false;
        fresh = true;
        return changes ? 1 : 0;
    }

    QChar shown() const { return varies ? 'v' : checked ? 'c' : 'u'; }
};

// What the rules of the group come to.
struct Model
{
    std::array<Box, boxCount> boxes;
    Box all;
    std::array<bool, boxCount> stored = {};
    int loaded = 0;
    // What the slots of valueChanged() are to find in the boxes, one for each signal
    // of the last action.
    QStringList due;

    // Signals of a box: each brings "All" up to date and is passed on. The state of
    // the box is final by the first of them, unless it is being reset or read.
    void changed(int signalCount)
    {
        for (int i = 0; i < signalCount; ++i) {
            update();
            due << shown();
        }
    }

    void update()
    {
        all = Box();
        for (const Box& box : boxes) {
            if (!box.enabled)
                continue;
            if (box.varies) {
                all.readValue(!all.checked);
                return;
            }
            all.readValue(box.checked);
            if (all.varies)
                return;
        }
    }

    void clickAll()
    {
        all.click();
        for (Box& box : boxes) {
            if (box.enabled)
                box.setChecked(all.checked);
        }
        due << shown();
    }

    void load(std::size_t index)
    {
        boxes[index].setChecked(stored[index]);
        if (++loaded != boxCount)
            return;
        loaded = 0;
        changed(boxCount - 1);
    }

    QString shown() const
    {
        QString letters;
        for (const Box& box : boxes)
            letters += box.shown();
        return QString("%1 All %2").arg(letters).arg(all.shown());
    }
};

const QStringList actions = {"click", "click on All", "setValue", "readValue", "reset",
    "reset of one box", "onEndRead", "setEnabled", "forceVaries", "load", "save"};

class GroupSubject : public vrn::test::Subject
{
public:
    GroupSubject()
    {
        HBoxLayouter layouter;
        layouter.onCreate(&m_form);
        m_group = std::make_unique<MultiEditCheckBoxGroup>(
            &m_form, layouter, std::deque<QString>{"a", "", "b", "c", "d"}, std::deque<QString>());
        layouter.onFinish();
        m_group->setCanBeSaved("k");
        for (std::size_t i = 0; i < boxCount; ++i)
            m_storage["k/" + std::to_string(i)] = false;
        m_boxes = m_form.findChildren<MultiEditCheckBox*>();
        QObject::connect(
            m_group.get(), &MultiEditCheckBoxGroup::valueChanged, [this] { m_found << shown(); });
        m_form.show();
    }

    QString perform(int action, unsigned argument) override
    {
        const std::size_t index = argument % boxCount;
        const bool value = argument / boxCount % 2 != 0;
        MultiEditCheckBox* control = m_boxes.at(int(index));
        Box& box = m_model.boxes[index];
        m_found.clear();
        m_model.due.clear();
        switch (action) {
        case 0:
            clickOn(control->findChild<QCheckBox*>());
            if (box.enabled)
                m_model.changed(box.click());
            break;
        case 1:
            clickOn(m_boxes.last()->findChild<QCheckBox*>());
            m_model.clickAll();
            break;
        case 2:
            m_group->setValue(index, value);
            m_model.changed(box.setChecked(value));
            break;
        case 3:
            m_group->readValue(index, value);
            m_model.changed(box.readValue(value));
            break;
        case 4:
            m_group->reset();
            for (Box& each : m_model.boxes)
                m_model.changed(each.reset());
            break;
        case 5:
            control->reset();
            m_model.changed(box.reset());
            break;
        case 6:
            m_group->onEndRead();
            m_model.update();
            break;
        case 7:
            m_group->setEnabled(index, value);
            box.enabled = value;
            break;
        case 8:
            control->forceVaries();
            box.varies = true;
            box.fresh = false;
            break;
        case 9:
            control->load(m_storage);
            m_model.load(index);
            break;
        case 10:
            if (!control->save(m_storage))
                return "a box is not saved";
            if (!box.varies)
                m_model.stored[index] = box.checked;
            break;
        }
        return difference();
    }

private:
    static QChar letter(const MultiEditCheckBox* box)
    {
        return box->dataVaries() ? 'v' : box->isChecked() ? 'c' : 'u';
    }

    QString shown() const
    {
        QString letters;
        for (int i = 0; i < boxCount; ++i)
            letters += letter(m_boxes.at(i));
        return QString("%1 All %2").arg(letters).arg(letter(m_boxes.last()));
    }

    QString difference() const
    {
        if (m_found != m_model.due)
            return vrn::test::foundInstead(m_found, m_model.due);
        return shown() == m_model.shown() ? QString() : shown() + " instead of " + m_model.shown();
    }

    QWidget m_form;
    std::unique_ptr<MultiEditCheckBoxGroup> m_group;
    QList<MultiEditCheckBox*> m_boxes;
    QStringList m_found;
    vrn::KeyValueStorage m_storage;
    Model m_model;
};

} // namespace

class TestMultiEditCheckBoxGroupSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void anySequenceFollowsTheTables()
    {
        vrn::test::runRandomSequences(actions, [] { return std::make_unique<GroupSubject>(); });
    }
};

VRN_TEST(TestMultiEditCheckBoxGroupSequence)
#include "tst_multi_edit_check_box_group_sequence.moc"
