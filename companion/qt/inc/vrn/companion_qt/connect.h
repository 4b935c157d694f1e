#pragma once

#include <vrn/assert/smart_assert.h>

#include <QObject>

#include <type_traits>

/// QObject::connect that reports a connection which could not be made. The
/// connection ends with `sender` or with `receiver`.
template <typename Sender, typename Signal, typename Receiver, typename Slot,
    typename = std::enable_if_t<!std::is_convertible_v<Signal, const char*>>>
QMetaObject::Connection vrn_connect(
    const Sender* sender, Signal signal, const Receiver* receiver, Slot slot)
{
    const auto connection = QObject::connect(sender, signal, receiver, slot);
    VRN_ASSERT(connection);
    return connection;
}

/// Connects by the names of signal and slot, as QObject::connect does, and returns
/// whether it did. A failure is not reported beyond Qt's own warning. Two equal
/// calls make two connections.
inline bool vrn_connect(const QObject* sender, const char* signal, const QObject* receiver,
    const char* method, Qt::ConnectionType type = Qt::AutoConnection)
{
    return static_cast<bool>(QObject::connect(sender, signal, receiver, method, type));
}
