#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vrn::quantity_tool {

/// The lines of a file descriptor, in the memory of the longest of them. A descriptor
/// that does not block is waited for.
class LineReader
{
public:
    /// Calls `before_wait` whenever no whole line is at hand, and so another read may
    /// have to wait for whoever writes.
    LineReader(int file_descriptor, std::function<void()> before_wait);

    /// The next line without its line feed, valid until the next call; empty at the
    /// end. The last line needs no line feed. Throws std::system_error where the
    /// file cannot be read.
    std::optional<std::string_view> next();

private:
    bool read_more();

    int m_file_descriptor;
    std::function<void()> m_before_wait;
    std::string m_buffer;
    std::size_t m_begin = 0; ///< Of the next line in m_buffer.
};

} // namespace vrn::quantity_tool
