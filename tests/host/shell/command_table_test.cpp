#include "host/shell/command_table.h"

#include "host/shell/function_documents.h"
#include "host/shell/man_page.h"
#include "host/shell/shell_completions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

using namespace HostShell;
using testing::HasSubstr;

namespace {

std::string documentOfCommands()
{
    std::ifstream file{HOLLERWICK_SOURCE_DIR "/docs/commands.md"};
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string withoutTroff(std::string text)
{
    for (std::size_t at = text.find("\\-"); at != std::string::npos; at = text.find("\\-", at))
        text.erase(at, 1);
    return text;
}

/// Each text that presents the commands, with its name.
std::vector<std::pair<std::string, std::string>> presentations()
{
    return {{"the man page", withoutTroff(manPage())},
            {"bash", bashCompletion()},
            {"zsh", zshCompletion()},
            {"docs/commands.md", documentOfCommands()}};
}

} // namespace

TEST(CommandTable, NamesEachVerbOnce)
{
    std::set<std::string_view> names;
    for (const CommandRow& command : commandTable()) {
        EXPECT_TRUE(names.insert(command.name).second) << command.name;
        EXPECT_EQ(findCommand(command.name), &command);
        EXPECT_EQ(&commandOf(command.verb), &command);
    }
    EXPECT_EQ(findCommand("fly"), nullptr);
}

TEST(CommandTable, SpeaksInLinesWithoutAFullStopAndInSentencesWithOne)
{
    for (const CommandRow& command : commandTable()) {
        EXPECT_FALSE(command.summary.ends_with('.')) << command.name;
        EXPECT_TRUE(command.description.ends_with('.')) << command.name;
        for (const OptionRow& option : command.options)
            EXPECT_FALSE(option.help.ends_with('.')) << command.name << option.name;
    }
}

TEST(CommandTable, GivesEachVerbStatusesThatTheTableOfStatusesExplains)
{
    for (const CommandRow& command : commandTable()) {
        for (const int status : command.statuses)
            EXPECT_EQ(std::ranges::count(statusTable(), status, &StatusRow::status), 1) << command.name << status;
    }
}

TEST(CommandTable, IsWhatEveryPresentationShows)
{
    for (const auto& [name, text] : presentations()) {
        for (const CommandRow& command : commandTable()) {
            EXPECT_THAT(text, HasSubstr(std::string{command.name})) << name;
            for (const OptionRow& option : command.options)
                EXPECT_THAT(text, HasSubstr(std::string{option.name})) << name << " of " << command.name;
        }
        for (const OptionRow& option : commonOptions())
            EXPECT_THAT(text, HasSubstr(std::string{option.name})) << name;
    }
    const std::string fish = fishCompletion();
    for (const CommandRow& command : commandTable()) {
        for (const OptionRow& option : command.options)
            EXPECT_THAT(fish, HasSubstr("__fish_seen_subcommand_from " + std::string{command.name} + "' -l " +
                                        std::string{option.name.substr(2)} + " "));
    }
}

TEST(CommandTable, IsWhatManPageAndDocumentSayOfArgumentsAndStatuses)
{
    const std::string document = documentOfCommands();
    const std::string man = withoutTroff(manPage());
    for (const CommandRow& command : commandTable()) {
        EXPECT_THAT(document, HasSubstr("hollerwick-host " + synopsisOf(command))) << command.name;
        EXPECT_THAT(man, HasSubstr(std::string{command.description})) << command.name;
    }
    for (const StatusRow& status : statusTable()) {
        EXPECT_THAT(document, HasSubstr("| " + std::to_string(status.status) + " | " + std::string{status.meaning}));
        EXPECT_THAT(man, HasSubstr(std::string{status.meaning}));
    }
}

TEST(CommandTable, GoesWithTheFunctionsInManPageAndCompletions)
{
    for (const FunctionDocument& function : functionDocuments()) {
        EXPECT_THAT(manPage(), HasSubstr(function.name));
        for (const std::string& text : {bashCompletion(), zshCompletion(), fishCompletion()})
            EXPECT_THAT(text, HasSubstr(function.name));
    }
}
