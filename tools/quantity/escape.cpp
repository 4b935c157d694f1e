#include "escape.h"

#include "usage_error.h"

#include <algorithm>
#include <array>

namespace vrn::quantity_tool {
namespace {

struct Escape
{
    char letter;
    char character;
};

constexpr std::array<Escape, 5> escapes{{
    {'t', '\t'},
    {'n', '\n'},
    {'r', '\r'},
    {'0', '\0'},
    {'\\', '\\'},
}};

char character_of(char letter)
{
    const auto* const found = std::find_if(escapes.begin(), escapes.end(),
        [letter](const Escape& each) { return each.letter == letter; });
    if (found == escapes.end())
        throw UsageError(std::string("\\") + letter + " stands for no character");
    return found->character;
}

} // namespace

std::string escape(std::string_view text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        const auto* const found = std::find_if(escapes.begin(), escapes.end(),
            [character](const Escape& each) { return each.character == character; });
        if (found != escapes.end()) {
            escaped += '\\';
            escaped += found->letter;
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::string unescape(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    for (auto at = text.begin(); at != text.end(); ++at) {
        if (*at != '\\') {
            plain += *at;
            continue;
        }
        if (++at == text.end())
            throw UsageError("a backslash ends the text");
        plain += character_of(*at);
    }
    return plain;
}

} // namespace vrn::quantity_tool
