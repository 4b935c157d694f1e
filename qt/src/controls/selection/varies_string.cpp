#include <vrn/qt/varies_string.h>

#include <QObject>

namespace vrn::qt {

QString getVariesString()
{
    return QObject::tr("*VARIES*");
}

} // namespace vrn::qt
