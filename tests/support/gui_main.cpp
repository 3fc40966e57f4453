#include "tests/support/offscreen.h"

#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

/// The main function of tests that show windows.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    showWindowsOffscreen();
    QApplication application{argc, argv};
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
