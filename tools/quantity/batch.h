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
///     entry<TAB>KIND<TAB>TEXT      ok<TAB>unit id<TAB>value
///
/// Texts are escaped; see escape.h. The answer to a text that is refused is "none", and to
/// an entry "none<TAB>place<TAB>reason", with the place in characters from 0. The answer to
/// anything that throws, a malformed line included, is "error<TAB>message".
std::string answer(const Translator& translator, std::string_view line);

/// Answers each line of the file descriptor `input`. All answers are written before it
/// waits for the next line. An `output` that throws when it cannot be written ends the
/// batch.
void run_batch(const Translator& translator, int input, std::ostream& output);

} // namespace vrn::quantity_tool
