#include "host/shell/function_call.h"

#include "host/shell/close_names.h"
#include "host/shell/log_output.h"

namespace HostShell {

namespace {

using Kelvaris::FunctionRegistry;
using Kelvaris::RegisteredFunction;
using Kelvaris::System::Logging::LogLevel;
using Kelvaris::System::Logging::LogLine;

std::string unknownFunction(const std::string& name)
{
    std::vector<std::string> names;
    for (const RegisteredFunction& function : FunctionRegistry::instance().functions())
        names.push_back(function.name);
    std::string sentence = "there is no function " + name;
    const std::vector<std::string> close = closeNames(name, names);
    for (std::size_t i = 0; i < close.size(); ++i)
        sentence += (i == 0 ? "; did you mean " : " or ") + close[i];
    return close.empty() ? sentence : sentence + "?";
}

std::string takenBy(const RegisteredFunction& function)
{
    if (function.maximum == 0)
        return "no argument";
    if (function.minimum == function.maximum)
        return std::to_string(function.maximum) + (function.maximum == 1 ? " argument" : " arguments");
    return std::to_string(function.minimum) + " to " + std::to_string(function.maximum) + " arguments";
}

std::string given(std::size_t count)
{
    if (count == 0)
        return "none was given";
    return std::to_string(count) + (count == 1 ? " was given" : " were given");
}

} // namespace

std::string arityOf(const RegisteredFunction& function)
{
    if (function.minimum == function.maximum)
        return std::to_string(function.minimum);
    return std::to_string(function.minimum) + "-" + std::to_string(function.maximum);
}

std::optional<std::string> refusalOf(const std::string& name, std::size_t argumentCount)
{
    const RegisteredFunction* function = FunctionRegistry::instance().find(name);
    if (function == nullptr)
        return unknownFunction(name);
    const auto count = static_cast<std::int64_t>(argumentCount);
    if (count >= function->minimum && count <= function->maximum)
        return std::nullopt;
    return name + " takes " + takenBy(*function) + "; " + given(argumentCount);
}

CallOutcome callByName(const std::string& name, const std::vector<std::vector<std::string>>& arguments)
{
    CallOutcome outcome;
    const LogTap tap{[&outcome](const LogLine& line) {
        if (line.level == LogLevel::error && line.category == "script/function")
            outcome.failure = line.message;
    }};
    outcome.result = callFunction(*FunctionRegistry::instance().find(name), arguments);
    return outcome;
}

} // namespace HostShell
