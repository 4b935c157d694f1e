#include <vrn/base/any_predicates.h>

#include "support/test_main.h"
#include "support/test_object.h"

#include <limits>
#include <map>
#include <string>

using boost::any;

class TestAnyPredicates : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyEqual_data()
    {
        QTest::addColumn<any>("a");
        QTest::addColumn<any>("b");
        QTest::addColumn<bool>("equal");
        QTest::newRow("two empty values are equal") << any() << any() << true;
        QTest::newRow("an empty value differs from the default of the type")
            << any() << any(0) << false;
        QTest::newRow("equal values of the type") << any(7) << any(7) << true;
        QTest::newRow("unequal values of the type") << any(7) << any(8) << false;
        QTest::newRow("the type and another") << any(7) << any(7.0) << false;
        QTest::newRow("the type and a wider one") << any(7) << any(7LL) << false;
        QTest::newRow("two of one other type, though equal") << any(7.0) << any(7.0) << false;
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
        QTest::addColumn<any>("a");
        QTest::addColumn<any>("b");
        QTest::addColumn<int>("order");
        const any text = std::string("7");
        QTest::newRow("a smaller value comes first") << any(7) << any(8) << -1;
        QTest::newRow("equal values are equivalent") << any(7) << any(7) << 0;
        QTest::newRow("the empty value comes before every value") << any() << any(-8) << -1;
        QTest::newRow("two empty values are equivalent") << any() << any() << 0;
        QTest::newRow("the empty value comes before another type") << any() << text << -1;
        QTest::newRow("another type comes last") << any(8) << text << -1;
        QTest::newRow("other types are equivalent") << any(7.0) << text << 0;
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
