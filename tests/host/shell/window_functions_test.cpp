#include "host/shell/window_functions.h"

#include <gtest/gtest.h>

using namespace HostShell;

TEST(WindowFunctions, KnowsWhichFunctionsShowWindows)
{
    EXPECT_TRUE(opensWindow("_example_browser_2"));
    EXPECT_TRUE(opensWindow("_bundle_viewer"));
    EXPECT_FALSE(opensWindow("_bundle_test"));
    EXPECT_FALSE(opensWindow("_create_example"));
    EXPECT_FALSE(opensWindow("_create_examples"));
}

TEST(WindowFunctions, SeesTheirNamesInAScript)
{
    EXPECT_TRUE(namesWindowFunction("var r = _example_browser_2([], '.');"));
    EXPECT_FALSE(namesWindowFunction("_create_examples(['a'], 'b');"));
    EXPECT_FALSE(namesWindowFunction(""));
}

TEST(WindowFunctions, SaysWhyAWindowCannotBeShown)
{
    EXPECT_EQ(noDisplay("_bundle_viewer"),
              "_bundle_viewer opens a window, and there is no display (neither DISPLAY nor WAYLAND_DISPLAY is set); "
              "--grab DIR takes pictures without one");
}
