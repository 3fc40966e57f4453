#include "script/call_log.h"

#include "kelvaris/system/application.h"
#include "kelvaris/system/string.h"

namespace Script {

using Kelvaris::System::Application;
using Kelvaris::System::String;

void logCall(const std::string& functionName)
{
    if (Application::instance()->settings().logScriptCalls())
        Application::instance()->logger().diagnostic(String{"script"}, String{"function started: " + functionName});
}

void logFailure(const std::string& functionName, const char* reason)
{
    Application::instance()->logger().error(String{"script/function"}, String{functionName + " failed: " + reason});
}

void logUnknownFailure(const std::string& functionName)
{
    Application::instance()->logger().error(String{"script/function"},
                                            String{functionName + " failed with unknown error"});
}

} // namespace Script
