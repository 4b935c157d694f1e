#include <vrn/qt/unit_validator.h>
#include <vrn/units/catalogue.h>

#include <benchmark/benchmark.h>

#include <QLocale>

#include <charconv>
#include <cstring>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "comparison.h"

#ifdef VRN_BENCH_UDUNITS2
#include <udunits2.h>
#endif
#ifdef VRN_BENCH_KUNITCONVERSION
#include <KUnitConversion/Converter>
#include <KUnitConversion/Value>
#endif

namespace bench {
namespace {

using vrn::qt::UnitValidator;
using vrn::units::Context;
using Quantity = vrn::units::IConverter::quantity;
namespace UnitId = vrn::units::UnitId;

const std::bitset<32> noFlags;

/// A text that people type, and the kind of quantity in the field.
struct Entry
{
    const char* text;
    UnitId::UnitId kind;
};

constexpr Entry entries[] = {
    {"12 kN/m2", UnitId::LOAD_AREA},
    {"1.5e3 kN", UnitId::LOAD_POINT},
    {"12", UnitId::GEO_LENGTH},
    {"5 mm", UnitId::GEO_LENGTH},
    {"3.25 ft", UnitId::GEO_LENGTH},
    {"1' 3 1/2''", UnitId::GEO_LENGTH},
};

std::function<void()> validation(const Entry& entry)
{
    const auto validator = std::make_shared<UnitValidator>(Context(), entry.kind);
    const QString text = QString::fromLatin1(entry.text);
    boost::any value;
    if (!validator->validate(text, value, noFlags))
        qFatal("%s is refused", entry.text);
    return [validator, text] {
        boost::any read;
        benchmark::DoNotOptimize(validator->validate(text, read, noFlags));
        benchmark::DoNotOptimize(read);
    };
}

/// The least that a reader must do, without a grammar: it narrows the text, reads the
/// first number with std::from_chars, looks up the rest as a unit, and multiplies by a
/// factor.
class Floor
{
public:
    Floor()
        : m_factors({{"", 1.0}, {"kN/m2", 1.0}, {"kN", 1.0}, {"mm", 0.001}, {"ft", 0.3048},
            {"' 3 1/2''", 0.3048}})
    {
        // As many spellings as the library knows.
        for (const vrn::units::UnitRecord& unit : vrn::units::list_units())
            m_symbols.push_back(unit.symbol);
        for (const std::string& symbol : m_symbols)
            m_factors.emplace(symbol, 1.0);
    }

