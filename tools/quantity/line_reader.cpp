#include "line_reader.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vrn::quantity_tool {
namespace {

[[noreturn]] void fail(int error)
{
    throw std::system_error(error, std::generic_category(), "standard input");
}

/// Another program may have put the file into non-blocking mode.
void wait_for_input(int file_descriptor)
{
    ::pollfd file{file_descriptor, POLLIN, 0};
    if (::poll(&file, 1, -1) < 0 && errno != EINTR)
        fail(errno);
}

/// Waits until there is something to read. 0 at the end of the file.
std::size_t read_some(int file_descriptor, char* buffer, std::size_t size)
{
    for (;;) {
        const ::ssize_t count = ::read(file_descriptor, buffer, size);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno == EAGAIN)
            wait_for_input(file_descriptor);
        else if (errno != EINTR)
            fail(errno);
    }
}

} // namespace

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
    std::array<char, portion> bytes;
    const auto count = read_some(m_file_descriptor, bytes.data(), bytes.size());
    m_buffer.append(bytes.data(), count);
    return count > 0;
}

} // namespace vrn::quantity_tool
