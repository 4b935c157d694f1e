#include <vrn/qt/layouters.h>
#include <vrn/qt/multi_edit_check_box_group.h>

#include "check_box_states.h"
#include "support/test_main.h"

#include <array>
#include <vector>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

constexpr int boxCount = 4;

// One box, by the table of its states.
struct Box
{
    QString state = CheckBoxStates::table().states().first();
    bool isEnabled = true;

    // Returns the signals due.
    int perform(const QString& action)
    {
        const Transition transition = CheckBoxStates::table().at(state, action);
        state = transition.end;
        return transition.signalCount;
    }
    int setChecked(bool value) { return perform(value ? "setChecked(true)" : "setChecked(false)"); }
    int readValue(bool value) { return perform(value ? "readValue(true)" : "readValue(false)"); }

    bool varies() const { return state == "v"; }
    bool isChecked() const { return state.endsWith('+'); }
    QChar shown() const { return varies() ? 'v' : isChecked() ? 'c' : 'u'; }
};

// A model of the group.
struct Model
{
    std::array<Box, boxCount> boxes;
    Box all;
    std::array<bool, boxCount> stored = {};
    int loaded = 0;
    // What the slots of valueChanged() are to find in the boxes, one for each signal
    // of the last action.
    QStringList due;

    // Each signal of a box updates "All" and is passed on. At the first of them the box
    // already has its final state, unless it is being reset or read.
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
            if (!box.isEnabled)
                continue;
            if (box.varies()) {
                all.readValue(!all.isChecked());
                return;
            }
            all.readValue(box.isChecked());
            if (all.varies())
                return;
        }
    }

    void clickAll()
    {
        all.perform("click");
        for (Box& box : boxes) {
            if (box.isEnabled)
                box.setChecked(all.isChecked());
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

class GroupSubject : public Subject
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

    static QStringList actions()
    {
        QStringList names;
        for (const Action& action : all())
            names << action.name;
        return names;
    }

    QString perform(int action, unsigned argument) override
    {
        const std::size_t index = argument % boxCount;
        m_found.clear();
        m_model.due.clear();
        const Choice choice{
            index, argument / boxCount % 2 != 0, *m_boxes.at(int(index)), m_model.boxes[index]};
        all()[std::size_t(action)].perform(*this, choice);
        return difference();
    }

private:
    // What an action is done to, and with which value.
    struct Choice
    {
        std::size_t index;
        bool value;
        MultiEditCheckBox& control;
        Box& box;
    };

    struct Action
    {
        const char* name;
        void (*perform)(GroupSubject& s, const Choice& c);
    };

    static const std::vector<Action>& all()
    {
        // clang-format off
        static const std::vector<Action> actions = {
            {"click", [](auto& s, auto& c) { s.click(c.control); if (c.box.isEnabled) s.m_model.changed(c.box.perform("click")); }},
            {"click on All", [](auto& s, auto&) { s.click(*s.m_boxes.last()); s.m_model.clickAll(); }},
            {"setValue", [](auto& s, auto& c) { s.m_group->setValue(c.index, c.value); s.m_model.changed(c.box.setChecked(c.value)); }},
            {"readValue", [](auto& s, auto& c) { s.m_group->readValue(c.index, c.value); s.m_model.changed(c.box.readValue(c.value)); }},
            {"reset", [](auto& s, auto&) { s.m_group->reset(); for (Box& box : s.m_model.boxes) s.m_model.changed(box.perform("reset")); }},
            {"reset of one box", [](auto& s, auto& c) { c.control.reset(); s.m_model.changed(c.box.perform("reset")); }},
            {"onEndRead", [](auto& s, auto&) { s.m_group->onEndRead(); s.m_model.update(); }},
            {"setEnabled", [](auto& s, auto& c) { s.m_group->setEnabled(c.index, c.value); c.box.isEnabled = c.value; }},
            {"forceVaries", [](auto&, auto& c) { c.control.forceVaries(); c.box.perform("forceVaries"); }},
            {"load", [](auto& s, auto& c) { c.control.load(s.m_storage); s.m_model.load(c.index); }},
            {"save", [](auto& s, auto& c) { c.control.save(s.m_storage); if (!c.box.varies()) s.m_model.stored[c.index] = c.box.isChecked(); }},
        };
        // clang-format on
        return actions;
    }

    static void click(const MultiEditCheckBox& control)
    {
        clickOn(CheckBoxStates::innerBox(control));
    }

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
            return foundInstead(m_found, m_model.due);
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

class TestMultiEditCheckBoxGroupSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void anySequenceFollowsTheTables()
    {
        runRandomSequences(
            GroupSubject::actions(), [] { return std::make_unique<GroupSubject>(); });
    }
};

VRN_TEST(TestMultiEditCheckBoxGroupSequence)
#include "tst_multi_edit_check_box_group_sequence.moc"
