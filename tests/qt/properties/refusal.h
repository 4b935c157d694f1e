#pragma once

#include <vrn/qt/property_error.h>

#include <QString>

namespace vrn::test {

/// The reason for which `call` is refused; empty if it is not.
template <typename Call>
QString refusal(const Call& call)
{
    try {
        call();
    } catch (const vrn::qt::PropertyError& error) {
        return error.reason();
    }
    return QString();
}

} // namespace vrn::test
