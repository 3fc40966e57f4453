#include "host/shell/commands.h"

#include "host/shell/call_arguments.h"
#include "host/shell/command_output.h"
#include "host/shell/console_window.h"
#include "host/shell/exit_status.h"
#include "host/shell/function_call.h"
#include "host/shell/host_application.h"
#include "host/shell/inspecting_commands.h"
#include "host/shell/interruption.h"
#include "host/shell/json_text.h"
#include "host/shell/man_page.h"
#include "host/shell/plugin_library.h"
#include "host/shell/script_runner.h"
#include "host/shell/shell_completions.h"
#include "host/shell/stage.h"
#include "host/shell/text_checks.h"
#include "host/shell/window_functions.h"
#include "host/shell/writing_commands.h"

#include <QtCore/QFile>

#include <cstdio>
#include <utility>

namespace HostShell {

namespace {

using Kelvaris::FunctionRegistry;
using Kelvaris::RegisteredFunction;
using Kelvaris::System::Expected;

using Texts = std::vector<std::string>;

/// Nothing was run.
int refuseToRun(const CommandLine& line, const std::string& sentence)
{
    return refuse(line, ExitStatus::usage, sentence);
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

constexpr const char* interruptedSentence = "interrupted";

/// Ends a program that waits for its windows, between two events: disk work that one of them began has ended by then.
void endAmongEvents()
{
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { Interruption::end(interruptedSentence); }, Qt::QueuedConnection);
}

int statusUnlessInterrupted(int status)
{
    if (Interruption::hasHappened())
        Interruption::end(interruptedSentence);
    return status;
}

int callFunction(const CommandLine& line)
{
    if (const auto refusal = refusalOf(line.subject, line.arguments.size()))
        return refuseToRun(line, *refusal);
    const auto arguments = parseArguments(line.arguments);
    if (!arguments)
        return refuseToRun(line, arguments.error().text);
    const bool windows = opensWindow(line.subject);
    if (windows && line.grabDirectory.empty() && !displayIsNamed())
        return refuseToRun(line, noDisplay(line.subject));
    const auto stage = windows ? Stage::withWindows(line) : Stage::withoutWindows();
    if (!stage)
        return refuseToRun(line, stage.error().text);
    const Interruption interruption{endAmongEvents};
    const Kelvaris::CallResult result = callByName(line.subject, *arguments).result;
    printResults(result, line.json);
    return statusUnlessInterrupted((*stage)->finish(result.status));
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
        return refuseToRun(line, script.error().text);
    const bool windows = namesWindowFunction(*script) && (displayIsNamed() || !line.grabDirectory.empty());
    const auto stage = windows ? Stage::withWindows(line) : Stage::withoutWindows();
    if (!stage)
        return refuseToRun(line, stage.error().text);
    ScriptRunner runner{[](const QString& text) { printLine(text.toStdString()); }};
    const Interruption interruption{[&runner, isAsked = false]() mutable {
        // a script may be where nothing stops it, in a long search for a pattern: who asks again means it
        if (std::exchange(isAsked, true))
            Interruption::end(interruptedSentence);
        runner.stop();
        endAmongEvents();
    }};
    const ScriptEnd end =
        runner.run(QString::fromStdString(*script), QString::fromStdString(line.subject), line.arguments);
    if (end.stopped)
        Interruption::end(interruptedSentence);
    if (!end.error.isEmpty())
        std::fprintf(stderr, "%s\n", end.error.toUtf8().constData());
    return statusUnlessInterrupted(end.exited ? end.status : (*stage)->finish(end.status));
}

int openConsole(const CommandLine& line)
{
    if (line.grabDirectory.empty() && !displayIsNamed())
        return refuseToRun(line, noDisplay("console"));
    const auto stage = Stage::withWindows(line);
    if (!stage)
        return refuseToRun(line, stage.error().text);
    // pictures look the same whatever the user did before
    ConsoleWindow window{line.grabDirectory.empty() ? ConsolePlaces::ofUser() : ConsolePlaces{}};
    window.show();
    const Interruption interruption{endAmongEvents};
    return statusUnlessInterrupted((*stage)->finish(0));
}

int generateText(const CommandLine& line)
{
    const std::string& what = line.arguments.front();
    const std::string text = what == "man"    ? manPage()
                             : what == "bash" ? bashCompletion()
                             : what == "zsh"  ? zshCompletion()
                                              : fishCompletion();
    std::fwrite(text.data(), 1, text.size(), stdout);
    return ExitStatus::done;
}

struct Command
{
    int (*run)(const CommandLine&);
    bool needsPlugin;
};

Command commandFor(Verb verb)
{
    switch (verb) {
    case Verb::info:
        return {showInfo, false};
    case Verb::list:
        return {listExamples, false};
    case Verb::check:
        return {checkFiles, false};
    case Verb::extract:
        return {extractBundle, false};
    case Verb::pack:
        return {packExample, true};
    case Verb::barrel:
        return {packBarrel, true};
    case Verb::functions:
        return {listFunctions, true};
    case Verb::call:
        return {callFunction, true};
    case Verb::run:
        return {runScript, true};
    case Verb::generate:
        return {generateText, false};
    case Verb::console:
        break;
    }
    return {openConsole, true};
}

} // namespace

int runCommand(const CommandLine& line)
{
    const Command command = commandFor(line.verb);
    if (!command.needsPlugin)
        return command.run(line);
    // lives longer than any stage, so that windows are gone when the plug-in's code is
    const auto plugin = PluginLibrary::load(QString::fromStdString(line.plugin));
    if (!plugin)
        return refuseToRun(line, plugin.error().text);
    return command.run(line);
}

} // namespace HostShell
