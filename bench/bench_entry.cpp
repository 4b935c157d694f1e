#include <vrn/qt/entry_validator.h>
#include <vrn/qt/unit_validator.h>
#include <vrn/units/units.h>

#include <benchmark/benchmark.h>
#include <boost/make_shared.hpp>

#include <locale>
#include <memory>
#include <string>

#include "comparison.h"

namespace bench {
namespace {

using vrn::units::Context;
using vrn::units::EntryReader;
using vrn::units::EntryState;
namespace UnitId = vrn::units::UnitId;

constexpr std::size_t mebi = 1024 * 1024;

std::wstring repeated(const std::wstring& part)
{
    std::wstring text;
    text.reserve(mebi);
    while (text.size() + part.size() <= mebi)
        text += part;
    return text;
}

std::function<void()> reading(const std::wstring& text, UnitId::UnitId kind)
{
    const auto reader = std::make_shared<EntryReader>(Context(), kind);
    return [reader, text] { benchmark::DoNotOptimize(reader->read(text)); };
}

std::function<void()> parsing(const std::wstring& text, UnitId::UnitId kind)
{
    const auto context = std::make_shared<Context>();
    return [context, text, kind] {
        benchmark::DoNotOptimize(context->parse(text, kind, std::locale::classic()));
    };
}

void addShortTexts()
{
    add({"entry/read 12 kN/m2", "Context::parse", 1.5, reading(L"12 kN/m2", UnitId::LOAD_AREA),
        parsing(L"12 kN/m2", UnitId::LOAD_AREA)});
    add({"entry/read 5 mm", "Context::parse", 1.5, reading(L"5 mm", UnitId::GEO_LENGTH),
        parsing(L"5 mm", UnitId::GEO_LENGTH)});
    const auto reader = std::make_shared<EntryReader>(Context(), UnitId::GEO_LENGTH);
    add({"entry/is 5 mm plain", "Context::parse", 0.5,
        [reader, text = std::wstring(L"5 mm")] {
            benchmark::DoNotOptimize(reader->is_plain(text));
        },
        parsing(L"5 mm", UnitId::GEO_LENGTH)});
    // The typed value is what the wrapped validator makes of the plain text.
    const auto context = std::make_shared<Context>();
    const auto read_and_parse = [reader, context](const std::wstring& text) {
        return [reader, context, text] {
            const vrn::units::Entry entry = reader->read(text);
            benchmark::DoNotOptimize(
                context->parse(entry.text, UnitId::GEO_LENGTH, std::locale::classic()));
        };
    };
    add({"entry/read 3 m + 20 cm", "the same with 5 mm", 5.0, read_and_parse(L"3 m + 20 cm"),
        read_and_parse(L"5 mm")});
}

// What a keystroke costs. A field asks an EntryValidator instead of the UnitValidator in it.
void addValidators()
{
    using vrn::qt::EntryValidator;
    using vrn::qt::IValidator;
    using vrn::qt::UnitValidator;
    const auto validating = [](const IValidator::pointer& validator, const char* text) {
        return [validator, text = QString::fromLatin1(text)] {
            boost::any value;
            benchmark::DoNotOptimize(validator->validate(text, value, {}));
            benchmark::DoNotOptimize(value);
        };
    };
    const auto load = boost::make_shared<UnitValidator>(Context(), UnitId::LOAD_AREA);
    const auto length = boost::make_shared<UnitValidator>(Context(), UnitId::GEO_LENGTH);
    const auto loadEntry = boost::make_shared<EntryValidator>(load);
    const auto lengthEntry = boost::make_shared<EntryValidator>(length);
    add({"entry/validate 12 kN/m2", "UnitValidator", 1.5, validating(loadEntry, "12 kN/m2"),
        validating(load, "12 kN/m2")});
    add({"entry/validate 5 mm", "UnitValidator", 1.5, validating(lengthEntry, "5 mm"),
        validating(length, "5 mm")});
    add({"entry/validate 3 m + 20 cm", "the same with 5 mm", 5.0,
        validating(lengthEntry, "3 m + 20 cm"), validating(lengthEntry, "5 mm")});
}

void addLongTexts()
{
    const auto letters = parsing(std::wstring(mebi, L'a'), UnitId::GEO_LENGTH);
    const std::pair<const char*, const wchar_t*> parts[] = {{"7", L"7"}, {"a", L"a"},
        {"blanks", L" "}, {"apostrophes", L"'"}, {"minus signs", L"-"}, {"points", L"."},
        {"commas", L","}, {"brackets", L"("}, {"1+", L"1+"}};
    for (const auto& [name, part] : parts) {
        add({std::string("entry/1 MiB of ") + name, "Context::parse of 1 MiB of letters", 1.0,
            reading(repeated(part), UnitId::GEO_LENGTH), letters});
    }
}

} // namespace

void addEntryComparisons()
{
    addShortTexts();
    addValidators();
    addLongTexts();
}

} // namespace bench
