#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/validators.h>
#include <vrn/units/unknown_unit.h>

#include "line_edit_fixture.h"
#include "support/catching_application.h"
#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QClipboard>
#include <QInputMethodEvent>
#include <QSignalSpy>

#include <limits>
#include <optional>

using namespace vrn::qt;
using vrn::test::blackText;
using vrn::test::CatchingApplication;
using vrn::test::Form;
using vrn::test::hostileTexts;
using vrn::test::redText;
using vrn::test::ThroughQt;
using vrn::test::TimedSteps;
using vrn::test::verifyStepsTakeAKeystroke;
using vrn::test::verifyTakesAKeystroke;

namespace {

bool equalInts(const boost::any& left, const boost::any& right)
{
    const int* l = boost::any_cast<int>(&left);
    const int* r = boost::any_cast<int>(&right);
    return l && r && *l == *r;
}

IValidator::pointer namesValidator()
{
    auto names = boost::make_shared<NamedValueListValidator>(
        NamedValueList{{"steel", 1}, {"nan", 2}, {QString(), 3}});
    names->set_equal_to(&equalInts);
    return names;
}

IValidator::pointer patternValidator()
{
    auto text = boost::make_shared<StringEditValidator>(40);
    text->setUpperCase(true);
    text->setAllowedRegex(L"([A-Z]+[0-9]*)*-?");
    text->setStorageType(StringEditValidator::StorageTypeUtf8String);
    return text;
}

IValidator::pointer chainValidator()
{
    std::deque<std::unique_ptr<IValidator>> members;
    members.push_back(std::make_unique<IntegerValidator<int>>(0, 100, true));
    auto names = std::make_unique<NamedValueListValidator>(NamedValueList{{"inf", 1}, {"nan", 2}});
    names->set_equal_to(&equalInts);
    members.push_back(std::move(names));
    return boost::make_shared<ChainedValidator>(std::move(members));
}

void scale(boost::any& value, double factor)
{
    if (double* number = boost::any_cast<double>(&value))
        *number *= factor;
}

IValidator::pointer conversionValidator()
{
    auto angle = boost::make_shared<ConversionValidator>(boost::make_shared<DoubleEditValidator>());
    angle->setConversionFn([](boost::any& value) { scale(value, 57.29577951308232); },
        [](boost::any& value) { scale(value, 1 / 57.29577951308232); });
    return angle;
}

IValidator::pointer optionalNumber()
{
    auto number = boost::make_shared<DoubleEditValidator>(15, -1e300, 1e300, false);
    number->setEmptyValueAllowed(true);
    return number;
}

constexpr int metre = 13;

// One validator of each kind.
const std::vector<std::pair<QByteArray, IValidator::pointer>>& validators()
{
    static const std::vector<std::pair<QByteArray, IValidator::pointer>> all = {
        {"number", boost::make_shared<DoubleEditValidator>(2, 0.0, 100.0, true)},
        {"optional number", optionalNumber()},
        {"int", boost::make_shared<IntegerValidator<int>>(-5, 5, true)},
        {"unsigned short",
            boost::make_shared<IntegerValidator<unsigned short>>(
                static_cast<unsigned short>(0), static_cast<unsigned short>(65535), true)},
        {"distance", boost::make_shared<DistanceEditValidator>(metre, -10.0, 10.0, true)},
        {"text", boost::make_shared<StringEditValidator>(2000000)},
        {"text with a pattern", patternValidator()},
        {"names", namesValidator()},
        {"chain", chainValidator()},
        {"conversion", conversionValidator()},
        {"forward to nothing", boost::make_shared<ForwardValidator>(nullptr)},
    };
    return all;
}

// Ways for a text to come into an edit. Each takes a plain edit as well.
struct Way
{
    const char* name;
    void (*bring)(QLineEdit& edit, const QString& text);
};

void setText(QLineEdit& edit, const QString& text)
{
    edit.setText(text);
}

// As an input method or a very fast typist does: all of it in one event.
void typeAtOnce(QLineEdit& edit, const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&edit, &event);
}

