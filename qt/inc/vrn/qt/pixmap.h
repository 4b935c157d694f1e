#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/shared_ptr.hpp>

#include <QPixmap>

#include <string>

namespace vrn::qt {

/// Icons by their bare file name, looked for in the default group of
/// vrn::app::Environment.
struct VRN_QT2_EXPORT Pixmap
{
    /// The image of the file, or null if there is no such file or no image in it.
    static boost::shared_ptr<QPixmap> create(const std::wstring& name);

    /// The same, with a white image of 16 by 16 in place of null.
    static QPixmap createOrDefault(const std::wstring& name);
};

} // namespace vrn::qt
