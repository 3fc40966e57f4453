#include "host/shell/host_application.h"
#include "host/shell/log_output.h"
#include "tests/support/offscreen.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    showWindowsOffscreen();
    // what Qt says is part of the log, as in the program
    HostShell::startLog(HostShell::LogThreshold::error);
    const auto application = HostShell::HostApplication::connect();
    return RUN_ALL_TESTS();
}
