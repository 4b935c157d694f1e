#include "number_text.h"

#include <array>
#include <charconv>

namespace vrn::quantity_tool {
namespace {

template <typename... Format>
std::string write(double value, Format... format)
{
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(
        buffer.data(), buffer.data() + buffer.size(), value, format...);
    return {buffer.data(), result.ptr};
}

template <typename Number>
std::optional<Number> read(std::string_view text)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return number;
}

} // namespace

std::string exact_text(double value)
{
    return write(value, std::chars_format::general, 17);
}

std::string shortest_text(double value)
{
    return write(value);
}

std::optional<double> read_double(std::string_view text)
{
    return read<double>(text);
}

std::optional<std::int32_t> read_int32(std::string_view text)
{
    return read<std::int32_t>(text);
}

} // namespace vrn::quantity_tool
