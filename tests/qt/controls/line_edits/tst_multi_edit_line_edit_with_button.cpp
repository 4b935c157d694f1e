#include <vrn/qt/multi_edit_line_edit_with_button.h>

#include "multi_edit_line_edit_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QPointer>
#include <QScopedPointer>
#include <QSignalSpy>
#include <QToolButton>

#include <memory>
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

    void aClickOnlyCallsAFunctionOfTheId_data() { addStates(); }

    void aClickOnlyCallsAFunctionOfTheId()
    {
        QFETCH(MultiEditAction, before);
        std::vector<int> ids;
        Form form;
        auto* field = new MultiEditLineEditWithButton(
            percentage(), 7, Act([&](int id) { ids.push_back(id); }));
        form.open(field);
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

    void aClickShowsTheComputedValue_data() { addStates(); }

    void aClickShowsTheComputedValue()
    {
        QFETCH(MultiEditAction, before);
        Form form;
        QWidget* given = nullptr;
        int givenId = 0;
        bool cameEmpty = false;
        auto* field = new MultiEditLineEditWithButton(
            percentage(), -7, Compute([&](QWidget* control, int id, boost::any& value) {
                given = control;
                givenId = id;
                cameEmpty = value.empty();
                value = 12.5;
            }));
        form.open(field);
        before(*field, form);
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        for (int click = 0; click < 2; ++click) {
            QTest::mouseClick(field->getButton(), Qt::LeftButton);
            QCOMPARE(given, static_cast<QWidget*>(field));
            QCOMPARE(givenId, -7);
            QVERIFY(cameEmpty);
            QCOMPARE(field->edit()->text(), QString("12.5"));
            QVERIFY(!field->dataVaries());
            QCOMPARE(field->getCurrentValue(), boost::any(12.5));
        }
        QCOMPARE(valueChanged.count(), 0);
        QTEST(isFresh(*field, 1.0), "fresh");
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

    void aFunctionThatLeavesNoValueClearsTheField()
    {
        MultiEditLineEditWithButton field(
            percentage(), 7, Compute([](QWidget*, int, boost::any&) {}));
        field.setValue(1.0);
        expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        field.getButton()->click();
        QCOMPARE(field.edit()->text(), QString());
        QVERIFY(field.getCurrentValue().empty());
    }

    void theValidatorIsTakenOver()
    {
        struct Watched : public CountingValidator
        {
            explicit Watched(bool* gone)
                : m_gone(gone)
            {}
            ~Watched() override { *m_gone = true; }
            bool* m_gone;
        };
        bool gone = false;
        {
            const MultiEditLineEditWithButton field(new Watched(&gone), 7, Act([](int) {}));
            QVERIFY(!gone);
        }
        QVERIFY(gone);
    }

    void aMissingFunctionIsReportedAtTheClick()
    {
        MultiEditLineEditWithButton acting(percentage(), 7, Act());
        expectAssert("fn");
        acting.getButton()->click();

        MultiEditLineEditWithButton computing(percentage(), 7, Compute());
        computing.setValue(1.0);
        expectAssert("fn");
        computing.getButton()->click();
        QCOMPARE(computing.edit()->text(), QString("1.0"));
    }

    void aMissingValidatorIsReported()
    {
        MultiEditLineEditWithButton field(
            nullptr, 7, Compute([](QWidget*, int, boost::any& value) { value = 12.5; }));
        expectAssert("m_validator");
        field.getButton()->click();
        QCOMPARE(field.edit()->text(), QString());
    }

    void aThrowingFunctionChangesNothing()
    {
        MultiEditLineEditWithButton field(percentage(), 7,
            Compute([](QWidget*, int, boost::any&) { throw std::runtime_error("no"); }));
        field.setValue(1.0);
        QVERIFY_EXCEPTION_THROWN(Q_EMIT field.getButton()->clicked(false), std::runtime_error);
        QCOMPARE(field.getCurrentValue(), boost::any(1.0));
    }

    void theFunctionMayDestroyTheField_data()
    {
        QTest::addColumn<bool>("computes");
        QTest::addColumn<bool>("later");
        QTest::newRow("a function of the id, later") << false << true;
        QTest::newRow("a function of the id, at once") << false << false;
        QTest::newRow("a computing function, later") << true << true;
        QTest::newRow("a computing function, at once") << true << false;
    }

    void theFunctionMayDestroyTheField()
    {
        QFETCH(bool, computes);
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
        MultiEditLineEditWithButton* field = nullptr;
        if (computes) {
            field = new MultiEditLineEditWithButton(
                percentage(), 7, Compute([destroy](QWidget*, int, boost::any& value) {
                    destroy();
                    value = 12.5;
                }));
        } else {
            field = new MultiEditLineEditWithButton(
                percentage(), 7, Act([destroy](int) { destroy(); }));
        }
        field->setParent(parent);
        field->getButton()->click();
        QCOMPARE(seen, 7);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!parent);
    }

    void theWindowMayGoAtAnyStep()
    {
        const MultiEditAction click = [](MultiEditLineEdit& field, Form&) {
            static_cast<MultiEditLineEditWithButton&>(field).getButton()->click();
        };
        const std::vector<MultiEditAction> steps = {click, action::read(1.0), click,
            action::forceVaries(), click, action::type("x"), click, action::enter(),
            action::reset(), action::type("4"), action::leave(), click};
        for (std::size_t done = 0; done <= steps.size(); ++done) {
            auto* form = new Form;
            QPointer<QWidget> field(new MultiEditLineEditWithButton(
                percentage(), 7, Compute([](QWidget*, int, boost::any& value) { value = 12.5; })));
            form->open(field);
            action::inOrder({steps.begin(), steps.begin() + std::ptrdiff_t(done)})(
                static_cast<MultiEditLineEdit&>(*field), *form);
            delete form;
            QVERIFY(!field);
        }
    }

private:
    static void addStates()
    {
        QTest::addColumn<MultiEditAction>("before");
        QTest::addColumn<bool>("fresh");
        QTest::newRow("fresh") << action::nothing() << true;
        QTest::newRow("common") << action::read(1.0) << false;
        QTest::newRow("varies") << action::inOrder({action::read(1.0), action::read(2.0)}) << false;
        QTest::newRow("refused") << action::inOrder({action::read(1.0), action::type("x")})
                                 << false;
    }
};

VRN_TEST(TestMultiEditLineEditWithButton)
#include "tst_multi_edit_line_edit_with_button.moc"
