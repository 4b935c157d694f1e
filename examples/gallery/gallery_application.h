#pragma once

#include <QApplication>

namespace gallery {

/// An application that survives the exceptions of its slots.
///
/// Qt does not pass exceptions through its event loop. An exception that leaves a slot ends
/// the process unless it is caught here. A DistanceEditValidator throws if it does not know
/// a unit.
class GalleryApplication : public QApplication
{
    Q_OBJECT

public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;

Q_SIGNALS:
    /// The user presses a key or a button; nothing has come of it yet.
    void userActs();
    void exceptionCaught(const QString& message);
};

} // namespace gallery
