#pragma once

#include <boost/container/small_vector.hpp>

#include <QString>

#include <cstddef>
#include <string_view>

namespace vrn::qt::detail {

/// A text in wide characters. Those of a usual text need no memory from the heap.
class WideText
{
public:
    explicit WideText(const QString& text)
        // There are at most as many of them as UTF-16 units.
        : m_characters(static_cast<std::size_t>(text.size()), boost::container::default_init)
        , m_length(static_cast<std::size_t>(text.toWCharArray(m_characters.data())))
    {}

    std::wstring_view view() const { return {m_characters.data(), m_length}; }

private:
    static constexpr std::size_t usualLength = 64;

    boost::container::small_vector<wchar_t, usualLength> m_characters;
    std::size_t m_length;
};

} // namespace vrn::qt::detail
