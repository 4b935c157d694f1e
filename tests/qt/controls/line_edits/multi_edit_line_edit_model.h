#pragma once

#include "multi_edit_line_edit_fixture.h"
#include "support/any_to_string.h"
#include "support/other_language.h"
#include "support/random_sequence.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QToolButton>

#include <memory>

namespace vrn::test {

/// What percentage() makes of values and texts.
struct Percentages
{
    using Value = double;

    /// Two of them are written alike, and one is beyond the maximum.
    static double sample(unsigned index)
    {
        static const double values[] = {0.0, 1.0, 1.04, 2.5, 1e9};
        return values[index % 5];
    }

    static boost::any boxed(double value) { return value; }

    static QString written(double value)
    {
        return QString::number(qBound(0.0, value, 100.0), 'f', 1);
    }

    static QString rewritten(const QString& text) { return written(text.toDouble()); }

    static boost::any valueOf(const QString& text) { return qMin(text.toDouble(), 100.0); }

    static bool accepts(const QString& text)
    {
        static const QRegularExpression number(QStringLiteral("^([0-9]+\\.?[0-9]*|\\.[0-9]+)$"));
        return number.match(text).hasMatch();
    }
};

/// What the rules of a MultiEditLineEdit come to, as a plain state machine.
template <typename Values>
struct MultiEditModel : public Values
{
    using Value = typename Values::Value;

    bool fresh = true;
    bool varies = false;
    bool valid = false;
    QString text;
    QString variesText; ///< As it was last shown; null since a value was shown.
    int due = 0; ///< valueChanged

    void reset()
    {
        fresh = true;
        varies = false;
    }

    void read(const Value& value)
    {
        if (fresh) {
            fresh = false;
            set(value);
        } else if (!varies && Values::written(value) != text) {
            forceVaries();
        }
    }

    void set(const Value& value)
    {
        varies = false;
        text = Values::written(value);
        variesText = QString();
        valid = true;
    }

    void forceVaries()
    {
        varies = true;
        text = variesText = vrn::qt::getVariesString();
    }

    void edited(const QString& newText)
    {
        text = newText;
        if (showsVaries()) {
            varies = true;
            variesText = text;
            return;
        }
        valid = Values::accepts(text);
        if (valid)
            varies = false;
    }

    void finished()
    {
        if (showsVaries())
            return;
        valid = Values::accepts(text);
        if (valid) {
            varies = false;
            text = Values::rewritten(text);
        }
        ++due;
    }

    void languageChanged()
    {
        if (varies && showsVaries())
            forceVaries();
    }

    bool showsVaries() const
    {
        return text == vrn::qt::getVariesString() || (!variesText.isNull() && text == variesText);
    }

    /// Whether asking for the value breaks the contract: its text has gone, and neither a
    /// keystroke nor a value has come since.
    bool hasLostItsText() const { return !varies && valid && !Values::accepts(text); }

    boost::any current() const { return varies || !valid ? boost::any() : Values::valueOf(text); }
};

using MultiEditLineEditModel = MultiEditModel<Percentages>;

/// Performs the actions of a user and of the application on a field and on the model.
template <typename Field, typename Model>
class MultiEditLineEditSubject : public Subject
{
public:
    explicit MultiEditLineEditSubject(Field* field)
        : m_field(field)
        , m_valueChanged(field, &Field::valueChanged)
        , m_textEdited(field->edit(), &QLineEdit::textEdited)
        , m_innerButton(field->addButton([this](const QString&) { return m_result; }, {}))
    {}

    static QStringList actions()
    {
        return {"readValue", "readValue", "readValue", "reset", "setValue", "forceVaries",
            "one key", "one key", "Backspace", "Enter", "a new text", "a refused text",
            "the varies text", "Undo", "Undo", "a pick in the history", "the inner button",
            "another language"};
    }

