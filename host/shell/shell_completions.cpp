#include "host/shell/shell_completions.h"

#include "host/shell/command_table.h"
#include "host/shell/function_documents.h"

#include <algorithm>

namespace HostShell {

namespace {

template <class Row>
std::string joined(std::span<const Row> rows, std::string_view Row::*field)
{
    std::string text;
    for (const Row& row : rows)
        text += (text.empty() ? "" : " ") + std::string{row.*field};
    return text;
}

std::string joined(const std::vector<std::string_view>& words)
{
    std::string text;
    for (const std::string_view word : words)
        text += (text.empty() ? "" : " ") + std::string{word};
    return text;
}

std::string functionNames()
{
    std::string names;
    for (const FunctionDocument& function : functionDocuments())
        names += (names.empty() ? "" : " ") + function.name;
    return names;
}

std::string verbNames()
{
    return joined(commandTable(), &CommandRow::name);
}

std::string quoted(std::string_view text)
{
    std::string result{"'"};
    for (const char letter : text)
        result += letter == '\'' ? std::string{"'\\''"} : std::string{letter};
    return result + "'";
}

/// All options that take a value, wherever they may stand; each name once.
std::vector<OptionRow> optionsWithValue()
{
    std::vector<OptionRow> found;
    const auto add = [&](std::span<const OptionRow> rows) {
        for (const OptionRow& row : rows) {
            if (row.takesValue())
                found.push_back(row);
        }
    };
    add(commonOptions());
    for (const CommandRow& command : commandTable())
        add(command.options);
    return found;
}

// bash

std::string bashWords(const std::string& words)
{
    return "mapfile -t COMPREPLY < <(compgen -W " + quoted(words) + " -- \"$cur\")";
}

std::string bashAction(Completes completes, const std::vector<std::string_view>& words)
{
    switch (completes) {
    case Completes::files:
        return "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- \"$cur\")";
    case Completes::directories:
        return "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- \"$cur\")";
    case Completes::functions:
        return bashWords(functionNames());
    case Completes::words:
        return bashWords(joined(words));
    case Completes::nothing:
        break;
    }
    return "COMPREPLY=()";
}

/// "verb:--option" for each, since one name may stand for different things behind different verbs.
std::string bashValues()
{
    std::string text;
    for (const OptionRow& option : commonOptions()) {
        if (option.takesValue())
            text += "        *:" + std::string{option.name} + ") " + bashAction(option.completes, option.words) +
                    "; return ;;\n";
    }
    for (const CommandRow& command : commandTable()) {
        for (const OptionRow& option : command.options) {
            if (option.takesValue())
                text += "        " + std::string{command.name} + ":" + std::string{option.name} + ") " +
                        bashAction(option.completes, option.words) + "; return ;;\n";
        }
    }
    return text;
}

std::string bashOptions()
{
    std::string text;
    for (const CommandRow& command : commandTable())
        text += "            " + std::string{command.name} + ") options+=\" " +
                joined(std::span<const OptionRow>{command.options}, &OptionRow::name) + "\" ;;\n";
    return text;
}

std::string bashArguments()
{
    std::string text;
    for (const CommandRow& command : commandTable()) {
        for (std::size_t i = 0; i < command.arguments.size(); ++i) {
            const ArgumentRow& argument = command.arguments[i];
            text += "        " + std::string{command.name} + ":" + (argument.repeats ? "*" : std::to_string(i)) + ") " +
                    bashAction(argument.completes, argument.words) + " ;;\n";
        }
    }
    return text;
}

std::string spaced(const std::vector<OptionRow>& options)
{
    std::string names;
    for (const OptionRow& option : options) {
        const std::string name = "|" + std::string{option.name};
        if ((names + "|").find(name + "|") == std::string::npos)
            names += name;
    }
    return names.substr(1);
}

// zsh

std::string zshText(std::string_view text)
{
    std::string result;
    for (const char letter : text) {
        if (letter == '[' || letter == ']' || letter == ':' || letter == '\\')
            result += '\\';
        result += letter;
    }
    return result;
}

std::string zshAction(Completes completes, const std::vector<std::string_view>& words)
{
    switch (completes) {
    case Completes::files:
        return "_files";
    case Completes::directories:
        return "_files -/";
    case Completes::functions:
        return "(" + functionNames() + ")";
    case Completes::words:
        return "(" + joined(words) + ")";
    case Completes::nothing:
        break;
    }
    return " ";
}

std::string zshOption(const OptionRow& option)
{
    const bool repeats = std::holds_alternative<std::vector<std::string> CommandLine::*>(option.place);
    std::string text = (repeats ? "*" : "") + std::string{option.name} + "[" + zshText(option.help) + "]";
    if (option.takesValue())
        text += ":" + std::string{option.value} + ":" + zshAction(option.completes, option.words);
    return " \\\n        " + quoted(text);
}

std::string zshCommand(const CommandRow& command)
{
    std::string text = "    " + std::string{command.name} + ")\n      _arguments -S $common";
    for (const OptionRow& option : command.options)
        text += zshOption(option);
    for (const ArgumentRow& argument : command.arguments)
        text += " \\\n        " + quoted((argument.repeats ? "*:" : ":") + std::string{argument.name} + ":" +
                                         zshAction(argument.completes, argument.words));
    return text + " ;;\n";
}

// fish

constexpr const char* fishProgram = "complete -c hollerwick-host";

std::string fishAction(Completes completes, const std::vector<std::string_view>& words)
{
    switch (completes) {
    case Completes::files:
        return " -F";
    case Completes::directories:
        return " -a '(__fish_complete_directories)'";
    case Completes::functions:
        return " -a " + quoted(functionNames());
    case Completes::words:
        return " -a " + quoted(joined(words));
    case Completes::nothing:
        break;
    }
    return "";
}

std::string fishOption(const OptionRow& option, const std::string& condition)
{
    std::string text = fishProgram + condition + " -l " + std::string{option.name.substr(2)};
    if (option.takesValue())
        text +=
            (option.completes == Completes::files ? " -r" : " -x") +
            (option.completes == Completes::files ? std::string{" -F"} : fishAction(option.completes, option.words));
    return text + " -d " + quoted(option.help) + "\n";
}

std::string fishCommand(const CommandRow& command)
{
    const std::string name{command.name};
    const std::string condition = " -n '__fish_seen_subcommand_from " + name + "'";
    std::string text =
        std::string{fishProgram} + " -n __fish_use_subcommand -a " + name + " -d " + quoted(command.summary) + "\n";
    for (const ArgumentRow& argument : command.arguments)
        text += fishProgram + condition + fishAction(argument.completes, argument.words) + "\n";
    for (const OptionRow& option : command.options)
        text += fishOption(option, condition);
    return text;
}

} // namespace

std::string bashCompletion()
{
    return "# bash completion for hollerwick-host\n"
           "_hollerwick_host() {\n"
           "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} verb= place=0 i\n"
           "    local IFS=$' \\t\\n' options=\"" +
           joined(commonOptions(), &OptionRow::name) +
           " --help --version\"\n"
           "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
           "        case ${COMP_WORDS[i]} in\n"
           "        " +
           spaced(optionsWithValue()) +
           ") ((++i)) ;;\n"
           "        -*) ;;\n"
           "        *) if [[ -z $verb ]]; then verb=${COMP_WORDS[i]}; else ((++place)); fi ;;\n"
           "        esac\n"
           "    done\n"
           "    case $verb:$prev in\n" +
           bashValues() +
           "    esac\n"
           "    if [[ $cur == -* ]]; then\n"
           "        case $verb in\n" +
           bashOptions() +
           "        esac\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$cur\")\n"
           "        return\n"
           "    fi\n"
           "    case $verb:$place in\n"
           "        :0) " +
           bashWords(verbNames()) + " ;;\n" + bashArguments() +
           "    esac\n"
           "}\n"
           "complete -F _hollerwick_host hollerwick-host\n";
}

std::string zshCompletion()
{
    std::string text = "#compdef hollerwick-host\n"
                       "local -a common verbs\n"
                       "common=(";
    for (const OptionRow& option : commonOptions())
        text += zshOption(option);
    text += " \\\n        '--help[Print help and exit]' \\\n        '--version[Print the version and exit]')\nverbs=(";
    for (const CommandRow& command : commandTable())
        text += "\n  " + quoted(std::string{command.name} + ":" + zshText(command.summary));
    text += ")\n"
            "_arguments -C -S $common '1:verb:->verb' '*::argument:->arguments'\n"
            "case $state in\n"
            "  verb) _describe verb verbs ;;\n"
            "  arguments) case $words[1] in\n";
    for (const CommandRow& command : commandTable())
        text += zshCommand(command);
    return text + "  esac ;;\nesac\n";
}

std::string fishCompletion()
{
    std::string text = "# fish completion for hollerwick-host\n" + std::string{fishProgram} + " -f\n";
    for (const OptionRow& option : commonOptions())
        text += fishOption(option, "");
    text += std::string{fishProgram} + " -l help -d 'Print help and exit'\n" + fishProgram +
            " -l version -d 'Print the version and exit'\n";
    for (const CommandRow& command : commandTable())
        text += fishCommand(command);
    return text;
}

} // namespace HostShell
