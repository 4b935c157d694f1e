#pragma once

#include <QByteArray>

#include <map>
#include <optional>
#include <string>

namespace vrn::qt::detail {

/// Whether each section is open, by key.
using OpenSections = std::map<std::string, bool>;

/// As JSON with a check sum.
QByteArray toState(const OpenSections& sections);
/// Nothing if `state` is damaged or of another format.
std::optional<OpenSections> fromState(const QByteArray& state);

} // namespace vrn::qt::detail
