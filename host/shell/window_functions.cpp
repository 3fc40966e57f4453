#include "host/shell/window_functions.h"

#include <algorithm>
#include <array>

namespace HostShell {

namespace {

// A function that shows a window has its name here; nothing in its declaration tells.
constexpr std::array<std::string_view, 8> windowFunctions{
    "_example_browser_2",
    "_create_examples_bundle_editor",
    "_create_example_bundle_editor",
    "_proto_scriptable_bundle_editor",
    "_proto_package_browser",
    "_proto_examples_browser2",
    "_proto_example_browser",
    "_bundle_viewer",
};

} // namespace

bool opensWindow(std::string_view functionName)
{
    return std::find(windowFunctions.begin(), windowFunctions.end(), functionName) != windowFunctions.end();
}

bool namesWindowFunction(std::string_view script)
{
    return std::any_of(windowFunctions.begin(), windowFunctions.end(),
                       [&](std::string_view name) { return script.find(name) != std::string_view::npos; });
}

std::string noDisplay(std::string_view functionName)
{
    return std::string{functionName} + " opens a window, and there is no display (neither DISPLAY nor WAYLAND_DISPLAY "
                                       "is set); --grab DIR takes pictures without one";
}

} // namespace HostShell
