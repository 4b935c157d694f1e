#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace vrn::quantity_tool {

class Translator;

/// The answer to one line of a batch, itself one line:
///
///     parse<TAB>KIND<TAB>TEXT      ok<TAB>unit id<TAB>value
///     format<TAB>KIND<TAB>VALUE    ok<TAB>text
///     show<TAB>KIND<TAB>TEXT       ok<TAB>text
///
/// Texts are escaped, see escape.h. A text that is refused is answered by "none",
/// and anything that throws, a malformed line included, by "error<TAB>message".
std::string answer(const Translator& translator, std::string_view line);

/// Answers each line of a file descriptor. No answer is held back while the next
/// line is waited for. An `output` that throws where it cannot be written ends this.
void run_batch(const Translator& translator, int input, std::ostream& output);

} // namespace vrn::quantity_tool
