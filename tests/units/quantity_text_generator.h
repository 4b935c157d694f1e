#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace vrn::test {

/// Makes texts that are quantities, nearly quantities, or noise of the characters
/// that quantities are made of. One seed gives one sequence, on every machine.
class QuantityTextGenerator
{
public:
    static constexpr std::size_t longest = 40;

    /// `spellings` are those of the units.
    QuantityTextGenerator(std::uint32_t seed, std::vector<std::wstring> spellings);

    /// A text of at most `longest` characters.
    std::wstring next();

private:
    std::size_t below(std::size_t limit);
    template <typename List>
    auto any_of(const List& list) -> decltype(list[0]);

    std::wstring digits();
    std::wstring blanks();
    std::wstring number();
    std::wstring unit();
    std::wstring quantity();
    std::wstring feet_and_inches();
    std::wstring noise();
    std::wstring changed(std::wstring text);

    std::mt19937 m_random;
    std::vector<std::wstring> m_spellings;
};

} // namespace vrn::test
