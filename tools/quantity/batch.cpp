#include "batch.h"

#include "escape.h"
#include "line_reader.h"
#include "names.h"
#include "number_text.h"
#include "translator.h"
#include "usage_error.h"

#include <exception>
#include <ostream>

namespace vrn::quantity_tool {
namespace {

constexpr const char* refusal = "none";

struct Request
{
    std::string_view command;
    Translator::UnitId kind;
    std::string_view text;
};

Request read_request(std::string_view line)
{
    const auto first = line.find('\t');
    const auto second = first == line.npos ? line.npos : line.find('\t', first + 1);
    if (second == line.npos || line.find('\t', second + 1) != line.npos)
        throw UsageError("a line has three fields with a tab between them");
    return {line.substr(0, first),
        find_kind(std::string(line.substr(first + 1, second - first - 1))),
        line.substr(second + 1)};
}

std::string answer_parse(const Translator& translator, const Request& request)
{
    const auto quantity = translator.parse(unescape(request.text), request.kind);
    if (!quantity)
        return refusal;
    return "ok\t" + std::to_string(quantity->unit_id) + '\t' + exact_text(quantity->value);
}

std::string answer_entry(const Translator& translator, const Request& request)
{
    const units::Entry entry = translator.entry(unescape(request.text), request.kind);
    if (entry.state != units::EntryState::Complete) {
        return std::string(refusal) + '\t' + std::to_string(entry.reason.place) + '\t'
            + escape(Translator::sentence(entry.reason));
    }
    return "ok\t" + std::to_string(entry.quantity.unit_id) + '\t'
        + exact_text(entry.quantity.value);
}

std::string answer_format(const Translator& translator, const Request& request)
{
    const auto value = read_double(request.text);
    if (!value)
        throw UsageError('"' + std::string(request.text) + "\" is no number");
    return "ok\t" + escape(translator.format({request.kind, *value}));
}

std::string answer_show(const Translator& translator, const Request& request)
{
    const auto shown = translator.show(unescape(request.text), request.kind);
    return shown ? "ok\t" + escape(*shown) : refusal;
}

} // namespace

std::string answer(const Translator& translator, std::string_view line)
try {
    const Request request = read_request(line);
    if (request.command == "parse")
        return answer_parse(translator, request);
    if (request.command == "format")
        return answer_format(translator, request);
    if (request.command == "show")
        return answer_show(translator, request);
    if (request.command == "entry")
        return answer_entry(translator, request);
    throw UsageError("there is no command \"" + std::string(request.command) + '"');
} catch (const std::exception& error) {
    return "error\t" + escape(error.what());
}

void run_batch(const Translator& translator, int input, std::ostream& output)
{
    LineReader lines(input, [&output] { output.flush(); });
    while (const auto line = lines.next())
        output << answer(translator, *line) << '\n';
    output.flush();
}

} // namespace vrn::quantity_tool
