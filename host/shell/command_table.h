#pragma once

#include "host/shell/command_line.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The one table of what the program understands. The command line is parsed by it; the help, the man page, the
/// completions of the shells and the console's list are made from it.
namespace HostShell {

/// What a shell offers in the place of an argument or a value.
enum class Completes {
    nothing,
    files,
    directories,
    functions, ///< names of script functions
    words,     ///< one of a few, which stand in `words`
};

struct ArgumentRow
{
    std::string_view name; ///< as the help shows it: "FILE"
    std::string_view help;
    Completes completes = Completes::files;
    bool isRequired = true;
    bool repeats = false;
    std::vector<std::string_view> words = {};
};

struct OptionRow
{
    /// Where the command line keeps what was given.
    using Place = std::variant<bool CommandLine::*, std::string CommandLine::*, LogThreshold CommandLine::*,
                               std::vector<std::string> CommandLine::*>;

    std::string_view name;  ///< "--json"
    std::string_view value; ///< as the help shows it: "DIR"; empty for a flag
    std::string_view help;
    Place place;
    Completes completes = Completes::nothing;
    std::string_view needs = {}; ///< another option that must stand beside it
    std::vector<std::string_view> words = {};

    bool takesValue() const noexcept { return !value.empty(); }
};

struct CommandRow
{
    Verb verb;
    std::string_view name;
    std::string_view summary;     ///< one line, without a full stop
    std::string_view description; ///< sentences
    std::vector<ArgumentRow> arguments;
    std::vector<OptionRow> options;
    std::vector<int> statuses;

    /// Whether words that look like options are arguments too, once the first argument is there.
    bool passesWordsOn = false;
};

struct StatusRow
{
    int status;
    std::string_view meaning;
};

/// In the order in which the help shows them.
std::span<const CommandRow> commandTable();

/// May stand before and behind every verb.
std::span<const OptionRow> commonOptions();

std::span<const StatusRow> statusTable();

/// @return  null when there is no such verb
const CommandRow* findCommand(std::string_view name);
const CommandRow& commandOf(Verb verb);

/// "info FILE", "call NAME [ARG...]": the verb with its arguments.
std::string synopsisOf(const CommandRow& command);

/// "functions, call, run and console"
std::string listedVerbs();

} // namespace HostShell
