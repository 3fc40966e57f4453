#include "host/shell/commands.h"

#include "host/shell/call_arguments.h"
#include "host/shell/console_window.h"
#include "host/shell/function_call.h"
#include "host/shell/host_application.h"
#include "host/shell/json_text.h"
#include "host/shell/log_output.h"
#include "host/shell/plugin_library.h"
#include "host/shell/script_runner.h"
#include "host/shell/stage.h"
#include "host/shell/text_checks.h"
#include "host/shell/window_functions.h"

#include <QtCore/QFile>

#include <cstdio>

namespace HostShell {

namespace {

using Kelvaris::FunctionRegistry;
using Kelvaris::RegisteredFunction;
using Kelvaris::System::Expected;

using Texts = std::vector<std::string>;

constexpr int notRun = 2;

int refuse(const std::string& sentence)
{
    complain(sentence);
    return notRun;
}

void printLine(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

std::string functionAsJson(const RegisteredFunction& function)
{
    return "{\"name\":\"" + function.name + "\",\"minimum\":" + std::to_string(function.minimum) +
           ",\"maximum\":" + std::to_string(function.maximum) + "}";
}

int listFunctions(const CommandLine& line)
{
    std::string all;
    for (const RegisteredFunction& function : FunctionRegistry::instance().functions()) {
        if (line.json)
            all += (all.empty() ? "" : ",") + functionAsJson(function);
        else
            printLine(function.name + " " + arityOf(function));
    }
    if (line.json)
        printLine("[" + all + "]");
    return 0;
}

void printResults(const Kelvaris::CallResult& result, bool json)
{
    if (json)
        return printLine("{\"status\":" + std::to_string(result.status) + ",\"results\":" + toJson(result.results) +
                         "}");
    for (const std::string& text : result.results)
        printLine(text);
}

Expected<std::vector<Texts>, ArgumentError> parseArguments(const Texts& words)
{
    std::vector<Texts> arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        auto argument = parseCallArgument(words[i]);
        if (!argument)
            return ArgumentError{"argument " + std::to_string(i + 1) + " " + argument.error().text};
        arguments.push_back(std::move(*argument));
    }
    return arguments;
}

int callFunction(const CommandLine& line)
{
    if (const auto refusal = refusalOf(line.subject, line.arguments.size()))
        return refuse(*refusal);
    const auto arguments = parseArguments(line.arguments);
    if (!arguments)
        return refuse(arguments.error().text);
    const bool windows = opensWindow(line.subject);
    if (windows && line.grabDirectory.empty() && !displayIsNamed())
        return refuse(noDisplay(line.subject));
    const auto stage = windows ? Stage::withWindows(line) : Stage::withoutWindows();
    if (!stage)
        return refuse(stage.error().text);
    const Kelvaris::CallResult result = callByName(line.subject, *arguments).result;
    printResults(result, line.json);
    return (*stage)->finish(result.status);
}

struct FileError
{
    std::string text;
};

Expected<std::string, FileError> readScript(const std::string& path)
{
    QFile file{QString::fromStdString(path)};
    if (!file.open(QIODevice::ReadOnly))
        return FileError{"cannot read the script " + path + ": " + file.errorString().toStdString()};
    std::string script = file.readAll().toStdString();
    if (!isValidUtf8(script))
        return FileError{"the script " + path + " is not valid UTF-8"};
    return script;
}

int runScript(const CommandLine& line)
{
    const auto script = readScript(line.subject);
    if (!script)
        return refuse(script.error().text);
    const bool windows = namesWindowFunction(*script) && (displayIsNamed() || !line.grabDirectory.empty());
    const auto stage = windows ? Stage::withWindows(line) : Stage::withoutWindows();
    if (!stage)
        return refuse(stage.error().text);
    ScriptRunner runner{[](const QString& text) { printLine(text.toStdString()); }};
    const ScriptEnd end =
        runner.run(QString::fromStdString(*script), QString::fromStdString(line.subject), line.arguments);
    if (!end.error.isEmpty())
        std::fprintf(stderr, "%s\n", end.error.toUtf8().constData());
    return end.exited ? end.status : (*stage)->finish(end.status);
}

int openConsole(const CommandLine& line)
{
    if (line.grabDirectory.empty() && !displayIsNamed())
        return refuse(noDisplay("console"));
    const auto stage = Stage::withWindows(line);
    if (!stage)
        return refuse(stage.error().text);
    // pictures look the same whatever the user did before
    ConsoleWindow window{line.grabDirectory.empty() ? ConsolePlaces::ofUser() : ConsolePlaces{}};
    window.show();
    return (*stage)->finish(0);
}

int (*commandOf(Verb verb))(const CommandLine&)
{
    switch (verb) {
    case Verb::functions:
        return listFunctions;
    case Verb::call:
        return callFunction;
    case Verb::run:
        return runScript;
    case Verb::console:
        break;
    }
    return openConsole;
}

} // namespace

int runCommand(const CommandLine& line)
{
    // lives longer than any stage, so that windows are gone when the plug-in's code is
    const auto plugin = PluginLibrary::load(QString::fromStdString(line.plugin));
    if (!plugin)
        return refuse(plugin.error().text);
    return commandOf(line.verb)(line);
}

} // namespace HostShell
