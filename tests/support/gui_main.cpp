#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

/// The main function of tests that show windows.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // CTest lists the tests of a program without the environment of its tests.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application{argc, argv};
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
