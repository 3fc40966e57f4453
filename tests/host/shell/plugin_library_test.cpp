#include "host/shell/plugin_library.h"

#include "host/support/function_registry.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using HostShell::PluginLibrary;

namespace {

std::string refusal(const std::string& path)
{
    const auto plugin = PluginLibrary::load(QString::fromStdString(path));
    return plugin ? "loaded" : plugin.error().text;
}

} // namespace

TEST(PluginLibrary, SaysWhichFileIsMissing)
{
    const TemporaryFolder folder;
    const std::string path = (folder / "not here.so").string();
    EXPECT_EQ(refusal(path), "there is no plug-in " + path);
}

TEST(PluginLibrary, IsFoundBesideTheProgramAndReallyUnloadedEachTime)
{
    const auto& functions = Kelvaris::FunctionRegistry::instance().functions();
    // this test program lies where the program does
    for (int time = 0; time < 2; ++time) {
        auto plugin = PluginLibrary::load({});
        ASSERT_TRUE(plugin) << plugin.error().text;
        EXPECT_EQ(functions.size(), 23U);
        plugin->reset();
        EXPECT_EQ(functions.size(), 0U);
    }
}

TEST(PluginLibrary, SaysWhyAFileIsNoLibrary)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("text.so", std::string(1000, 'x')).string();
    EXPECT_THAT(refusal(path), testing::HasSubstr(path));
    EXPECT_THAT(refusal(path), testing::HasSubstr("invalid ELF header"));
}

TEST(PluginLibrary, TakesADirectoryForNoPlugin)
{
    const TemporaryFolder folder;
    EXPECT_EQ(refusal(folder.path().string()), "there is no plug-in " + folder.path().string());
}
