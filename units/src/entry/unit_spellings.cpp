#include "entry/unit_spellings_p.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

namespace vrn::units::detail {
namespace {

struct Spellings
{
    const char* symbol; ///< Of the catalogue, in UTF-8.
    const wchar_t* others; ///< With blanks between them; "*" stands for any product sign.
};

// Powers and "s" for "sec" need no line: "m²", "m^2" and "m2" have the same key.
//
// The sources: SI is the SI brochure with ISO 80000-1 (unit names, products with a dot or
// a blank, brackets below the line); 80000 is ISO 80000-3 to -5; US is US customary usage;
// AISC is the usage of its manual of steel construction; DE is usage in Germany and Switzerland;
// JIS is the Japanese names in JIS Z 8000; CAT is the catalogue itself, with product signs between
// the parts of a symbol.
//
// clang-format off
constexpr Spellings table[] = {
    // Lengths
    {"km", L"kilometre kilometres kilometer kilometers"}, // SI, US
    {"m", L"metre metres meter meters"}, // SI, US
    {"dm", L"decimetre decimetres decimeter decimeters"}, // SI, US
    {"cm", L"centimetre centimetres centimeter centimeters"}, // SI, US
    {"mm", L"millimetre millimetres millimeter millimeters"}, // SI, US
    {"mi", L"mile miles"}, // US
    {"yd", L"yds yard yards"}, // US
    {"ft", L"foot feet"}, // US
    {"in", L"inch inches"}, // US
    // Areas
    {"km2", L"sq*km"}, // US
    {"m2", L"sq*m sqm qm"}, // US, DE
    {"cm2", L"sq*cm sqcm qcm"}, // US, DE
    {"mm2", L"sq*mm sqmm qmm"}, // US, DE
    {"yd2", L"sq*yd sqyd sy"}, // US
    {"ft2", L"sq*ft sqft sf"}, // US, AISC
    {"in2", L"sq*in sqin"}, // US, AISC
    // Volumes
    {"m3", L"cu*m cbm"}, // US, DE
    {"cm3", L"cc ccm"}, // US, DE
    {"l", L"L litre litres liter liters"}, // SI, US
    {"yd3", L"cu*yd cuyd cy"}, // US
    {"ft3", L"cu*ft cuft cf"}, // US
    {"in3", L"cu*in cuin"}, // US
    {"gal", L"gallon gallons"}, // US
    {"Imp-gal", L"imp*gallon imp*gallons imperial*gallon imperial*gallons"}, // US
    // One over a length, an area, a volume
    {"1/mile", L"/mi"}, // US
    // Masses
    {"g", L"gram grams gramme grammes"}, // SI, US
    {"kg", L"kilogram kilograms"}, // SI
    {"t", L"to tonne tonnes"}, // DE, SI
    {"ton", L"tons short*ton short*tons"}, // US
    {"Oz", L"oz ounce ounces"}, // US
    {"lbm", L"lb lbs pound pounds"}, // US
    {"slug", L"slugs"}, // US
    {"t/m", L"to/m"}, // DE
    {"t/m2", L"to/m2"}, // DE
    {"t/m3", L"to/m3"}, // DE
    {"lbm/ft", L"lb/ft lbs/ft plf"}, // US
    {"lbm/ft2", L"lb/ft2 lbs/ft2 lb/sq*ft psf"}, // US
    {"lbm/ft3", L"lb/ft3 lbs/ft3 lb/cu*ft pcf"}, // US
    {"tm", L"t*m"}, // CAT
    {"tm2", L"t*m2"}, // CAT
    {"tm2/m", L"t*m2/m"}, // CAT
    {"kgm2", L"kg*m2"}, // CAT
    {"kgm2/m", L"kg*m2/m"}, // CAT
    // Forces
    {"N", L"newton newtons"}, // SI
    {"kN", L"kilonewton kilonewtons"}, // SI
    {"MN", L"meganewton meganewtons"}, // SI
    {"lb", L"lbs lbf pound pounds"}, // US
    {"kip", L"kips"}, // AISC
    {"lb/ft", L"lbs/ft lbf/ft plf lb/lf"}, // US
    {"kip/ft", L"kips/ft k/ft klf k/lf"}, // AISC
    // Pressures and stresses
    {"psi", L"lb/in2 lbs/in2 lbf/in2 lb/sq*in"}, // US
    {"ksi", L"kip/in2 kips/in2 k/in2 k/sq*in"}, // AISC
    {"psf", L"lb/ft2 lbs/ft2 lbf/ft2 lb/sq*ft lb/sf"}, // US
    {"ksf", L"kip/ft2 kips/ft2 k/ft2 k/sq*ft k/sf"}, // AISC
    {"lb/in2", L"lbs/in2 lbf/in2 lb/sq*in"}, // US
    // Forces per volume
    {"lb/in3", L"lbs/in3 lbf/in3 lb/cu*in pci"}, // US
    {"lb/ft3", L"lbs/ft3 lbf/ft3 lb/cu*ft pcf"}, // US
    {"kip/ft3", L"kips/ft3 k/ft3 kcf"}, // AISC
    // Moments and energies
    {"Nmm", L"N*mm"}, // SI
    {"Nm", L"N*m"}, // SI
    {"kNm", L"kN*m"}, // SI
    {"MNm", L"MN*m"}, // SI
    {"Nmm/rad", L"N*mm/rad"}, // SI
    {"Nm/rad", L"N*m/rad"}, // SI
    {"kNm/rad", L"kN*m/rad"}, // SI
    {"MNm/rad", L"MN*m/rad"}, // SI
    {"in-lb", L"lb*in lbf*in in*lbf in*lbs lbs*in inlb lbin"}, // US
    {"ft-lb", L"lb*ft lbf*ft ft*lbf ft*lbs lbs*ft ftlb lbft"}, // US
    {"in-k", L"k*in kip*in kips*in in*kip in*kips kin kipin"}, // AISC
    {"ft-k", L"k*ft kip*ft kips*ft ft*kip ft*kips kft kipft"}, // AISC
    {"in-k/rad", L"k*in/rad kip*in/rad in*kip/rad"}, // AISC
    {"ft-k/rad", L"k*ft/rad kip*ft/rad ft*kip/rad"}, // AISC
    {"Wsec", L"W*sec J joule joules"}, // SI
    {"kWsec", L"kW*sec kJ"}, // SI
    {"Wh", L"W*h"}, // SI
    {"kWh", L"kW*h"}, // SI
    {"MWh", L"MW*h"}, // SI
    // Moments per length and area
    {"Nmm/m", L"N*mm/m"}, // SI
    {"Nm/m", L"N*m/m"}, // SI
    {"kNm/m", L"kN*m/m"}, // SI
    {"MNm/m", L"MN*m/m"}, // SI
    {"Nmm/m/rad", L"N*mm/m/rad Nmm/rad/m N*mm/rad/m"}, // SI
    {"Nm/m/rad", L"N*m/m/rad Nm/rad/m N*m/rad/m"}, // SI
    {"kNm/m/rad", L"kN*m/m/rad kNm/rad/m kN*m/rad/m"}, // SI
    {"MNm/m/rad", L"MN*m/m/rad MNm/rad/m MN*m/rad/m"}, // SI
    {"in-k/ft", L"k*in/ft kip*in/ft in*kip/ft"}, // AISC
    {"ft-k/ft", L"k*ft/ft kip*ft/ft ft*kip/ft"}, // AISC
    {"in-k/ft/rad", L"k*in/ft/rad kip*in/ft/rad in*kip/ft/rad"}, // AISC
    {"ft-k/ft/rad", L"k*ft/ft/rad kip*ft/ft/rad ft*kip/ft/rad"}, // AISC
    {"Nmm/m2", L"N*mm/m2"}, // SI
    {"Nmm/mm2", L"N*mm/mm2"}, // SI
    {"Nm/m2", L"N*m/m2"}, // SI
    {"kNm/m2", L"kN*m/m2"}, // SI
    {"Nmm/m2/rad", L"N*mm/m2/rad"}, // SI
    {"Nm/m2/rad", L"N*m/m2/rad"}, // SI
    {"kNm/m2/rad", L"kN*m/m2/rad"}, // SI
    {"MNm/m2/rad", L"MN*m/m2/rad"}, // SI
    {"k-ft/ft2", L"kip*ft/ft2 ft*k/ft2 ft*kip/ft2"}, // AISC
    // Bimoments
    {"Nmm2", L"N*mm2"}, // SI
    {"Nm2", L"N*m2"}, // SI
    {"kNm2", L"kN*m2"}, // SI
    {"MNm2", L"MN*m2"}, // SI
    {"Nmm3", L"N*mm3"}, // SI
    {"Nm3", L"N*m3"}, // SI
    {"kNm3", L"kN*m3"}, // SI
    {"Nm2/rad", L"N*m2/rad"}, // SI
    {"Nm2/mrad", L"N*m2/mrad"}, // SI
    {"kNm2/rad", L"kN*m2/rad"}, // SI
    {"kNm2/mrad", L"kN*m2/mrad"}, // SI
    {"Nmm2/rad", L"N*mm2/rad"}, // SI
    {"Nmm2/mrad", L"N*mm2/mrad"}, // SI
    {"k-in2", L"kip*in2 kips*in2"}, // AISC
    {"k-in3", L"kip*in3 kips*in3"}, // AISC
    // Angles and ratios
    {"rad", L"radian radians"}, // SI
    {"mrad", L"milliradian milliradians"}, // SI
    {"\u00b0", L"deg degree degrees \u5ea6"}, // 80000, JIS
    {"\u00b0/m", L"deg/m degree/m degrees/m"}, // 80000
    {"\u00b0/ft", L"deg/ft degree/ft degrees/ft"}, // US
    {"\u00b0/in", L"deg/in degree/in degrees/in"}, // US
    {"o/o", L"% percent"}, // CAT, 80000
    {"o/oo", L"\u2030 O/OO permille"}, // 80000, CAT
    // Times
    {"sec", L"second seconds"}, // SI
    {"min", L"minute minutes mins"}, // SI
    {"h", L"hr hrs hour hours"}, // SI, US
    {"d", L"day days"}, // SI
    {"y", L"yr yrs year years a"}, // US, 80000
    {"msec", L"ms millisecond milliseconds"}, // SI
    // Velocities
    {"km/h", L"kph kmh km/hr"}, // SI, US, DE
    {"miles/h", L"mph mi/h mi/hr"}, // US
    {"ft/sec", L"fps"}, // US
    {"in/sec", L"ips"}, // US
    // Flows
    {"gal/min", L"gpm"}, // US
    {"l/sec", L"L/sec"}, // SI
    {"l/min", L"L/min"}, // SI
    {"l/h", L"L/h"}, // SI
    {"l/d", L"L/d"}, // SI
    // Damping
    {"Nsec/mm", L"N*sec/mm Ns/mm"}, // SI
    {"Nsec/m", L"N*sec/m Ns/m"}, // SI
    {"kNsec/m", L"kN*sec/m kNs/m"}, // SI
    {"Nsec/m2", L"N*sec/m2 Ns/m2 Pa*sec"}, // SI
    {"Nsec/mm2", L"N*sec/mm2 Ns/mm2"}, // SI
    {"kNsec/m2", L"kN*sec/m2 kNs/m2"}, // SI
    {"Nsec/m3", L"N*sec/m3 Ns/m3"}, // SI
    {"Nsec/mm3", L"N*sec/mm3 Ns/mm3"}, // SI
    {"kNsec/m3", L"kN*sec/m3 kNs/m3"}, // SI
    {"kNmsec", L"kN*m*sec kNms"}, // SI
    {"k-sec/ft", L"kip*sec/ft kips*sec/ft"}, // AISC
    {"k-in-sec", L"kip*in*sec kips*in*sec"}, // AISC
    // Temperatures
    {"\u00b0C", L"C degC deg*C \u00b0*C celsius"}, // SI
    {"\u00b0F", L"F degF deg*F \u00b0*F fahrenheit"}, // US
    {"K", L"kelvin kelvins"}, // SI
    {"1/K", L"/\u00b0C /C /degC"}, // SI: a difference of 1 K is one of 1 °C
    {"1/\u00b0F", L"/F /degF"}, // US
    {"\u00b0C/m", L"C/m degC/m K/m"}, // SI
    {"\u00b0F/in", L"F/in degF/in"}, // US
    {"\u00b0F/ft", L"F/ft degF/ft"}, // US
    // Heat
    {"Km2/W", L"K*m2/W m2*K/W m2K/W"}, // SI
    {"W/K/m", L"W/(m*K) W/(mK) W/m/K W/mK W/(K*m)"}, // SI
    {"kW/K/m", L"kW/(m*K) kW/(mK) kW/m/K kW/mK kW/(K*m)"}, // SI
    {"MW/K/m", L"MW/(m*K) MW/(mK) MW/m/K MW/mK MW/(K*m)"}, // SI
    {"W/K/m2", L"W/(m2*K) W/(m2K) W/m2/K W/m2K W/(K*m2)"}, // SI
    {"kW/K/m2", L"kW/(m2*K) kW/(m2K) kW/m2/K kW/m2K kW/(K*m2)"}, // SI
    {"MW/K/m2", L"MW/(m2*K) MW/(m2K) MW/m2/K MW/m2K MW/(K*m2)"}, // SI
    {"J/K/kg", L"J/(kg*K) J/(kgK) J/kg/K J/kgK J/(K*kg)"}, // SI
    {"J/K/m3", L"J/(m3*K) J/(m3K) J/m3/K J/m3K J/(K*m3)"}, // SI
    {"kJ/K/m3", L"kJ/(m3*K) kJ/(m3K) kJ/m3/K kJ/m3K kJ/(K*m3)"}, // SI
};
// clang-format on

/// A word for one unit in one language and for another in another.
struct AmbiguousWord
{
    std::wstring_view key; ///< In lower case.
    std::wstring_view meanings[2]; ///< Symbols of the catalogue.
};

constexpr AmbiguousWord ambiguous_words[] = {
    {L"grad", {L"\u00b0", L"gon"}}, // DE, 80000
};

/// Units in one character, of which JIS X 0213 has most.
struct SquaredUnit
{
    wchar_t character;
    const wchar_t* letters;
};

constexpr SquaredUnit squared_units[] = {
    {L'\u2103', L"\u00b0C"},
    {L'\u2109', L"\u00b0F"},
    {L'\u2113', L"l"},
    {L'\u338f', L"kg"},
    {L'\u339c', L"mm"},
    {L'\u339d', L"cm"},
    {L'\u339e', L"km"},
    {L'\u339f', L"mm2"},
    {L'\u33a0', L"cm2"},
    {L'\u33a1', L"m2"},
    {L'\u33a2', L"km2"},
    {L'\u33a3', L"mm3"},
    {L'\u33a4', L"cm3"},
    {L'\u33a5', L"m3"},
    {L'\u33a6', L"km3"},
    {L'\u33a9', L"Pa"},
    {L'\u33aa', L"kPa"},
    {L'\u33ab', L"MPa"},
    {L'\u33be', L"kW"},
    {L'\u33bf', L"MW"},
};

/// What the character stands for; empty if it is itself.
std::wstring_view letters_of(wchar_t character)
{
    if (character < squared_units[0].character)
        return {};
    for (const SquaredUnit& each : squared_units) {
        if (each.character == character)
            return each.letters;
    }
    return {};
}

using Keys = std::unordered_map<std::string, std::vector<std::wstring>>;

Keys make_keys()
{
    Keys keys;
    for (const Spellings& row : table) {
        std::wstring_view rest = row.others;
        while (!rest.empty()) {
            const std::size_t length = std::min(rest.find(L' '), rest.size());
            keys[row.symbol].push_back(unit_key(rest.substr(0, length)));
            rest.remove_prefix(std::min(length + 1, rest.size()));
        }
    }
    return keys;
}

} // namespace

UnitKeys::UnitKeys(std::wstring_view text, std::size_t begin)
    : m_text(text)
    , m_place(begin)
{
    read_unit();
}

void UnitKeys::read_unit()
{
    if (at(m_place) == L'1')
        m_place = after_blanks(m_place + 1);
    else if (at(m_place) != L'/')
        read_product();
    for (;;) {
        const std::size_t slash = after_blanks(m_place);
        if (at(slash) != L'/')
            return;
        m_place = after_blanks(slash + 1);
        m_is_in_brackets = at(m_place) == L'(';
        if (m_is_in_brackets)
            ++m_place;
        if (!is_letter(at(m_place)))
            return;
        m_key.push_back(L'/');
        if (!m_is_in_brackets) {
            read_product();
            continue;
        }
        m_key.push_back(L'(');
        read_product();
        m_place = after_blanks(m_place);
        if (at(m_place) != L')')
            return;
        m_key.push_back(L')');
        ++m_place;
        m_is_in_brackets = false;
        add_end();
    }
}

void UnitKeys::read_product()
{
    if (!is_letter(at(m_place)))
        return;
    do {
        read_word();
    } while (read_product_sign());
}

/// The sign before another word. A hyphen and a point count only right between words.
bool UnitKeys::read_product_sign()
{
    const std::size_t next = after_blanks(m_place);
    std::size_t word = next;
    if (at(next) == L'*')
        word = after_blanks(next + 1);
    else if (next == m_place && (at(next) == L'-' || at(next) == L'.'))
        word = next + 1;
    if (word == m_place || !is_letter(at(word)))
        return false;
    m_key.push_back(L'*');
    m_place = word;
    return true;
}

void UnitKeys::read_word()
{
    do {
        const std::size_t begin = m_place;
        for (; is_letter(at(m_place)); ++m_place) {
            const std::wstring_view letters = letters_of(m_text[m_place]);
            if (letters.empty())
                m_key.push_back(m_text[m_place]);
            else
                m_key.insert(m_key.end(), letters.begin(), letters.end());
        }
        if (m_place == begin + 1 && (m_text[begin] == L's' || m_text[begin] == L'S'))
            m_key.insert(m_key.end(), {L'e', L'c'});
        // A point ends an abbreviation, but before a word it is a product sign.
        const wchar_t after_point = at(m_place + 1);
        if (at(m_place) == L'.' && !is_digit(after_point) && !is_letter(after_point))
            ++m_place;
        add_end();
    } while (read_power() && is_letter(at(m_place)));
}

/// "2", "^2", "²", and with a minus "^-2" and "⁻²", whose keys are "^-2".
bool UnitKeys::read_power()
{
    std::size_t place = m_place;
    const bool has_mark = at(place) == L'^';
    place += has_mark ? 1 : 0;
    const bool is_raised = !has_mark
        && (superscript_digit(at(place)) >= 0 || at(place) == superscript_minus);
    const bool is_negative = is_raised ? at(place) == superscript_minus
                                       : has_mark && at(place) == L'-';
    place += is_negative ? 1 : 0;
    const auto digit = [&] {
        if (is_raised)
            return superscript_digit(at(place));
        return is_digit(at(place)) ? static_cast<int>(at(place) - L'0') : -1;
    };
    if (digit() < 0)
        return false;
    if (is_negative)
        m_key.insert(m_key.end(), {L'^', L'-'});
    for (; digit() >= 0; ++place)
        m_key.push_back(static_cast<wchar_t>(L'0' + digit()));
    m_place = place;
    add_end();
    return true;
}

void UnitKeys::add_end()
{
    if (!m_is_in_brackets)
        m_ends.push_back({m_key.size(), m_place});
}

std::size_t UnitKeys::after_blanks(std::size_t place) const
{
    while (at(place) == L' ')
        ++place;
    return place;
}

std::wstring unit_key(std::wstring_view text)
{
    const UnitKeys keys(text, 0);
    if (keys.ends().empty() || keys.ends().back().in_text != text.size())
        return {};
    return std::wstring(keys.key(keys.ends().back()));
}

const std::vector<std::wstring>& other_keys(const std::string& symbol)
{
    static const Keys keys = make_keys();
    static const std::vector<std::wstring> none;
    const auto found = keys.find(symbol);
    return found != keys.end() ? found->second : none;
}

std::vector<std::wstring_view> meanings_of(std::wstring_view key)
{
    for (const AmbiguousWord& word : ambiguous_words) {
        if (word.key == key)
            return {std::begin(word.meanings), std::end(word.meanings)};
    }
    return {};
}

} // namespace vrn::units::detail
