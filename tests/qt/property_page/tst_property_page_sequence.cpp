#include <vrn/qt/property_error.h>
#include <vrn/qt/property_page.h>
#include <vrn/qt/varies_string.h>

#include "support/other_language.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "qt/properties/beam_model.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QPair>
#include <QTest>
#include <QUndoStack>
#include <QVBoxLayout>

#include <functional>
#include <optional>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

constexpr int beamCount = 4;
const QString none = "-";

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

/// The values of one object by property, each as a text that tells its bits.
using Values = QMap<QString, QString>;

Values valuesOf(const Beam& beam)
{
    return {{"name", beam.name}, {"active", QString::number(int(beam.isActive))},
        {"length", bitsOf(beam.length)}, {"factor", bitsOf(beam.factor)},
        {"bolts", QString::number(beam.bolts)}, {"support", QString::number(int(beam.support))},
        {"load", beam.load ? bitsOf(*beam.load) : none}, {"camber", bitsOf(beam.camber())}};
}

/// The new value for an old one; none leaves the object as it is.
using Change = std::function<std::optional<QString>(const QString& old)>;

/// What a step of the undo stack has changed: the values before and after.
struct Step
{
    QMap<QPair<int, QString>, QPair<QString, QString>> changes; ///< By object and property.
    int gesture = 0;
};

/// What a typed text is by the laws.
struct Typed
{
    QString key;
    QString text;
    bool isComplete;
    Change change;
    /// The setter of the object refuses it, once it is called.
    bool isRefusedBySetter = false;
};

Change to(const QString& value)
{
    return [value](const QString&) { return std::optional(value); };
}

Change addTo(double summand)
{
    return [summand](const QString& old) -> std::optional<QString> {
        const double value = fromBits(old) + summand;
        return value >= 0.1 && value <= 40.0 ? std::optional(bitsOf(value)) : std::nullopt;
    };
}

const std::vector<Typed>& typedTexts()
{
    static const std::vector<Typed> texts{
        {"length", "5 m", true, to(bitsOf(5.0))},
        {"length", "7.123456789 m", true, to(bitsOf(7.123456789))},
        {"length", "3 m + 20 cm", true, to(bitsOf(3.2))},
        {"length", "+= 1 m", true, addTo(1.0)},
        {"length", "-= 30 m", true, addTo(-30.0)},
        {"length", "12 mn", false, {}},
        {"length", "12 m ", true, to(bitsOf(12.0))},
        {"length", "3 +", false, {}},
        {"length", "50 m", false, {}},
        {"length", "", false, {}},
        {"factor", "1.23456", true, to(bitsOf(1.23456))},
        {"factor", "2", true, to(bitsOf(2.0))},
        {"factor", "two", false, {}},
        {"factor", "", false, {}},
        {"bolts", "7", true, to("7")},
        {"bolts", "8", false, {}},
        {"bolts", "1.5", false, {}},
        {"bolts", "101", false, {}},
        {"name", "ridge", true, to("ridge")},
        {"name", "", true, to("")},
        {"name", "a name that is far too long", false, {}},
        {"load", "2 kN/m", true, to(bitsOf(2.0))},
        {"load", "", true, to(none)},
        {"load", "2 kNm", false, {}},
        {"camber", "0.5", true, to(bitsOf(0.5))},
        {"camber", "-1", true, to(bitsOf(-1.0)), true},
    };
    return texts;
}

const QStringList keys{
    "name", "active", "length", "factor", "bolts", "area", "support", "load", "group", "camber"};
const QStringList lineKeys{"name", "length", "factor", "bolts", "load", "group", "camber"};

QString sectionOf(const QString& key)
{
    return key == "name" || key == "active"                                      ? "general"
        : key == "support" || key == "load" || key == "group" || key == "camber" ? "statics"
                                                                                 : "geometry";
}

