#include <vrn/base/any_predicates.h>
#include <vrn/qt/default_editor_factory.h>
#include <vrn/qt/editor_meta_data.h>
#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/on_value_changed_hook.h>
#include <vrn/qt/varies_string.h>

#include "factory_fixture.h"
#include "support/random_sequence.h"
#include "support/test_main.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QToolButton>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;
using namespace std::string_literals;

namespace {

const boost::any untouched = 42;

void destroyDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// --- editors with a value

/// A text and the value that it stands for; "refused" for none.
struct Shown
{
    QString text;
    QString value;
};

/// What an editor of one description does with values, texts and clicks on its button.
struct Kind
{
    std::function<EditorMetaData(QWidget* form)> make;
    std::vector<std::pair<boost::any, Shown>> values;
    /// Entered texts, and what the editor makes of them; or the rows of a list that is not
    /// editable.
    std::vector<std::pair<QString, Shown>> texts;
    Shown onClick = {};
    /// The value of a click stays until a text is entered, also if another value is set.
    bool isClickKept = false;
};

EditorMetaData fromFactory(QWidget* form, const char* name, const HintList& hints)
{
    static const DefaultEditorFactory factory(std::make_shared<DefaultValidatorFactory>());
    const auto made = factory.create(name, hintsOf(hints));
    made->widget->setParent(form);
    const QPointer<QWidget> widget = made->widget;
    auto* const control = made->control;
    EditorMetaData editor;
    editor.widget = widget;
    editor.setValue = [=](const boost::any& value) {
        if (widget)
            control->setValue(value);
    };
    editor.forceVaries = [=] {
        if (widget)
            control->forceVaries();
    };
    editor.getValue = [=](boost::any& value) {
        if (!widget || control->dataVaries())
            return false;
        value = control->getCurrentValue();
        return true;
    };
    return editor;
}

auto described(const HintList& hints)
{
    return [hints](QWidget* form) { return createEditorFromHints(form, hintsOf(hints)); };
}

auto described(const char* name, const HintList& hints)
{
    return [=](QWidget* form) { return fromFactory(form, name, hints); };
}

/// Functions of the application, which may end the editor (see Beside).
std::function<void()> appIsCalled;

boost::any resetFunction()
{
    return ResetHint([](int, boost::any& shown, boost::any& reported) {
        shown = 3;
        reported = 4;
        appIsCalled();
    });
}

boost::any defaultFunction()
{
    return DefaultTextHint([](const QString&) {
        appIsCalled();
        return QStringLiteral("1.5");
    });
}

const std::vector<Kind>& kinds()
{
    const auto type = [](const char* name) {
        return HintList{{"editor", "lineedit"s}, {"validator.type", std::string(name)}};
    };
    const auto with = [](HintList hints, const HintList& more) {
        hints.insert(hints.end(), more.begin(), more.end());
        return hints;
    };
    const HintList optional = {{"optional", true}};
    const HintList intUpTo5 = {{"validator.kind", kind<int>()}, {"validator.maximum", 5}};
    const boost::any equal = equalHint(&vrn::any_equal<int>);
    const HintList list = {{"entries", steels()}, {"is_equal", equal}};
    const std::vector<std::pair<boost::any, Shown>> steelValues = {
        {235, {"S235", "int 235"}}, {355, {"S355", "int 355"}}};
    const std::vector<std::pair<QString, Shown>> steelRows = {
        {"0", {"S235", "int 235"}}, {"1", {"S355", "int 355"}}};
    const std::pair<QString, Shown> refusedText = {"x", {"x", "refused"}};
    static const std::vector<Kind> all = {
        {described(type("string")), {{"ab"s, {"ab", "std::string \"ab\""}}},
            {{"x", {"x", "std::string \"x\""}}, {"", {"", "std::string \"\""}}}},
        {described(with(type("int"), optional)),
            {{7, {"7", "int 7"}}, {boost::any(), {"", "empty"}}},
            {{"12", {"12", "int 12"}}, {"", {"", "empty"}}, refusedText}, {"", "empty"}},
        {described(with(type("double"), {{"optional", true}, {"default_fn", defaultFunction()}})),
            {{2.5, {"2.500", "double 2.5"}}}, {{"12", {"12.000", "double 12"}}, refusedText},
            {"1.5", "double 1.5"}},
        {described({{"editor", "enumbox"s}, {"values", steels()}, {"equal_value_fn", equal}}),
            steelValues, steelRows},
        {described("lineedit", intUpTo5), {{3, {"3", "int 3"}}, {9, {"5", "int 5"}}},
            {{"4", {"4", "int 4"}}, {"12", {"5", "int 5"}}, {"", {"0", "int 0"}}, refusedText}},
        {described("lineedit", with(intUpTo5, {{"validator.optional", true}})),
            {{3, {"3", "int 3"}}, {boost::any(), {"", "empty"}}},
            {{"12", {"5", "int 5"}}, {"", {"", "empty"}}, refusedText}, {"", "empty"}, true},
        {described("multi_edit_line_edit_with_reset_button",
             with(intUpTo5, {{"reset_callback", resetFunction()}})),
            {{2, {"2", "int 2"}}}, {{"12", {"5", "int 5"}}, refusedText}, {"3", "int 4"}, true},
        {described("named_value_list", list), steelValues, steelRows},
        {described(
             "named_value_list", with(list, {{"editable", true}, {"validator.kind", kind<int>()}})),
            {{235, {"S235", "int 235"}}, {12, {"12", "int 12"}}},
            {{"S355", {"S355", "int 355"}}, {"34", {"34", "int 34"}}, {"x", {"x", "empty"}}}},
        {described("yes_no", {}), {{true, {"Yes", "bool true"}}, {false, {"No", "bool false"}}},
            {{"0", {"Yes", "bool true"}}, {"1", {"No", "bool false"}}}},
    };
    return all;
}

/// An editor, its functions, and what they have to say.
class Beside : public Subject
{
public:
    Beside()
    {
        appIsCalled = [this] { end(); };
        make(0);
    }
    ~Beside() override { appIsCalled = nullptr; }

