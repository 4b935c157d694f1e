#pragma once

#include <QString>

#include <vector>

namespace vrn::test {

/// An enumerator as units/schema/unit_id.bond declares it.
struct SchemaEnumerator
{
    QString name;
    int id = -1;
    /// The text that its comment quotes, or null: the symbol of a unit, or the name of a
    /// kind if that is not an identifier.
    QString quoted;
};

/// The enumerators of units/schema/unit_id.bond in their order. Fails the running test
/// if the file cannot be read, or if a line inside the braces is neither empty nor an
/// enumerator.
std::vector<SchemaEnumerator> readSchemaEnumerators();

} // namespace vrn::test
