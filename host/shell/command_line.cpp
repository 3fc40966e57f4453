#include "host/shell/command_line.h"

#include "host/shell/text_checks.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace HostShell {

namespace {

using Kelvaris::System::Expected;

constexpr const char* exitStatuses = "Exit status: what the function returned (0 or 1), or what the script ended with "
                                     "(1 after an uncaught error);\n2 when nothing was run, with one sentence that "
                                     "says why.";

const std::map<std::string, LogThreshold> thresholds{
    {"diagnostic", LogThreshold::diagnostic}, {"error", LogThreshold::error}, {"off", LogThreshold::off}};

EarlyEnd usageError(const std::string& sentence)
{
    return {2, sentence};
}

/// The options as they are declared, and the places that they fill.
class Options
{
public:
    explicit Options(CommandLine& line) : m_line{line}
    {
        m_app.set_help_flag("--help", "Print this help and exit");
        m_app.set_version_flag("--version", "hollerwick-host " HOLLERWICK_VERSION, "Print the version and exit");
        m_app.footer(exitStatuses);
        declareCommonOptions();
        declareVerbs();
    }

    CLI::App& app() { return m_app; }

    /// The verb of that name, or null.
    CLI::App* verb(const std::string& name)
    {
        const auto verbs = m_app.get_subcommands([&](const CLI::App* app) { return app->get_name() == name; });
        return verbs.empty() ? nullptr : verbs.front();
    }

    /// The option that `word` names, "--name" or "--name=value", when it may stand behind `verb` (null: before any).
    const CLI::Option* find(const CLI::App* verb, const std::string& word) const
    {
        if (word.compare(0, 2, "--") != 0)
            return nullptr;
        const std::string name = word.substr(0, word.find('='));
        const CLI::Option* own = verb == nullptr ? nullptr : verb->get_option_no_throw(name);
        return own != nullptr ? own : m_app.get_option_no_throw(name);
    }

private:
    void declareCommonOptions()
    {
        m_app.add_flag("--log-script-calls", m_line.logScriptCalls, "Write diagnostic lines for each script call");
        m_app
            .add_option_function<std::string>(
                "--log-level", [this](const std::string& name) { m_line.logThreshold = thresholds.at(name); },
                "Lowest level of the lines on standard error (default: diagnostic)")
            ->check(CLI::IsMember{{"diagnostic", "error", "off"}})
            ->type_name("L");
        m_app.add_option("--plugin", m_line.plugin, "The plug-in to load (default: ../lib/hollerwick/hollerwick.so)")
            ->type_name("FILE");
    }

    void declareVerbs()
    {
        CLI::App* functions = addVerb("functions", Verb::functions, "List the registered functions with their arity");
        addJson(functions);

        CLI::App* call = addVerb("call", Verb::call, "Call one function and print its results, one a line");
        addSubject(call, "NAME", "The function's name");
        call->add_option("ARG", m_shownOnly, "One argument: a text, or a JSON array of texts such as [\"a\",\"b\"]");
        addJson(call);
        addGrab(call);

        CLI::App* run = addVerb("run", Verb::run, "Run a script, in which every function is global");
        addSubject(run, "SCRIPT.js", "The script; it finds what follows in the array args");
        run->add_option("ARG", m_shownOnly, "One text of args");
        addGrab(run);

        CLI::App* console = addVerb("console", Verb::console, "Open the window for writing and running scripts");
        addGrab(console);
    }

    CLI::App* addVerb(const char* name, Verb verb, const char* description)
    {
        CLI::App* app = m_app.add_subcommand(name, description);
        app->fallthrough();
        app->set_help_flag("--help", "Print this help and exit");
        app->footer(exitStatuses);
        app->callback([this, verb] { m_line.verb = verb; });
        return app;
    }

    void addSubject(CLI::App* verb, const char* name, const char* description)
    {
        verb->add_option(name, m_line.subject, description)->required()->type_name("");
    }

    void addJson(CLI::App* verb) { verb->add_flag("--json", m_line.json, "Print one line of JSON"); }