/// Another kind, with some of the properties of beams.
PropertySet<Beam> wallProperties()
{
    PropertySet<Beam> walls("wall", &countedBeams);
    walls.section("general", "General")
        .add("name", "&Name", &Beam::name, field::text().maxLength(20));
    walls.section("geometry", "Geometry")
        .add("length", "&Length", &Beam::length,
            field::quantity(vrn::units::UnitId::GEO_LENGTH).between(0.1, 40.0));
    walls.section("statics", "Statics", false)
        .add("load", "L&oad", &Beam::load, field::quantity(vrn::units::UnitId::LOAD_LINE));
    return walls;
}

constexpr int firstWall = 100;

ObjectId idOf(int object)
{
    return object < firstWall ? ObjectId(std::uint64_t(object))
                              : ObjectId(std::uint64_t(object - firstWall), 1);
}

/// A window that asks its page and stays.
class StayingWindow : public QWidget
{
protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

class PageBeside final : public Subject
{
public:
    PageBeside()
    {
        m_model.beforeWrite = [this] {
            if (m_throws)
                throw PropertyError("not now");
        };
        for (int wall = 0; wall < 2; ++wall)
            m_walls[std::uint64_t(wall)].name = QString("W%1").arg(wall);
        m_model.addKind(wallProperties(), &m_walls);
        takeOver();
        m_page = new PropertyPage(&m_window);
        auto* layout = new QVBoxLayout(&m_window);
        layout->addWidget(m_page);
        m_other = new QLineEdit(&m_window);
        layout->addWidget(m_other);
        m_page->setModel(&m_model);
        m_page->setUndoStack(&m_stack);
        QObject::connect(qApp, &QApplication::focusChanged, &m_window, [this] { ++m_gesture; });
        m_window.resize(400, 700);
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        select({0, 1, 2});
    }

    /// What changes values comes most often.
    static QStringList actions()
    {
        const QStringList often{"type", "type", "Enter", "leave", "Escape", "undo", "undo", "redo",
            "press a key in the list", "change from elsewhere", "delete or restore"};
        return often + often
            + QStringList{"type", "type what stood there", "Enter", "Tab", "leave", "Escape",
                "focus", "fold", "filter", "select", "undo", "redo", "change from elsewhere",
                "delete or restore", "change the units", "hide and show", "disable and enable",
                "read-only and back", "close the window", "finish", "cancel", "set a value",
                "press a key in the list", "press the box", "look", "change the palette",
                "throw or not", "end the turn", "change the locale", "change the language", "save",
                "load", "pick from the spread", "clear", "press F2", "click", "another window",
                "leave in another window", "open a menu"};
    }

    QString perform(int action, unsigned argument) override
    {
        Choice choice(argument);
        // A window of hints that goes may take that from it.
        if (!m_window.isActiveWindow())
            QApplication::setActiveWindow(&m_window);
        const QString name = actions()[action];
        m_model.writes.clear();
        m_due = 0;
        QString problem = act(name, choice);
        return problem.isEmpty() ? difference() : problem;
    }

private:
    struct Pending
    {
        Typed typed;
        bool isRefused; ///< It has been tried, or is not complete.
    };

