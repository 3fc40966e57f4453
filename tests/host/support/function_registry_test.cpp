#include "host/support/function_registry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace Kelvaris;
using testing::ElementsAre;

using Declaration = std::array<argType, FuncConstruct::declarationLength>;

FUNC_ERROR doNothing(const FuncArgsMinimal&, FuncResultMinimal*, YRef<MessageHandler>)
{
    return FUNC_OK;
}

constexpr Declaration oneArgument = {argTypeStringArray};

std::vector<std::string> names()
{
    std::vector<std::string> names;
    for (const RegisteredFunction& function : FunctionRegistry::instance().functions())
        names.push_back(function.name);
    return names;
}

std::unique_ptr<FuncConstruct> registered(const char* name, const Declaration& declaration = oneArgument)
{
    return std::make_unique<FuncConstruct>(name, declaration.data(), 0, 1, &doNothing);
}

class FunctionRegistryObservation : public testing::Test
{
protected:
    FunctionRegistryObservation()
    {
        FunctionRegistry::instance().setObserver([this](FunctionRegistry::Event event, const std::string& name) {
            const bool present = FunctionRegistry::instance().find(name) != nullptr;
            seen.push_back((event == FunctionRegistry::Event::registered ? "+" : "-") + name + (present ? " in" : ""));
        });
    }
    ~FunctionRegistryObservation() override { FunctionRegistry::instance().setObserver({}); }

    std::vector<std::string> seen;
};

TEST(FunctionRegistry, KeepsFunctionsInTheOrderOfRegistration)
{
    const auto zebra = registered("_zebra");
    const auto ant = registered("_ant");
    EXPECT_THAT(names(), ElementsAre("_zebra", "_ant"));
}

TEST(FunctionRegistry, ARegistrationEndsWithItsObject)
{
    const auto first = registered("_first");
    auto second = registered("_second");
    second.reset();
    EXPECT_THAT(names(), ElementsAre("_first"));
    EXPECT_EQ(FunctionRegistry::instance().find("_second"), nullptr);
}

TEST(FunctionRegistry, FindsAFunctionWithAllThatWasDeclared)
{
    constexpr Declaration declaration = {argTypeStringArray, argTypeStringArray, argTypeStringArray};
    const FuncConstruct construct{"_three", declaration.data(), 2, 3, &doNothing};

    const RegisteredFunction* found = FunctionRegistry::instance().find("_three");

    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->name, "_three");
    EXPECT_EQ(found->minimum, 2);
    EXPECT_EQ(found->maximum, 3);
    EXPECT_EQ(found->entry, &doNothing);
    EXPECT_EQ(found->arguments, std::vector<argType>(declaration.begin(), declaration.end()));
}

TEST(FunctionRegistry, FindsOnlyTheExactName)
{
    const auto function = registered("_filename");
    EXPECT_EQ(FunctionRegistry::instance().find("_Filename"), nullptr);
    EXPECT_EQ(FunctionRegistry::instance().find("_file"), nullptr);
    EXPECT_EQ(FunctionRegistry::instance().find(""), nullptr);
}

TEST(FunctionRegistry, RefusesANameThatIsTakenAndKeepsTheFirst)
{
    const auto first = registered("_twice");
    EXPECT_THROW(registered("_twice"), std::invalid_argument);
    EXPECT_THAT(names(), ElementsAre("_twice"));
}

TEST(FunctionRegistry, RefusesAnEmptyName)
{
    EXPECT_THROW(registered(""), std::invalid_argument);
    EXPECT_THAT(names(), ElementsAre());
}

TEST_F(FunctionRegistryObservation, TheObserverHearsOfAChangeOnceItHasHappened)
{
    auto function = registered("_a");
    function.reset();
    EXPECT_THAT(seen, ElementsAre("+_a in", "-_a"));
}

TEST_F(FunctionRegistryObservation, ARefusedRegistrationIsNotObserved)
{
    EXPECT_THROW(registered(""), std::invalid_argument);
    EXPECT_THAT(seen, ElementsAre());
}

} // namespace
