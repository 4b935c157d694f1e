#include <vrn/base/any_predicates.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <limits>
#include <map>
#include <string>

using boost::any;
using vrn::test::columns;
using vrn::test::row;

class TestAnyPredicates : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyEqual_data()
    {
        columns<any, any, bool>("a", "b", "equal");
        row("two empty values are equal", any(), any(), true);
        row("an empty value differs from the default of the type", any(), any(0), false);
        row("equal values of the type", any(7), any(7), true);
        row("unequal values of the type", any(7), any(8), false);
        row("the type and another", any(7), any(7.0), false);
        row("the type and a wider one", any(7), any(7LL), false);
        row("two of one other type, though equal", any(7.0), any(7.0), false);
    }
    void anyEqual()
    {
        QFETCH(any, a);
        QFETCH(any, b);
        QFETCH(bool, equal);
        QCOMPARE(vrn::any_equal<int>(a, b), equal);
        QCOMPARE(vrn::any_equal<int>(b, a), equal);
        QCOMPARE(vrn::any_differ<int>(a, b), !equal);
        QCOMPARE(vrn::any_differ<int>(b, a), !equal);
    }

    void aNotANumberDiffersFromItself()
    {
        const any nan = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(!vrn::any_equal<double>(nan, nan));
        QVERIFY(vrn::any_differ<double>(nan, nan));
    }

    void anyLess_data()
    {
        columns<any, any, int>("a", "b", "order");
        const any text = std::string("7");
        row("a smaller value comes first", any(7), any(8), -1);
        row("equal values are equivalent", any(7), any(7), 0);
        row("the empty value comes before every value", any(), any(-8), -1);
        row("two empty values are equivalent", any(), any(), 0);
        row("the empty value comes before another type", any(), text, -1);
        row("another type comes last", any(8), text, -1);
        row("other types are equivalent", any(7.0), text, 0);
    }
    void anyLess()
    {
        QFETCH(any, a);
        QFETCH(any, b);
        QFETCH(int, order);
        QCOMPARE(vrn::any_less<int>(a, b), order < 0);
        QCOMPARE(vrn::any_less<int>(b, a), order > 0);
    }

    void aMapFindsEachKey()
    {
        std::map<any, int, bool (*)(const any&, const any&)> numbers(&vrn::any_less<int>);
        numbers[any(2)] = 2;
        numbers[any(1)] = 1;
        numbers[any()] = 0;
        QCOMPARE(numbers.size(), std::size_t(3));
        QCOMPARE(numbers.at(any(1)), 1);
        QCOMPARE(numbers.at(any()), 0);
        QCOMPARE(numbers.begin()->second, 0);
    }
};

VRN_TEST(TestAnyPredicates)
#include "tst_any_predicates.moc"