    static QStringList actions()
    {
        return {"another editor", "a value", "a value", "it varies", "it varies", "a text",
            "a text", "a text", "the button", "the button", "copies of the functions", "delete",
            "deleteLater", "the next function or slot deletes it",
            "the next function or slot deletes it later"};
    }

    QString perform(int action, unsigned argument) override
    {
        switch (action) {
        case 0:
            make(argument);
            break;
        case 1:
        case 2:
            set(m_kind->values[argument % m_kind->values.size()]);
            break;
        case 3:
        case 4:
            m_editor.forceVaries();
            m_varies = true;
            m_expected.text = getVariesString();
            break;
        case 5:
        case 6:
        case 7:
            enter(m_kind->texts[argument % m_kind->texts.size()]);
            break;
        case 8:
        case 9:
            click();
            break;
        case 10: {
            EditorMetaData copy = m_editor;
            m_editor = std::move(copy);
            break;
        }
        case 11:
            delete m_widget;
            m_isGone = true;
            break;
        case 12:
            if (m_widget)
                m_widget->deleteLater();
            m_isGone = true;
            break;
        default:
            m_deletes = action == 13;
            m_deletesLater = action == 14;
        }
        destroyDeferred();
        return difference();
    }

private:
    void make(unsigned argument)
    {
        m_hook.reset();
        m_form = std::make_unique<QWidget>();
        QCoreApplication::sendPostedEvents(); // They would only become more.
        m_kind = &kinds()[argument % kinds().size()];
        m_editor = m_kind->make(m_form.get());
        m_widget = m_editor.widget;
        m_hook = std::make_unique<OnValueChangedHook>(m_widget, [this] { end(); });
        m_isGone = m_deletes = m_deletesLater = false;
        set(m_kind->values.front());
        m_kept = QString();
    }

    // A function of the application is called, or a slot.
    void end()
    {
        if (m_deletes)
            delete m_widget;
        if (m_deletesLater && m_widget)
            m_widget->deleteLater();
        m_isGone |= m_deletes || m_deletesLater;
        m_deletes = m_deletesLater = false;
    }

    void set(const std::pair<boost::any, Shown>& value)
    {
        m_editor.setValue(value.first);
        m_varies = false;
        m_expected = value.second;
    }

    void enter(const std::pair<QString, Shown>& text)
    {
        if (!m_widget)
            return;
        auto* list = m_widget->findChild<QComboBox*>();
        if (list && !list->isEditable()) {
            pick(list, text.first.toInt());
        } else {
            auto* edit = m_widget->findChild<QLineEdit*>();
            if (!text.first.isEmpty() || !edit->text().isEmpty())
                m_kept = QString(); // The text is edited.
            edit->selectAll();
            text.first.isEmpty() ? edit->del() : edit->insert(text.first);
            press(QPointer<QWidget>(edit), Qt::Key_Return);
        }
        m_expected = text.second;
        m_varies = m_varies && text.second.value == "refused";
    }

