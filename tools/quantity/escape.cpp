#include "escape.h"

#include "usage_error.h"

#include <algorithm>
#include <array>
#include <boost/locale/utf.hpp>

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

/// Null if no letter stands for the character.
const Escape* find_escape(char character)
{
    const auto* const found = std::find_if(escapes.begin(), escapes.end(),
        [character](const Escape& each) { return each.character == character; });
    return found != escapes.end() ? found : nullptr;
}

char character_of(char letter)
{
    const auto* const found = std::find_if(escapes.begin(), escapes.end(),
        [letter](const Escape& each) { return each.letter == letter; });
    if (found == escapes.end())
        throw UsageError(std::string("\\") + letter + " stands for no character");
    return found->character;
}

/// The control characters of ASCII, and those after it, which have two bytes in UTF-8.
bool is_control(boost::locale::utf::code_point code)
{
    return code < 0x20 || (code >= 0x7f && code < 0xa0);
}

std::string printable_byte(char byte)
{
    constexpr std::string_view digits = "0123456789abcdef";

    if (byte == '\n')
        return " ";
    if (const Escape* const found = find_escape(byte))
        return {'\\', found->letter};
    const auto number = static_cast<unsigned char>(byte);
    return {'\\', 'x', digits[number / 16U], digits[number % 16U]};
}

} // namespace

std::string escape(std::string_view text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        if (const Escape* const found = find_escape(character)) {
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

std::string printable(std::string_view text)
{
    namespace utf = boost::locale::utf;

    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const auto* end = text.begin();
        const utf::code_point code = utf::utf_traits<char>::decode(end, text.end());
        // If the bytes are not a letter, the next letter may begin right after the first.
        const bool is_letter = utf::is_valid_codepoint(code);
        const auto letter = text.substr(
            0, is_letter ? static_cast<std::size_t>(end - text.begin()) : 1);
        if (is_letter && !is_control(code)) {
            shown += letter;
        } else {
            for (const char byte : letter)
                shown += printable_byte(byte);
        }
        text.remove_prefix(letter.size());
    }
    return shown;
}

} // namespace vrn::quantity_tool
