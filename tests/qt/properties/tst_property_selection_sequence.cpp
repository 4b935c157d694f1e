#include <vrn/qt/property_error.h>
#include <vrn/qt/property_selection.h>

#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beam_model.h"

#include <QJsonArray>
#include <QMap>
#include <QUndoStack>

#include <cmath>
#include <optional>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

constexpr std::uint64_t beamCount = 5;

/// A number by its bits, as a text.
QString bitsOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return QString::number(bits, 16);
}

double fromBits(const QString& text)
{
    const quint64 bits = text.toULongLong(nullptr, 16);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

const QString none = "-";

/// The values of one object by property, each as a text that tells its bits.
using Values = QMap<QString, QString>;

Values valuesOf(const Beam& beam)
{
    return {{"length", bitsOf(beam.length)}, {"load", beam.load ? bitsOf(*beam.load) : none},
        {"name", beam.name}, {"group", beam.group ? QString::number(*beam.group) : none},
        {"camber", bitsOf(beam.camber())}};
}

/// The laws, on plain values.
struct Laws
{
    struct Change
    {
        QString before;
        QString after;
    };
    /// By property and object.
    using Step = QMap<QPair<QString, int>, Change>;
    struct Command
    {
        Step step;
        int gesture;
    };

    QMap<int, Values> objects; // also those that are gone
    QList<int> there;
    QList<int> selected;
    QList<Command> stack;
    int index = 0;
    bool throws = false;
    bool isAnnounced = false;
    int writes = 0;

    QList<int> selectedAndThere() const
    {
        QList<int> both;
        for (const int id : selected) {
            if (there.contains(id))
                both << id;
        }
        return both;
    }

    /// What is written is what differs. A write that throws has changed nothing.
    bool carryOut(Step step, int gesture)
    {
        for (auto change = step.begin(); change != step.end();) {
            if (change->before == change->after)
                change = step.erase(change);
            else
                ++change;
        }
        if (step.isEmpty())
            return true;
        ++writes;
        if (throws)
            return false;
        for (auto change = step.begin(); change != step.end(); ++change)
            objects[change.key().second][change.key().first] = change->after;
        isAnnounced = true;
        push({step, gesture});
        return true;
    }

    void push(const Command& command)
    {
        while (stack.size() > index)
            stack.removeLast();
        if (command.gesture == 0 || stack.isEmpty() || stack.last().gesture != command.gesture
            || stack.last().step.firstKey().first != command.step.firstKey().first) {
            stack << command;
        } else {
            Step& step = stack.last().step;
            for (auto change = command.step.begin(); change != command.step.end(); ++change) {
                const bool isThere = step.contains(change.key());
                step[change.key()] = {
                    isThere ? step[change.key()].before : change->before, change->after};
                if (step[change.key()].before == change->after)
                    step.remove(change.key());
            }
            if (step.isEmpty())
                stack.removeLast();
        }
        index = int(stack.size());
    }

    /// An object that is gone is passed over, and the step remembers it.
    void undoOrRedo(bool isUndo)
    {
        if (isUndo ? index == 0 : index == stack.size())
            return;
        const int at = isUndo ? index - 1 : index;
        ++writes;
        if (throws) {
            stack.removeAt(at);
            index = at;
            return;
        }
        const Step step = stack[at].step;
        for (auto change = step.begin(); change != step.end(); ++change) {
            if (there.contains(change.key().second)) {
                objects[change.key().second][change.key().first] = isUndo ? change->before
                                                                          : change->after;
            }
        }
        isAnnounced = true;
        index = isUndo ? at : at + 1;
    }
};

class Beside final : public Subject
{
public:
    Beside()
    {
        for (int id = 0; id < int(beamCount); ++id) {
            m_laws.objects[id] = valuesOf(m_model.beams[std::uint64_t(id)]);
            m_laws.there << id;
        }
        QObject::connect(&m_model, &PropertyModel::changed, &m_model, [this] { ++m_changed; });
        QObject::connect(&m_model, &PropertyModel::failed, &m_model, [this] { ++m_failed; });
        m_model.beforeWrite = [this] {
            if (m_laws.throws)
                throw PropertyError("not now");
        };
        select({0, 1, 2});
    }

    static QStringList actions()
    {
        return {"edit the length", "edit the load", "edit the name", "edit the group",
            "edit the camber", "edit in a gesture", "change lengths relatively",
            "change groups relatively", "preview", "undo", "redo", "select", "delete", "restore",
            "change from elsewhere", "change the units", "save", "load", "throw or not",
            "end the turn"};
    }

    QString perform(int action, unsigned argument) override
    {
        Choice choice(argument);
        const QString name = actions()[action];
        m_model.writes.clear();
        m_laws.writes = 0;
        QString problem;
        if (name == "edit the length")
            problem = editLength(choice, 0);
        else if (name == "edit in a gesture")
            problem = editLength(choice, 1 + choice.below(2));
        else if (name == "edit the load")
            problem = editLoad(choice);
        else if (name == "edit the name")
            problem = editName(choice);
        else if (name == "edit the group")
            problem = editGroup(choice);
        else if (name == "edit the camber")
            problem = editCamber(choice);
        else if (name == "change lengths relatively")
            problem = changeLengths(choice);
        else if (name == "change groups relatively")
            problem = changeGroups(choice);
        else if (name == "preview")
            preview();
        else if (name == "undo" || name == "redo")
            undoOrRedo(name == "undo");
        else if (name == "select")
            select(choice);
        else if (name == "delete")
            remove(choice);
        else if (name == "restore")
            restore();
        else if (name == "change from elsewhere")
            changeFromElsewhere(choice);
        else if (name == "change the units")
            m_model.setUnits(vrn::units::Context(choice.below(10)));
        else if (name == "save")
            m_saved = m_selection.save();
        else if (name == "load")
            problem = load();
        else if (name == "throw or not")
            m_laws.throws = !m_laws.throws;
        else
            problem = endTurn();
        return problem.isEmpty() ? difference() : problem;
    }

private:
    void select(const QList<int>& ids)
    {
        m_laws.selected = ids;
        ObjectIds selected;
        for (const int id : ids)
            selected.emplace_back(std::uint64_t(id));
        m_selection = PropertySelection(&m_model, selected, &m_stack);
    }

    void select(Choice& choice)
    {
        QList<int> ids;
        for (int id = 0; id < int(beamCount); ++id) {
            if (choice.below(2) == 0)
                ids << id;
        }
        select(ids);
    }

    template <typename Change>
    Laws::Step stepOf(const QString& key, const Change& change) const
    {
        Laws::Step step;
        for (const int id : m_laws.selectedAndThere()) {
            const QString before = m_laws.objects[id][key];
            const std::optional<QString> after = change(before);
            if (after)
                step[{key, id}] = {before, *after};
        }
        return step;
    }

    /// Does the edit on both sides. Without a step the laws refuse it.
    QString edit(const QString& key, const boost::any& value, const std::optional<Laws::Step>& step,
        int gesture = 0)
    {
        if (!m_selection.row(key.toStdString()))
            return {}; // nothing is selected
        int changed = 0;
        const int found = int(m_laws.selectedAndThere().size());
        if (step) {
            for (const Laws::Change& change : *step)
                changed += change.before == change.after ? 0 : 1;
        }
        const bool isTaken = step && m_laws.carryOut(*step, gesture);
        try {
            const PropertyReceipt receipt = m_selection.edit(
                key.toStdString(), value, std::uint64_t(gesture));
            if (!isTaken)
                return "it was not refused";
            if (int(receipt.selected) != found || int(receipt.changed) != changed
                || int(receipt.left) != found - int(step->size())
                || receipt.changed + receipt.same + receipt.left != receipt.selected) {
                return "the receipt is \"" + receipt.text + '"';
            }
        } catch (const PropertyError& error) {
            if (isTaken)
                return "it was refused: " + error.reason();
        }
        return {};
    }

    QString editLength(Choice& choice, int gesture)
    {
        const double length = choice.of({3.0, 7.62, 10.0 / 3.0, 0.1, 40.0, 40.1, 0.0, -1.0});
        const bool isInRange = length >= 0.1 && length <= 40.0;
        return edit("length", length,
            isInRange ? std::optional(
                stepOf("length", [&](const QString&) { return std::optional(bitsOf(length)); }))
                      : std::nullopt,
            gesture);
    }

    QString editLoad(Choice& choice)
    {
        const double load = choice.of({0.0, -0.0, 1.0, 1e300, 0.1 + 0.2});
        const bool isCleared = choice.below(3) == 0;
        return edit("load", isCleared ? boost::any() : boost::any(load),
            stepOf("load",
                [&](const QString&) { return std::optional(isCleared ? none : bitsOf(load)); }));
    }

    QString editName(Choice& choice)
    {
        const QString name = choice.of({"", "B1", "ridge", "a name that is too long for it"});
        return edit("name", name,
            name.size() > 20 ? std::nullopt : std::optional(stepOf("name", [&](const QString&) {
                return std::optional(name);
            })));
    }

    QString editGroup(Choice& choice)
    {
        const int group = choice.below(5);
        return edit("group", group == 0 ? boost::any() : boost::any(group),
            stepOf("group", [&](const QString&) {
                return std::optional(group == 0 ? none : QString::number(group));
            }));
    }

    QString editCamber(Choice& choice)
    {
        const double camber = choice.of({0.0, 0.5, -1.0});
        const Laws::Step step = stepOf(
            "camber", [&](const QString&) { return std::optional(bitsOf(camber)); });
        // The setter refuses it, once it is called.
        bool isCalled = false;
        for (const Laws::Change& change : step)
            isCalled = isCalled || change.before != change.after;
        if (camber < 0.0 && isCalled) {
            ++m_laws.writes;
            return edit("camber", camber, std::nullopt);
        }
        return edit("camber", camber, step);
    }

    QString changeLengths(Choice& choice)
    {
        using Edit = RelativeEdit;
        const auto operation = Edit::Operation(choice.below(6));
        const double operand = choice.of({0.5, 2.0, 10.0, 0.3, 1.1});
        return edit("length", Edit{operation, operand},
            stepOf("length", [&](const QString& before) -> std::optional<QString> {
                const double old = fromBits(before);
                const double length = operation == Edit::Add ? old + operand
                    : operation == Edit::Subtract            ? old - operand
                    : operation == Edit::AddPercent          ? old * (100.0 + operand) / 100.0
                    : operation == Edit::SubtractPercent     ? old * (100.0 - operand) / 100.0
                    : operation == Edit::Multiply            ? old * operand
                                                             : old / operand;
                if (length < 0.1 || length > 40.0)
                    return std::nullopt;
                return bitsOf(length);
            }));
    }

    QString changeGroups(Choice& choice)
    {
        const int divisor = choice.below(3) + 1;
        return edit("group", RelativeEdit{RelativeEdit::Divide, double(divisor)},
            stepOf("group", [&](const QString& before) -> std::optional<QString> {
                if (before == none || before.toInt() % divisor != 0)
                    return std::nullopt;
                return QString::number(before.toInt() / divisor);
            }));
    }

    void preview()
    {
        if (m_selection.row("length"))
            m_selection.preview("length", RelativeEdit{RelativeEdit::Multiply, 2.0});
    }

    void undoOrRedo(bool isUndo)
    {
        const bool fails = m_laws.throws && (isUndo ? m_stack.canUndo() : m_stack.canRedo());
        m_laws.undoOrRedo(isUndo);
        m_mustFail += fails ? 1 : 0;
        if (isUndo)
            m_stack.undo();
        else
            m_stack.redo();
    }

    void remove(Choice& choice)
    {
        if (m_laws.there.isEmpty())
            return;
        const int id = m_laws.there[choice.below(int(m_laws.there.size()))];
        m_laws.there.removeOne(id);
        m_deleted.push_back(m_model.beams.extract(std::uint64_t(id)));
    }

    void restore()
    {
        if (m_deleted.empty())
            return;
        m_laws.there << int(m_deleted.back().key());
        m_model.beams.insert(std::move(m_deleted.back()));
        m_deleted.pop_back();
    }

    void changeFromElsewhere(Choice& choice)
    {
        for (auto& beam : m_model.beams) {
            if (choice.below(2) == 0)
                continue;
            // Out of the range of an edit, too.
            beam.second.length = choice.of({3.0, 1000.0, 5.0 / 7.0});
            m_laws.objects[int(beam.first)]["length"] = bitsOf(beam.second.length);
        }
        m_model.announce({"length"});
        m_laws.isAnnounced = true;
    }

    /// What a file does is told by the edits of its values one by one.
    QString load()
    {
        if (m_saved.isEmpty() || m_laws.selected.isEmpty())
            return {};
        const QJsonObject values = m_saved["values"].toObject();
        Laws::Step step;
        bool isRefused = m_saved["kinds"].toArray().isEmpty();
        for (const QString key : {"length", "load", "name", "group", "camber"}) {
            if (!values.contains(key))
                continue;
            const QString text = values[key].toString();
            const QString after = values[key].isNull() ? none
                : key == "name" || key == "group"      ? text
                                                       : bitsOf(text.toDouble());
            isRefused = isRefused
                || (key == "length" && (text.toDouble() < 0.1 || text.toDouble() > 40.0));
            const Laws::Step more = stepOf(
                key, [&](const QString&) { return std::optional(after); });
            for (auto change = more.begin(); change != more.end(); ++change)
                step[change.key()] = change.value();
        }
        const bool isTaken = !isRefused && m_laws.carryOut(step, 0);
        try {
            m_selection.load(m_saved);
            return isTaken ? QString() : "the file was not refused";
        } catch (const PropertyError& error) {
            return isTaken ? "the file was refused: " + error.reason() : QString();
        }
    }

    QString endTurn()
    {
        m_changed = m_failed = 0;
        m_model.flush();
        const int due = std::exchange(m_laws.isAnnounced, false) ? 1 : 0;
        if (m_changed != due)
            return QString("changed() came %1 times instead of %2").arg(m_changed).arg(due);
        const int failures = std::exchange(m_mustFail, 0);
        if (m_failed != failures)
            return QString("failed() came %1 times instead of %2").arg(m_failed).arg(failures);
        return {};
    }

    QString difference()
    {
        if (m_model.writes.size() != m_laws.writes)
            return QString("%1 writes instead of %2").arg(m_model.writes.size()).arg(m_laws.writes);
        if (m_stack.count() != m_laws.stack.size() || m_stack.index() != m_laws.index) {
            return QString("step %1 of %2 instead of %3 of %4")
                .arg(m_stack.index())
                .arg(m_stack.count())
                .arg(m_laws.index)
                .arg(m_laws.stack.size());
        }
        for (const int id : m_laws.there) {
            const Values values = valuesOf(m_model.beams[std::uint64_t(id)]);
            for (auto value = values.begin(); value != values.end(); ++value) {
                const QString due = m_laws.objects[id][value.key()];
                if (value.value() != due) {
                    return QString("%1 of %2 is %3 instead of %4")
                        .arg(value.key())
                        .arg(id)
                        .arg(value.value(), due);
                }
            }
        }
        return stateDifference();
    }

    /// What the selection has in common.
    QString stateDifference() const
    {
        if (m_laws.selected.isEmpty())
            return {};
        const auto states = m_selection.read({"length", "load", "name", "group"});
        int place = 0;
        for (const QString key : {"length", "load", "name", "group"}) {
            QStringList values;
            for (const int id : m_laws.selectedAndThere())
                values << m_laws.objects[id][key];
            values.removeDuplicates();
            const int due = values.isEmpty() ? PropertyState::NoObject
                : values.size() > 1          ? PropertyState::Varies
                : values.first() == none     ? PropertyState::NoValue
                                             : PropertyState::Common;
            const int state = states[std::size_t(place++)].kind;
            if (state != due)
                return QString("%1 is in state %2 instead of %3").arg(key).arg(state).arg(due);
        }
        return {};
    }

    BeamModel m_model{int(beamCount)};
    QUndoStack m_stack;
    PropertySelection m_selection;
    Laws m_laws;
    std::vector<Beams::node_type> m_deleted;
    QJsonObject m_saved;
    int m_changed = 0;
    int m_failed = 0;
    int m_mustFail = 0;
};

} // namespace

class TestPropertySelectionSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheLaws()
    {
        runRandomSequences(Beside::actions(), [] { return std::make_unique<Beside>(); });
    }
};

VRN_TEST(TestPropertySelectionSequence)
#include "tst_property_selection_sequence.moc"
