#include "host/support/function_registry.h"
#include "tests/script/loaded_module.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using namespace Kelvaris;

/// Name, fewest arguments, most arguments, declared arguments: one function a line, in the order of registration.
std::string declarations()
{
    std::string lines;
    for (const RegisteredFunction& function : FunctionRegistry::instance().functions()) {
        const auto declared = std::ranges::count(function.arguments, argTypeStringArray);
        lines += function.name + " " + std::to_string(function.minimum) + " " + std::to_string(function.maximum) + " " +
                 std::to_string(declared) + "\n";
    }
    return lines;
}

TEST(Declarations, NamesAritiesAndOrderAreThoseThatScriptsRelyOn)
{
    const LoadedModule module;
    EXPECT_EQ(declarations(), "_example_browser_2 2 2 2\n"
                              "_create_examples_bundle_editor 0 1 1\n"
                              "_create_example_bundle_editor 0 1 1\n"
                              "_create_temporary_directory 0 0 1\n"
                              "_unpack_content_bundle 2 2 2\n"
                              "_content_bundle_targets 2 2 2\n"
                              "_parent_path 1 1 1\n"
                              "_filename 1 1 1\n"
                              "_proto_scriptable_bundle_editor 0 1 1\n"
                              "_proto_package_browser 0 1 1\n"
                              "_proto_examples_browser2 0 1 1\n"
                              "_proto_example_browser 0 1 1\n"
                              "_bundle_test 1 1 1\n"
                              "_bundle_viewer 1 1 1\n"
                              "_schematic_bundle_create 0 0 1\n"
                              "_schematic_bundle_set_root 2 2 2\n"
                              "_schematic_bundle_add_descendant 4 4 4\n"
                              "_schematic_bundle_write 2 2 2\n"
                              "_schematic_bundle_close 1 1 1\n"
                              "_schematic_bundle_clear_all 0 0 1\n"
                              "_schematic_bundle_helper_identify_descedants 2 2 2\n"
                              "_create_example 3 6 6\n"
                              "_create_examples 2 2 2\n");
}

TEST(Declarations, EveryDeclarationArrayIsPaddedWithEmptyPlaces)
{
    const LoadedModule module;
    for (const RegisteredFunction& function : FunctionRegistry::instance().functions()) {
        EXPECT_EQ(function.arguments.size(), 32U) << function.name;
        const auto declared = static_cast<std::size_t>(std::max(function.maximum, 1));
        for (std::size_t index = 0; index < function.arguments.size(); ++index)
            EXPECT_EQ(function.arguments[index], index < declared ? argTypeStringArray : argTypeNone) << function.name;
    }
}

} // namespace
