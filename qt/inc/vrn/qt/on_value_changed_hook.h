#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/function.hpp>

#include <QObject>

namespace vrn::qt {

/// Calls a function for each valueChanged() of a control, whatever the class of the
/// control. The hook has no parent; the caller owns it.
class VRN_QT2_EXPORT OnValueChangedHook : public QObject
{
    Q_OBJECT

public:
    /// `sender` must have a signal valueChanged().
    OnValueChangedHook(QObject* sender, boost::function<void()>&& fn);
    ~OnValueChangedHook() override;

public Q_SLOTS:
    /// Throws boost::bad_function_call if the function is empty.
    void onValueChanged();

private:
    boost::function<void()> m_fn;
};

} // namespace vrn::qt
