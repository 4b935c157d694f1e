#include <vrn/qt/simple_line_edit.h>

#include "line_edit_fixture.h"
#include "support/random_seed.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLabel>
#include <QSignalSpy>

#include <random>

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

} // namespace

class TestSimpleLineEditSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomSequenceFollowsTheRules()
    {
        std::mt19937 random(vrn::test::randomSeed());
        const auto below = [&](unsigned int limit) { return int(random() % limit); };

        vrn::test::Log log;
        Form form;
        auto* field = new HookedLineEdit(nullptr, boost::make_shared<DigitsValidator>(), &log);
        form.open(field);
        const auto* unit = qobject_cast<QLabel*>(field->layout()->itemAt(1)->widget());
        QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);
        Model model;

        const auto key = [&](char c) {
            QTest::keyClick(field->edit(), c);
            model.edited(model.text + c);
        };
        for (int step = 0; step < 20000; ++step) {
            QString done;
            switch (below(12)) {
            case 0:
            case 1:
            case 2:
                done = "a digit";
                key(char('0' + below(10)));
                break;
            case 3:
                done = "a letter";
                key('x');
                break;
            case 4:
            case 5:
                done = "Backspace";
                QTest::keyClick(field->edit(), Qt::Key_Backspace);
                if (!model.text.isEmpty())
                    model.edited(model.text.chopped(1));
                break;
            case 6:
                done = "Enter";
                QTest::keyClick(field->edit(), Qt::Key_Return);
                model.finished();
                break;
            case 7:
                done = "leaving behind a keystroke, and coming back";
                key(char('0' + below(10)));
                form.leave();
                form.enter();
                model.finished();
                break;
            case 8: {
                done = "setValue";
                const int number = below(1000);
                field->setValue(number);
                model.set(number);
                break;
            }
            case 9:
                done = "setUnitString";
                model.unit = QString(below(3), 'm');
                field->setUnitString(model.unit);
                break;
            case 10:
                done = "clearing the field";
                QTest::keyClick(field->edit(), Qt::Key_A, Qt::ControlModifier);
                QTest::keyClick(field->edit(), Qt::Key_Delete);
                if (!model.text.isEmpty())
                    model.edited({});
                break;
            case 11:
                done = "a change of the veto";
                model.veto = below(4) == 0;
                field->veto = model.veto;
                break;
            }
            const QString where = QString("step %1, %2").arg(step).arg(done);
            compare(field->edit()->text(), model.text, where);
            compare(field->isValueValid(), model.valid, where);
            compare(field->edit()->styleSheet(), model.styleSheet, where);
            compare(int(valueChanged.count()), model.due, where);
            compare(unit->isHidden(), model.unit.isEmpty(), where);
            if (!model.unit.isEmpty())
                compare(unit->text(), "[" + model.unit + "]", where);
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY(model.due > 1000);
    }

private:
    template <typename Actual, typename Expected>
    static void compare(const Actual& actual, const Expected& expected, const QString& where)
    {
        const QString text =
            QString("%1: %2 instead of %3").arg(where, print(actual), print(Actual(expected)));
        QVERIFY2(actual == expected, qPrintable(text));
    }

    static QString print(const QString& text) { return '"' + text + '"'; }
    static QString print(int number) { return QString::number(number); }
};

VRN_TEST(TestSimpleLineEditSequence)
#include "tst_simple_line_edit_sequence.moc"
