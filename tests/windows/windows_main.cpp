#include "host/shell/host_application.h"
#include "host/shell/log_output.h"
#include "tests/support/offscreen.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    showWindowsOffscreen();
    HostShell::startLog(HostShell::LogThreshold::error);
    const auto application = HostShell::HostApplication::connect();
    QApplication::setQuitOnLastWindowClosed(false);
    // a dialog of the desktop's own is no window of this process
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    return RUN_ALL_TESTS();
}
