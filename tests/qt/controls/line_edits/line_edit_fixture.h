#pragma once

#include <vrn/qt/i_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/value_history.h>

#include <boost/make_shared.hpp>

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace vrn::test {

inline QString blackText()
{
    return QStringLiteral("QLineEdit { color: #000; }");
}

inline QString redText()
{
    return QStringLiteral("QLineEdit { color: #e61414; }");
}

/// What a control asked of its validator and its hooks, in order, as in
/// "validate 12".
using Log = QStringList;

/// Accepts decimal digits as an `int`, and an empty text as a missing value. The end of
/// editing brings a number down to 500; formatting gives three digits. Every call is
/// logged, and runs `before`, which may throw.
struct DigitsValidator : public vrn::qt::IValidator
{
    explicit DigitsValidator(Log* log = nullptr)
        : m_log(log)
    {}

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& f) override
    {
        note("validate", text, f);
        valuesCameEmpty = valuesCameEmpty && value.empty();
        return parse(text, value);
    }

    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& f) override
    {
        note("finish", text, f);
        valuesCameEmpty = valuesCameEmpty && value.empty();
        if (!parse(text, value))
            return false;
        if (const int* number = boost::any_cast<int>(&value))
            value = std::min(*number, 500);
        return true;
    }

    QString reformat(const boost::any& value, const std::bitset<32>& f) override
    {
        const int* number = boost::any_cast<int>(&value);
        note("reformat", number ? QString::number(*number) : QString(), f);
        return number ? QStringLiteral("%1").arg(*number, 3, 10, QLatin1Char('0')) : QString();
    }

    std::function<void(const QString& operation)> before;
    std::bitset<32> flags;
    bool valuesCameEmpty = true;

private:
    void note(const char* operation, const QString& text, const std::bitset<32>& f)
    {
        flags |= f;
        if (m_log)
            m_log->append(QString::fromLatin1(operation) + QLatin1Char(' ') + text);
        if (before)
            before(QString::fromLatin1(operation));
    }

    static bool parse(const QString& text, boost::any& value)
    {
        if (text.isEmpty())
            return true;
        bool ok = text.size() <= 9;
        for (const QChar c : text)
            ok = ok && c >= QLatin1Char('0') && c <= QLatin1Char('9');
        value = ok ? text.toInt() : -1;
        return ok;
    }

    Log* m_log;
};

/// While it is armed, it throws from one of its operations or from its hint function.
struct ThrowingValidator : public DigitsValidator
{
    explicit ThrowingValidator(const QString& operation)
    {
        before = [this, operation](const QString& current) {
            if (armed && current == operation)
                throw std::runtime_error("from the validator");
        };
        setEditHintFunction([this](const QString&) {
            before(QStringLiteral("hint"));
            return QString();
        });
    }

    bool armed = false;
};

/// Sets a flag when it is destroyed.
struct MortalValidator : public DigitsValidator
{
    explicit MortalValidator(bool* gone)
        : m_gone(gone)
    {}
    ~MortalValidator() override { *m_gone = true; }

private:
    bool* m_gone;
};

/// A history of `values`, the last of them the newest.
inline boost::shared_ptr<vrn::ValueHistory> historyOf(const std::vector<std::wstring>& values)
{
    const auto history = boost::make_shared<vrn::ValueHistory>(
        L"key", boost::make_shared<vrn::ValueHistoryMemoryStorage>());
    for (const std::wstring& value : values)
        history->add(value);
    return history;
}

/// A control that writes its hooks into the log of its validator.
class HookedLineEdit : public vrn::qt::SimpleLineEdit
{
public:
    HookedLineEdit(QWidget* parent, boost::shared_ptr<vrn::qt::IValidator> validator, Log* log)
        : SimpleLineEdit(parent, {}, std::move(validator), {}, 0, vrn::qt::ExpandHorizontal)
        , m_log(log)
    {}

    using SimpleLineEdit::validator;

    bool veto = false;

protected:
    bool vetoValidation(const QString& text) override
    {
        m_log->append(QStringLiteral("veto ") + text);
        return veto;
    }

    void onValidated(const QString& text, const boost::any& value) override
    {
        const int* number = boost::any_cast<int>(&value);
        m_log->append(QStringLiteral("validated %1 %2").arg(text).arg(number ? *number : -1));
    }

private:
    Log* m_log;
};

/// Calls a function with each event of a widget, before the widget gets it.
class EventWatch : public QObject
{
public:
    EventWatch(QWidget* widget, std::function<void(const QEvent&)> function)
        : m_function(std::move(function))
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_function(*event);
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void(const QEvent&)> m_function;
};

/// An active window with room for a field and one other edit to go to.
class Form : public QWidget
{
public:
    Form()
        : m_rows(new QVBoxLayout(this))
        , m_other(new QLineEdit)
    {
        m_rows->addWidget(m_other);
    }

    /// Takes `field` in, shows the window and gives the field the focus.
    template <typename Field>
    Field* open(Field* field)
    {
        openWith(field);
        return field;
    }

    void enter() { m_field->setFocus(); }
    void leave() { m_other->setFocus(); }

private:
    void openWith(QWidget* field)
    {
        m_field = field;
        m_rows->insertWidget(0, field);
        m_other->setFocus();
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
        enter();
    }

    QVBoxLayout* m_rows;
    QLineEdit* m_other;
    QWidget* m_field = nullptr;
};

} // namespace vrn::test
