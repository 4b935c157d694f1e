#include <vrn/qt/pixmap.h>

#include <vrn/environment/environment.h>

#include <boost/make_shared.hpp>

#include <QString>

namespace vrn::qt {
namespace {

QPixmap makeFallback()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::white);
    return pixmap;
}

} // namespace

boost::shared_ptr<QPixmap> Pixmap::create(const std::wstring& name)
{
    // Names of files are UTF-8; a wide string of the path would go through the
    // C library's locale, which may lack its letters.
    const auto path = vrn::app::Environment::instance().getPaths(std::string()).find(name);
    auto pixmap = boost::make_shared<QPixmap>();
    pixmap->load(QString::fromUtf8(path.u8string().c_str()));
    return pixmap->isNull() ? nullptr : pixmap;
}

QPixmap Pixmap::createOrDefault(const std::wstring& name)
{
    if (const auto pixmap = create(name))
        return *pixmap;
    static const QPixmap fallback = makeFallback();
    return fallback;
}

} // namespace vrn::qt
