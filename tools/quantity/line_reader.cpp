#include "line_reader.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vrn::quantity_tool {

LineReader::LineReader(int file_descriptor, std::function<void()> before_wait)
    : m_file_descriptor(file_descriptor)
    , m_before_wait(std::move(before_wait))
{}

std::optional<std::string_view> LineReader::next()
{
    std::size_t searched = m_begin;
    for (;;) {
        const auto end = m_buffer.find('\n', searched);
        if (end != std::string::npos) {
            const auto begin = std::exchange(m_begin, end + 1);
            return std::string_view(m_buffer).substr(begin, end - begin);
        }
        m_buffer.erase(0, std::exchange(m_begin, 0));
        searched = m_buffer.size();
        if (!read_more())
            break;
    }
    if (m_buffer.empty())
        return std::nullopt;
    m_begin = m_buffer.size();
    return m_buffer;
}

bool LineReader::read_more()
{
    constexpr std::size_t portion = 65536;

    m_before_wait();
    const auto old_size = m_buffer.size();
    m_buffer.resize(old_size + portion);
    ::ssize_t count = 0;
    do {
        count = ::read(m_file_descriptor, m_buffer.data() + old_size, portion);
    } while (count < 0 && errno == EINTR);
    const int error = errno;
    m_buffer.resize(old_size + static_cast<std::size_t>(count < 0 ? 0 : count));
    if (count < 0)
        throw std::system_error(error, std::generic_category(), "standard input");
    return count > 0;
}

} // namespace vrn::quantity_tool
