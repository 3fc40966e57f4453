#include "host/shell/host_application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const auto application = HostShell::HostApplication::connect();
    return RUN_ALL_TESTS();
}
