#pragma once

#include <QApplication>
#include <QTest>

namespace vrn::test {

/// Registers a test class with the main function of its program. On the command line the
/// class has the name of its source file without the extension.
class TestRegistration
{
public:
    using Run = int (*)(int argc, char** argv);

    TestRegistration(const char* file, Run run);
};

/// Runs a test class in its own application object. The settings come from vrn_add_test(),
/// not from the user.
template <typename TestClass, typename Application>
int runTest(int argc, char** argv)
{
    [[maybe_unused]] Application application(argc, argv);
    QCoreApplication::setApplicationName(TestClass::staticMetaObject.className());
    TestClass test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace vrn::test

/// Ends each test file.
///
/// The program runs the classes that its command line names, or all of them, and passes
/// the other arguments to each. If there are several, each runs in its own process, so that
/// no class depends on what another has left behind.
#define VRN_TEST(TestClass) VRN_TEST_IN(TestClass, QApplication)

/// VRN_TEST with another application class than QApplication. It is made from argc and argv.
#define VRN_TEST_IN(TestClass, Application)                                                        \
    static const vrn::test::TestRegistration testRegistration(                                     \
        __FILE__, &vrn::test::runTest<TestClass, Application>);
