#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>

#include <benchmark/benchmark.h>

#include <QLocale>

#include <memory>

#include "comparison.h"

namespace bench {

using namespace vrn::qt;

void addValidatorComparisons()
{
    const auto integers = std::make_shared<IntegerValidator<int>>(-1000000, 1000000, true);
    const QString integerText = QStringLiteral("123456");
    add({"validator/IntegerValidator<int>", "QString::toLongLong into a boost::any", 1.3,
        [=] {
            boost::any value;
            benchmark::DoNotOptimize(integers->validate(integerText, value, 0));
            benchmark::DoNotOptimize(value);
        },
        [=] {
            bool ok = false;
            boost::any value = static_cast<int>(integerText.toLongLong(&ok));
            benchmark::DoNotOptimize(ok);
            benchmark::DoNotOptimize(value);
        }});

    const auto doubles = std::make_shared<DoubleEditValidator>(3, -1e6, 1e6, true);
    const QString doubleText = QStringLiteral("12345.678");
    const QLocale c = QLocale::c();
    add({"validator/DoubleEditValidator", "QLocale::toDouble into a boost::any", 1.3,
        [=] {
            boost::any value;
            benchmark::DoNotOptimize(doubles->validate(doubleText, value, 0));
            benchmark::DoNotOptimize(value);
        },
        [=] {
            bool ok = false;
            boost::any value = c.toDouble(doubleText, &ok);
            benchmark::DoNotOptimize(ok);
            benchmark::DoNotOptimize(value);
        }});
}

} // namespace bench