    QString act(const QString& name, Choice& choice)
    {
        if (name == "type")
            return type(choice);
        if (name == "type what stood there")
            return typeBack(choice);
        if (name == "Enter" || name == "Tab" || name == "leave")
            endByUser(name);
        else if (name == "Escape")
            escape();
        else if (name == "focus")
            focus(lineKeys[choice.below(int(lineKeys.size()))]);
        else if (name == "fold")
            fold(choice.of({"general", "geometry", "statics"}));
        else if (name == "filter")
            filter(choice.of({"", "l", "name", "nothing"}));
        else if (name == "select")
            select(choice);
        else if (name == "undo" || name == "redo")
            undoOrRedo(name == "undo");
        else if (name == "change from elsewhere")
            changeFromElsewhere(choice);
        else if (name == "delete or restore")
            deleteOrRestore();
        else if (name == "change the units")
            changeUnits(choice.below(10));
        else if (name == "hide and show")
            hideAndShow();
        else if (name == "disable and enable")
            disableAndEnable();
        else if (name == "read-only and back")
            readOnlyAndBack();
        else if (name == "close the window")
            closeWindow();
        else if (name == "finish")
            return finish();
        else if (name == "cancel")
            cancel();
        else if (name == "set a value")
            return setValue(choice);
        else if (name == "press a key in the list")
            press("support", choice.of({Qt::Key_Down, Qt::Key_Up}));
        else if (name == "press the box")
            press("active", Qt::Key_Space);
        else if (name == "look")
            look(choice);
        else if (name == "change the palette")
            changePalette(choice);
        else if (name == "throw or not")
            m_throws = !m_throws;
        else if (name == "change the locale")
            changeLocale();
        else if (name == "change the language")
            changeLanguage();
        else if (name == "save")
            save();
        else if (name == "load")
            return load();
        else if (name == "pick from the spread")
            pickFromSpread(choice);
        else if (name == "clear")
            clear();
        else if (name == "press F2" || name == "click")
            return begin(choice, name == "click");
        else if (name == "another window" || name == "leave in another window")
            visitAnotherWindow(name != "another window");
        else if (name == "open a menu")
            openMenu();
        else
            return endTurn(choice);
        return {};
    }

    // --- What the laws say ---

    /// The objects are what the model has; for acts that another test holds to the laws.
    void takeOver()
    {
        m_objects.clear();
        for (const auto& beam : m_model.beams)
            m_objects[int(beam.first)] = valuesOf(beam.second);
        for (const auto& wall : m_walls)
            m_objects[firstWall + int(wall.first)] = valuesOf(wall.second);
    }

    bool isWallSelected() const { return !m_selected.isEmpty() && m_selected.last() >= firstWall; }

    /// Whether the edit was taken.
    bool carryOut(const Typed& typed, bool isInGesture = false)
    {
        if (!isInGesture)
            ++m_gesture;
        Step step;
        step.gesture = isInGesture ? m_gesture : 0;
        addChanges(typed, step);
        return carryOut(step, typed.isRefusedBySetter);
    }

    void addChanges(const Typed& typed, Step& step) const
    {
        for (const int id : m_selected) {
            if (!m_objects.contains(id))
                continue;
            const QString old = m_objects[id][typed.key];
            const std::optional<QString> value = typed.change(old);
            if (value && *value != old)
                step.changes[{id, typed.key}] = {old, *value};
        }
    }

    bool carryOut(const Step& step, bool isRefusedBySetter)
    {
        if (step.changes.isEmpty())
            return true;
        ++m_due;
        if (m_throws || isRefusedBySetter)
            return false;
        for (auto change = step.changes.begin(); change != step.changes.end(); ++change)
            m_objects[change.key().first][change.key().second] = change->second;
        m_steps.resize(std::size_t(m_step));
        m_steps.push_back(step);
        ++m_step;
        if (step.gesture > 0 && m_step > 1
            && m_steps[std::size_t(m_step) - 2].gesture == step.gesture)
            merge();
        return true;
    }

    /// The last two steps are one, or none if it comes back to where it began.
    void merge()
    {
        const Step later = m_steps.back();
        m_steps.pop_back();
        auto& changes = m_steps.back().changes;
        for (auto change = later.changes.begin(); change != later.changes.end(); ++change) {
            const QString before = changes.value(change.key(), *change).first;
            if (before == change->second)
                changes.remove(change.key());
            else
                changes[change.key()] = {before, change->second};
        }
        if (changes.isEmpty())
            m_steps.pop_back();
        m_step = int(m_steps.size());
    }

    /// Enter, Tab and leaving.
    void endSoftly(const QString& key)
    {
        const auto pending = m_pending.find(key);
        if (pending == m_pending.end() || pending->isRefused)
            return;
        if (pending->typed.isComplete && carryOut(pending->typed)) {
            m_pending.remove(key);
        } else {
            pending->isRefused = true;
        }
    }

    /// What drops an incomplete text.
    void endHard(const QString& key)
    {
        endSoftly(key);
        m_pending.remove(key);
    }

