#include "host/shell/command_line.h"

#include "host/shell/close_names.h"
#include "host/shell/command_table.h"
#include "host/shell/exit_status.h"
#include "host/shell/text_checks.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace HostShell {

namespace {

using Kelvaris::System::Expected;

const std::map<std::string, LogThreshold> thresholds{
    {"diagnostic", LogThreshold::diagnostic}, {"error", LogThreshold::error}, {"off", LogThreshold::off}};

EarlyEnd usageError(const std::string& sentence)
{
    return {ExitStatus::usage, sentence};
}

/// Those of a command; all when there is none.
std::string exitStatuses(const CommandRow* command = nullptr)
{
    std::string text = "Exit status:";
    for (const StatusRow& row : statusTable()) {
        if (command == nullptr || std::ranges::count(command->statuses, row.status) != 0)
            text += "\n  " + std::to_string(row.status) + "  " + std::string{row.meaning};
    }
    return text;
}

/// With line feeds between words, so that no line is longer than a terminal is wide by custom.
std::string wrapped(std::string_view text)
{
    constexpr std::size_t width = 80;
    std::string lines{text};
    std::size_t begin = 0;
    while (lines.size() - begin > width) {
        const std::size_t blank = lines.rfind(' ', begin + width);
        if (blank == std::string::npos || blank <= begin)
            break;
        lines[blank] = '\n';
        begin = blank + 1;
    }
    return lines;
}

/// One of the words that an option knows.
CLI::Validator oneOf(std::span<const std::string_view> words)
{
    std::string all;
    for (const std::string_view word : words)
        all += (all.empty() ? "" : ", ") + std::string{word};
    const auto fault = [known = std::vector<std::string>{words.begin(), words.end()}, all](const std::string& word) {
        return std::ranges::count(known, word) != 0 ? std::string{} : "\"" + word + "\" is none of " + all;
    };
    return {fault, "{" + all + "}"};
}

/// Help whose usage is that of the table: the option parser knows nothing of the arguments.
class HelpText : public CLI::Formatter
{
public:
    HelpText() { label("Positionals", "Arguments"); }

    std::string make_usage(const CLI::App* app, std::string /*name*/) const override
    {
        const CommandRow* const command = findCommand(app->get_name());
        return "\nUsage: hollerwick-host " + (command == nullptr ? "VERB" : synopsisOf(*command)) + " [OPTIONS]\n";
    }
};

/// The options as they are declared, and the places that they fill.
class Options
{
public:
    explicit Options(CommandLine& line) : m_line{line}
    {
        m_app.formatter(std::make_shared<HelpText>());
        m_app.set_help_flag("--help", "Print this help and exit");
        m_app.set_version_flag("--version", "hollerwick-host " HOLLERWICK_VERSION, "Print the version and exit");
        m_app.footer(exitStatuses());
        declare(m_app, commonOptions());
        for (const CommandRow& command : commandTable())
            addVerb(command);
    }

    CLI::App& app() { return m_app; }

    /// The option that `word` names, "--name" or "--name=value", when it may stand behind `verb` (null: before any).
    const CLI::Option* find(const CommandRow* verb, const std::string& word) const
    {
        if (word.compare(0, 2, "--") != 0)
            return nullptr;
        const std::string name = word.substr(0, word.find('='));
        if (verb != nullptr) {
            const CLI::App* app = m_app.get_subcommand(std::string{verb->name});
            if (const CLI::Option* own = app->get_option_no_throw(name))
                return own;
        }
        return m_app.get_option_no_throw(name);
    }

    /// Of the options that may stand behind `verb` (null: before any).
    std::vector<std::string> names(const CommandRow* verb) const
    {
        std::vector<std::string> all;
        const auto add = [&all](const CLI::App& app) {
            for (const CLI::Option* option :
                 app.get_options([](const CLI::Option* one) { return one->nonpositional(); }))
                all.push_back(option->get_name());
        };
        add(m_app);
        if (verb != nullptr)
            add(*m_app.get_subcommand(std::string{verb->name}));
        return all;
    }

private:
    void addVerb(const CommandRow& command)
    {
        CLI::App* app = m_app.add_subcommand(std::string{command.name}, std::string{command.summary});
        app->group("Verbs");
        app->fallthrough();
        app->set_help_flag("--help", "Print this help and exit");
        app->footer(wrapped(command.description) + "\n\n" + exitStatuses(&command));
        app->callback([this, verb = command.verb] { m_line.verb = verb; });
        for (const ArgumentRow& argument : command.arguments)
            show(*app, argument);
        declare(*app, command.options);
    }

