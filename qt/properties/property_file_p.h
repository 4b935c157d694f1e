#pragma once

#include <QJsonObject>
#include <QString>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vrn::qt {

/// The values of a selection in a file. Each value is a text that reads back as its bits.
///
/// A file carries a check sum. What was altered is refused, as is every other format.
struct PropertyFile
{
    std::vector<std::string> kinds;
    /// The text of each value, by key; std::nullopt if the object has no value.
    std::map<std::string, std::optional<QString>> values;

    QJsonObject toJson() const;
    /// Throws PropertyError.
    static PropertyFile fromJson(const QJsonObject& json);
};

} // namespace vrn::qt
