#pragma once

namespace bench {

/// Prints what several readers make of quantities that engineers write, as a table. Returns
/// whether EntryReader reads none of them wrong.
bool printEntrySpellings();

} // namespace bench