    QString perform(int action, unsigned argument) override
    {
        const auto value = Model::sample(argument);
        Model& model = m_model;
        switch (action) {
        case 0:
        case 1:
        case 2:
            m_field->readValue(Model::boxed(value));
            model.read(value);
            break;
        case 3:
            m_field->reset();
            model.reset();
            break;
        case 4:
            m_field->setValue(Model::boxed(value));
            model.set(value);
            break;
        case 5:
            m_field->forceVaries();
            model.forceVaries();
            break;
        case 6:
        case 7: {
            const char key = "0127."[argument % 5];
            QTest::keyClick(m_field->edit(), key);
            model.edited(model.text + key);
            break;
        }
        case 8:
            QTest::keyClick(m_field->edit(), Qt::Key_Backspace);
            if (!model.text.isEmpty())
                model.edited(model.text.chopped(1));
            break;
        case 9:
            QTest::keyClick(m_field->edit(), Qt::Key_Return);
            model.finished();
            break;
        case 10:
            type(QString::number(argument % 200));
            break;
        case 11:
            type(QStringLiteral("x"));
            break;
        case 12:
            type(vrn::qt::getVariesString());
            break;
        case 13:
        case 14:
            undo();
            break;
        case 15: {
            const QString entry = anyText(argument);
            QMetaObject::invokeMethod(
                m_field->edit(), "onHistoryItemSelected", Q_ARG(QString, entry));
            if (!entry.isEmpty()) {
                model.edited(entry);
                model.finished();
            }
            break;
        }
        case 16:
            m_result = anyText(argument);
            m_innerButton->click();
            m_field->edit()->end(false);
            if (m_result != model.text)
                model.edited(m_result);
            break;
        case 17:
            m_language.change();
            deliverLanguage();
            model.languageChanged();
            break;
        default:
            performOther(action, argument);
        }
        return difference();
    }

protected:
    virtual void performOther(int /*action*/, unsigned /*argument*/) {}

    Field* field() { return m_field.get(); }
    Model& model() { return m_model; }

    template <typename Actual>
    static QString differing(const char* what, const Actual& actual, const Actual& expected)
    {
        if (actual == expected)
            return {};
        return QStringLiteral("%1 is %2 instead of %3")
            .arg(QLatin1String(what))
            .arg(actual)
            .arg(expected);
    }

private:
    // Key by key: each text on the way is validated.
    void type(const QString& text)
    {
        m_field->edit()->selectAll();
        QTest::keyClicks(m_field->edit(), text);
        for (int length = 1; length <= text.size(); ++length)
            m_model.edited(text.left(length));
    }

    // Qt decides what comes back, if anything does. The cursor goes to the end for later keys.
    void undo()
    {
        m_textEdited.clear();
        QTest::keyClick(m_field->edit(), Qt::Key_Z, Qt::ControlModifier);
        m_field->edit()->end(false);
        if (m_textEdited.count() > 0)
            m_model.edited(m_field->edit()->text());
    }

    static QString anyText(unsigned argument)
    {
        const QString texts[] = {"7", "7.0", "150", "x", "", vrn::qt::getVariesString()};
        return texts[argument % 6];
    }

    QString difference()
    {
        QStringList all = {differing("text", m_field->edit()->text(), m_model.text),
            differing("varies", int(m_field->dataVaries()), int(m_model.varies)),
            differing("valid", int(m_field->isValueValid()), int(m_model.valid)),
            differing("the number of signals", int(m_valueChanged.count()), m_model.due)};
        if (!m_model.hasLostItsText()) {
            all << differing(
                "the value", describe(m_field->getCurrentValue()), describe(m_model.current()));
        }
        all.removeAll(QString());
        return all.join(QStringLiteral(", "));
    }

    std::unique_ptr<Field> m_field;
    QSignalSpy m_valueChanged;
    QSignalSpy m_textEdited;
    QToolButton* m_innerButton;
    QString m_result;
    OtherLanguage m_language;
    Model m_model;
};

} // namespace vrn::test
