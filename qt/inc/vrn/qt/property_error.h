#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QString>

#include <exception>
#include <stdexcept>

namespace vrn::qt {

/// An edit is refused. A model throws it from read() and write(), and a setter may. Any
/// std::exception will do there; this one carries a translated text.
///
///     const auto setBolts = [](Beam& beam, int bolts) {
///         if (bolts % 2 == 0)
///             throw PropertyError(tr("Bolts come in odd numbers."));
///         beam.grade = bolts;
///     };
class VRN_QT2_EXPORT PropertyError : public std::runtime_error
{
public:
    explicit PropertyError(const QString& reason);
    PropertyError(const PropertyError&) = default;
    PropertyError& operator=(const PropertyError&) = default;
    ~PropertyError() override;

    QString reason() const { return QString::fromUtf8(what()); }

    /// The same for whatever was thrown: what a std::exception says, and a general sentence
    /// for another type.
    static PropertyError from(const std::exception_ptr& thrown);
};

} // namespace vrn::qt
