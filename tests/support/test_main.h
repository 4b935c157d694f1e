#pragma once

#include <QApplication>
#include <QTest>

namespace vrn::test {

/// Makes a test class known to the main function of its program. The class is named on
/// the command line as its source file is, without the extension.
class TestRegistration
{
public:
    using Run = int (*)(int argc, char** argv);

    TestRegistration(const char* file, Run run);
};

/// Runs a test class in an application of its own. Tests run with the settings that
/// vrn_add_test() gives them; no test reads those of the user.
template <typename TestClass, typename Application>
int runTest(int argc, char** argv)
{
    [[maybe_unused]] Application application(argc, argv);
    QCoreApplication::setApplicationName(TestClass::staticMetaObject.className());
    TestClass test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace vrn::test

/// Stands once at the end of each test file.
///
/// The program runs the classes that its command line names, or all of them, and passes
/// the other arguments to each. Two and more run in a process each, so that nothing of
/// one is left to the next.
#define VRN_TEST(TestClass) VRN_TEST_IN(TestClass, QApplication)

/// VRN_TEST with an application class of the test's own, made from argc and argv.
#define VRN_TEST_IN(TestClass, Application)                                                        \
    static const vrn::test::TestRegistration testRegistration(                                     \
        __FILE__, &vrn::test::runTest<TestClass, Application>);
