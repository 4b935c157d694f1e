#include <vrn/qt/multi_edit_line_edit_with_reset_button.h>
#include <vrn/qt/pixmap.h>
#include <vrn/qt/string_edit_validator.h>

#include "multi_edit_line_edit_fixture.h"
#include "support/catching_application.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QIcon>
#include <QToolButton>
#include <QTranslator>

#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Restore = std::function<void(int, boost::any&, boost::any&)>;

// Shows 50 and reports the integer -1.
void restore(int /*id*/, boost::any& shown, boost::any& reported)
{
    shown = 50.0;
    reported = -1;
}

QToolButton* buttonOf(const MultiEditLineEdit& field)
{
    return field.findChild<QToolButton*>("btn");
}

MultiEditAction click()
{
    return [](MultiEditLineEdit& field, Form&) { buttonOf(field)->click(); };
}

MultiEditAction clickInnerButton(const QString& result)
{
    return [result](MultiEditLineEdit& field, Form&) {
        field.addButton([result](const QString&) { return result; }, {})->click();
    };
}

} // namespace

class TestMultiEditLineEditWithResetButton : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theButtonHasIconToolTipAndPlace()
    {
        const MultiEditLineEditWithResetButton field(percentage(), 7, &restore);
        const QToolButton* button = buttonOf(field);
        QVERIFY(button);
        QCOMPARE(button->parentWidget(), &field);
        QCOMPARE(button->toolTip(), QString("Reset to default."));
        QCOMPARE(QAccessible::queryAccessibleInterface(const_cast<QToolButton*>(button))
                     ->text(QAccessible::Name),
            QString("Reset to default."));
        const QPixmap icon = Pixmap::createOrDefault(L"control_repeat_blue.png");
        QCOMPARE(button->icon().pixmap(icon.size()).toImage(), icon.toImage());
        const auto* layout = qobject_cast<QHBoxLayout*>(field.layout());
        QVERIFY(layout);
        QCOMPARE(layout->itemAt(layout->count() - 1)->widget(), button);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
    }

    void theToolTipIsTranslatedByTextAndComment()
    {
        struct OtherLanguage : public QTranslator
        {
            QString translate(const char* context, const char* source, const char* comment,
                int /*count*/) const override
            {
                const bool isToolTip = qstrcmp(context, "QObject") == 0
                    && qstrcmp(source, "Reset to default.") == 0
                    && qstrcmp(comment, "makeLineEditWithOptionalValue") == 0;
                return isToolTip ? QStringLiteral("Auf die Vorgabe setzen.") : QString();
            }
            bool isEmpty() const override { return false; }
        };
        OtherLanguage german;
        QVERIFY(QCoreApplication::installTranslator(&german));
        const MultiEditLineEditWithResetButton field(percentage(), 7, &restore);
        QCOMPARE(buttonOf(field)->toolTip(), QString("Auf die Vorgabe setzen."));
    }

    void whatActionsDo_data()
    {
        using namespace vrn::test::action;
        const boost::any none;
        const boost::any reported = -1;
        const QString varies = getVariesString();
        addActionColumns();
        actionRow("a click", {click()}, 1, false, "50.0", reported);
        actionRow("a click, Enter", {click(), enter()}, 2, false, "50.0", reported);
        actionRow("a click, left", {click(), leave()}, 2, false, "50.0", reported);
        actionRow("a click, a text", {click(), type("4")}, 1, false, "4", 4.0);
        actionRow("a click, its own text", {click(), type("50.0")}, 1, false, "50.0", 50.0);
        actionRow("a click, a refused text", {click(), type("x")}, 1, false, "x", none);
        actionRow("a click, another value set", {click(), set(3.0)}, 1, false, "3.0", reported);
        actionRow(
            "a click, another value read", {read(1.0), click(), read(2.0)}, 1, true, varies, none);
        actionRow("a click, the inner button, left", {click(), clickInnerButton("2.50"), leave()},
            2, false, "2.5", 2.5);
    }

    void whatActionsDo()
    {
        verifyActions(new MultiEditLineEditWithResetButton(percentage(), 7, &restore));
    }

    void theFunctionGetsIdAndTwoEmptyValues()
    {
        std::vector<int> ids;
        bool cameEmpty = true;
        MultiEditLineEditWithResetButton field(
            percentage(), -7, [&](int id, boost::any& shown, boost::any& reported) {
                ids.push_back(id);
                cameEmpty = cameEmpty && shown.empty() && reported.empty();
                restore(id, shown, reported);
            });
        buttonOf(field)->click();
        buttonOf(field)->click();
        QCOMPARE(ids, std::vector<int>({-7, -7}));
        QVERIFY(cameEmpty);
    }

    void theResultIsInPlaceWhenTheSignalComes()
    {
        MultiEditLineEditWithResetButton field(percentage(), 7, &restore);
        field.forceVaries();
        QString text;
        boost::any current;
        connect(&field, &MultiEditLineEdit::valueChanged, &field, [&] {
            text = field.edit()->text();
            current = field.getCurrentValue();
        });
        buttonOf(field)->click();
        QCOMPARE(text, QString("50.0"));
        QCOMPARE(current, boost::any(-1));
    }

    void aTextWhoseValidationThrowsEndsTheDefaultToo()
    {
        const ThroughQt throughQt;
        auto* validator = new ThrowingValidator("validate");
        MultiEditLineEditWithResetButton field(validator, 7, &restore);
        buttonOf(field)->click();
        QCOMPARE(field.getCurrentValue(), boost::any(-1));
        validator->armed = true;
        QTest::keyClicks(field.edit(), "7");
        QCOMPARE(CatchingApplication::instance().caught.size(), std::size_t(1));
        QVERIFY(!field.isValueValid());
        QVERIFY(field.getCurrentValue().empty());
    }

    void aFieldMayShowATextAndReportNoValue()
    {
        MultiEditLineEditWithResetButton field(new StringEditValidator(40), 7,
            [](int, boost::any& shown, boost::any&) { shown = std::wstring(L"Auto"); });
        field.readValue(std::wstring(L"IPE 300"));
        QCOMPARE(field.getCurrentValue(), boost::any(std::wstring(L"IPE 300")));
        buttonOf(field)->click();
        QCOMPARE(field.edit()->text(), QString("Auto"));
        QVERIFY(field.getCurrentValue().empty());
    }

    void theShownValueGoesThroughTheVirtualSetValue()
    {
        struct Doubling : public MultiEditLineEditWithResetButton
        {
            Doubling()
                : MultiEditLineEditWithResetButton(percentage(), 7, &restore)
            {}
            void setValue(const boost::any& value) override
            {
                seenWhileSetting = getCurrentValue();
                MultiEditLineEditWithResetButton::setValue(2 * boost::any_cast<double>(value));
            }
            boost::any seenWhileSetting;
        };
        Doubling field;
        buttonOf(field)->click();
        QCOMPARE(field.edit()->text(), QString("100.0"));
        QCOMPARE(field.seenWhileSetting, boost::any(-1));
    }

    void aMissingFunctionIsReportedAtTheClick()
    {
        MultiEditLineEditWithResetButton field(percentage(), 7, Restore());
        field.setValue(1.0);
        QSignalSpy valueChanged(&field, &MultiEditLineEdit::valueChanged);
        expectAssert("fn");
        buttonOf(field)->click();
        QCOMPARE(field.getCurrentValue(), boost::any(1.0));
        QCOMPARE(valueChanged.count(), 0);
    }

    void whatCannotBeShownIsReported()
    {
        MultiEditLineEditWithResetButton withoutValidator(nullptr, 7, &restore);
        expectAssert("m_validator");
        buttonOf(withoutValidator)->click();
        QCOMPARE(withoutValidator.getCurrentValue(), boost::any(-1));

        MultiEditLineEditWithResetButton field(
            percentage(), 7, [](int, boost::any& shown, boost::any& reported) {
                shown = std::string("Auto");
                reported = 1;
            });
        expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        buttonOf(field)->click();
        QCOMPARE(field.edit()->text(), QString());
        QCOMPARE(field.getCurrentValue(), boost::any(1));
    }

    void aValueThatCannotBeShownIsNotReportedEither()
    {
        auto* validator = new ThrowingValidator("reformat");
        validator->armed = true;
        MultiEditLineEditWithResetButton field(validator, 7, &restore);
        QSignalSpy valueChanged(&field, &MultiEditLineEdit::valueChanged);
        QVERIFY_EXCEPTION_THROWN(Q_EMIT buttonOf(field)->clicked(false), std::runtime_error);
        QVERIFY(field.getCurrentValue().empty());
        QCOMPARE(valueChanged.count(), 0);
    }

    void aThrowingFunctionChangesNothing()
    {
        MultiEditLineEditWithResetButton field(
            percentage(), 7, [](int, boost::any&, boost::any&) { throw std::runtime_error("no"); });
        field.setValue(1.0);
        QVERIFY_EXCEPTION_THROWN(Q_EMIT buttonOf(field)->clicked(false), std::runtime_error);
        QCOMPARE(field.getCurrentValue(), boost::any(1.0));
    }
};

VRN_TEST_IN(TestMultiEditLineEditWithResetButton, CatchingApplication)
#include "tst_multi_edit_line_edit_with_reset_button.moc"
