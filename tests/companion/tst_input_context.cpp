#include <vrn/q/input_context.h>

#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::units;

class TestInputContext : public vrn::test::TestObject
{
    Q_OBJECT

protected Q_SLOTS:
    void cleanup()
    {
        set_active_input_context(Context());
        vrn::test::TestObject::cleanup();
    }

private Q_SLOTS:
    void isTheSystemZeroAtFirst()
    {
        QCOMPARE(get_active_input_context().format_provider().system_index(), 0);
        QVERIFY(get_active_input_context().format_provider().overrides().empty());
    }

    void theReferenceRefersToTheContextThatWasSetLast()
    {
        const Context& active = get_active_input_context();
        set_active_input_context(Context(8));
        QCOMPARE(active.format_provider().system_index(), 8);
        QCOMPARE(&active, &get_active_input_context());
        QCOMPARE(active.format({UnitId::GEO_LENGTH, 0.3048}, std::locale::classic()),
            std::wstring(L"1.00 ft"));
    }

    void aCopyDoesNotFollow()
    {
        const Context copy = get_active_input_context();
        set_active_input_context(Context(8));
        QCOMPARE(copy.format_provider().system_index(), 0);
    }

    void theActiveContextMayBeSetToItself()
    {
        set_active_input_context(Context(8));
        set_active_input_context(get_active_input_context());
        QCOMPARE(get_active_input_context().format_provider().system_index(), 8);
    }
};

VRN_TEST(TestInputContext)
#include "tst_input_context.moc"