void paste(QLineEdit& edit, const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    edit.paste();
}

constexpr Way ways[] = {{"setting", setText}, {"typing", typeAtOnce}, {"pasting", paste}};

// A step of a user, which may end in an unknown unit as it does in an application.
template <typename Function>
auto caught(Function step)
{
    return [step] {
        try {
            step();
        } catch (const vrn::units::UnknownUnit& error) {
            CatchingApplication::instance().caught.emplace_back(error.what());
        }
    };
}

} // namespace

Q_DECLARE_METATYPE(vrn::qt::IValidator::pointer)

class TestSimpleLineEditBadInput : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBadTextIsTakenCalmly_data()
    {
        QTest::addColumn<IValidator::pointer>("validator");
        QTest::addColumn<bool>("mayThrow");
        QTest::addColumn<bool>("everyWay");
        QTest::addColumn<QString>("text");
        for (const auto& [kind, validator] : validators()) {
            // Qt handles the ways in; three kinds are enough for all of them.
            const bool everyWay = kind == "number" || kind == "distance" || kind == "text";
            // Qt cuts what an edit does not hold, so one kind is enough for that. It takes Qt
            // several times as long as all the rest.
            const int most = kind == "text" ? std::numeric_limits<int>::max()
                                            : QLineEdit().maxLength();
            for (const auto& [name, text] : hostileTexts())
                QTest::addRow("%s: %s", kind.constData(), name.constData())
                    << validator << (kind == "distance") << everyWay << text.left(most);
        }
    }

    void aBadTextIsTakenCalmly()
    {
        QFETCH(IValidator::pointer, validator);
        QFETCH(bool, mayThrow);
        QFETCH(bool, everyWay);
        QFETCH(QString, text);
        std::optional<ThroughQt> throughQt;
        if (mayThrow)
            throughQt.emplace();
        text.detach(); // A copy of its own, for Qt may lose hold of it.
        for (const Way& way : ways) {
            if (!everyWay && way.bring != paste)
                continue;
            verifyStepsTakeAKeystroke([&](TimedSteps& steps) {
                Form form;
                SimpleLineEdit* field = form.open(
                    SimpleLineEdit::create(nullptr, "Span", validator, 0, ExpandHorizontal));
                QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);
                auto& exceptions = CatchingApplication::instance().caught;
                exceptions.clear();

                QLineEdit plain;
                way.bring(plain, text);
                const QString typed = plain.text();

                steps.take(way.name, caught([&] { way.bring(*field->edit(), text); }));
                QCOMPARE(field->edit()->text(), typed);
                if (way.bring != setText)
                    verifyColour(*field);

                steps.take(
                    "Enter", caught([&] { QTest::keyClick(field->edit(), Qt::Key_Return); }));
                verifyColour(*field);
                if (!field->isValueValid())
                    QCOMPARE(field->edit()->text(), typed);
                QVERIFY2(exceptions.empty() || mayThrow, "only an unknown unit throws");
                if (exceptions.empty())
                    QCOMPARE(valueChanged.count(), 1);

                steps.take("painting", [&] { field->repaint(); });
            });
        }
    }

    void aTextLongerThanTheEditHoldsIsTakenCalmly_data()
    {
        QTest::addColumn<IValidator::pointer>("validator");
        QTest::addColumn<bool>("mayThrow");
        QTest::addColumn<QString>("text");
        for (const auto& [kind, validator] : validators()) {
            for (const auto& [name, text] : hostileTexts())
                QTest::addRow("%s: %s", kind.constData(), name.constData())
                    << validator << (kind == "distance") << text;
        }
    }

    // The slots are public: a text need not have come through the edit.
    void aTextLongerThanTheEditHoldsIsTakenCalmly()
    {
        QFETCH(IValidator::pointer, validator);
        QFETCH(bool, mayThrow);
        QFETCH(QString, text);
        const QScopedPointer<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        CatchingApplication::instance().caught.clear();
        verifyTakesAKeystroke("the edited text", caught([&] { field->onTextEdited(text); }));
        QVERIFY(CatchingApplication::instance().caught.empty() || mayThrow);
        verifyColour(*field);
    }

    void aBadTextAsAValueIsTakenCalmly_data()
    {
        QTest::addColumn<QString>("text");
        for (const auto& [name, text] : hostileTexts())
            QTest::newRow(name.constData()) << text;
    }

    void aBadTextAsAValueIsTakenCalmly()
    {
        QFETCH(QString, text);
        for (const char* kind : {"text", "text with a pattern"}) {
            Form form;
            SimpleLineEdit* field = form.open(
                SimpleLineEdit::create(nullptr, {}, validatorNamed(kind), 0, ExpandHorizontal));
            const std::wstring value = text.toStdWString();
            verifyTakesAKeystroke("the value", [&] { field->setValue(value); });
            QCOMPARE(field->edit()->styleSheet(), QString());
        }
    }

    void aBadTextKeyByKey_data() { aBadTextIsTakenCalmly_data(); }

    void aBadTextKeyByKey()
    {
        QFETCH(IValidator::pointer, validator);
        QFETCH(bool, mayThrow);
        QFETCH(QString, text);
        std::optional<ThroughQt> throughQt;
        if (mayThrow)
            throughQt.emplace();
        text.detach(); // A copy of its own, for Qt may lose hold of it.
        verifyStepsTakeAKeystroke([&](TimedSteps& steps) {
            Form form;
            SimpleLineEdit* field = form.open(
                SimpleLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
            QLineEdit plain;
            auto& exceptions = CatchingApplication::instance().caught;
            exceptions.clear();
            for (const QChar c : text.left(50)) {
                QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
                QApplication::sendEvent(&plain, &press);
                steps.take("a key", [&] { QApplication::sendEvent(field->edit(), &press); });
                QCOMPARE(field->edit()->text(), plain.text());
                if (!plain.text().isEmpty())
                    verifyColour(*field);
            }
            QVERIFY(exceptions.empty() || mayThrow);
        });
    }

    void aTextLongerThanTheFieldIsCutByIt()
    {
        Form form;
        SimpleLineEdit* field = form.open(SimpleLineEdit::create(
            nullptr, {}, new StringEditValidator(2000000), 0, ExpandHorizontal));
        typeAtOnce(*field->edit(), QString(40000, 'a'));
        QCOMPARE(field->edit()->text().size(), 32767);
        QVERIFY(field->isValueValid());
        QCOMPARE(field->getValue(), boost::any(std::wstring(32767, L'a')));
    }

    void aBadTextInTheHistoryAndTheHintIsTakenCalmly_data()
    {
        aBadTextAsAValueIsTakenCalmly_data();
    }

    void aBadTextInTheHistoryAndTheHintIsTakenCalmly()
    {
        QFETCH(QString, text);
        auto validator = boost::make_shared<StringEditValidator>(2000000);
        validator->setEditHintFunction([](const QString& typed) { return typed; });
        Form form;
        SimpleLineEdit* field = SimpleLineEdit::create(
            nullptr, {}, IValidator::pointer(validator), 0, ExpandHorizontal);
        field->setValueHistory(vrn::test::historyOf({}));
        form.open(field);
        field->edit()->setText(text);
        field->addCurrentValueToValueHistory();
        field->onTextEdited(field->edit()->text());
        form.leave();
        form.enter();
        int popups = 0;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->parentWidget() != field->edit())
                continue;
            ++popups;
            QVERIFY(window->isVisible());
            QCOMPARE(window->size(), window->size().boundedTo(QSize(32767, 32767)));
        }
        QCOMPARE(popups, 2);
    }

private:
    static void verifyColour(const SimpleLineEdit& field)
    {
        QCOMPARE(field.edit()->styleSheet(), field.isValueValid() ? blackText() : redText());
    }

    static IValidator::pointer validatorNamed(const char* name)
    {
        for (const auto& [kind, validator] : validators()) {
            if (kind == name)
                return validator;
        }
        return {};
    }
};

VRN_TEST_IN(TestSimpleLineEditBadInput, CatchingApplication)
#include "tst_simple_line_edit_bad_input.moc"
