#include "host/shell/function_help.h"

#include "host/shell/plugin_library.h"
#include "tests/host/shell/test_functions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using Kelvaris::FunctionRegistry;

namespace {

class FunctionHelpOfThePlugin : public testing::Test
{
protected:
    FunctionHelpOfThePlugin() { EXPECT_TRUE(m_plugin.hasValue()); }

    static FunctionHelp help(const char* name) { return helpOf(*FunctionRegistry::instance().find(name)); }

private:
    Kelvaris::System::Expected<std::unique_ptr<PluginLibrary>, PluginError> m_plugin = PluginLibrary::load({});
};

} // namespace

TEST_F(FunctionHelpOfThePlugin, TellsEveryFunctionWithAsManyArgumentsAsItTakes)
{
    ASSERT_EQ(FunctionRegistry::instance().functions().size(), 23U);
    for (const auto& function : FunctionRegistry::instance().functions()) {
        const FunctionHelp told = helpOf(function);
        EXPECT_FALSE(told.markdown.isEmpty()) << function.name;
        EXPECT_EQ(told.required.size(), function.minimum) << function.name;
        const int commas = told.signature.count(QLatin1Char{','});
        EXPECT_EQ(function.maximum == 0 ? 0 : commas + 1, function.maximum) << function.name;
    }
}

TEST_F(FunctionHelpOfThePlugin, HasTheNamesOfTheArgumentsAndTheTextWithoutPictures)
{
    const FunctionHelp example = help("_create_example");
    EXPECT_EQ(example.signature.toStdString(),
              "_create_example(files, output, title[, description[, manufacturer[, keywords]]])");
    EXPECT_EQ(example.required,
              (QStringList{QStringLiteral("files"), QStringLiteral("output"), QStringLiteral("title")}));
    EXPECT_THAT(example.markdown.toStdString(), testing::StartsWith("Packs a design into an example bundle."));
    EXPECT_FALSE(help("_create_example_bundle_editor").markdown.contains(QStringLiteral("![")));
}

TEST(FunctionHelp, NumbersTheArgumentsOfAFunctionThatIsNotTold)
{
    const TestFunctions functions;
    const FunctionHelp help = helpOf(*FunctionRegistry::instance().find("test_join"));
    EXPECT_EQ(help.signature.toStdString(), "test_join(argument1[, argument2[, argument3]])");
    EXPECT_EQ(help.required, QStringList{QStringLiteral("argument1")});
    EXPECT_EQ(help.markdown, QString{});
}
