#pragma once

#include <QObject>
#include <QPointer>

/// Blocks the signals of an object while the blocker lives, and then restores the
/// previous state. The object may be null, or may be destroyed in the meantime.
class VRN_QT_SignalBlocker
{
public:
    explicit VRN_QT_SignalBlocker(QObject* object)
        : m_object(object)
        , m_wasBlocked(object && object->blockSignals(true))
    {}

    ~VRN_QT_SignalBlocker()
    {
        if (m_object)
            m_object->blockSignals(m_wasBlocked);
    }

    VRN_QT_SignalBlocker(const VRN_QT_SignalBlocker&) = delete;
    VRN_QT_SignalBlocker& operator=(const VRN_QT_SignalBlocker&) = delete;

private:
    QPointer<QObject> m_object;
    bool m_wasBlocked;
};
