#pragma once

#include <vrn/units/entry.h>

#include <locale>
#include <optional>
#include <string>
#include <vector>

namespace vrn::quantity_tool {

/// Reads and writes quantities in UTF-8, with one context and one locale.
///
/// A text that is refused gives an empty answer. What the unit library throws, mostly for
/// ids, is passed on. A text that is not UTF-8 throws UsageError.
class Translator
{
public:
    using Quantity = units::IConverter::quantity;
    using UnitId = units::UnitId::UnitId;

    Translator(units::Context context, const std::locale& locale);

    std::optional<Quantity> parse(const std::string& text, UnitId kind) const;
    /// Reads the text as an entry, which says why it is refused.
    units::Entry entry(const std::string& text, UnitId kind) const;
    std::string format(Quantity quantity) const;
    /// Reads the text and writes it in the display unit.
    std::optional<std::string> show(const std::string& text, UnitId kind) const;
    /// Shows the text in the first of the units that it converts to.
    ///
    /// A unit that shares a kind with the unit of the text comes before one that only has
    /// the same dimension: the catalogue has units of one dimension with two base scales,
    /// such as the "W" beside "kW" and the "W" beside "MW".
    std::optional<std::string> convert(
        const std::string& text, const std::vector<UnitId>& units) const;

    static std::string sentence(const units::EntryReason& reason);

private:
    std::optional<Quantity> parse_by_kind(const std::string& text, UnitId kind, UnitId unit) const;

    units::Context m_context;
    std::locale m_locale;
};

} // namespace vrn::quantity_tool