    /// For the help alone: arguments are told apart before the options are parsed.
    void show(CLI::App& app, const ArgumentRow& argument)
    {
        const std::string name{argument.name};
        const std::string help{argument.help};
        (argument.repeats ? app.add_option(name, m_shownTexts, help) : app.add_option(name, m_shownText, help))
            ->type_name("");
    }

    void declare(CLI::App& app, std::span<const OptionRow> rows)
    {
        for (const OptionRow& row : rows) {
            const std::string name{row.name};
            const std::string help{row.help};
            CLI::Option* const option =
                std::visit([&](auto place) { return declareAt(app, name, help, place); }, row.place);
            if (row.takesValue())
                option->type_name(std::string{row.value});
            if (!row.words.empty())
                option->check(oneOf(row.words));
            if (!row.needs.empty())
                option->needs(app.get_option(std::string{row.needs}));
        }
    }

    CLI::Option* declareAt(CLI::App& app, const std::string& name, const std::string& help, bool CommandLine::*place)
    {
        return app.add_flag(name, m_line.*place, help);
    }

    CLI::Option* declareAt(CLI::App& app, const std::string& name, const std::string& help,
                           std::string CommandLine::*place)
    {
        return app.add_option(name, m_line.*place, help);
    }

    CLI::Option* declareAt(CLI::App& app, const std::string& name, const std::string& help,
                           LogThreshold CommandLine::*place)
    {
        return app.add_option_function<std::string>(
            name, [this, place](const std::string& word) { m_line.*place = thresholds.at(word); }, help);
    }

    // One by one: the parser would take a text in brackets that is meant for a list apart.
    CLI::Option* declareAt(CLI::App& app, const std::string& name, const std::string& help,
                           std::vector<std::string> CommandLine::*place)
    {
        return app
            .add_option_function<std::string>(
                name, [this, place](const std::string& text) { (m_line.*place).push_back(text); }, help)
            ->trigger_on_parse();
    }

    CommandLine& m_line;
    CLI::App m_app{"Works with bundles, and runs the script functions of a circuit simulator's plug-in.",
                   "hollerwick-host"};

    // nothing is ever put here
    std::string m_shownText;
    std::vector<std::string> m_shownTexts;
};

/// Tells our options from arguments, which may look like options for a verb that passes them on.
class WordSorter
{
public:
    WordSorter(const Options& options, std::vector<std::string>& arguments) : m_options{options}, m_arguments{arguments}
    {
    }

    /// @return  the words for the option parser: the verb, the options and what looks like one
    std::vector<std::string> sort(const std::vector<std::string>& words)
    {
        for (std::size_t i = 0; i < words.size(); ++i) {
            const std::string& word = words[i];
            const CLI::Option* option = m_onlyArguments ? nullptr : m_options.find(m_verb, word);
            if (option != nullptr)
                i += takeOption(*option, words, i);
            else if (!m_onlyArguments && word == "--")
                m_onlyArguments = true;
            else
                takeWord(word);
        }
        return std::move(m_kept);
    }

    const CommandRow* verb() const noexcept { return m_verb; }

    /// Why an option cannot be followed, or nothing when all have what they need.
    std::optional<EarlyEnd> missingValue() const
    {
        if (!m_valueMissing)
            return std::nullopt;
        return usageError(*m_valueMissing + " needs a value behind it");
    }

    /// Why there is no verb to follow, or nothing when there is one.
    std::optional<EarlyEnd> missingVerb() const
    {
        if (m_verb != nullptr)
            return std::nullopt;
        const std::string verbs = "; the verbs are " + listedVerbs();
        if (!m_unknownVerb)
            return usageError("a verb is missing" + verbs + " (\"hollerwick-host --help\" tells more)");
        std::vector<std::string> names;
        for (const CommandRow& command : commandTable())
            names.emplace_back(command.name);
        const std::string unknown = "there is no verb \"" + *m_unknownVerb + "\"";
        const std::vector<std::string> close = closeNames(*m_unknownVerb, names);
        return usageError(close.empty() ? unknown + verbs : unknown + "; did you mean " + close.front() + "?");
    }

    /// What looked like an option and is none of ours, or nothing.
    std::optional<EarlyEnd> unknownOption() const
    {
        if (!m_unknownOption)
            return std::nullopt;
        const std::string name = m_unknownOption->substr(0, m_unknownOption->find('='));
        const std::vector<std::string> close = closeNames(name, m_options.names(m_verb));
        return usageError("there is no option " + name +
                          (close.empty() ? "" : "; did you mean " + close.front() + "?"));
    }

private:
    std::size_t takeOption(const CLI::Option& option, const std::vector<std::string>& words, std::size_t at)
    {
        m_kept.push_back(words[at]);
        const bool valueFollows = option.get_expected_min() > 0 && words[at].find('=') == std::string::npos;
        if (!valueFollows)
            return 0;
        if (at + 1 == words.size()) {
            m_valueMissing = words[at];
            return 0;
        }
        m_kept.push_back(words[at + 1]);
        return 1;
    }

