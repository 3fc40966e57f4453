#include "host/shell/command_table.h"

#include "host/shell/exit_status.h"

#include <algorithm>

namespace HostShell {

namespace {

using namespace ExitStatus;

OptionRow json()
{
    return {"--json", "", "Print one line of JSON, errors too", &CommandLine::json};
}

OptionRow dryRun()
{
    return {"--dry-run", "", "Check everything and tell what would be written, without writing it",
            &CommandLine::dryRun};
}

OptionRow force()
{
    return {"--force", "", "Replace the output when it exists", &CommandLine::force};
}

OptionRow output(std::string_view value, std::string_view help, Completes completes)
{
    return {"--output", value, help, &CommandLine::output, completes};
}

std::vector<OptionRow> windowOptions()
{
    return {{"--grab", "DIR", "Save a PNG of every window that opens, then close it", &CommandLine::grabDirectory,
             Completes::directories},
            {"--keys", "KEYS",
             "Type these keys first, a picture after each: names such as Tab, Ctrl+A; texts in quotes",
             &CommandLine::keys, Completes::nothing, "--grab"}};
}

std::vector<OptionRow> withWindowOptions(std::vector<OptionRow> options)
{
    for (OptionRow& option : windowOptions())
        options.push_back(std::move(option));
    return options;
}

std::vector<CommandRow> inspectingCommands()
{
    return {
        {Verb::info,
         "info",
         "Show what a bundle or package holds",
         "Prints the kind, title, description, manufacturer and keywords of a bundle, its primary file, its parts with "
         "their sizes, and its relationships. Any package of the Open Packaging Conventions will do.",
         {{"FILE", "The bundle or package"}},
         {json()},
         {done, failed, usage, badInput}},
        {Verb::list,
         "list",
         "List the examples of barrels",
         "Prints a line for each example: the name of its part, its title, and its keywords in brackets.",
         {{.name = "FILE", .help = "A barrel of examples", .repeats = true}},
         {json()},
         {done, failed, usage, badInput}},
        {Verb::check,
         "check",
         "Tell every rule that a bundle or package breaks",
         "Reads all of each file and prints every rule of the package standard and of the bundle format that it "
         "breaks: "
         "where, what, and how to mend it. What is unusual and put up with is told as a remark.",
         {{.name = "FILE", .help = "A bundle or package", .repeats = true}},
         {json()},
         {done, failed, usage, badInput, faultsFound}},
    };
}

std::vector<CommandRow> writingCommands()
{
    return {
        {Verb::extract,
         "extract",
         "Unpack a bundle, or one example of a barrel, into a directory",
         "Writes the content files of a bundle below a directory. Nothing that exists is overwritten, and when "
         "something fails or is interrupted, nothing is left behind.",
         {{"FILE", "A content bundle or an example; a barrel together with --example"}},
         {output("DIR", "Where to (default: a directory named like the bundle, in the working directory)",
                 Completes::directories),
          {"--example", "NAME", "The example of a barrel: its title, its part name or the end of that",
           &CommandLine::example},
          dryRun(),
          json()},
         {done, failed, usage, badInput, outputExists}},
        {Verb::pack,
         "pack",
         "Pack a design into an example bundle",
         "Packs files into one example bundle. A directory stands for all files in it and below. The primary file is "
         "the one that a new design is started with; the other files lie in its directory or below.",
         {{.name = "FILE", .help = "A file or directory; the first file is the primary one", .repeats = true}},
         {output("FILE", "The bundle (default: named like the primary file, with .kvbdl.zip, in the working directory)",
                 Completes::files),
          {"--primary", "FILE", "The primary file, when it is not the first one", &CommandLine::primary,
           Completes::files},
          {"--title", "TEXT", "The title (default: the name of the primary file)", &CommandLine::title},
          {"--description", "TEXT", "What the example shows", &CommandLine::description},
          {"--manufacturer", "TEXT", "Who makes the device that the example shows", &CommandLine::manufacturer},
          {"--keyword", "TEXT", "A keyword to find the example by; may be given several times", &CommandLine::keywords},
          force(),
          dryRun(),
          json()},
         {done, failed, usage, badInput, outputExists}},
        {Verb::barrel,
         "barrel",
         "Pack example bundles into a barrel",
         "Packs example bundles into one barrel to choose from. A directory stands for all bundles (*.kvbdl.zip) in it "
         "and below. The examples behind the first one lie in its directory or below.",
         {{.name = "FILE", .help = "An example bundle, or a directory of them", .repeats = true}},
         {output("FILE", "The barrel (default: examples.kvexs in the working directory)", Completes::files), force(),
          dryRun(), json()},
         {done, failed, usage, badInput, outputExists}},
    };
}

std::vector<CommandRow> scriptingCommands()
{
    return {
        {Verb::functions,
         "functions",
         "List the registered functions with their arity",
         "Prints a line for each script function: its name and the number of its arguments.",
         {},
         {json()},
         {done, usage}},
        {Verb::call,
         "call",
         "Call one function and print its results, one a line",
         "Hands each ARG over as one argument of a script function and prints its results. Words that are none of "
         "these "
         "options are arguments, and behind -- all are.",
         {{"NAME", "The function's name", Completes::functions},
          {"ARG", "One argument: a text, or a JSON array of texts such as [\"a\",\"b\"]", Completes::files, false,
           true}},
         withWindowOptions({json()}),
         {done, failed, usage},
         true},
        {Verb::run,
         "run",
         "Run a script, in which every function is global",
         "Runs a script of JavaScript in which each script function is global, beside print, args and exit. Words that "
         "are none of these options are arguments, and behind -- all are.",
         {{"SCRIPT.js", "The script; it finds what follows in the array args"},
          {"ARG", "One text of args", Completes::files, false, true}},
         windowOptions(),
         {done, failed, usage},
         true},
        {Verb::console,
         "console",
         "Open the window for writing and running scripts",
         "Opens a window with an editor for scripts, their output, and the list of the functions.",
         {},
         windowOptions(),
         {done, failed, usage}},
        {Verb::generate,
         "generate",
         "Print the man page, or the completion of a shell",
         "Prints what a system installs beside the program: the man page in troff, or the completions of bash, zsh or "
         "fish.",
         {{.name = "WHAT",
           .help = "man, bash, zsh or fish",
           .completes = Completes::words,
           .words = {"man", "bash", "zsh", "fish"}}},
         {},
         {done, usage}},
    };
}

std::vector<CommandRow> allCommands()
{
    std::vector<CommandRow> all;
    for (auto* group : {inspectingCommands, writingCommands, scriptingCommands}) {
        for (CommandRow& command : group())
            all.push_back(std::move(command));
    }
    return all;
}

} // namespace

std::span<const CommandRow> commandTable()
{
    static const std::vector<CommandRow> table = allCommands();
    return table;
}

std::span<const OptionRow> commonOptions()
{
    static const std::vector<OptionRow> options = {
        {"--log-script-calls", "", "Write diagnostic lines for each script call", &CommandLine::logScriptCalls},
        {.name = "--log-level",
         .value = "L",
         .help = "Lowest level of the lines on standard error (default: diagnostic)",
         .place = &CommandLine::logThreshold,
         .completes = Completes::words,
         .words = {"diagnostic", "error", "off"}},
        {"--plugin", "FILE", "The plug-in to load (default: ../lib/hollerwick/hollerwick.so)", &CommandLine::plugin,
         Completes::files},
    };
    return options;
}

std::span<const StatusRow> statusTable()
{
    static constexpr StatusRow statuses[] = {
        {done, "done"},
        {failed, "failed: a call, a script or the writing of a file; one sentence says why"},
        {usage, "nothing was done: the command line is wrong, or plug-in, script or display is missing"},
        {badInput, "an input file cannot be read, or is not what the verb needs"},
        {outputExists, "the output exists already, and stays as it is"},
        {faultsFound, "check has found faults"},
    };
    return statuses;
}

const CommandRow* findCommand(std::string_view name)
{
    const auto found = std::ranges::find(commandTable(), name, &CommandRow::name);
    return found == commandTable().end() ? nullptr : &*found;
}

const CommandRow& commandOf(Verb verb)
{
    return *std::ranges::find(commandTable(), verb, &CommandRow::verb);
}

std::string synopsisOf(const CommandRow& command)
{
    std::string text{command.name};
    for (const ArgumentRow& argument : command.arguments) {
        const std::string name = std::string{argument.name} + (argument.repeats ? "..." : "");
        text += argument.isRequired ? " " + name : " [" + name + "]";
    }
    return text;
}

std::string listedVerbs()
{
    std::string text;
    const auto table = commandTable();
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (i > 0)
            text += i + 1 == table.size() ? " and " : ", ";
        text += table[i].name;
    }
    return text;
}

} // namespace HostShell
