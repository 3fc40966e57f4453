#include "host/shell/host_application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // CTest lists the tests of a program without the environment of its tests.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const auto application = HostShell::HostApplication::connect();
    return RUN_ALL_TESTS();
}
