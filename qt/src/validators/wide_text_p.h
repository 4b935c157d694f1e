#pragma once

#include <boost/container/small_vector.hpp>

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>

namespace vrn::qt::detail {

/// A text in wide characters too. Those of a usual text need no memory from the heap. The
/// text must stay as long as this.
class WideText
{
public:
    explicit WideText(const QString& text)
        : m_text(text)
        // There are at most as many of them as UTF-16 units.
        , m_characters(static_cast<std::size_t>(text.size()), boost::container::default_init)
        , m_length(m_characters.size())
    {
        wchar_t* out = m_characters.data();
        for (const QChar character : text) {
            // QString::toWCharArray() takes several times as long.
            if (character.isSurrogate()) {
                m_length = static_cast<std::size_t>(text.toWCharArray(m_characters.data()));
                return;
            }
            *out++ = static_cast<wchar_t>(character.unicode());
        }
    }

    const QString& text() const { return m_text; }
    std::wstring_view view() const { return {m_characters.data(), m_length}; }

private:
    static constexpr std::size_t usualLength = 64;

    const QString& m_text;
    boost::container::small_vector<wchar_t, usualLength> m_characters;
    std::size_t m_length;
};

// Quantities are in the basic plane, where a wide character is a QChar.
// QString::fromStdWString() allows for other planes and takes several times as long.
inline QString toQString(const std::wstring& text)
{
    QString result(static_cast<int>(text.size()), Qt::Uninitialized);
    QChar* out = result.data();
    for (const wchar_t character : text) {
        if (static_cast<char32_t>(character) > 0xFFFF)
            return QString::fromStdWString(text);
        *out++ = QChar(static_cast<ushort>(character));
    }
    return result;
}

} // namespace vrn::qt::detail
