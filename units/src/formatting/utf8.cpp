#include "formatting/utf8_p.h"

#include <algorithm>
#include <cstddef>

namespace vrn::units {
inline namespace v1 {
namespace {

static_assert(sizeof(wchar_t) == 4, "a wide character holds any code point");

constexpr wchar_t replacement = 0xFFFD;

/// What a first byte says of its sequence.
struct Lead
{
    std::size_t length; ///< 0 where no sequence starts like this.
    char32_t bits; ///< The part of the code point in the first byte.
    char32_t smallest; ///< Below this the sequence is longer than it need be.
};

constexpr Lead lead_of(unsigned char byte)
{
    if (byte < 0x80)
        return {1, byte, 0};
    if (byte >= 0xC0 && byte < 0xE0)
        return {2, byte & 0x1FU, 0x80};
    if (byte >= 0xE0 && byte < 0xF0)
        return {3, byte & 0x0FU, 0x800};
    if (byte >= 0xF0 && byte < 0xF8)
        return {4, byte & 0x07U, 0x10000};
    return {0, 0, 0};
}

constexpr bool is_code_point(char32_t code)
{
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

bool is_continuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

} // namespace

std::wstring from_utf8(std::string_view text)
{
    std::wstring decoded;
    decoded.reserve(text.size());
    while (!text.empty()) {
        const Lead lead = lead_of(static_cast<unsigned char>(text.front()));
        const std::string_view rest = text.substr(1, lead.length == 0 ? 0 : lead.length - 1);
        char32_t code = lead.bits;
        for (const char byte : rest)
            code = code << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
        const bool is_valid = lead.length == rest.size() + 1
            && std::all_of(rest.begin(), rest.end(), is_continuation) && code >= lead.smallest
            && is_code_point(code);
        decoded.push_back(is_valid ? static_cast<wchar_t>(code) : replacement);
        text.remove_prefix(is_valid ? lead.length : 1);
    }
    return decoded;
}

} // namespace v1
} // namespace vrn::units
