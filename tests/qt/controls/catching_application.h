#pragma once

#include <QApplication>

#include <exception>
#include <string>
#include <vector>

namespace vrn::test {

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

/// VRN_TEST_MAIN with a CatchingApplication.
#define VRN_CATCHING_TEST_MAIN(TestClass)                                                          \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        vrn::test::CatchingApplication application(argc, argv);                                    \
        application.setApplicationName(QStringLiteral(#TestClass));                                \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
