#include "kelvaris/system/expected.h"

#include "kelvaris/system/core_error.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/string2.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <utility>

using namespace Kelvaris::System;

namespace {

using Text = Expected<std::string, ErrorCode2>;
using Pointer = Expected<std::unique_ptr<int>, ErrorCode2>;
using Nothing = Expected<void, ErrorCode2>;

const ErrorCode2 failure{3, core_error_category(), String2{u8"subject"}, String2{u8"reason"}};
const std::string longText = "a text that is too long for any small buffer";

Nothing outcome(bool works)
{
    if (works)
        return {};
    return failure;
}

/// The first byte of an object.
template <class T>
bool firstByte(const T& object)
{
    bool flag = false;
    std::memcpy(&flag, static_cast<const void*>(&object), sizeof(flag));
    return flag;
}

/// Counts how many of it are alive.
struct Living
{
    explicit Living(int& count) : m_count{&count} { ++*m_count; }
    Living(const Living& other) : m_count{other.m_count} { ++*m_count; }
    Living& operator=(const Living&) = delete;
    ~Living() { --*m_count; }

private:
    int* m_count;
};

} // namespace

TEST(Expected, TheFlagStandsFirst)
{
    EXPECT_TRUE(firstByte(Text{longText}));
    EXPECT_FALSE(firstByte(Text{failure}));
    EXPECT_TRUE(firstByte(Nothing{}));
    EXPECT_FALSE(firstByte(Nothing{failure}));
}

TEST(Expected, TheValueStandsBehindTheFlag)
{
    const Expected<int, ErrorCode2> number{42};
    EXPECT_EQ(reinterpret_cast<const char*>(&*number) - reinterpret_cast<const char*>(&number),
              static_cast<std::ptrdiff_t>(alignof(ErrorCode2)));
    const Expected<int, ErrorCode2> error{failure};
    EXPECT_EQ(reinterpret_cast<const char*>(&error.error()) - reinterpret_cast<const char*>(&error),
              static_cast<std::ptrdiff_t>(alignof(ErrorCode2)));
}

TEST(Expected, GivesItsValue)
{
    Text text{longText};
    EXPECT_TRUE(text.hasValue());
    EXPECT_TRUE(text);
    EXPECT_EQ(text.value(), longText);
    EXPECT_EQ(*text, longText);
    EXPECT_EQ(text->size(), longText.size());
    EXPECT_EQ(std::as_const(text).value(), longText);
    EXPECT_EQ(std::move(text).value(), longText);
}

TEST(Expected, GivesItsError)
{
    const Text text{failure};
    EXPECT_FALSE(text.hasValue());
    EXPECT_FALSE(text);
    EXPECT_EQ(text.error(), failure);
    EXPECT_EQ(text.error().message(), failure.message());
}

TEST(Expected, TheValueOfAnErrorThrowsTheError)
{
    Text text{failure};
    try {
        (void)text.value();
        FAIL() << "nothing was thrown";
    } catch (const bad_expected_access<ErrorCode2>& error) {
        EXPECT_EQ(error.error(), failure);
    }
    EXPECT_THROW((void)std::as_const(text).value(), bad_expected_access<ErrorCode2>);
    EXPECT_THROW((void)std::move(text).value(), bad_expected_access<void>);
    EXPECT_THROW(Nothing{failure}.value(), bad_expected_access<ErrorCode2>);
    EXPECT_NO_THROW(Nothing{}.value());
}

TEST(Expected, HoldsTypesThatOnlyMove)
{
    Pointer pointer{std::make_unique<int>(42)};
    Pointer moved{std::move(pointer)};
    EXPECT_TRUE(pointer.hasValue());
    const std::unique_ptr<int> taken = std::move(moved).value();
    EXPECT_EQ(*taken, 42);
}

TEST(Expected, AssignmentCrossesBetweenValueAndError)
{
    const Text value{longText};
    const Text error{failure};
    Text target{std::string{"before"}};
    target = error;
    EXPECT_EQ(target.error(), failure);
    target = value;
    EXPECT_EQ(target.value(), longText);
    target = Text{failure};
    EXPECT_EQ(target.error(), failure);
    target = Text{failure};
    EXPECT_EQ(target.error(), failure);
    target = Text{longText};
    EXPECT_EQ(target.value(), longText);
}

TEST(Expected, AssignmentToItselfChangesNothing)
{
    Text text{longText};
    const Text& same = text;
    text = same;
    EXPECT_EQ(text.value(), longText);
    Text error{failure};
    Text& alias = error;
    error = std::move(alias);
    EXPECT_EQ(error.error().message(), failure.message());
}

TEST(Expected, VoidCrossesBetweenSuccessAndError)
{
    Nothing nothing;
    nothing = Nothing{failure};
    EXPECT_EQ(nothing.error(), failure);
    const Nothing copy{nothing};
    EXPECT_EQ(copy.error().message(), failure.message());
    nothing = Nothing{};
    EXPECT_TRUE(nothing);
}

TEST(Expected, DestroysWhicheverMemberIsThere)
{
    int alive = 0;
    {
        Expected<Living, ErrorCode2> value{Living{alive}};
        const Expected<Living, ErrorCode2> copy{value};
        EXPECT_EQ(alive, 2);
        value = Expected<Living, ErrorCode2>{failure};
        EXPECT_EQ(alive, 1);
        value = copy;
        EXPECT_EQ(alive, 2);
    }
    EXPECT_EQ(alive, 0);
}

TEST(Expected, ValueOrGivesTheFallbackInThePlaceOfAnError)
{
    const Text value{longText};
    const Text error{failure};
    EXPECT_EQ(value.valueOr("b"), longText);
    EXPECT_EQ(error.valueOr("b"), "b");
    EXPECT_EQ(*Pointer{std::make_unique<int>(42)}.valueOr(nullptr), 42);
    EXPECT_EQ(Pointer{failure}.valueOr(nullptr), nullptr);
}

TEST(Expected, AndThenCallsTheStepWithTheValueMoved)
{
    Pointer pointer{std::make_unique<int>(42)};
    const Text text = pointer.andThen([](std::unique_ptr<int> number) -> Text { return std::to_string(*number); });
    EXPECT_EQ(text.value(), "42");
    EXPECT_EQ(*pointer, nullptr);
}

TEST(Expected, AndThenNeverCallsItsStepOnAnErrorAndTheErrorComesOutEqual)
{
    bool called = false;
    Pointer pointer{failure};
    const Text text = pointer.andThen([&called](std::unique_ptr<int>) -> Text {
        called = true;
        return longText;
    });
    EXPECT_FALSE(called);
    EXPECT_EQ(text.error(), failure);
    EXPECT_EQ(text.error().message(), failure.message());
    EXPECT_EQ(pointer.error(), failure);
}

TEST(Expected, AndThenOfVoidCallsItsStepWithoutAValue)
{
    Nothing success = outcome(true);
    EXPECT_EQ(success.andThen([]() -> Text { return longText; }).value(), longText);
    bool called = false;
    Nothing error = outcome(false);
    const Text text = error.andThen([&called]() -> Text {
        called = true;
        return longText;
    });
    EXPECT_FALSE(called);
    EXPECT_EQ(text.error(), failure);
}

TEST(Expected, TheFirstFailureOfAChainIsCarriedToItsEnd)
{
    int steps = 0;
    const auto count = [&steps](std::string text) -> Text {
        ++steps;
        return text;
    };
    const auto fail = [](const std::string&) -> Text { return failure; };
    EXPECT_EQ(Text{longText}.andThen(count).andThen(fail).andThen(count).error(), failure);
    EXPECT_EQ(steps, 1);
}
