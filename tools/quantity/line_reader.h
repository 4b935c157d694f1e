#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vrn::quantity_tool {

/// Reads the lines of a file descriptor, and waits for them also in non-blocking mode. It
/// needs as much memory as the longest line.
class LineReader
{
public:
    /// Calls `before_wait` when no whole line is left, before a read that may have to
    /// wait.
    LineReader(int file_descriptor, std::function<void()> before_wait);

    /// The next line without its line feed, valid until the next call; empty at the
    /// end. The last line needs no line feed. Throws std::system_error if the file
    /// cannot be read.
    std::optional<std::string_view> next();

private:
    bool read_more();

    int m_file_descriptor;
    std::function<void()> m_before_wait;
    std::string m_buffer;
    std::size_t m_begin = 0; ///< Where the next line begins in m_buffer.
};

} // namespace vrn::quantity_tool
