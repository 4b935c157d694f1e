#include "gallery_application.h"

#include <exception>

namespace gallery {

bool GalleryApplication::notify(QObject* receiver, QEvent* event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress)
        Q_EMIT userActs();
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& exception) {
        Q_EMIT exceptionCaught(QString::fromUtf8(exception.what()));
        return true;
    }
}

} // namespace gallery
