#include "punctuation.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <cstdlib>
#include <functional>
#include <new>
#include <stdexcept>

namespace {

/// How many allocations of this thread succeed before one fails; -1 if none is to fail.
thread_local int allocationsLeft = -1;

/// How many more pieces of memory this thread has taken than it has given back.
thread_local long livePieces = 0;

void* allocate(std::size_t size) noexcept
{
    const bool fails = allocationsLeft >= 0 && allocationsLeft-- == 0;
    void* const memory = fails ? nullptr : std::malloc(size > 0 ? size : 1);
    livePieces += memory ? 1 : 0;
    return memory;
}

void deallocate(void* memory) noexcept
{
    livePieces -= memory ? 1 : 0;
    std::free(memory);
}

} // namespace

// These replace the operators of the whole process, in the libraries too. The sanitizers
// still see each piece of memory by its malloc and free.
void* operator new(std::size_t size)
{
    if (void* const memory = allocate(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    deallocate(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    deallocate(memory);
}

void operator delete[](void* memory) noexcept
{
    deallocate(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    deallocate(memory);
}

using namespace vrn::test;
using namespace vrn::units;

namespace {

const std::string longLabel = "a label that takes memory of its own";

enum class End
{
    undisturbed, ///< There was no allocation left to fail.
    badAlloc, ///< It failed, and std::bad_alloc was thrown.
    finished ///< It failed, and nothing was thrown.
};

/// Calls `act`; the allocation after the first `count` fails.
template <typename Act>
End endWithFailureAfter(int count, Act act)
{
    End end = End::finished;
    allocationsLeft = count;
    try {
        act();
    } catch (const std::bad_alloc&) {
        end = End::badAlloc;
    }
    const bool failed = allocationsLeft < 0;
    allocationsLeft = -1;
    return failed ? end : End::undisturbed;
}

/// Something that reads, and the text that it gives.
using Read = std::function<std::wstring(const std::locale&)>;
/// Something that changes a context.
using Change = std::function<void(Context&)>;

std::wstring parsed(const char* text, UnitId::UnitId id, const std::locale& locale)
{
    const auto quantity = Context().parse(QString::fromUtf8(text).toStdWString(), id, locale);
    return quantity ? std::to_wstring(quantity->value) : L"refused";
}

Context overridden()
{
    UnitFormat feet = unitFormat(213, 1);
    feet.label.set_value(longLabel);
    return Context(
        3, {{UnitId::GEO_LENGTH, feet}, {UnitId::METRE, feet}, {UnitId::BAR, unitFormat(76, 2)}});
}

bool areEqual(const Context& left, const Context& right)
{
    const auto& one = left.format_provider();
    const auto& other = right.format_provider();
    return one.system_index() == other.system_index() && one.overrides() == other.overrides();
}

/// Whether everything that makes a table at its first use gives the right answer.
bool usesEverything()
{
    const Context context(8);
    const std::locale& classic = std::locale::classic();
    const auto length = context.parse(L"1' 6''", UnitId::GEO_LENGTH, classic);
    const auto weight = context.parse(L"2 kN/m3", UnitId::NOM_WEIGHT, classic);
    const auto pressure = context.parse(L"1 1/2 kN/m2", UnitId::LOAD_AREA, classic);
    return context.format(*length, classic) == L"1.50 ft" && weight->value == 2.0
        && read_entry(L"3 mn", context, UnitId::GEO_LENGTH).reason.suggestions.size() == 3
        && pressure->value == 1.5 && context.unit_provider().get_all_ids().size() == 534;
}

} // namespace

Q_DECLARE_METATYPE(Read)
Q_DECLARE_METATYPE(Change)

/// Fails each allocation of the unit library in turn.
class TestFailingAllocations : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // This test comes first, because the tables of the library are not made yet.
    void aFirstUseThatFailsLeavesTheNextOneToWork()
    {
        bool isRight = false;
        int failures = 0;
        End end = End::badAlloc;
        for (int count = 0; end != End::undisturbed;) {
            const long before = livePieces;
            end = endWithFailureAfter(count, [&isRight] { isRight = usesEverything(); });
            QVERIFY(end == End::badAlloc || isRight);
            // A finished table stays. From now on the allocations after it fail.
            count = livePieces > before ? 0 : count + 1;
            ++failures;
        }
        // Each unit and each unit set takes memory.
        QVERIFY(failures > 399 + 135);
    }

    void readingIsRightOrThrows_data()
    {
        QTest::addColumn<Read>("read");
        const auto row = [](const char* name, const Read& read) { QTest::newRow(name) << read; };
        const auto reads = [&row](const char* name, const char* text, UnitId::UnitId id) {
            row(name, [=](const std::locale& locale) { return parsed(text, id, locale); });
        };
        const auto writes = [&row](
                                const char* name, double value, int unit, int digits, int format) {
            row(name, [=](const std::locale& locale) {
                return Context(0, {{UnitId::GEO_LENGTH, unitFormat(unit, digits, format)}})
                    .format({UnitId::GEO_LENGTH, value}, locale);
            });
        };

        reads("a number", "12", UnitId::GEO_LENGTH);
        reads("decimals and a unit", "12.5 kN/m2", UnitId::LOAD_AREA);
        reads("an exponent", "1.5e3 kN", UnitId::LOAD_POINT);
        reads("a fraction", "-1 3/8 ft", UnitId::GEO_LENGTH);
        reads("feet and inches", "1' 3 1/2''", UnitId::GEO_LENGTH);
        reads("another unit of the symbol", "2 kN/m3", UnitId::NOM_WEIGHT);
        reads("many digits", "1234567890123456789012345678901234567890.5 m", UnitId::GEO_LENGTH);
        reads("a long text",
            "0.00000000000000000000000000000000000000000000000000000000000000000000000000000001 m",
            UnitId::GEO_LENGTH);
        reads("a long text that is refused",
            "1 aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
            UnitId::GEO_LENGTH);
        reads("a unit that does not exist", "5 furlong", UnitId::GEO_LENGTH);

        const auto enters = [&row](const char* name, const char* text, UnitId::UnitId id) {
            const EntryReader reader(Context(), id);
            row(name, [=](const std::locale& locale) {
                const std::wstring wide = QString::fromUtf8(text).toStdWString();
                const Entry entry = reader.read(wide, number_signs(locale));
                std::wstring answer = entry.text + sentence(entry.reason);
                for (const std::wstring& each : reader.completions(wide))
                    answer += each;
                return answer;
            });
        };
        row("a reader of entries", [](const std::locale&) {
            return EntryReader(Context(), UnitId::GEO_LENGTH).read(L"3 m + 20 cm").text;
        });
        enters("a plain entry", "12.5 kN/m2", UnitId::LOAD_AREA);
        enters("an entry with many digits", "1234567890123456789012345678901234567890.5 m",
            UnitId::GEO_LENGTH);
        enters("a sum", "3 m + 2 × (5' 6\") / 4", UnitId::GEO_LENGTH);
        enters("deep brackets", "(((((1 m)))))", UnitId::GEO_LENGTH);
        enters("an entry with two readings", "6 kN/2 m", UnitId::LOAD_POINT);
        enters("a unit of another kind", "12 kN", UnitId::GEO_LENGTH);
        enters("a slip", "12 mn", UnitId::GEO_LENGTH);
        enters("an unfinished entry", "12 k", UnitId::LOAD_POINT);

        writes("fixed", 1234567.5, 13, 3, 0);
        writes("fixed with very many digits", 1e300, 13, 500, 0);
        writes("scientific", 1234567.5, 13, 3, 1);
        writes("a fraction", 1234567.5, 13, 8, 2);
        writes("a number that no fraction holds", 1e300, 13, 8, 2);
        writes("feet and inches", 1234567.5, 215, 8, 0);
        writes("feet beyond 32 bits", 1e30, 215, 8, 0);
        writes("inches", 1234567.5, 216, 8, 0);

        row("a denominator that is reported", [](const std::locale& locale) {
            return Context(0, {{UnitId::GEO_LENGTH, unitFormat(216, -1)}})
                .format({UnitId::GEO_LENGTH, 1.5}, locale);
        });
        row("a conversion that is reported and refused", [](const std::locale&) {
            try {
                Context().converter().convert({UnitId::METRE, 1.0}, UnitId::KILONEWTON);
            } catch (const std::invalid_argument& error) {
                const std::string text = error.what();
                return std::wstring(text.begin(), text.end());
            }
            return std::wstring();
        });
        row("a label", [](const std::locale&) {
            const std::string label = overridden().format_provider().get_label(UnitId::METRE).get();
            return std::wstring(label.begin(), label.end());
        });
        row("a copy of a context", [](const std::locale&) {
            const Context original = overridden();
            const Context copy = original;
            return areEqual(copy, original) ? L"equal" : L"different";
        });
        row("the ids", [](const std::locale&) {
            return std::to_wstring(VarnelikUnitProvider().get_all_ids().size());
        });
        row("the catalogue", [](const std::locale&) {
            return std::to_wstring(list_units().size() + list_unit_sets().size());
        });
        row("a unit that is not known", [](const std::locale&) {
            const std::string text = UnknownUnit(longLabel).what();
            return std::wstring(text.begin(), text.end());
        });
    }
    void readingIsRightOrThrows()
    {
        QFETCH(Read, read);
        // Like the default handler, this one takes memory, so reports may be lost. The
        // catcher of this test would miss them.
        const auto catcher = vrn::smartassert::set_assert_handler(
            [](const vrn::smartassert::AssertReport& report) {
                const std::string line = report.file + report.expression + longLabel;
                QVERIFY(!line.empty());
            });
        for (const std::locale& locale : {std::locale::classic(), Punctuation::german()}) {
            const std::wstring right = read(locale);
            End end = End::badAlloc;
            for (int count = 0; end != End::undisturbed; ++count) {
                std::wstring text;
                end = endWithFailureAfter(count, [&] { text = read(locale); });
                if (end != End::badAlloc)
                    QCOMPARE(QString::fromStdWString(text), QString::fromStdWString(right));
            }
        }
        vrn::smartassert::set_assert_handler(catcher);
    }

    void aChangeIsDoneOrNotBegun_data()
    {
        QTest::addColumn<Change>("change");
        const auto row = [](const char* name, const Change& change) {
            QTest::newRow(name) << change;
        };
        const auto sets = [&row](const std::string& what, auto set) {
            for (const auto& [of, id] : {std::pair("a kind", UnitId::GEO_AREA),
                     std::pair("a kind that has an override", UnitId::GEO_LENGTH),
                     std::pair("a unit", UnitId::KILONEWTON),
                     std::pair("a unit that has an override", UnitId::METRE)}) {
                row((what + " of " + of).c_str(),
                    [set, id = id](Context& context) { set(context.format_provider(), id); });
            }
        };
        using Formats = UnitsetFormatProvider;

        row("another context", [](Context& context) {
            static const Context other(8,
                {{UnitId::GEO_LENGTH, overridden().format_provider().overrides().at(13)},
                    {UnitId::GEO_AREA, unitFormat(22, 1)}});
            context = other;
        });
        row("a context without overrides", [](Context& context) {
            static const Context other(8);
            context = other;
        });
        row("itself", [](Context& context) {
            const Context& same = context;
            context = same;
        });
        row("a context made for it", [](Context& context) { context = overridden(); });
        row("other formats", [](Context& context) {
            static const Context other(8, {{UnitId::GEO_AREA, unitFormat(22, 1)}});
            context.format_provider() = other.format_provider();
        });
        sets("the unit", [](Formats& formats, auto id) { formats.set_unit(id, UnitId::FOOT); });
        sets("the precision", [](Formats& formats, auto id) { formats.set_precision(id, 7); });
        sets("the format", [](Formats& formats, auto id) { formats.set_format(id, 2); });
        sets("a label", [](Formats& formats, auto id) {
            static const boost::optional<std::string> label = "another " + longLabel;
            formats.set_label(id, label);
        });
        sets("no label", [](Formats& formats, auto id) { formats.set_label(id, boost::none); });
    }
    void aChangeIsDoneOrNotBegun()
    {
        QFETCH(Change, change);
        const Context before = overridden();
        Context after = before;
        change(after);
        End end = End::badAlloc;
        for (int count = 0; end != End::undisturbed; ++count) {
            Context context = before;
            end = endWithFailureAfter(count, [&] { change(context); });
            QVERIFY(areEqual(context, end == End::badAlloc ? before : after));
        }
    }

    void aLabelIsAssignedOrStaysNothing()
    {
        const bond::maybe<std::string> label(longLabel);
        bond::maybe<std::string> copy;
        QCOMPARE(endWithFailureAfter(0, [&] { copy = label; }), End::badAlloc);
        QVERIFY(copy.is_nothing());
    }

    void aMoveTakesNoMemory()
    {
        static_assert(std::is_nothrow_move_constructible_v<Context>);
        static_assert(std::is_nothrow_move_assignable_v<Context>);
        static_assert(std::is_nothrow_move_constructible_v<UnitsetFormatProvider>);
        static_assert(std::is_nothrow_move_assignable_v<UnitsetFormatProvider>);
        static_assert(std::is_nothrow_move_assignable_v<UnitFormat>);
    }
};

VRN_TEST(TestFailingAllocations)
#include "tst_failing_allocations.moc"
