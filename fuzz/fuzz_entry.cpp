// Reads any text as an entry. The first two bytes of the input choose the number signs, the unit
// system and the field. What is read must have a plain form that Context::parse() reads as the
// same, and what is refused must have its place in the text. A completion of the text that is
// read must not lose its unit.

#include <vrn/assert/smart_assert.h>
#include <vrn/units/units.h>

#include <boost/locale/encoding_utf.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <map>
#include <utility>
#include <vector>

using namespace vrn::units;

namespace {

constexpr std::size_t longestRepeated = 1U << 12U;
constexpr std::size_t choices = 2;
constexpr std::int32_t systems = 10;

struct Field
{
    UnitId::UnitId kind;
    Context context;
    EntryReader reader;
};

/// The kinds, those of most use first.
const std::vector<UnitId::UnitId>& kinds()
{
    static const std::vector<UnitId::UnitId> all = [] {
        std::vector<UnitId::UnitId> found = {UnitId::GEO_LENGTH, UnitId::LOAD_POINT,
            UnitId::LOAD_LINE, UnitId::LOAD_AREA, UnitId::LOAD_MOMENT, UnitId::GEO_CURVATURE,
            UnitId::REINF_AREA_G, UnitId::GEO_AREA, UnitId::REINF_CRACKW, UnitId::METRE,
            UnitId::MAT_ELSUP_M3};
        for (const UnitSetRow& row : list_unit_sets())
            found.push_back(static_cast<UnitId::UnitId>(row.id));
        return found;
    }();
    return all;
}

/// It takes time to make one, so each is made once.
const Field& fieldOf(std::int32_t system, std::size_t kind)
{
    static std::map<std::pair<std::int32_t, std::size_t>, Field> fields;
    const std::pair key(system, kind);
    const auto known = fields.find(key);
    if (known != fields.end())
        return known->second;
    const Context context(system);
    const UnitId::UnitId id = kinds()[kind];
    return fields.emplace(key, Field{id, context, EntryReader(context, id)}).first->second;
}

void require(bool holds, const char* what, const std::wstring& text)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s: \"%ls\"\n", what, text.c_str());
    std::abort();
}

void check(const Field& field, const std::wstring& text, NumberSigns signs)
{
    const Entry entry = field.reader.read(text, signs);
    require(entry.reason.place <= text.size(), "the place is not in the text", text);
    const bool isComplete = entry.state == EntryState::Complete;
    require(isComplete == (entry.reason.problem == EntryProblem::None), "no reason", text);
    require(isComplete == sentence(entry.reason).empty(), "no sentence", text);
    if (isComplete) {
        require(std::isfinite(entry.quantity.value), "not finite", text);
        const auto parsed = field.context.parse(entry.text, field.kind, std::locale::classic());
        require(parsed && *parsed == entry.quantity, "another plain form", text);
    }
    require(!field.reader.is_plain(text) || isComplete, "plain, but refused", text);
    for (const std::wstring& completion : field.reader.completions(text, signs)) {
        const Entry completed = field.reader.read(completion, signs);
        require(completed.state == EntryState::Complete
                || completed.reason.problem != EntryProblem::UnitUnknown,
            "a completion without a unit", completion);
    }
}

void refuseAsserts(const vrn::smartassert::AssertReport& report)
{
    std::fprintf(stderr, "An assertion has failed: %s\n", report.expression.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    vrn::smartassert::set_assert_handler(refuseAsserts);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < choices)
        return 0;
    const Field& field = fieldOf((data[0] >> 4U) % systems, data[1] % kinds().size());
    const NumberSigns signs = (data[0] & 1U) != 0 ? NumberSigns{L',', L'.'} : NumberSigns();
    const char* const bytes = reinterpret_cast<const char*>(data);
    std::wstring text = boost::locale::conv::utf_to_utf<wchar_t>(bytes + choices, bytes + size);
    check(field, text, signs);

    // A reader that takes more than linear time would never finish this.
    if (!text.empty() && size % 16 == 0) {
        while (text.size() < longestRepeated)
            text += text;
        field.reader.read(text, signs);
        check(field, text.substr(0, 1000), signs);
    }
    return 0;
}
