#pragma once

#include <QApplication>
#include <QTest>

/// The main function of a test program. Tests run with the settings that
/// vrn_add_test() gives them; no test reads those of the user.
#define VRN_TEST_MAIN(TestClass)                                                                   \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        QApplication application(argc, argv);                                                      \
        application.setApplicationName(QStringLiteral(#TestClass));                                \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