    void endAllHard()
    {
        for (const QString& key : lineKeys)
            endHard(key);
    }

    // --- What the user does ---

    QLineEdit* lineEdit(const QString& key) const
    {
        QWidget* editor = m_page->findChild<QWidget*>(key);
        if (!editor)
            return nullptr;
        auto* edit = qobject_cast<QLineEdit*>(editor);
        return edit ? edit : editor->findChild<QLineEdit*>();
    }

    QString focused() const
    {
        for (const QString& key : lineKeys) {
            const QLineEdit* edit = lineEdit(key);
            if (edit && m_window.focusWidget() == edit)
                return key;
        }
        return {};
    }

    /// The edit if it could be given the focus.
    QLineEdit* focus(const QString& key)
    {
        QLineEdit* edit = lineEdit(key);
        if (!edit || !edit->isVisible())
            return nullptr;
        if (!edit->hasFocus()) {
            const QString before = focused();
            endSoftly(before);
            edit->setFocus(Qt::TabFocusReason);
        }
        return edit->hasFocus() && !edit->isReadOnly() ? edit : nullptr;
    }

    static void enter(QLineEdit* edit, const QString& text)
    {
        edit->selectAll();
        if (text.isEmpty()) {
            QTest::keyClick(edit, Qt::Key_Delete);
            return;
        }
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(edit, &event);
    }

    QString type(Choice& choice)
    {
        const Typed& typed = typedTexts()[std::size_t(choice.below(int(typedTexts().size())))];
        QLineEdit* edit = focus(typed.key);
        if (!edit)
            return {};
        if (!m_pending.contains(typed.key)) {
            m_page->flush();
            m_baselines[typed.key] = textsOf(typed.key) << edit->text();
        }
        if (edit->isReadOnly() || edit->text() == typed.text)
            return {}; // no edit
        enter(edit, typed.text);
        m_pending[typed.key] = {typed, !typed.isComplete};
        if (m_page->row(typed.key.toStdString()).edit == EditState::Untouched) {
            m_pending.remove(typed.key);
            if (!m_baselines[typed.key].contains(typed.text))
                return typed.text + " counts as untouched";
        }
        return {};
    }

    /// How the common value is shown, and its full digits.
    QStringList textsOf(const QString& key) const
    {
        const PropertyDescription* property = m_model.kind(0).find(key.toStdString());
        const PropertyState state =
            m_model.readStates({key.toStdString()}, m_page->selection()).front();
        if (state.kind == PropertyState::Varies)
            return {};
        return {property->field.text(state.value, m_model.units()),
            property->field.exactText(state.value, m_model.units())};
    }

    QString typeBack(Choice& choice)
    {
        const QString key = !m_pending.isEmpty() && choice.below(2) == 0
            ? m_pending.firstKey()
            : lineKeys[choice.below(int(lineKeys.size()))];
        QLineEdit* edit = focus(key);
        if (!edit)
            return {};
        m_page->flush();
        const auto pending = m_pending.find(key);
        if (pending == m_pending.end()) {
            const QString before = edit->text();
            enter(edit, "1");
            enter(edit, before);
        } else if (!m_baselines[key].isEmpty()) {
            // What stood there before it was typed into. The objects may have another value.
            if (choice.below(2) == 0)
                changeFromElsewhere(choice);
            m_page->flush();
            enter(edit, m_baselines[key].last());
            m_pending.remove(key);
            const QStringList texts = textsOf(key);
            if (!texts.isEmpty() && !texts.contains(edit->text()))
                return QString("%1 shows %2 instead of %3").arg(key, edit->text(), texts[0]);
        }
        return {};
    }

    void endByUser(const QString& how)
    {
        const QString key = focused();
        if (key.isEmpty())
            return;
        const auto pending = m_pending.find(key);
        // Enter tries again what was refused.
        if (how == "Enter" && pending != m_pending.end() && pending->typed.isComplete)
            pending->isRefused = false;
        endSoftly(key);
        if (how == "Enter")
            QTest::keyClick(lineEdit(key), Qt::Key_Return);
        else if (how == "Tab")
            QTest::keyClick(lineEdit(key), Qt::Key_Tab);
        else
            m_other->setFocus(Qt::MouseFocusReason);
    }

