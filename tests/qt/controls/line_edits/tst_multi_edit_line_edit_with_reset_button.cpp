#include <vrn/qt/multi_edit_line_edit_with_reset_button.h>
#include <vrn/qt/pixmap.h>
#include <vrn/qt/string_edit_validator.h>

#include "multi_edit_line_edit_fixture.h"
#include "support/catching_application.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QIcon>
#include <QPointer>
#include <QSignalSpy>
#include <QToolButton>
#include <QTranslator>

#include <memory>
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

MultiEditAction pickInHistory(const QString& text)
{
    return [text](MultiEditLineEdit& field, Form&) {
        QMetaObject::invokeMethod(field.edit(), "onHistoryItemSelected", Q_ARG(QString, text));
    };
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

    void whatAnActionDoes_data()
    {
        QTest::addColumn<MultiEditAction>("action");
        QTest::addColumn<int>("valueChanged");
        QTest::addColumn<bool>("varies");
        QTest::addColumn<QString>("text");
        QTest::addColumn<boost::any>("current");
        QTest::addColumn<bool>("fresh");

        using namespace vrn::test::action;
        const boost::any none;
        const boost::any reported = -1;
        const QString varies = getVariesString();
        QTest::newRow("nothing") << nothing() << 0 << false << "" << none << true;
        QTest::newRow("a click on a fresh field")
            << click() << 1 << false << "50.0" << reported << true;
        QTest::newRow("each click")
            << inOrder({click(), click()}) << 2 << false << "50.0" << reported << true;
        QTest::newRow("a click on a common value")
            << inOrder({read(1.0), click()}) << 1 << false << "50.0" << reported << false;
        QTest::newRow("a click on a varying field") << inOrder({read(1.0), read(2.0), click()}) << 1
                                                    << false << "50.0" << reported << false;
        QTest::newRow("a click on a refused text") << inOrder({read(1.0), type("x"), click()}) << 1
                                                   << false << "50.0" << reported << false;
        QTest::newRow("a common value without a click")
            << read(1.0) << 0 << false << "1.0" << boost::any(1.0) << false;
        QTest::newRow("a good text after a click")
            << inOrder({click(), type("4")}) << 1 << false << "4" << boost::any(4.0) << true;
        QTest::newRow("the same text typed after a click")
            << inOrder({click(), type("50.0")}) << 1 << false << "50.0" << boost::any(50.0) << true;
        QTest::newRow("a refused text after a click")
            << inOrder({click(), type("x")}) << 1 << false << "x" << none << true;
        QTest::newRow("Enter after a click still reports the default")
            << inOrder({click(), enter()}) << 2 << false << "50.0" << reported << true;
        QTest::newRow("leaving after a click still reports the default")
            << inOrder({click(), leave()}) << 2 << false << "50.0" << reported << true;
        QTest::newRow("a refused text and Enter after a click")
            << inOrder({click(), type("x"), enter()}) << 2 << false << "x" << none << true;
        QTest::newRow("a text and Enter after a click")
            << inOrder({click(), type("4"), enter()}) << 2 << false << "4.0" << boost::any(4.0)
            << true;
        QTest::newRow("a pick in the history after a click")
            << inOrder({click(), pickInHistory("2.5")}) << 2 << false << "2.5" << boost::any(2.5)
            << true;
        QTest::newRow("a pick of the text that the click has shown")
            << inOrder({click(), pickInHistory("50.0")}) << 2 << false << "50.0" << boost::any(50.0)
            << true;
        QTest::newRow("the inner button after a click")
            << inOrder({click(), clickInnerButton("2.50")}) << 1 << false << "2.50"
            << boost::any(2.5) << true;
        QTest::newRow("the inner button after a click, and leaving")
            << inOrder({click(), clickInnerButton("2.50"), leave()}) << 2 << false << "2.5"
            << boost::any(2.5) << true;
        QTest::newRow("the inner button that changes nothing after a click")
            << inOrder({click(), clickInnerButton("50.0")}) << 1 << false << "50.0" << reported
            << true;
        QTest::newRow("the varies text typed after a click")
            << inOrder({click(), type(varies)}) << 1 << true << varies << none << true;
        QTest::newRow("setValue does not end the default")
            << inOrder({click(), set(3.0)}) << 1 << false << "3.0" << reported << true;
        QTest::newRow("reset does not end the default")
            << inOrder({read(1.0), click(), reset()}) << 1 << false << "50.0" << reported << true;
        QTest::newRow("a first read does not end the default")
            << inOrder({click(), read(3.0)}) << 1 << false << "3.0" << reported << false;
        QTest::newRow("an equal read does not end the default")
            << inOrder({read(1.0), click(), read(50.0)}) << 1 << false << "50.0" << reported
            << false;
        QTest::newRow("a varying field has no value, a default or not")
            << inOrder({read(1.0), click(), read(2.0)}) << 1 << true << varies << none << false;
        QTest::newRow("the default is there again when the variation ends by setValue")
            << inOrder({read(1.0), click(), read(2.0), set(2.0)}) << 1 << false << "2.0" << reported
            << false;
        QTest::newRow("forceVaries hides the default")
            << inOrder({click(), forceVaries()}) << 1 << true << varies << none << true;
        QTest::newRow("a click after a text")
            << inOrder({type("4"), click()}) << 1 << false << "50.0" << reported << true;
    }

    void whatAnActionDoes()
    {
        QFETCH(MultiEditAction, action);
        Form form;
        auto* field = new MultiEditLineEditWithResetButton(percentage(), 7, &restore);
        form.open(field);
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        action(*field, form);
        QTEST(int(valueChanged.count()), "valueChanged");
        QTEST(field->dataVaries(), "varies");
        QTEST(field->edit()->text(), "text");
        QTEST(field->getCurrentValue(), "current");
        QTEST(isFresh(*field, 1.0), "fresh");
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
        QVERIFY(ids.empty());
        buttonOf(field)->click();
        buttonOf(field)->click();
        QCOMPARE(ids, std::vector<int>({-7, -7}));
        QVERIFY(cameEmpty);
    }

    void theResultIsInPlaceWhenTheSignalComes()
    {
        MultiEditLineEditWithResetButton field(percentage(), 7, &restore);
        field.readValue(1.0);
        field.readValue(2.0);
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
        struct Throwing : public DoubleEditValidator
        {
            Throwing()
                : DoubleEditValidator(1, 0.0, 100.0, false)
            {}
            bool validate(
                const QString& text, boost::any& value, const std::bitset<32>& flags) override
            {
                if (text.endsWith('y'))
                    throw std::runtime_error("from the validator");
                return DoubleEditValidator::validate(text, value, flags);
            }
        };
        MultiEditLineEditWithResetButton field(new Throwing, 7, &restore);
        buttonOf(field)->click();
        QCOMPARE(field.getCurrentValue(), boost::any(-1));
        QTest::keyClicks(field.edit(), "y");
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

    void aValueOfAForeignTypeIsReported()
    {
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

    void aMissingValidatorIsReported()
    {
        MultiEditLineEditWithResetButton field(nullptr, 7, &restore);
        expectAssert("m_validator");
        buttonOf(field)->click();
        QCOMPARE(field.getCurrentValue(), boost::any(-1));
    }

    void aValueThatCannotBeShownIsNotReportedEither()
    {
        struct Throwing : public DoubleEditValidator
        {
            QString reformat(const boost::any&, const std::bitset<32>&) override
            {
                throw std::runtime_error("from the validator");
            }
        };
        MultiEditLineEditWithResetButton field(new Throwing, 7, &restore);
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

    void functionOrSlotMayDestroyTheField_data()
    {
        QTest::addColumn<bool>("inSlot");
        QTest::addColumn<bool>("later");
        QTest::newRow("the function, later") << false << true;
        QTest::newRow("the function, at once") << false << false;
        QTest::newRow("a slot of valueChanged, later") << true << true;
        QTest::newRow("a slot of valueChanged, at once") << true << false;
    }

    void functionOrSlotMayDestroyTheField()
    {
        QFETCH(bool, inSlot);
        QFETCH(bool, later);
        const auto token = std::make_shared<int>(7);
        QPointer<QWidget> parent(new QWidget);
        int seen = 0;
        const auto destroy = [&, token] {
            if (later)
                parent->deleteLater();
            else
                delete parent;
            seen = *token;
        };
        auto* field = new MultiEditLineEditWithResetButton(
            percentage(), 7, [=](int id, boost::any& shown, boost::any& reported) {
                if (!inSlot)
                    destroy();
                restore(id, shown, reported);
            });
        field->setParent(parent);
        if (inSlot)
            connect(field, &MultiEditLineEdit::valueChanged, field, destroy);
        buttonOf(*field)->click();
        QCOMPARE(seen, 7);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!parent);
    }

    void theWindowMayGoAtAnyStep()
    {
        const std::vector<MultiEditAction> steps = {click(), action::read(1.0), click(),
            action::forceVaries(), click(), action::type("x"), click(), action::enter(),
            action::reset(), action::type("4"), action::leave(), click()};
        for (std::size_t done = 0; done <= steps.size(); ++done) {
            auto* form = new Form;
            QPointer<MultiEditLineEdit> field(
                new MultiEditLineEditWithResetButton(percentage(), 7, &restore));
            form->open(field);
            action::inOrder({steps.begin(), steps.begin() + std::ptrdiff_t(done)})(*field, *form);
            delete form;
            QVERIFY(!field);
        }
    }
};

VRN_TEST_IN(TestMultiEditLineEditWithResetButton, CatchingApplication)
#include "tst_multi_edit_line_edit_with_reset_button.moc"