    void takeWord(const std::string& word)
    {
        const bool looksLikeOption = word.size() > 1 && word.front() == '-' && !m_onlyArguments;
        if (m_verb == nullptr)
            return takeVerb(word, looksLikeOption);
        const bool isPassedOn = m_verb->passesWordsOn && !m_arguments.empty();
        if (!looksLikeOption || isPassedOn)
            return m_arguments.push_back(word);
        if (!m_unknownOption)
            m_unknownOption = word;
    }

    void takeVerb(const std::string& word, bool looksLikeOption)
    {
        if (looksLikeOption) {
            m_unknownOption = m_unknownOption.value_or(word);
            return;
        }
        m_kept.push_back(word);
        m_verb = findCommand(word);
        if (m_verb == nullptr && !m_unknownVerb)
            m_unknownVerb = word;
    }

    const Options& m_options;
    std::vector<std::string>& m_arguments;
    const CommandRow* m_verb = nullptr;
    bool m_onlyArguments = false;
    std::optional<std::string> m_unknownVerb;
    std::optional<std::string> m_unknownOption;
    std::optional<std::string> m_valueMissing;
    std::vector<std::string> m_kept;
};

EarlyEnd helpOrVersion(const CLI::App& app, const CLI::Success& end)
{
    if (dynamic_cast<const CLI::CallForVersion*>(&end) != nullptr)
        return {ExitStatus::done, std::string{end.what()} + "\n"};
    return {ExitStatus::done, app.help()};
}

std::optional<EarlyEnd> invalidText(const std::vector<std::string>& words)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!isValidUtf8(words[i]))
            return usageError("word " + std::to_string(i + 1) + " of the command line is not valid UTF-8");
    }
    return std::nullopt;
}

/// Whether there are as many arguments as the verb wants, and of those that it knows.
std::optional<EarlyEnd> argumentFault(const CommandRow& command, const std::vector<std::string>& arguments)
{
    const std::vector<ArgumentRow>& rows = command.arguments;
    const auto required = static_cast<std::size_t>(std::ranges::count(rows, true, &ArgumentRow::isRequired));
    if (arguments.size() < required)
        return usageError(std::string{rows[arguments.size()].name} + " is required: " + synopsisOf(command));
    const bool takesAny = !rows.empty() && rows.back().repeats;
    if (arguments.size() > rows.size() && !takesAny)
        return usageError("\"" + arguments[rows.size()] + "\" is one too many: " + synopsisOf(command));
    for (std::size_t i = 0; i < std::min(rows.size(), arguments.size()); ++i) {
        if (rows[i].completes == Completes::words && std::ranges::count(rows[i].words, arguments[i]) == 0)
            return usageError("\"" + arguments[i] + "\" is none of " + std::string{rows[i].help});
    }
    return std::nullopt;
}

/// The first argument of verbs that hand the others on.
void takeSubject(const CommandRow& command, CommandLine& line)
{
    if (!command.passesWordsOn)
        return;
    line.subject = std::move(line.arguments.front());
    line.arguments.erase(line.arguments.begin());
}

Expected<CommandLine, EarlyEnd> parse(const std::vector<std::string>& words)
{
    if (auto refusal = invalidText(words))
        return *refusal;
    CommandLine line;
    Options options{line};
    WordSorter sorter{options, line.arguments};
    std::vector<std::string> kept = sorter.sort(words);
    if (const auto refusal = sorter.missingValue())
        return *refusal;
    // the parser takes words off the back
    std::reverse(kept.begin(), kept.end());
    try {
        options.app().parse(std::move(kept));
    } catch (const CLI::Success& end) {
        return helpOrVersion(options.app(), end);
    } catch (const CLI::ParseError& end) {
        return sorter.missingVerb().value_or(usageError(end.what()));
    }
    if (const auto refusal = sorter.unknownOption())
        return *refusal;
    if (const auto refusal = sorter.missingVerb())
        return *refusal;
    if (const auto refusal = argumentFault(*sorter.verb(), line.arguments))
        return *refusal;
    takeSubject(*sorter.verb(), line);
    return line;
}

} // namespace

Expected<CommandLine, EarlyEnd> parseCommandLine(const std::vector<std::string>& words)
{
    auto line = parse(words);
    if (line)
        return line;
    EarlyEnd end = line.error();
    const auto options = std::ranges::find(words, "--");
    end.json = std::find(words.begin(), options, "--json") != options;
    return end;
}

} // namespace HostShell
