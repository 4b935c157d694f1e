#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/on_value_changed_hook.h>
#include <vrn/qt/optional_multi_edit_widget_base.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QPointer>

#include <memory>
#include <stdexcept>

using namespace vrn::qt;
using vrn::test::columns;
using vrn::test::row;

class TestOnValueChangedHook : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachSignalCallsTheFunctionOnceAsLongAsTheHookLives()
    {
        OptionalMultiEditWidgetBase sender(nullptr);
        int calls = 0;
        auto hook = std::make_unique<OnValueChangedHook>(&sender, [&] { ++calls; });
        QVERIFY(!hook->parent());
        QCOMPARE(calls, 0);
        Q_EMIT sender.valueChanged();
        Q_EMIT sender.valueChanged();
        QCOMPARE(calls, 2);
        hook.reset();
        Q_EMIT sender.valueChanged();
        QCOMPARE(calls, 2);
    }

    void itsSlotIsKnownByItsNameAndOutlivesTheSender()
    {
        auto sender = std::make_unique<OptionalMultiEditWidgetBase>(nullptr);
        int calls = 0;
        OnValueChangedHook hook(sender.get(), [&] { ++calls; });
        sender.reset();
        QVERIFY(QMetaObject::invokeMethod(&hook, "onValueChanged"));
        QCOMPARE(calls, 1);
    }

    void theClassOfTheSenderDoesNotMatter()
    {
        const std::unique_ptr<MultiEditLineEdit> sender(
            MultiEditLineEdit::create(nullptr, {}, new DoubleEditValidator, 0, ExpandHorizontal));
        int calls = 0;
        const OnValueChangedHook hook(sender.get(), [&] { ++calls; });
        sender->onEditingFinished();
        QCOMPARE(calls, 1);
    }

    void theFunctionIsMovedIn()
    {
        const auto token = std::make_shared<int>();
        OptionalMultiEditWidgetBase sender(nullptr);
        boost::function<void()> fn = [token] {};
        const OnValueChangedHook hook(&sender, std::move(fn));
        QVERIFY(fn.empty()); // NOLINT(bugprone-use-after-move)
        QCOMPARE(token.use_count(), 2L);
    }

    void whatTheFunctionThrowsPasses()
    {
        OptionalMultiEditWidgetBase sender(nullptr);
        OnValueChangedHook hook(&sender, [] { throw std::runtime_error("from the function"); });
        QVERIFY_EXCEPTION_THROWN(hook.onValueChanged(), std::runtime_error);
    }

    void aSenderWithoutTheSignalIsReported_data()
    {
        columns<bool>("isNull");
        row("no sender", true);
        row("a sender without the signal", false);
    }
    void aSenderWithoutTheSignalIsReported()
    {
        QFETCH(bool, isNull);
        QObject other;
        int calls = 0;
        expectAssert("hasSignal");
        OnValueChangedHook hook(isNull ? nullptr : &other, [&] { ++calls; });
        hook.onValueChanged();
        QCOMPARE(calls, 1);
    }

    // Only the hook itself: the injection matrix destroys the sender.
    void theFunctionMayDestroyTheHook()
    {
        const auto token = std::make_shared<int>(7);
        OptionalMultiEditWidgetBase sender(nullptr);
        QPointer<OnValueChangedHook> hook;
        int seen = 0;
        hook = new OnValueChangedHook(&sender, [&, token] {
            delete hook;
            seen = *token;
        });
        Q_EMIT sender.valueChanged();
        QCOMPARE(seen, 7);
        QVERIFY(!hook);
        QCOMPARE(token.use_count(), 1L);
    }
};

VRN_TEST(TestOnValueChangedHook)
#include "tst_on_value_changed_hook.moc"
