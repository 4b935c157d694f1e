#pragma once

#include "support/address_sanitizer.h"

#include <QApplication>

#include <exception>
#include <string>
#include <vector>

#if defined(VRN_ADDRESS_SANITIZER)
#include <sanitizer/lsan_interface.h>
#endif

namespace vrn::test {

/// Stands at the top of a test in which an exception runs through Qt's widgets:
/// they are built without clean-up for exceptions, and what their functions
/// hold just then is lost. Leaks of what is made while it lives are not
/// reported.
class ThroughQt
{
public:
    ThroughQt() {}

#if defined(VRN_ADDRESS_SANITIZER)
private:
    __lsan::ScopedDisabler m_disabler;
#endif
};

/// What an application with throwing validators does: it catches what leaves a
/// slot before it runs through the event loop.
class CatchingApplication : public QApplication
{
public:
    using QApplication::QApplication;

    static CatchingApplication& instance()
    {
        return *static_cast<CatchingApplication*>(QCoreApplication::instance());
    }

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& error) {
            caught.emplace_back(error.what());
            return true;
        }
    }

    /// The what() of each caught exception, oldest first.
    std::vector<std::string> caught;
};

} // namespace vrn::test