    static void pick(QWidget* box, int row)
    {
        const QPointer<QWidget> list = box;
        press(list, Qt::Key_Home);
        for (int i = 0; i < row; ++i)
            press(list, Qt::Key_Down);
    }

    // The widget may go before the key is up again.
    static void press(const QPointer<QWidget>& widget, Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        if (widget)
            QCoreApplication::sendEvent(widget, &event);
    }

    void click()
    {
        auto* button = m_widget ? m_widget->findChild<QToolButton*>() : nullptr;
        if (!button || m_kind->onClick.value.isNull())
            return;
        button->click();
        m_varies = false;
        m_expected = m_kind->onClick;
        if (m_kind->isClickKept)
            m_kept = m_expected.value;
    }

    QString shown() const
    {
        const auto* list = m_widget->findChild<QComboBox*>();
        return list ? list->currentText() : m_widget->findChild<QLineEdit*>()->text();
    }

    QString expectedValue() const
    {
        if (m_isGone || m_varies)
            return "none, " + describe(untouched);
        const QString value = m_kept.isNull() ? m_expected.value : m_kept;
        return value == "refused" ? QStringLiteral("empty") : value;
    }

    QString difference()
    {
        if (m_isGone != m_widget.isNull())
            return m_isGone ? "the widget is still there" : "the widget has gone";
        boost::any value = untouched;
        const bool isGiven = m_editor.getValue(value);
        const QString given = (isGiven ? QString() : QStringLiteral("none, ")) + describe(value);
        if (given != expectedValue())
            return QStringLiteral("the value is %1 instead of %2").arg(given, expectedValue());
        if (m_widget && shown() != m_expected.text)
            return QStringLiteral("the text is %1 instead of %2").arg(shown(), m_expected.text);
        return {};
    }

    std::unique_ptr<QWidget> m_form;
    std::unique_ptr<OnValueChangedHook> m_hook;
    const Kind* m_kind = nullptr;
    EditorMetaData m_editor;
    QPointer<QWidget> m_widget;
    bool m_deletes = false;
    bool m_deletesLater = false;

    // The model.
    bool m_isGone = false;
    bool m_varies = false;
    Shown m_expected;
    QString m_kept; ///< Null for none.
};

// --- editors of the callback kind

/// What its function does, besides that it tells of a change or not.
enum Deed
{
    Nothing,
    DeleteWidget,
    DeleteLater,
    DeleteForm,
    DropEditors,
    RunLoop,
    MakeAnother,
    DeedCount,
};

/// Looks at a widget that goes by deleteLater().
class LastLook : public QObject
{
public:
    LastLook(QWidget* widget, std::function<void()> look)
        : m_look(std::move(look))
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::DeferredDelete)
            m_look();
        return false;
    }

private:
    std::function<void()> m_look;
};

/// Several editors of the callback kind on one form, and what each of them comes to.
class BesideCallbacks : public Subject
{
public:
    BesideCallbacks()
    {
        ask = [this](int id, boost::any& value) { return answer(id, value); };
    }
    ~BesideCallbacks() override { ask = nullptr; }

    static QStringList actions()
    {
        return {"an editor", "an editor", "readValue", "readValue", "setValue", "forceVaries",
            "reset", "delete", "drop the Editor", "another form", "the event loop"};
    }

    QString perform(int action, unsigned argument) override
    {
        Row* row = m_rows.empty() ? nullptr : m_rows[argument % m_rows.size()].get();
        const int value = int(argument / 8 % 3);
        const bool lives = row && row->widget;
        if (action <= 1) {
            make(Deed(argument % DeedCount), argument % 2 == 0, value);
        } else if (action == 9) {
            destroyForm();
        } else if (action == 10) {
            processEvents();
            destroyDeferred();
            differ(m_form->children().isEmpty(), "a widget stays");
            m_rows.clear();
        } else if (action == 7 && lives) {
            delete row->widget;
            row->isGone = true;
        } else if (action == 8 && row) {
            row->editor.reset();
        } else if (lives) {
            use(*row, action, value);
        }
        return std::exchange(m_difference, QString());
    }

private:
    struct Row
    {
        int id = 0;
        Deed deed = Nothing;
        bool changes = false;
        int edited = 0;
        std::unique_ptr<Editor> editor;
        QPointer<QWidget> widget;
        MultiEditControlBase* control = nullptr;
        std::unique_ptr<LastLook> lastLook;

        // The model.
        bool isGone = false;
        bool isAsked = false;
        bool isFresh = true;
        bool varies = false;
        QString value = "empty";

