#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>

#include <QIcon>

#include <functional>

class QWidget;

namespace vrn::qt {

/// Describes a button: its icon, and the function that runs when it is clicked. The function is
/// given a value, which it may change, and tells whether it has.
///
///     ButtonConfiguration pick;
///     pick.setBtnHandler([](boost::any& value) {
///         value = 12.5;
///         return true;
///     });
///     boost::any span;
///     if (pick.getBtnHandler() && pick.getBtnHandler()(form, span))
///         model.setSpan(boost::any_cast<double>(span));
class VRN_QT2_EXPORT ButtonConfiguration
{
public:
    using Handler = std::function<bool(QWidget*, boost::any&)>;

    /// A handler that needs no widget.
    void setBtnHandler(std::function<bool(boost::any&)> handler);
    void setBtnHandler(Handler handler);
    /// Empty if none was set: test it before a call.
    const Handler& getBtnHandler() const { return m_btnHandler; }

    void setIcon(QIcon icon);
    const QIcon& getIcon() const { return m_icon; }

private:
    Handler m_btnHandler;
    QIcon m_icon;
};

} // namespace vrn::qt