    void escape()
    {
        const QString key = focused();
        if (key.isEmpty())
            return;
        QTest::keyClick(lineEdit(key), Qt::Key_Escape);
        m_pending.remove(key);
    }

    void fold(const QString& section)
    {
        auto* head = m_page->findChild<QAbstractButton*>("section." + section);
        if (!head || !head->isVisible())
            return;
        endSoftly(focused());
        m_other->setFocus();
        for (const QString& key : lineKeys) {
            const QLineEdit* edit = lineEdit(key);
            if (edit && edit->isVisible() && sectionOf(key) == section)
                endHard(key);
        }
        head->click();
    }

    void filter(const QString& text)
    {
        auto* edit = m_page->findChild<QLineEdit*>("filter");
        if (!edit)
            return;
        endSoftly(focused());
        edit->setFocus();
        enter(edit, text);
        // What it hides is ended.
        for (const QString& key : lineKeys) {
            const QLineEdit* line = lineEdit(key);
            if (!line || !line->isVisible())
                endHard(key);
        }
    }

    void select(const QList<int>& ids)
    {
        if (ids != m_selected) {
            endAllHard();
            ++m_gesture;
        }
        m_selected = ids;
        ObjectIds selected;
        for (const int id : ids)
            selected.push_back(idOf(id));
        m_page->setSelection(selected);
    }

    void select(Choice& choice)
    {
        QList<int> ids;
        for (int id = 0; id < beamCount; ++id) {
            if (choice.below(2) == 0)
                ids << id;
        }
        if (choice.below(4) == 0)
            ids << firstWall;
        if (choice.below(8) == 0)
            ids << firstWall + 1;
        select(ids);
    }

    void undoOrRedo(bool isUndo)
    {
        const int place = isUndo ? m_step - 1 : m_step;
        if (isUndo)
            m_stack.undo();
        else
            m_stack.redo();
        if (place < 0 || place >= int(m_steps.size()))
            return;
        ++m_due;
        m_step += isUndo ? -1 : 1;
        const auto step = m_steps.begin() + place;
        if (m_throws) {
            // It is obsolete.
            m_step = place;
            m_steps.erase(step);
            return;
        }
        for (auto change = step->changes.begin(); change != step->changes.end(); ++change) {
            const int id = change.key().first;
            if (m_objects.contains(id))
                m_objects[id][change.key().second] = isUndo ? change->first : change->second;
        }
    }

    void changeFromElsewhere(Choice& choice)
    {
        for (auto& beam : m_model.beams) {
            if (choice.below(2) == 0)
                continue;
            // Out of the range of an edit, too.
            beam.second.length = choice.of({3.0, 1000.0, 5.0 / 7.0, 3.0000001});
            beam.second.support = choice.of({Support::Fixed, Support::Pinned, Support::Free});
        }
        m_model.announce({"length", "support"});
        takeOver();
    }

    void deleteOrRestore()
    {
        if (m_deleted.empty() && !m_model.beams.empty()) {
            m_deleted.push_back(m_model.beams.extract(m_model.beams.begin()));
        } else if (!m_deleted.empty()) {
            m_model.beams.insert(std::move(m_deleted.back()));
            m_deleted.pop_back();
        }
        m_model.announce();
        takeOver();
    }

    void changeUnits(int system)
    {
        endAllHard();
        m_model.setUnits(vrn::units::Context(system));
    }

    void hideAndShow()
    {
        endAllHard();
        m_page->hide();
        m_page->show();
    }

    void disableAndEnable()
    {
        endSoftly(focused());
        m_page->setEnabled(false);
        m_page->setEnabled(true);
    }

    void readOnlyAndBack()
    {
        endAllHard();
        m_page->setReadOnly(true);
        m_page->setReadOnly(false);
    }

    void closeWindow()
    {
        endAllHard();
        m_window.close();
    }

