#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QPointer>
#include <QWidget>

namespace vrn::qt::detail {

/// Stands on the stack of an operation that may run code of the application: a slot, a
/// validator or a callback.
///
///     const detail::Alive alive(this, m_check);
///     m_check->setChecked(checked);
///     if (alive)
///         Q_EMIT valueChanged();
///
/// It tells whether that code has destroyed `control`. Qt goes on with `part`
/// after the signal or the event that brought it here, so `part` stays until the
/// operation and the functions of Qt above it have returned: disposeOf() hands it
/// to the event loop instead of deleting it.
class VRN_QT2_EXPORT Alive
{
public:
    explicit Alive(const QObject* control, QWidget* part = nullptr);
    ~Alive();
    Alive(const Alive&) = delete;
    Alive& operator=(const Alive&) = delete;

    /// False once `control` has been destroyed.
    explicit operator bool() const { return !m_control.isNull(); }

private:
    friend VRN_QT2_EXPORT void disposeOf(QWidget* part);

    QPointer<const QObject> m_control;
    QPointer<QWidget> m_part;
    Alive* const m_outer;
    bool m_deletesPart = false;
};

/// The destructor of a control calls this first, for each part that has signals or
/// takes the focus. The part emits nothing more. It is deleted, or left to the event
/// loop if it or a widget inside it is in use. Null is allowed.
VRN_QT2_EXPORT void disposeOf(QWidget* part);

} // namespace vrn::qt::detail
