#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vrn::test {

/// What an entry may mean: a plain number, or a value in the base scale with the dimension of
/// its unit.
struct EntryMeaning
{
    double value = 0.0;
    bool has_unit = false;
    int dimension = 0;
};

/// Finds every meaning of a text by trying all ways to divide it, recursively. It is slow,
/// and plain enough to be checked by reading. Where several ways are possible and the
/// documentation does not choose one, all of them count:
///
/// - a unit may belong to the last number or to the whole product before it;
/// - a comma may be a decimal sign, or stand between groups;
/// - a blank may stand between groups or before a fraction; a hyphen before a fraction may
///   join it to a whole number;
/// - "2*10^3" may be one number or a product;
/// - a hyphen after the word of feet may join the inches.
///
/// A sign of division divides what comes before it by one number, from the left to the right.
/// Marks after numbers are feet and inches. Texts are in plain characters.
class ReferenceEntryReader
{
public:
    struct Unit
    {
        double factor;
        int dimension;
        bool is_metric;
        bool is_foot;
        bool is_inch;
    };

    /// `shown` is the unit of plain numbers.
    ReferenceEntryReader(std::map<std::wstring, Unit> units, Unit shown);

    /// All meanings, in the base scale.
    std::vector<double> read(const std::wstring& text);

private:
    using Meanings = std::vector<EntryMeaning>;
    using Span = std::pair<std::size_t, std::size_t>;

    Meanings sum(Span span);
    Meanings product(Span span);
    Meanings factor(Span span, bool is_divisor);
    Meanings quantity(Span span, bool is_divisor);
    Meanings feet_and_inches(Span span) const;
    std::vector<double> number(Span span, bool is_divisor = false) const;
    const Unit* unit(Span span) const;
    Span trimmed(Span span) const;
    std::wstring text(Span span) const
    {
        return m_text.substr(span.first, span.second - span.first);
    }
    bool is_inside_number(std::size_t place) const;
    bool is_before_metric_unit(std::size_t place) const;
    bool is_joining_hyphen(std::size_t place, std::size_t end) const;

    std::map<std::wstring, Unit> m_units;
    Unit m_shown;
    std::wstring m_text;
    std::map<Span, Meanings> m_sums;
    std::map<Span, Meanings> m_products;
};

} // namespace vrn::test
