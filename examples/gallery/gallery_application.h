#pragma once

#include <QApplication>

namespace gallery {

/// An application that outlives what its slots throw.
///
/// Qt does not carry exceptions through its event loop: one that leaves a slot
/// ends the process, unless it is caught here. A field with a
/// DistanceEditValidator throws for a unit that it does not know.
class GalleryApplication : public QApplication
{
    Q_OBJECT

public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;

Q_SIGNALS:
    void exceptionCaught(const QString& message);
};

} // namespace gallery