    QString finish()
    {
        for (const QString& key : lineKeys)
            endSoftly(key);
        const bool isDone = m_page->finishEditing();
        const bool isDue = m_pending.isEmpty() && !isPickPending("active")
            && !isPickPending("support");
        return isDone == isDue ? QString() : QString("finishEditing() is %1").arg(isDone);
    }

    /// What was picked and refused is pending, too.
    bool isPickPending(const std::string& key) const
    {
        return m_page->row(key).edit != EditState::Untouched;
    }

    void cancel()
    {
        m_page->cancelEditing();
        m_pending.clear();
    }

    QString setValue(Choice& choice)
    {
        if (m_selected.isEmpty() || isWallSelected())
            return {};
        const auto support = choice.of({Support::Fixed, Support::Pinned});
        const Typed typed{"support", {}, true, to(QString::number(int(support)))};
        const bool isTaken = carryOut(typed);
        try {
            m_page->setValue("support", support);
            return isTaken ? "" : "the value was not refused";
        } catch (const PropertyError& error) {
            return isTaken ? error.reason() : QString();
        }
    }

    /// What a key picks in the list and in the box, by what these show.
    void press(const QString& key, Qt::Key pressed)
    {
        m_page->flush();
        auto* editor = m_page->findChild<QWidget*>(key);
        if (!editor || !editor->isVisible() || !editor->isEnabled())
            return;
        endSoftly(focused());
        editor->setFocus(Qt::TabFocusReason);
        if (!editor->hasFocus())
            return;
        auto* list = qobject_cast<QComboBox*>(editor);
        auto* box = qobject_cast<QCheckBox*>(editor);
        const int before = list ? list->currentIndex() : int(box->checkState());
        if (!isPickPending(key.toStdString()))
            m_firstPicks[key] = before;
        const int after = !list
            ? (before == int(Qt::Checked) ? int(Qt::Unchecked) : int(Qt::Checked))
            : pressed == Qt::Key_Down ? before + 1
                                      : before - 1;
        const QString text = list ? list->itemText(after) : QString();
        QTest::keyClick(editor, pressed);
        if (list && (after < 0 || after >= list->count() + (text.isEmpty() ? 0 : 1)))
            return;
        if (after == m_firstPicks[key])
            return;
        if (box)
            carryOut({key, {}, true, to(QString::number(int(after == int(Qt::Checked))))});
        else if (text == "fixed" || text == "pinned")
            carryOut(
                {key, {}, true,
                    to(QString::number(int(text == "pinned" ? Support::Pinned : Support::Fixed)))},
                true);
    }

    void changeLocale()
    {
        endAllHard();
        const bool isGerman = m_page->locale().language() == QLocale::German;
        m_page->setLocale(isGerman ? QLocale::c() : QLocale(QLocale::German));
    }

    void changeLanguage()
    {
        endAllHard();
        m_language.change();
        deliverLanguage();
    }

    void save()
    {
        if (m_model.beams.empty())
            return;
        const auto first = m_model.beams.begin();
        m_saved = PropertySelection(&m_model, {first->first}).save();
        m_savedValues = valuesOf(first->second);
        m_isSavedInRange = first->second.length <= 40.0 && first->second.support != Support::Free;
    }

    QString load()
    {
        if (m_saved.isEmpty())
            return {};
        endAllHard();
        ++m_gesture;
        Step step;
        for (const QString& key : keys) {
            if (m_savedValues.contains(key))
                addChanges({key, {}, true, to(m_savedValues[key])}, step);
        }
        bool isTaken = m_isSavedInRange && !m_selected.isEmpty() && !isWallSelected();
        isTaken = isTaken && carryOut(step, false);
        try {
            m_page->load(m_saved);
            return isTaken ? "" : "the file was not refused";
        } catch (const PropertyError& error) {
            return isTaken ? error.reason() : QString();
        }
    }

