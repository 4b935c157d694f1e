#include <vrn/qt/push_buttons.h>

#include <vrn/companion_qt/push_button.h>

#include <QIcon>
#include <QPixmap>

namespace vrn::qt {

QPushButton* createPushButtonWithIcon(QWidget* parent, const QIcon& icon, const char* name)
{
    auto* button = new VRN_QT_PushButton(parent, name);
    // Measured without the icon, so that all buttons are equally high.
    const int height = button->sizeHint().height();
    button->setFixedHeight(height);
    button->setFixedWidth(height);
    button->setIcon(icon);
    button->setAutoDefault(false);
    return button;
}

QPushButton* createPushButtonWithIcon(QWidget* parent, const QPixmap& pixmap, const char* name)
{
    return createPushButtonWithIcon(parent, QIcon(pixmap), name);
}

QPushButton* createPushButtonWithIconAndText(
    QWidget* parent, const QIcon& icon, const QString& text, const char* name)
{
    if (text.isEmpty())
        return createPushButtonWithIcon(parent, icon, name);
    return new VRN_QT_PushButton(icon, text, parent, name);
}

QPushButton* createPushButtonWithIconAndText(
    QWidget* parent, const QPixmap& pixmap, const QString& text, const char* name)
{
    return createPushButtonWithIconAndText(parent, QIcon(pixmap), text, name);
}

} // namespace vrn::qt
