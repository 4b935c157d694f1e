#include <vrn/qt/assign_style.h>

#include <vrn/assert/smart_assert.h>

#include <QFile>
#include <QWidget>

namespace vrn::qt {

void assign_style(QWidget* widget, const std::string& path)
{
    VRN_ASSERT(widget);
    if (!widget || path.empty())
        return;
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        return;
    const std::string contents = file.readAll().toStdString();
    if (file.error() == QFile::NoError)
        widget->setStyleSheet(QString::fromStdString(contents));
}

} // namespace vrn::qt