        void read(int number)
        {
            const QString text = QStringLiteral("int %1").arg(number);
            if (isFresh) {
                value = text;
                varies = false;
            } else if (!varies) {

                varies = text == value; // "is_equal" tells whether they differ.
            }
            isFresh = false;
        }

        QString given() const { return varies ? QStringLiteral("empty") : value; }
    };

    void make(Deed deed, bool changes, int edited)
    {
        auto row = std::make_unique<Row>();
        row->id = int(m_rows.size());
        row->deed = deed;
        row->changes = changes;
        row->edited = edited;
        Hints hints;
        setEqualHint(hints, "is_equal", &vrn::any_equal<int>);
        setEditHint(hints, "callback",
            [id = row->id](QWidget*, boost::any& value) { return ask(id, value); });
        row->editor = DefaultEditorFactory(nullptr).create("callback", hints);
        row->widget = row->editor->widget;
        row->control = row->editor->control;
        row->widget->setParent(m_form.get());
        row->lastLook = std::make_unique<LastLook>(row->widget, [this, row = row.get()] {
            if (row->isAsked)
                check(*row);
        });
        m_rows.push_back(std::move(row));
    }

    void use(Row& row, int action, int value)
    {
        switch (action) {
        case 2:
        case 3:
            row.control->readValue(value);
            row.read(value);
            break;
        case 4:
            row.control->setValue(value);
            row.value = QStringLiteral("int %1").arg(value);
            row.varies = false;
            break;
        case 5:
            row.control->forceVaries();
            row.varies = true;
            break;
        case 6:
            row.control->reset();
            row.isFresh = true;
            row.varies = false;
            row.value = "empty";
            break;
        default:
            break;
        }
        check(row);
    }

    void processEvents()
    {
        // A timer of 0 ms may need more than one round.
        const auto isOpen = [this] {
            for (const auto& row : m_rows) {
                if (!row->isGone && !row->isAsked)
                    return true;
            }
            return false;
        };
        for (int rounds = 0; isOpen() && rounds < 1000; ++rounds)
            QCoreApplication::processEvents();
        differ(!isOpen(), "an editor is not asked");
    }

    // The function of editor number `id`.
    bool answer(int id, boost::any& value)
    {
        Row& row = *m_rows[std::size_t(id)];
        differ(!row.isAsked, "an editor is asked twice");
        differ(!row.isGone && row.widget, "an editor is asked that has gone");
        differ(describe(value) == row.given(), "the function gets another value");
        row.isAsked = true;
        value = row.edited;
        if (row.deed == DeleteWidget)
            delete row.widget;
        if (row.deed == DeleteLater)
            row.widget->deleteLater();
        row.isGone = row.deed == DeleteWidget;
        if (row.deed == DeleteForm)
            destroyForm();
        if (row.deed == DropEditors) {
            for (const auto& other : m_rows)
                other->editor.reset();
        }
        if (row.deed == RunLoop)
            QCoreApplication::processEvents();
        if (row.deed == MakeAnother && m_rows.size() < 20)
            make(Nothing, false, 0);
        differ(row.isGone == row.widget.isNull(), "the widget goes with another one");
        // What comes of it is seen when the widget goes, after the return.
        if (row.changes && !row.isGone)
            row.read(row.edited);
        return row.changes;
    }

    void destroyForm()
    {
        m_form = std::make_unique<QWidget>();
        for (const auto& row : m_rows)
            row->isGone = true;
    }

    void check(const Row& row)
    {
        differ(row.control->dataVaries() == row.varies, "another one varies");
        differ(describe(row.control->getCurrentValue()) == row.given(), "the value is another one");
    }

    void differ(bool isRight, const char* what)
    {
        if (!isRight)
            m_difference = QString::fromLatin1(what);
    }

    // For a function whose hint may outlive this.
    static std::function<bool(int, boost::any&)> ask;

    std::unique_ptr<QWidget> m_form = std::make_unique<QWidget>();
    std::vector<std::unique_ptr<Row>> m_rows;
    QString m_difference;
};

std::function<bool(int, boost::any&)> BesideCallbacks::ask;

} // namespace

/// Editors of both doors, and all that may happen to them.
class TestMultiEditFromHintsSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void editorsFollowTheirModel()
    {
        runRandomSequences(Beside::actions(), [] { return std::make_unique<Beside>(); });
    }

    void callbackEditorsFollowTheirModel()
    {
        runRandomSequences(
            BesideCallbacks::actions(), [] { return std::make_unique<BesideCallbacks>(); });
    }
};

VRN_TEST(TestMultiEditFromHintsSequence)
#include "tst_multi_edit_from_hints_sequence.moc"
