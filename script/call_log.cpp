#include "script/call_log.h"

#include "kelvaris/system/application.h"
#include "kelvaris/system/string.h"

#include <exception>

namespace Script {

using Kelvaris::System::Application;
using Kelvaris::System::String;

namespace {

void logError(const std::string& functionName, const char* event, const char* reason) noexcept
try {
    Application::instance()->logger().error(String{"script/function"}, String{functionName + event + reason});
} catch (const std::exception&) {
    // the status of the call tells of the failure as well, and this is the last place before the host
    return;
}

} // namespace

void logCall(const std::string& functionName)
{
    if (Application::instance()->settings().logScriptCalls())
        Application::instance()->logger().diagnostic(String{"script"}, String{"function started: " + functionName});
}

void logFailure(const std::string& functionName, const char* reason) noexcept
{
    logError(functionName, " failed: ", reason);
}

void logUnknownFailure(const std::string& functionName) noexcept
{
    logError(functionName, " failed with unknown error", "");
}

} // namespace Script
