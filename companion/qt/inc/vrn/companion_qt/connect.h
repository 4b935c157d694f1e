#pragma once

#include <vrn/assert/smart_assert.h>

#include <QObject>

/// QObject::connect that reports a connection which could not be made.
/// The connection ends with `sender` or with `receiver`.
template <typename Sender, typename Signal, typename Receiver, typename Slot>
QMetaObject::Connection vrn_connect(
    const Sender* sender, Signal signal, const Receiver* receiver, Slot slot)
{
    const auto connection = QObject::connect(sender, signal, receiver, slot);
    VRN_ASSERT(connection);
    return connection;
}
