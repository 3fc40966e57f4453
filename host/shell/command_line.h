#pragma once

#include "kelvaris/system/expected.h"

#include <string>
#include <vector>

namespace HostShell {

enum class Verb {
    info,
    list,
    check,
    extract,
    pack,
    barrel,
    functions,
    call,
    run,
    console,
    generate,
};

enum class LogThreshold {
    diagnostic, ///< every line
    error,
    off,
};

/// What the user asked for. All texts are valid UTF-8.
struct CommandLine
{
    Verb verb = Verb::console;

    /// The function's name (call) or the script's path (run); empty for other verbs.
    std::string subject;

    /// Everything else that is no option of the program, as it was written: files, or arguments of function or script.
    std::vector<std::string> arguments;

    bool json = false;
    bool dryRun = false;
    bool force = false;
    bool logScriptCalls = false;
    LogThreshold logThreshold = LogThreshold::diagnostic;

    /// Empty when none was named.
    std::string output;
    std::string primary;
    std::string example;
    std::string title;
    std::string description;
    std::string manufacturer;
    std::vector<std::string> keywords;

    /// Empty for the plug-in that lies beside the program.
    std::string plugin;

    /// Empty when no pictures are wanted.
    std::string grabDirectory;

    /// As written behind --keys.
    std::string keys;
};

/// Why the program ends before it has done anything: it was asked for its help or version, or asked wrongly.
struct EarlyEnd
{
    int status;        ///< 0 for help and version, else 2
    std::string text;  ///< for standard output when the status is 0, else one sentence for standard error
    bool json = false; ///< whether errors were asked for as JSON too
};

/// Reads the words behind the program's own name.
///
/// Options may stand before and behind the verb. Behind the subject of `call` and `run` every word that is none of our
/// options is an argument, whatever it begins with; behind "--" every word is, of any verb.
Kelvaris::System::Expected<CommandLine, EarlyEnd> parseCommandLine(const std::vector<std::string>& words);

} // namespace HostShell
