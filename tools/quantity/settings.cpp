#include "settings.h"

#include "names.h"
#include "number_text.h"
#include "usage_error.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace vrn::quantity_tool {
namespace {

using units::UnitId::UnitId;

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    for (;;) {
        const auto end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::int32_t number_of(const std::string& field, const std::string& value)
{
    const auto number = read_int32(value);
    if (!number)
        throw UsageError("--override: " + field + " needs a whole number, not \"" + value + '"');
    return *number;
}

/// If several units share the symbol, it means the one that the kind takes.
UnitId display_unit(const units::Context& context, UnitId kind, const std::string& text)
{
    const auto units = find_units(text);
    const auto found = std::find_if(units.begin(), units.end(), [&](UnitId unit) {
        return context.unit_provider().is_known(unit) && context.unit_provider().is_known(kind)
            && context.converter().can_convert(kind, unit);
    });
    return found != units.end() ? *found : units.front();
}

class Override
{
public:
    /// Starts from the format that the kind has. A plain unit without an override would
    /// start from a blank format, without the unit itself.
    Override(units::Context& context, UnitId kind)
        : m_context(context)
        , m_kind(kind)
        , m_unit(context.format_provider().get_unit(kind))
        , m_precision(context.format_provider().get_precision(kind))
        , m_format(context.format_provider().get_format(kind))
        , m_label(context.format_provider().get_label(kind))
    {}

    void set(const std::string& field, const std::string& value)
    {
        if (field == "unit")
            m_unit = display_unit(m_context, m_kind, value);
        else if (field == "precision")
            m_precision = number_of(field, value);
        else if (field == "format")
            m_format = number_of(field, value);
        else if (field == "label")
            m_label = value;
        else
            throw UsageError("--override: there is no field \"" + field + '"');
    }

    void apply() const
    {
        auto& formats = m_context.format_provider();
        formats.set_unit(m_kind, m_unit);
        formats.set_precision(m_kind, m_precision);
        formats.set_format(m_kind, m_format);
        formats.set_label(m_kind, m_label);
    }

private:
    units::Context& m_context;
    UnitId m_kind;
    UnitId m_unit;
    std::int32_t m_precision;
    std::int32_t m_format;
    boost::optional<std::string> m_label;
};

void add_override(units::Context& context, const std::string& text)
{
    const auto colon = text.find(':');
    if (colon == std::string::npos)
        throw UsageError("--override: \"" + text + "\" has no colon after the kind");
    Override wanted(context, find_kind(text.substr(0, colon)));
    for (const std::string& part : split(std::string_view(text).substr(colon + 1), ',')) {
        const auto equals = part.find('=');
        if (equals == std::string::npos)
            throw UsageError("--override: \"" + part + "\" is not of the form field=value");
        wanted.set(part.substr(0, equals), part.substr(equals + 1));
    }
    wanted.apply();
}

} // namespace

units::Context make_context(const Settings& settings)
{
    units::Context context(settings.system);
    for (const std::string& text : settings.overrides)
        add_override(context, text);
    return context;
}

std::locale make_locale(const std::string& name)
{
    for (const std::string& candidate : {name, name + ".UTF-8"}) {
        try {
            return std::locale(candidate);
        } catch (const std::runtime_error&) {
            continue;
        }
    }
    throw UsageError("this machine has no locale \"" + name + '"');
}

} // namespace vrn::quantity_tool
