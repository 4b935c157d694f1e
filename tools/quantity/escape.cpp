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
    for (;;) {
        const auto backslash = text.find('\\');
        plain += text.substr(0, backslash);
        if (backslash == std::string_view::npos)
            return plain;
        if (backslash + 1 == text.size())
            throw UsageError("a backslash ends the text");
        plain += character_of(text[backslash + 1]);
        text.remove_prefix(backslash + 2);
    }
}

} // namespace vrn::quantity_tool
