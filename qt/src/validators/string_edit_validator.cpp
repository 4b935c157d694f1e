// How many states of an expression a match may visit before it is given up. With
// the library's own limit a hostile text can block the window for seconds. This
// limit applies to this file alone, by an iterator type that no other file uses.
#define BOOST_REGEX_MAX_STATE_COUNT 500000

#include <vrn/qt/string_edit_validator.h>

#include <vrn/assert/smart_assert.h>

#include <boost/iterator/iterator_adaptor.hpp>
#include <boost/regex.hpp>

#include <algorithm>
#include <locale>
#include <stdexcept>
#include <utility>

namespace vrn::qt {
namespace {

class TextIterator
    : public boost::iterator_adaptor<TextIterator, const wchar_t*, boost::use_default,
          boost::bidirectional_traversal_tag>
{
public:
    TextIterator() = default;
    explicit TextIterator(const wchar_t* position)
        : iterator_adaptor_(position)
    {}
};

template <typename Char>
std::basic_string<Char> upperCase(std::basic_string<Char> text)
{
    const std::locale global;
    std::use_facet<std::ctype<Char>>(global).toupper(text.data(), text.data() + text.size());
    return text;
}

QString fromStored(const std::wstring& text)
{
    return QString::fromWCharArray(text.c_str());
}

QString fromStored(const std::string& text)
{
    return QString::fromUtf8(text.c_str());
}

std::string toUtf8(const std::wstring& text)
{
    return QString::fromStdWString(text).toStdString();
}

} // namespace

// A compiled expression, bound to the global locale of the time.
class StringEditValidator::Pattern
{
public:
    explicit Pattern(const std::wstring& expression)
        : m_regex(expression)
    {}

    bool isOfGlobalLocale() const { return m_regex.getloc() == std::locale(); }

    bool matches(const std::wstring& text) const
    {
        const wchar_t* begin = text.c_str();
        const wchar_t* end = begin + std::char_traits<wchar_t>::length(begin);
        boost::match_results<TextIterator> groups;
        try {
            return boost::regex_match(TextIterator(begin), TextIterator(end), groups, m_regex);
        } catch (const std::runtime_error&) {
            return false; // given up for its complexity
        }
    }

private:
    boost::wregex m_regex;
};

StringEditValidator::StringEditValidator(std::size_t maxLen)
    : m_maxLen(maxLen)
{
    VRN_ASSERT(m_maxLen > 0)("m_maxLen", m_maxLen);
}

StringEditValidator::~StringEditValidator() = default;

void StringEditValidator::setAllowedRegex(const std::wstring& pattern)
{
    m_allowedRegex = pattern;
    m_pattern.reset();
}

void StringEditValidator::setUpperCase(bool upperCase)
{
    m_upperCase = upperCase;
}

void StringEditValidator::setStorageType(StorageType type)
{
    m_storageType = type;
}

bool StringEditValidator::validate(
    const QString& text, boost::any& value, const std::bitset<32>& /*flags*/)
{
    std::wstring stored = text.toStdWString();
    stored.resize(std::min(stored.size(), m_maxLen));
    if (m_upperCase)
        stored = upperCase(std::move(stored));
    if (!m_allowedRegex.empty()) {
        if (!m_pattern || !m_pattern->isOfGlobalLocale())
            m_pattern = std::make_unique<Pattern>(m_allowedRegex);
        if (!m_pattern->matches(stored))
            return false;
    }
    if (m_storageType == StorageTypeWideString)
        value = std::move(stored);
    else if (m_storageType == StorageTypeUtf8String)
        value = toUtf8(stored);
    return true;
}

QString StringEditValidator::reformat(const boost::any& value, const std::bitset<32>& /*flags*/)
{
    if (const auto* wide = boost::any_cast<std::wstring>(&value))
        return m_upperCase ? fromStored(upperCase(*wide)) : fromStored(*wide);
    if (const auto* utf8 = boost::any_cast<std::string>(&value))
        return m_upperCase ? fromStored(upperCase(*utf8)) : fromStored(*utf8);
    VRN_ASSERT(value.type() == typeid(std::wstring) || value.type() == typeid(std::string))
    ("value.type().name()", value.type().name());
    return QString();
}

} // namespace vrn::qt
