#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/function.hpp>

#include <QObject>

namespace vrn::qt {

/// Calls a function for each valueChanged() of a control, whatever class the
/// control has. It has no parent; the caller owns it.
class VRN_QT2_EXPORT OnValueChangedHook : public QObject
{
    Q_OBJECT

public:
    /// `sender` has to have a signal valueChanged().
    OnValueChangedHook(QObject* sender, boost::function<void()>&& fn);
    ~OnValueChangedHook() override;

public Q_SLOTS:
    /// Throws boost::bad_function_call if the function is empty.
    void onValueChanged();

private:
    boost::function<void()> m_fn;
};

} // namespace vrn::qt