    void addGrab(CLI::App* verb)
    {
        CLI::Option* grab =
            verb->add_option("--grab", m_line.grabDirectory, "Save a PNG of every window that opens, then close it")
                ->type_name("DIR");
        verb->add_option("--keys", m_line.keys,
                         "Type these keys first, a picture after each: names such as Tab, Ctrl+A; texts in quotes")
            ->type_name("KEYS")
            ->needs(grab);
    }

    CommandLine& m_line;
    CLI::App m_app{"Runs the script functions of a circuit simulator's plug-in.", "hollerwick-host"};

    // Arguments are told apart before the options are parsed; this stands in the help alone.
    std::vector<std::string> m_shownOnly;
};

/// Tells our options from the arguments of a function or a script, which may look like options.
class WordSorter
{
public:
    WordSorter(const Options& options, std::vector<std::string>& arguments) : m_options{options}, m_arguments{arguments}
    {
    }

    /// @return  the words for the option parser, the subject last and behind "--"
    std::vector<std::string> sort(const std::vector<std::string>& words, Options& options)
    {
        for (std::size_t i = 0; i < words.size(); ++i) {
            const std::string& word = words[i];
            const CLI::Option* option = m_onlyArguments ? nullptr : m_options.find(m_verb, word);
            if (option != nullptr)
                i += takeOption(*option, words, i);
            else if (!m_onlyArguments && word == "--")
                m_onlyArguments = true;
            else
                takeWord(word, options);
        }
        if (m_subject) {
            m_kept.emplace_back("--");
            m_kept.push_back(*m_subject);
        }
        return std::move(m_kept);
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

    void takeWord(const std::string& word, Options& options)
    {
        if (m_subject)
            m_arguments.push_back(word);
        else if (m_verb != nullptr && takesSubject() && (m_onlyArguments || word.compare(0, 1, "-") != 0))
            m_subject = word;
        else
            m_kept.push_back(word);
        if (m_verb == nullptr)
            takeVerb(word, options);
    }

    void takeVerb(const std::string& word, Options& options)
    {
        m_verb = options.verb(word);
        if (m_verb == nullptr && word.compare(0, 1, "-") != 0)
            m_unknownVerb = word;
    }

public:
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
        constexpr const char* verbs = "; the verbs are functions, call, run and console";
        if (m_verb != nullptr)
            return std::nullopt;
        if (!m_unknownVerb)
            return usageError(std::string{"a verb is missing"} + verbs);
        return usageError("there is no verb \"" + *m_unknownVerb + "\"" + verbs);
    }

private:
    bool takesSubject() const { return m_verb->get_option_no_throw("ARG") != nullptr; }

    const Options& m_options;
    std::vector<std::string>& m_arguments;
    const CLI::App* m_verb = nullptr;
    bool m_onlyArguments = false;
    std::optional<std::string> m_unknownVerb;
    std::optional<std::string> m_valueMissing;
    std::optional<std::string> m_subject;
    std::vector<std::string> m_kept;
};

EarlyEnd helpOrVersion(const CLI::App& app, const CLI::Success& end)
{
    if (dynamic_cast<const CLI::CallForVersion*>(&end) != nullptr)
        return {0, std::string{end.what()} + "\n"};
    return {0, app.help()};
}

std::optional<EarlyEnd> invalidText(const std::vector<std::string>& words)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!isValidUtf8(words[i]))
            return usageError("word " + std::to_string(i + 1) + " of the command line is not valid UTF-8");
    }
    return std::nullopt;
}

} // namespace

Expected<CommandLine, EarlyEnd> parseCommandLine(const std::vector<std::string>& words)
{
    if (auto refusal = invalidText(words))
        return *refusal;
    CommandLine line;
    Options options{line};
    WordSorter sorter{options, line.arguments};
    std::vector<std::string> kept = sorter.sort(words, options);
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
    if (const auto refusal = sorter.missingVerb())
        return *refusal;
    return line;
}

} // namespace HostShell