    /// The most frequent value, to all.
    void pickFromSpread(Choice& choice)
    {
        const QString key = choice.of({"length", "factor", "bolts", "load"});
        m_page->flush();
        QLineEdit* edit = focus(key);
        if (!edit || m_pending.contains(key))
            return;
        PropertySelection selection(&m_model, m_page->selection());
        if (m_page->row(key.toStdString()).state != PropertyState::Varies)
            return;
        const PropertySpread spread = selection.spread(key.toStdString());
        const PropertySpread::Share& first = spread.frequent.front();
        const auto* number = boost::any_cast<double>(&first.value);
        const bool isInRange = key == "bolts"
            ? boost::any_cast<int>(first.value) % 2 == 1
            : key != "length" || (*number >= 0.1 && *number <= 40.0);
        const QString value = number ? bitsOf(*number)
                                     : QString::number(boost::any_cast<int>(first.value));
        m_baselines[key] = QStringList(edit->text());
        // The list was offered when the field got the focus.
        QTest::keyClick(edit, Qt::Key_F2);
        QTest::keyClick(edit, Qt::Key_Down);
        QTest::keyClick(edit, Qt::Key_Return);
        const Typed typed{key, edit->text(), isInRange, to(value)};
        if (!isInRange || !carryOut(typed))
            m_pending[key] = {typed, true};
    }