    double read(const QString& text) const
    {
        char narrow[64];
        const auto size = static_cast<std::size_t>(text.size());
        for (std::size_t i = 0; i < size; ++i)
            narrow[i] = static_cast<char>(text[static_cast<int>(i)].unicode());
        double number = 0;
        const char* behind = std::from_chars(narrow, narrow + size, number).ptr;
        if (behind != narrow + size && *behind == ' ')
            ++behind;
        const auto unit = m_factors.find(
            std::string_view(behind, static_cast<std::size_t>(narrow + size - behind)));
        return unit == m_factors.end() ? 0.0 : unit->second * number;
    }

private:
    std::vector<std::string> m_symbols;
    std::unordered_map<std::string_view, double> m_factors;
};

void addReadingComparisons()
{
    const auto floor = std::make_shared<Floor>();
    for (const Entry& entry : entries) {
        const QString text = QString::fromLatin1(entry.text);
        add({std::string("units/read ") + entry.text,
            "narrowing, from_chars, hash look-up, multiplication", 6.0, validation(entry),
            [floor, text] { benchmark::DoNotOptimize(floor->read(text)); }});
    }
}

void addUdunitsComparisons()
{
#ifdef VRN_BENCH_UDUNITS2
    ut_set_error_message_handler(ut_ignore);
    const std::shared_ptr<ut_system> system(ut_read_xml(nullptr), ut_free_system);
    if (!system)
        qFatal("udunits2 finds no units");
    for (const Entry& entry : entries) {
        const auto parse = [system, text = entry.text] {
            ut_unit* const unit = ut_parse(system.get(), text, UT_ASCII);
            benchmark::DoNotOptimize(unit);
            ut_free(unit);
            return unit != nullptr;
        };
        if (!parse()) {
            note(std::string("udunits2 does not read ") + entry.text);
            continue;
        }
        add({std::string("units/read ") + entry.text, "udunits2: ut_parse", 0.25, validation(entry),
            parse});
    }
#else
    note("udunits2 (libudunits2-dev) was not found, so nothing is compared with it");
#endif
}

void addKUnitConversionComparisons()
{
#ifdef VRN_BENCH_KUNITCONVERSION
    for (const Entry& entry : entries) {
        const QString text = QString::fromLatin1(entry.text);
        const KUnitConversion::UnitId base = entry.kind == UnitId::LOAD_POINT
            ? KUnitConversion::Kilonewton
            : KUnitConversion::Meter;
        const auto read = [text, base, c = QLocale::c()] {
            const int blank = text.indexOf(QLatin1Char(' '));
            const KUnitConversion::Value typed(c.toDouble(text.left(blank)), text.mid(blank + 1));
            const KUnitConversion::Value value = typed.convertTo(base);
            benchmark::DoNotOptimize(value.number());
            return value.isValid();
        };
        if (!text.contains(QLatin1Char(' ')) || !read()) {
            note(std::string("KUnitConversion does not read ") + entry.text);
            continue;
        }
        add({std::string("units/read ") + entry.text,
            "KUnitConversion: QLocale::toDouble, Value, convertTo", 0.25, validation(entry), read});
    }
#else
    note("KUnitConversion (libkf5unitconversion-dev) was not found, so nothing is compared with "
         "it");
#endif
}

void addWritingComparisons()
{
    struct Shown
    {
        const char* text;
        UnitId::UnitId kind;
        double number;
        double factor;
        int digits;
        const char* label;
    };
    static constexpr Shown all[] = {
        {"12.50 kN/m2", UnitId::LOAD_AREA, 12.5, 1.0, 2, " kN/m2"},
        {"1500.0 kN", UnitId::LOAD_POINT, 1500.0, 1.0, 1, " kN"},
        {"0.394 m", UnitId::GEO_LENGTH, 0.3937, 1.0, 3, " m"},
        {"3.142 mm", UnitId::GEO_DEFORMATION, 0.00314159, 0.001, 3, " mm"},
    };
    for (const Shown& shown : all) {
        const auto validator = std::make_shared<UnitValidator>(Context(), shown.kind);
        const boost::any value = Quantity{shown.kind, shown.number};
        const auto write = [&shown] {
            char buffer[400];
            char* end = std::to_chars(buffer, buffer + sizeof buffer - 16,
                shown.number * (1.0 / shown.factor), std::chars_format::fixed, shown.digits)
                            .ptr;
            const std::size_t size = std::strlen(shown.label);
            std::memcpy(end, shown.label, size);
            end += size;
            return QString::fromLatin1(buffer, static_cast<int>(end - buffer));
        };
        const QString expected = QString::fromLatin1(shown.text);
        if (validator->reformat(value, noFlags) != expected || write() != expected)
            qFatal("%s is written in another way", shown.text);
        add({std::string("units/write ") + shown.text, "to_chars and label into a QString", 2.5,
            [validator, value] { benchmark::DoNotOptimize(validator->reformat(value, noFlags)); },
            [write] { benchmark::DoNotOptimize(write()); }});
    }
}

void addConversionComparisons()
{
    const auto context = std::make_shared<Context>();
    const auto factors = std::make_shared<std::unordered_map<int, double>>();
    for (const UnitId::UnitId id : context->unit_provider().get_all_ids())
        factors->emplace(id, context->unit_provider().get_factor(id));

    const std::pair<UnitId::UnitId, UnitId::UnitId> pairs[] = {
        {UnitId::FOOT, UnitId::MILLIMETRE},
        {UnitId::FOOT, UnitId::GEO_LENGTH},
        {UnitId::LOAD_AREA, UnitId::MEGAPASCAL},
    };
    for (const auto& [from, to] : pairs) {
        add({"units/convert " + std::to_string(from) + " to " + std::to_string(to),
            "two multiplications with looked-up factors", 3.0,
            [context, from = from, to = to] {
                benchmark::DoNotOptimize(context->converter().convert({from, 3.25}, to));
            },
            [factors, from = from, to = to] {
                double number = 3.25;
                benchmark::DoNotOptimize(number);
                benchmark::DoNotOptimize(
                    factors->find(from)->second * number * (1.0 / factors->find(to)->second));
            }});
    }
}

void addLongTexts()
{
    constexpr int mebi = 1024 * 1024;
    std::vector<std::pair<std::string, QString>> texts;
    const std::pair<char, const char*> characters[] = {{'7', "sevens"}, {' ', "blanks"},
        {'\n', "line breaks"}, {'a', "a"}, {'e', "e"}, {'f', "f"}, {'n', "n"},
        {'\'', "apostrophes"}, {'-', "minus signs"}, {'+', "plus signs"}, {'.', "points"},
        {',', "commas"}, {'/', "slashes"}};
    for (const auto& [character, name] : characters)
        texts.emplace_back(std::string("of ") + name, QString(mebi, QLatin1Char(character)));
    texts.emplace_back("of 1ft2in", QStringLiteral("1ft2in").repeated(mebi / 6));
    texts.emplace_back(
        "of letters after a number", QStringLiteral("1 ") + QString(mebi - 2, QLatin1Char('a')));
    for (const auto& [name, text] : texts) {
        const auto validator = std::make_shared<UnitValidator>(Context(), UnitId::GEO_LENGTH);
        add(TimeLimit{"units/1 MiB " + name, 20.0, [validator, text = text] {
                          boost::any value;
                          benchmark::DoNotOptimize(validator->validate(text, value, noFlags));
                          benchmark::DoNotOptimize(value);
                      }});
    }
}

} // namespace

void addUnitComparisons()
{
    addReadingComparisons();
    addUdunitsComparisons();
    addKUnitConversionComparisons();
    addWritingComparisons();
    addConversionComparisons();
    addLongTexts();
}

} // namespace bench
