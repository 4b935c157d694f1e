#include <vrn/qt/button_configuration.h>

#include <utility>

namespace vrn::qt {

void ButtonConfiguration::setBtnHandler(std::function<bool(boost::any&)> handler)
{
    if (!handler) {
        m_btnHandler = nullptr;
        return;
    }
    m_btnHandler = [handler = std::move(handler)](
                       QWidget* /*widget*/, boost::any& value) { return handler(value); };
}

void ButtonConfiguration::setBtnHandler(Handler handler)
{
    m_btnHandler = std::move(handler);
}

void ButtonConfiguration::setIcon(QIcon icon)
{
    m_icon = std::move(icon);
}

} // namespace vrn::qt