    void clear()
    {
        m_page->flush();
        QLineEdit* edit = focus("load");
        if (!edit || m_pending.contains("load"))
            return;
        m_baselines["load"] = textsOf("load") << edit->text();
        const Typed typed{"load", "", true, to(none)};
        QTest::keyClick(edit, Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
        if (!carryOut(typed))
            m_pending["load"] = {typed, true};
    }

    /// F2 and a click offer all digits.
    QString begin(Choice& choice, bool byMouse)
    {
        const QString key = lineKeys[choice.below(int(lineKeys.size()))];
        m_page->flush();
        QLineEdit* edit = lineEdit(key);
        if (!edit || !edit->isVisible())
            return {};
        if (byMouse && focused() != key)
            endSoftly(focused());
        else if (!byMouse && !focus(key))
            return {};
        if (byMouse)
            QTest::mouseClick(edit, Qt::LeftButton);
        else
            QTest::keyClick(edit, Qt::Key_F2);
        const QStringList texts = textsOf(key);
        if (texts.isEmpty() || m_pending.contains(key) || edit->isReadOnly()
            || edit->text() == texts[1])
            return {};
        return QString("%1 offers %2 instead of %3").arg(key, edit->text(), texts[1]);
    }

    void visitAnotherWindow(bool leaves)
    {
        const QString key = focused();
        m_elsewhere.show();
        QApplication::setActiveWindow(&m_elsewhere);
        if (leaves)
            m_other->setFocus();
        QApplication::setActiveWindow(&m_window);
        if (leaves) {
            endSoftly(key);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        }
    }

    void openMenu()
    {
        QMenu menu(&m_window);
        menu.addAction("Copy");
        menu.popup(m_window.mapToGlobal(QPoint(5, 5)));
        menu.close();
    }

    void look(Choice& choice)
    {
        for (const QString& key : keys)
            m_page->row(key.toStdString());
        if (choice.below(4) == 0)
            m_page->grab();
    }

    void changePalette(Choice& choice)
    {
        QPalette palette = m_window.palette();
        palette.setColor(QPalette::Base, choice.of({Qt::white, Qt::black}));
        m_window.setPalette(palette);
    }

    /// A new page for comparison takes as long as many steps.
    QString endTurn(Choice& choice)
    {
        m_page->flush();
        return choice.below(3) == 0 ? pageDifference() : QString();
    }

    // --- What differs ---

    QString difference()
    {
        if (m_model.writes.size() != m_due) {
            return QString("%1 writes instead of %2: %3")
                .arg(m_model.writes.size())
                .arg(m_due)
                .arg(m_model.writes.join("; "));
        }
        if (m_stack.index() != m_step || m_stack.count() != int(m_steps.size())) {
            return QString("step %1 of %2 instead of %3 of %4")
                .arg(m_stack.index())
                .arg(m_stack.count())
                .arg(m_step)
                .arg(m_steps.size());
        }
        // Nothing else changes the objects.
        if (const QString text = m_model.writes.isEmpty() ? QString() : objectDifference();
            !text.isEmpty()) {
            return text;
        }
        for (auto pending = m_pending.begin(); pending != m_pending.end(); ++pending) {
            const PropertyRow row = m_page->row(pending.key().toStdString());
            const bool isRefused = row.edit == EditState::Refused
                || row.edit == EditState::Unfinished;
            if (row.text != pending->typed.text)
                return QString("%1 was typed, and %2 is there").arg(pending->typed.text, row.text);
            if (isRefused != pending->isRefused)
                return QString("%1 is in state %2").arg(pending->typed.text).arg(int(row.edit));
            if (isRefused && row.reason.isEmpty())
                return pending->typed.text + " is refused without a reason";
        }
        return {};
    }

    QString objectDifference() const
    {
        for (auto object = m_objects.begin(); object != m_objects.end(); ++object) {
            const std::uint64_t key = idOf(object.key()).key;
            const Beams& all = object.key() < firstWall ? m_model.beams : m_walls;
            const Values values = valuesOf(all.at(key));
            for (auto value = values.begin(); value != values.end(); ++value) {
                const QString due = object->value(value.key());
                if (value.value() != due) {
                    return QString("%1 of %2 is %3 instead of %4")
                        .arg(value.key())
                        .arg(object.key())
                        .arg(value.value(), due);
                }
            }
        }
        return {};
    }

    QString pageDifference() const
    {
        PropertyPage fresh;
        fresh.setModel(&m_model);
        fresh.setSelection(m_page->selection());
        for (const QString& key : keys) {
            const PropertyRow row = m_page->row(key.toStdString());
            const PropertyRow due = fresh.row(key.toStdString());
            if (row.state != due.state) {
                return QString("%1 is in state %2 instead of %3")
                    .arg(key)
                    .arg(int(row.state))
                    .arg(int(due.state));
            }
            const bool isPicked = !lineKeys.contains(key) && isPickPending(key.toStdString());
            if (m_pending.contains(key) || isPicked)
                continue;
            // When editing began, all digits were offered.
            if (key == focused() && textsOf(key).contains(row.text))
                continue;
            if (row.text != due.text || row.edit != due.edit || row.reason != due.reason)
                return QString("%1 shows \"%2\" instead of \"%3\"").arg(key, row.text, due.text);
            const QLineEdit* edit = lineKeys.contains(key) ? lineEdit(key) : nullptr;
            if (edit && edit->isVisible() && edit->text() != due.text)
                return QString("%1 has the text \"%2\"").arg(key, edit->text());
        }
        return {};
    }

    Beams m_walls;
    mutable BeamModel m_model{beamCount};
    QUndoStack m_stack;
    StayingWindow m_window;
    QWidget m_elsewhere;
    PropertyPage* m_page = nullptr;
    QLineEdit* m_other = nullptr;

    QMap<int, Values> m_objects;
    QList<int> m_selected;
    QMap<QString, Pending> m_pending;
    /// What stood in the field before it was typed into, in full and rounded.
    QMap<QString, QStringList> m_baselines;
    std::vector<Beams::node_type> m_deleted;
    bool m_throws = false;
    int m_due = 0; ///< Writes.
    std::vector<Step> m_steps; ///< Of the undo stack.
    int m_step = 0; ///< Its index.
    int m_gesture = 0; ///< Counts. It ends with the focus.
    QMap<QString, int> m_firstPicks; ///< What list and box showed before they were picked in.
    QJsonObject m_saved;
    Values m_savedValues;
    bool m_isSavedInRange = false;
    OtherLanguage m_language;
};

} // namespace

class TestPropertyPageSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheLaws()
    {
        runRandomSequences(PageBeside::actions(), [] { return std::make_unique<PageBeside>(); });
    }
};

VRN_TEST(TestPropertyPageSequence)
#include "tst_property_page_sequence.moc"
