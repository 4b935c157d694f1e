#include "enum_box_fixture.h"
#include "support/other_language.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QFocusEvent>
#include <QSignalSpy>

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

// A model of a box with steels() and strength(): a state machine without a widget.
class Model
{
public:
    QStringList rows = {"S235", "S275", "S355"};
    int index = 0;
    bool varies = false;
    int changed = 0;
    int activated = 0;

    QString shown() const { return m_editable ? m_text : rows[index]; }

    boost::any currentValue() const { return varies ? boost::any() : value(); }

    void fill()
    {
        rows = QStringList({"S235", "S275", "S355"});
        m_various = -1;
        index = 0;
        m_text = rows[0];
        // The text has changed, even if only for a moment.
        varies = varies && !m_editable;
    }

    void setEditable(bool editable)
    {
        if (editable && !m_editable)
            m_text = rows[index];
        m_editable = editable;
        if (editable)
            ++m_timesEditable;
    }

    void reset()
    {
        varies = false;
        m_fresh = true;
        if (m_various < 0)
            return;
        const QString text = showsVarious() ? m_textBefore : shown();
        if (index == m_various)
            select(m_rowBefore);
        rows.removeAt(m_various);
        if (index > m_various)
            --index;
        m_various = -1;
        setText(text);
    }

    void read(int number)
    {
        if (m_fresh) {
            set(number);
            m_fresh = false;
        } else if (!varies && !sameValue(value(), number)) {
            forceVaries();
        }
    }

    void forceVaries()
    {
        m_fresh = false;
        selectVarious();
        varies = true;
    }

    void set(int number)
    {
        const int row = rowOf(number);
        if (row >= 0)
            select(row);
        else
            setText(QString::number(number));
        selected();
    }

    void setByName(int row)
    {
        select(row);
        selected();
    }

    void step(int by)
    {
        if (!isRow(index + by))
            return;
        select(index + by);
        ++changed;
    }

    void arrowKey(int by)
    {
        if (isRow(index + by))
            pick(index + by);
    }

    void type(const QString& text)
    {
        if (!m_editable)
            return;
        // Even if the text is the same in the end, it was another one in between.
        m_text = text;
        if (text == getVariesString())
            selectVarious();
        textChanged();
    }

    void languageChanged(const QString& before)
    {
        if (m_various < 0)
            return;
        const bool isShown = index == m_various && shown() == before;
        rows[m_various] = getVariesString();
        if (isShown)
            setText(rows[m_various]);
    }

    void leave()
    {
        if (!m_editable)
            return;
        finish();
        const int row = int(rows.indexOf(m_text));
        if (m_text != rows[index] && row >= 0)
            pick(row);
    }

    void enter()
    {
        if (!m_editable || showsVarious())
            return;
        if (!rows.contains(m_text))
            rows << m_text;
        pick(int(rows.indexOf(m_text)));
        leave();
    }

    static int rowOf(int number)
    {
        const int numbers[] = {235, 275, 355};
        const auto* found = std::find(std::begin(numbers), std::end(numbers), number);
        return found == std::end(numbers) ? -1 : int(found - numbers);
    }

private:
    bool isRow(int row) const { return row >= 0 && row < rows.size(); }

    void selectVarious()
    {
        if (m_various < 0) {
            m_various = int(rows.size());
            rows << getVariesString();
        }
        if (showsVarious())
            return;
        if (index != m_various)
            m_rowBefore = index;
        // If the text was typed over another row, it is not what was shown before.
        m_textBefore = shown() == getVariesString() ? rows[m_rowBefore] : shown();
        select(m_various);
    }

    bool showsVarious() const
    {
        return m_various >= 0 && index == m_various && shown() == getVariesString();
    }

    boost::any value() const
    {
        const NamedValueList entries = steels();
        if (!m_editable)
            return index < 3 ? entries[std::size_t(index)].second : boost::any();
        for (const auto& [name, number] : entries) {
            if (name == m_text)
                return number;
        }
        return isNumber() ? boost::any(m_text.toInt()) : boost::any();
    }

    bool isNumber() const
    {
        bool ok = false;
        m_text.toInt(&ok);
        return ok;
    }

    void select(int row)
    {
        index = row;
        setText(rows[row]);
    }

    void setText(const QString& text)
    {
        if (!m_editable || text == m_text)
            return;
        m_text = text;
        textChanged();
    }

    // A user who types the varies text leaves a box that is not fresh.
    void textChanged()
    {
        varies = showsVarious();
        m_fresh = m_fresh && !varies;
    }

    void selected()
    {
        varies = false;
        ++changed;
    }

    void pick(int row)
    {
        select(row);
        ++activated;
        selected();
        selected();
    }

    // What the line edit does: it clamps and formats, and emits if the text is not an entry.
    void finish()
    {
        if (m_text == getVariesString())
            return;
        if (isNumber())
            setText(QString::number(std::min(m_text.toInt(), 999)));
        if (rows.mid(0, 3).contains(m_text))
            return;
        changed += m_timesEditable;
    }

    bool m_editable = false;
    int m_timesEditable = 0;
    bool m_fresh = true;
    QString m_text;
    int m_various = -1;
    int m_rowBefore = 0;
    QString m_textBefore;
};

class BoxBesideModel : public Subject
{
public:
    BoxBesideModel()
        : m_box(MultiEditEnumBox::create(nullptr, {}, &vrn::any_equal<int>))
        , m_changed(m_box.get(), &SimpleEnumBox::valueChanged)
        , m_activated(m_box.get(), &SimpleEnumBox::activated)
    {
        m_box->setValues(steels());
    }

