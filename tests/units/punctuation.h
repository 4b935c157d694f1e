#pragma once

#include <locale>
#include <string>

namespace vrn::test {

/// How a country writes numbers: `locale()` is the classic locale with these marks,
/// wherever the test runs.
class Punctuation : public std::numpunct<wchar_t>
{
public:
    static std::locale locale(wchar_t decimal_point, wchar_t separator, const char* grouping)
    {
        return std::locale(
            std::locale::classic(), new Punctuation(decimal_point, separator, grouping));
    }

    /// "1.234,5"
    static std::locale german() { return locale(L',', L'.', "\3"); }
    /// "1'234.5"
    static std::locale swiss() { return locale(L'.', L'\'', "\3"); }
    /// "1 234,5"
    static std::locale french() { return locale(L',', L' ', "\3"); }
    /// "12,34,567.8"
    static std::locale indian() { return locale(L'.', L',', "\3\2"); }

protected:
    Punctuation(wchar_t decimal_point, wchar_t separator, const char* grouping)
        : m_decimal_point(decimal_point)
        , m_separator(separator)
        , m_grouping(grouping)
    {}

    wchar_t do_decimal_point() const override { return m_decimal_point; }
    wchar_t do_thousands_sep() const override { return m_separator; }
    std::string do_grouping() const override { return m_grouping; }

private:
    wchar_t m_decimal_point;
    wchar_t m_separator;
    std::string m_grouping;
};

} // namespace vrn::test
