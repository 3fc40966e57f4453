#include "host/shell/man_page.h"

#include "host/shell/command_table.h"
#include "host/shell/function_documents.h"

namespace HostShell {

namespace {

/// Text as troff takes it: hyphens that can be copied, no line that is taken for a request.
std::string escaped(std::string_view text)
{
    std::string result;
    for (const char letter : text) {
        if (letter == '\\')
            result += "\\e";
        else if (letter == '-')
            result += "\\-";
        else if ((letter == '.' || letter == '\'') && (result.empty() || result.back() == '\n'))
            result.append("\\&").push_back(letter);
        else
            result.push_back(letter);
    }
    return result;
}

std::string bold(std::string_view text)
{
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(std::string_view text)
{
    return "\\fI" + escaped(text) + "\\fR";
}

std::string entry(const std::string& head, std::string_view text)
{
    return ".TP\n" + head + "\n" + escaped(text) + "\n";
}

std::string optionHead(const OptionRow& option)
{
    return option.takesValue() ? bold(option.name) + " " + italic(option.value) : bold(option.name);
}

std::string synopsis(const CommandRow& command)
{
    std::string text = bold("hollerwick-host " + std::string{command.name});
    for (const OptionRow& option : command.options)
        text += " [" + optionHead(option) + "]" + (option.name == "--keyword" ? "..." : "");
    for (const ArgumentRow& argument : command.arguments) {
        const std::string name = italic(argument.name) + (argument.repeats ? "..." : "");
        text += argument.isRequired ? " " + name : " [" + name + "]";
    }
    return text + "\n.br\n";
}

std::string options(std::span<const OptionRow> rows)
{
    std::string text;
    for (const OptionRow& option : rows)
        text += entry(optionHead(option), option.help);
    return text;
}

std::string command(const CommandRow& row)
{
    std::string text = ".SS " + escaped(synopsisOf(row)) + "\n" + escaped(row.description) + "\n";
    for (const ArgumentRow& argument : row.arguments)
        text += entry(italic(argument.name), argument.help);
    text += options(row.options);
    text += ".PP\nExit status: ";
    for (std::size_t i = 0; i < row.statuses.size(); ++i)
        text += (i == 0 ? "" : ", ") + std::to_string(row.statuses[i]);
    return text + ".\n";
}

} // namespace

std::string manPage()
{
    std::string text = ".TH HOLLERWICK\\-HOST 1 \"\" \"Hollerwick " HOLLERWICK_VERSION "\" \"User Commands\"\n"
                       ".SH NAME\nhollerwick\\-host \\- work with bundles and run their script functions\n"
                       ".SH SYNOPSIS\n.nh\n.ad l\n";
    for (const CommandRow& row : commandTable())
        text += synopsis(row);
    text += ".ad b\n.hy\n.SH DESCRIPTION\n"
            "A bundle is a ZIP file laid out by the Open Packaging Conventions, with a purpose: an example design, a "
            "barrel of examples to choose from, the schematics of a design hierarchy, or a script with its files.\n"
            ".SH COMMANDS\n";
    for (const CommandRow& row : commandTable())
        text += command(row);
    text += ".SH COMMON OPTIONS\n" + options(commonOptions());
    text += entry(bold("--help"), "Print the help of the program or of a verb and exit");
    text += entry(bold("--version"), "Print the version and exit");
    text += ".SH SCRIPT FUNCTIONS\n";
    for (const FunctionDocument& function : functionDocuments())
        text += entry(bold(function.name) + escaped(function.arguments), function.summary);
    text += ".SH EXIT STATUS\n";
    for (const StatusRow& row : statusTable())
        text += entry(bold(std::to_string(row.status)), row.meaning);
    text += ".PP\n" +
            escaped("A script may end with any other number. Ctrl-C ends every verb by the signal, after what it "
                    "had half written is removed.") +
            "\n";
    return text;
}

} // namespace HostShell
