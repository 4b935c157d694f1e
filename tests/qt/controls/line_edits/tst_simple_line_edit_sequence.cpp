#include <vrn/qt/simple_line_edit.h>

#include "line_edit_fixture.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLabel>
#include <QSignalSpy>

#include <memory>

using namespace vrn::qt;
using vrn::test::blackText;
using vrn::test::DigitsValidator;
using vrn::test::Form;
using vrn::test::HookedLineEdit;
using vrn::test::redText;

namespace {

// What the rules of the field come to for a validator of digits.
struct Model
{
    QString text;
    bool valid = false;
    QString styleSheet;
    int due = 0; // valueChanged
    QString unit;
    bool veto = false;

    void edited(const QString& newText)
    {
        text = newText;
        if (veto)
            return;
        valid = isGood();
        styleSheet = valid ? blackText() : redText();
    }

    void finished()
    {
        edited(text);
        if (veto)
            return;
        if (valid && !text.isEmpty())
            show(qMin(text.toInt(), 500));
        ++due;
    }

    void set(int number)
    {
        show(number);
        valid = true;
    }

private:
    void show(int number) { text = QString::number(number).rightJustified(3, '0'); }

    bool isGood() const
    {
        for (const QChar c : text) {
            if (c == 'x')
                return false;
        }
        return text.size() <= 9;
    }
};

class Beside : public vrn::test::Subject
{
public:
    Beside()
        : m_field(
            m_form.open(new HookedLineEdit(nullptr, boost::make_shared<DigitsValidator>(), &m_log)))
        , m_unit(qobject_cast<QLabel*>(m_field->layout()->itemAt(1)->widget()))
        , m_valueChanged(m_field, &SimpleLineEdit::valueChanged)
    {}

    static QStringList actions()
    {
        return {"a digit", "a digit", "a digit", "a letter", "Backspace", "Backspace", "Enter",
            "leaving after a keystroke, and coming back", "setValue", "setUnitString",
            "clearing the field", "a change of the veto"};
    }

    QString perform(int action, unsigned argument) override
    {
        const int number = int(argument % 1000);
        switch (action) {
        case 0:
        case 1:
        case 2:
            key(char('0' + number % 10));
            break;
        case 3:
            key('x');
            break;
        case 4:
        case 5:
            QTest::keyClick(m_field->edit(), Qt::Key_Backspace);
            if (!m_model.text.isEmpty())
                m_model.edited(m_model.text.chopped(1));
            break;
        case 6:
            QTest::keyClick(m_field->edit(), Qt::Key_Return);
            m_model.finished();
            break;
        case 7:
            key(char('0' + number % 10));
            m_form.leave();
            m_form.enter();
            m_model.finished();
            break;
        case 8:
            m_field->setValue(number);
            m_model.set(number);
            break;
        case 9:
            m_model.unit = QString(number % 3, 'm');
            m_field->setUnitString(m_model.unit);
            break;
        case 10:
            QTest::keyClick(m_field->edit(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(m_field->edit(), Qt::Key_Delete);
            if (!m_model.text.isEmpty())
                m_model.edited({});
            break;
        case 11:
            m_field->veto = m_model.veto = number % 4 == 0;
            break;
        }
        m_log.clear();
        return difference();
    }

private:
    void key(char c)
    {
        QTest::keyClick(m_field->edit(), c);
        m_model.edited(m_model.text + c);
    }

    QString difference() const
    {
        const auto stateOf = [](const QString& text, bool valid, const QString& style,
                                 int signalCount, const QString& unit) {
            return QString("\"%1\", valid: %2, %3, %4 signals, unit %5")
                .arg(text)
                .arg(valid)
                .arg(style)
                .arg(signalCount)
                .arg(unit);
        };
        const QString unit = m_model.unit.isEmpty() ? QString() : '[' + m_model.unit + ']';
        const QString expected = stateOf(
            m_model.text, m_model.valid, m_model.styleSheet, m_model.due, unit);
        const QString actual = stateOf(m_field->edit()->text(), m_field->isValueValid(),
            m_field->edit()->styleSheet(), int(m_valueChanged.count()),
            m_unit->isHidden() ? QString() : m_unit->text());
        return actual == expected ? QString() : actual + " instead of " + expected;
    }

    vrn::test::Log m_log;
    Form m_form;
    HookedLineEdit* m_field;
    const QLabel* m_unit;
    QSignalSpy m_valueChanged;
    Model m_model;
};

} // namespace

class TestSimpleLineEditSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomSequenceFollowsTheRules()
    {
        vrn::test::runRandomSequences(Beside::actions(), [] { return std::make_unique<Beside>(); });
    }
};

VRN_TEST(TestSimpleLineEditSequence)
#include "tst_simple_line_edit_sequence.moc"