    ~BoxBesideModel() override
    {
        m_box.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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
        all()[std::size_t(action)].perform(*this, *m_box, m_model, argument);
        return difference();
    }

private:
    struct Action
    {
        const char* name;
        void (*perform)(BoxBesideModel& s, MultiEditEnumBox& box, Model& model, unsigned argument);
    };

    static const std::vector<Action>& all()
    {
        // clang-format off
        static const std::vector<Action> actions = {
            {"reset", [](auto&, auto& box, auto& model, unsigned) { box.reset(); model.reset(); }},
            {"readValue", [](auto& s, auto&, auto&, unsigned n) { s.read(s.numberBy(n)); }},
            {"readValue of the value before", [](auto& s, auto&, auto&, unsigned) { s.read(s.m_number); }},
            {"setValue", [](auto& s, auto& box, auto& model, unsigned n) { box.setValue(s.numberBy(n)); model.set(s.numberBy(n)); }},
            {"selectByName", [](auto&, auto& box, auto& model, unsigned n) { box.selectByName(steels()[n % 3].first); model.setByName(int(n % 3)); }},
            {"forceVaries", [](auto&, auto& box, auto& model, unsigned) { box.forceVaries(); model.forceVaries(); }},
            {"next", [](auto&, auto& box, auto& model, unsigned) { box.next(); model.step(1); }},
            {"previous", [](auto&, auto& box, auto& model, unsigned) { box.previous(); model.step(-1); }},
            {"Down", [](auto&, auto& box, auto& model, unsigned) { QTest::keyClick(&comboOf(box), Qt::Key_Down); model.arrowKey(1); }},
            {"Up", [](auto&, auto& box, auto& model, unsigned) { QTest::keyClick(&comboOf(box), Qt::Key_Up); model.arrowKey(-1); }},
            {"typing", [](auto& s, auto&, auto&, unsigned n) { s.typeText(n); }},
            {"typing and leaving", [](auto& s, auto&, auto&, unsigned n) { s.typeText(n); s.leave(); }},
            {"Enter", [](auto&, auto& box, auto& model, unsigned) { pressEnter(box); model.enter(); }},
            {"setEditable(true)", [](auto& s, auto&, auto&, unsigned) { s.setEditable(true); }},
            {"setEditable(false)", [](auto& s, auto&, auto&, unsigned) { s.setEditable(false); }},
            {"setValues", [](auto&, auto& box, auto& model, unsigned) { box.setValues(steels()); model.fill(); }},
            {"another language", [](auto& s, auto&, auto&, unsigned) { s.changeLanguage(); }},
        };
        // clang-format on
        return actions;
    }

    // A number from the time when the box was editable may not be in its list.
    void read(int number)
    {
        if (!mayBeSelected(number))
            return;
        m_number = number;
        m_box->readValue(number);
        m_model.read(number);
    }

    void setEditable(bool editable)
    {
        m_editable = editable;
        m_box->setEditable(editable, strength());
        // This test is not about the completion of what is typed.
        if (editable)
            comboOf(*m_box).setCompleter(nullptr);
        m_model.setEditable(editable);
    }

    void changeLanguage()
    {
        const QString before = getVariesString();
        m_language.change();
        deliverLanguage();
        m_model.languageChanged(before);
    }

    // A value that is not in the list is a programming error unless the box is
    // editable.
    int numberBy(unsigned argument) const
    {
        static const std::vector<int> numbers = {235, 275, 355, 460, 7};
        return numbers[argument % (m_editable ? numbers.size() : 3)];
    }

    void typeText(unsigned argument)
    {
        const QStringList texts = {"7", "460", "46x", "5000", "S275", "x", getVariesString()};
        const QString& text = texts[int(argument % unsigned(texts.size()))];
        if (m_editable)
            type(*m_box, text);
        m_model.type(text);
    }

    void leave()
    {
        QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
        QCoreApplication::sendEvent(&comboOf(*m_box), &event);
        m_model.leave();
    }

    bool mayBeSelected(int number) const { return m_editable || Model::rowOf(number) >= 0; }

    QString difference() const
    {
        const MultiEditEnumBox& box = *m_box;
        if (rowsOf(box) != m_model.rows)
            return tell("rows", rowsOf(box).join(','), m_model.rows.join(','));
        if (comboOf(box).currentIndex() != m_model.index)
            return tell("row", number(comboOf(box).currentIndex()), number(m_model.index));
        if (textOf(box) != m_model.shown())
            return tell("text", textOf(box), m_model.shown());
        if (box.dataVaries() != m_model.varies)
            return tell("varies", number(box.dataVaries()), number(m_model.varies));
        if (int(m_changed.count()) != m_model.changed)
            return tell("valueChanged", number(int(m_changed.count())), number(m_model.changed));
        if (int(m_activated.count()) != m_model.activated)
            return tell("activated", number(int(m_activated.count())), number(m_model.activated));
        if (!sameValue(box.getCurrentValue(), m_model.currentValue())) {
            return tell("value", describe(box.getCurrentValue()), describe(m_model.currentValue()));
        }
        return {};
    }

    static QString number(int n) { return QString::number(n); }

    static QString tell(const QString& what, const QString& actual, const QString& expected)
    {
        return QString("%1 is %2 instead of %3").arg(what, actual, expected);
    }

    std::unique_ptr<MultiEditEnumBox> m_box;
    QSignalSpy m_changed;
    QSignalSpy m_activated;
    OtherLanguage m_language;
    Model m_model;
    bool m_editable = false;
    int m_number = 235;
};

} // namespace

class TestMultiEditEnumBoxSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomSequenceFollowsTheStateMachine()
    {
        runRandomSequences(
            BoxBesideModel::actions(), [] { return std::make_unique<BoxBesideModel>(); });
    }
};

VRN_TEST(TestMultiEditEnumBoxSequence)
#include "tst_multi_edit_enum_box_sequence.moc"
