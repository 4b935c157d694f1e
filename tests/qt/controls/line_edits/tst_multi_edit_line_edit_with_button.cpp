#include <vrn/qt/multi_edit_line_edit_with_button.h>

#include "multi_edit_line_edit_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QToolButton>

#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Act = std::function<void(int)>;
using Compute = std::function<void(QWidget*, int, boost::any&)>;

} // namespace

class TestMultiEditLineEditWithButton : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theButtonIsTheLastOfATightHorizontalLayout()
    {
        const MultiEditLineEditWithButton field(percentage(), 7, Act([](int) {}));
        const QToolButton* button = field.getButton();
        QVERIFY(button);
        QCOMPARE(button->objectName(), QString("m_btn"));
        QCOMPARE(button->parentWidget(), &field);
        const auto* layout = qobject_cast<QHBoxLayout*>(field.layout());
        QVERIFY(layout);
        QCOMPARE(layout->itemAt(layout->count() - 1)->widget(), button);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QVERIFY(!field.parentWidget());
        QCOMPARE(field.styleSheet(), QString());
        QCOMPARE(field.edit()->accessibleName(), QString());
    }

    void aClickOnlyCallsAFunctionOfTheId_data()
    {
        QTest::addColumn<MultiEditAction>("before");
        QTest::addColumn<bool>("fresh");
        using namespace vrn::test::action;
        row("fresh", nothing(), true);
        row("common", read(1.0), false);
        row("varies", inOrder({read(1.0), read(2.0)}), false);
        row("refused", inOrder({read(1.0), type("x")}), false);
    }

    void aClickOnlyCallsAFunctionOfTheId()
    {
        QFETCH(MultiEditAction, before);
        std::vector<int> ids;
        Form form;
        auto* field = form.open(new MultiEditLineEditWithButton(
            percentage(), 7, Act([&](int id) { ids.push_back(id); })));
        before(*field, form);
        const QString text = field->edit()->text();
        const bool varies = field->dataVaries();
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        field->getButton()->click();
        field->getButton()->click();
        QCOMPARE(ids, std::vector<int>({7, 7}));
        QCOMPARE(field->edit()->text(), text);
        QCOMPARE(field->dataVaries(), varies);
        QCOMPARE(valueChanged.count(), 0);
        QTEST(isFresh(*field, 1.0), "fresh");
    }

    // The random sequences do this in every state.
    void aClickShowsTheComputedValue()
    {
        QWidget* given = nullptr;
        int givenId = 0;
        bool cameEmpty = false;
        MultiEditLineEditWithButton field(
            percentage(), -7, Compute([&](QWidget* control, int id, boost::any& value) {
                given = control;
                givenId = id;
                cameEmpty = value.empty();
                value = 12.5;
            }));
        QSignalSpy valueChanged(&field, &MultiEditLineEdit::valueChanged);
        for (int click = 0; click < 2; ++click) {
            field.getButton()->click();
            QCOMPARE(given, static_cast<QWidget*>(&field));
            QCOMPARE(givenId, -7);
            QVERIFY(cameEmpty);
            QCOMPARE(field.getCurrentValue(), boost::any(12.5));
        }
        QCOMPARE(valueChanged.count(), 0);
    }

    void theComputedValueGoesThroughTheVirtualSetValue()
    {
        struct Doubling : public MultiEditLineEditWithButton
        {
            Doubling()
                : MultiEditLineEditWithButton(percentage(), 7,
                    Compute([](QWidget*, int, boost::any& value) { value = 12.5; }))
            {}
            void setValue(const boost::any& value) override
            {
                MultiEditLineEditWithButton::setValue(2 * boost::any_cast<double>(value));
            }
        };
        Doubling field;
        field.getButton()->click();
        QCOMPARE(field.edit()->text(), QString("25.0"));
    }

    void theValidatorIsTakenOver()
    {
        bool gone = false;
        {
            const MultiEditLineEditWithButton field(new MortalValidator(&gone), 7, Act([](int) {}));
            QVERIFY(!gone);
        }
        QVERIFY(gone);
    }

    void whatIsMissingIsReportedAtTheClick()
    {
        const auto twelve = Compute([](QWidget*, int, boost::any& value) { value = 12.5; });
        const auto nothing = Compute([](QWidget*, int, boost::any&) {});
        const auto textAfterAClick = [](IValidator* validator, const auto& function) {
            MultiEditLineEditWithButton field(validator, 7, function);
            field.edit()->setText("1.0");
            field.getButton()->click();
            return field.edit()->text();
        };
        expectAssert("fn");
        QCOMPARE(textAfterAClick(percentage(), Act()), QString("1.0"));
        expectAssert("fn");
        QCOMPARE(textAfterAClick(percentage(), Compute()), QString("1.0"));
        expectAssert("m_validator");
        QCOMPARE(textAfterAClick(nullptr, twelve), QString());
        expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        QCOMPARE(textAfterAClick(percentage(), nothing), QString());
    }

    void aThrowingFunctionChangesNothing()
    {
        MultiEditLineEditWithButton field(percentage(), 7,
            Compute([](QWidget*, int, boost::any&) { throw std::runtime_error("no"); }));
        field.setValue(1.0);
        QVERIFY_EXCEPTION_THROWN(Q_EMIT field.getButton()->clicked(false), std::runtime_error);
        QCOMPARE(field.getCurrentValue(), boost::any(1.0));
    }
};

VRN_TEST(TestMultiEditLineEditWithButton)
#include "tst_multi_edit_line_edit_with_button.moc"
