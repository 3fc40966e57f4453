#include "host/support/function_registry.h"
#include "tests/script/loaded_module.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QString>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace Kelvaris;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Names = std::vector<std::string>;

/// What the module offers to others, as the binary tools see it.
std::string exportedSymbols()
{
    const std::string command = "nm -D --defined-only '" HOLLERWICK_MODULE "' 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string output;
    for (int character = std::fgetc(pipe); character != EOF; character = std::fgetc(pipe))
        output += static_cast<char>(character);
    EXPECT_EQ(pclose(pipe), 0) << output;
    return output;
}

bool resourceIsThere()
{
    return QFile::exists(QStringLiteral(":/hollerwick/data/example_browser_filter_options.json"));
}

class ModuleLife : public testing::Test
{
protected:
    ModuleLife()
    {
        FunctionRegistry::instance().setObserver([this](FunctionRegistry::Event event, const std::string& name) {
            (event == FunctionRegistry::Event::registered ? registered : removed).push_back(name);
            resourceAtEvents.push_back(resourceIsThere());
        });
    }
    ~ModuleLife() override { FunctionRegistry::instance().setObserver({}); }

    Names registered;
    Names removed;
    std::vector<bool> resourceAtEvents;
};

TEST_F(ModuleLife, LoadingRegistersAllFunctionsAndUnloadingRemovesThemInReverse)
{
    {
        const LoadedModule module;
        EXPECT_THAT(registered, SizeIs(23));
        EXPECT_THAT(removed, IsEmpty());
    }
    std::ranges::reverse(removed);
    EXPECT_EQ(removed, registered);
    EXPECT_THAT(FunctionRegistry::instance().functions(), IsEmpty());
}

TEST_F(ModuleLife, TheModuleCanBeLoadedAndUnloadedAgain)
{
    {
        const LoadedModule module;
    }
    const Names first = registered;
    registered.clear();
    removed.clear();
    {
        const LoadedModule module;
        EXPECT_THAT(call("_filename", {{"a/b"}}).results, ElementsAre("b"));
    }
    EXPECT_EQ(registered, first);
    std::ranges::reverse(removed);
    EXPECT_EQ(removed, first);
}

TEST_F(ModuleLife, UnloadingTakesTheModuleOutOfMemory)
{
    for (int round = 0; round < 2; ++round) {
        {
            const LoadedModule module;
            EXPECT_TRUE(isModuleMapped());
        }
        EXPECT_FALSE(isModuleMapped()) << "round " << round;
    }
}

TEST_F(ModuleLife, UnloadingTakesTheModuleOutOfMemoryAfterItsFunctionsWereUsed)
{
    {
        const TemporaryFolder folder;
        const LoadedModule module;
        call("_schematic_bundle_create", {});
        call("_create_example", {{folder.write("top.kvsch", "top")}, {folder / "example.zip"}, {"Title"}});
        call("_filename", {{}});
    }
    EXPECT_FALSE(isModuleMapped());
}

TEST_F(ModuleLife, TheModuleExportsNothing)
{
    EXPECT_EQ(exportedSymbols(), "");
}

TEST_F(ModuleLife, TheResourceComesLastAndGoesFirst)
{
    {
        const LoadedModule module;
        EXPECT_TRUE(resourceIsThere());
    }
    EXPECT_FALSE(resourceIsThere());
    EXPECT_THAT(resourceAtEvents, SizeIs(46));
    EXPECT_THAT(resourceAtEvents, Each(false));
}

TEST_F(ModuleLife, OpenSchematicBundlesDoNotSurviveTheModule)
{
    const TemporaryFolder folder;
    std::string id;
    {
        const LoadedModule module;
        id = call("_schematic_bundle_create", {}).results.at(0);
    }
    const LoadedModule again;
    EXPECT_EQ(call("_schematic_bundle_write", {{folder / "bundle.zip"}, {id}}).status, FUNC_FAILED);
}

} // namespace
