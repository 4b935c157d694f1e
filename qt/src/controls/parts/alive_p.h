#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QPointer>
#include <QWidget>

#include <vector>

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
    std::vector<QPointer<QWidget>> m_orphans;
};

/// The destructor of a control first calls this for each of its parts that has signals or
/// focus. It silences the part and deletes it. If the part is in use, or a widget around it
/// or next to it, the part is left to the event loop instead. Null is fine.
VRN_QT2_EXPORT void disposeOf(QWidget* part);

} // namespace vrn::qt::detail
