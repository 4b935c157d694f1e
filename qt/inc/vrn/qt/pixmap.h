#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/shared_ptr.hpp>

#include <QPixmap>

#include <string>

namespace vrn::qt {

/// Finds icons by their bare file names in the default group of
/// vrn::app::Environment.
struct VRN_QT2_EXPORT Pixmap
{
    /// The image in the file, or null if there is no such file or no image in it.
    static boost::shared_ptr<QPixmap> create(const std::wstring& name);

    /// The same, but a white image of 16 by 16 pixels instead of null.
    static QPixmap createOrDefault(const std::wstring& name);
};

} // namespace vrn::qt
