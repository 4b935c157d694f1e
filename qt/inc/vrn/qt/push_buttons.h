#pragma once

#include <vrn/qt/vrn_qt2_export.h>

class QIcon;
class QPixmap;
class QPushButton;
class QString;
class QWidget;

namespace vrn::qt {

// The buttons of property pages. Each belongs to `parent`; `name` is its object
// name, in UTF-8 or null.

/// A square button that is as high as one with a line of text. It does not become
/// the default button of a dialog.
VRN_QT2_EXPORT QPushButton* createPushButtonWithIcon(
    QWidget* parent, const QIcon& icon, const char* name);
VRN_QT2_EXPORT QPushButton* createPushButtonWithIcon(
    QWidget* parent, const QPixmap& pixmap, const char* name);

/// A plain button with icon and text. Without text it is the square button above.
VRN_QT2_EXPORT QPushButton* createPushButtonWithIconAndText(
    QWidget* parent, const QIcon& icon, const QString& text, const char* name);
VRN_QT2_EXPORT QPushButton* createPushButtonWithIconAndText(
    QWidget* parent, const QPixmap& pixmap, const QString& text, const char* name);

} // namespace vrn::qt
