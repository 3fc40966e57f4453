#include "kelvaris/system/date_time.h"

#include "host/core/text/text_view.h"
#include "kelvaris/system/core_error.h"

#include <gtest/gtest.h>

#include <string>

using namespace Kelvaris::System;

namespace {

/// What the text reads as; "refused" for what is no time.
std::string read(std::string_view text)
{
    const auto time = DateTime::fromXSDDateTime(Text::toString2(text));
    if (!time) {
        EXPECT_EQ(time.error(), (ErrorCode2{static_cast<int>(CoreError::invalidDateTime), core_error_category()}));
        return "refused";
    }
    return std::string{Text::narrow(time->toXSDDateTime().value())};
}

void expectKept(std::initializer_list<const char*> texts)
{
    for (const char* text : texts)
        EXPECT_EQ(read(text), text);
}

void expectRefused(std::initializer_list<const char*> texts)
{
    for (const char* text : texts)
        EXPECT_EQ(read(text), "refused") << text;
}

} // namespace

TEST(DateTime, NoTimeHasTheEmptyTextAndTheEmptyTextIsNoTime)
{
    EXPECT_EQ(DateTime{}.toXSDDateTime().value(), String2{});
    EXPECT_EQ(DateTime::fromXSDDateTime({}).value(), DateTime{});
    EXPECT_EQ(read(" \n"), "");
}

TEST(DateTime, KeepsTheWordsInWhichItWasRead)
{
    expectKept({"2026-03-01T12:30:00", "2026-03-01T12:30:00Z", "2026-03-01T12:30:00.5+01:00",
                "2026-03-01T12:30:00.000-00:00", "2026-03-01T12:30:00.123456789012345678901234567890Z"});
}

TEST(DateTime, WhiteSpaceAroundItDoesNotCount)
{
    EXPECT_EQ(read(" \t\r\n2026-03-01T12:30:00Z \n"), "2026-03-01T12:30:00Z");
}

TEST(DateTime, ReadsTheShorterFormsOfCoreProperties)
{
    expectKept({"2026", "2026-03", "2026-03-01", "2026-03-01T12:30Z", "2026-03-01T12:30+01:00"});
}

TEST(DateTime, ATimeWithoutSecondsNeedsItsZone)
{
    expectRefused({"2026-03-01T12:30", "2026-03-01T24:00Z"});
}

TEST(DateTime, MonthsHaveTheDaysThatTheyHave)
{
    expectKept({"2026-01-31", "2026-04-30", "2026-12-31"});
    expectRefused({"2026-00-01", "2026-13-01", "2026-01-00", "2026-01-32", "2026-04-31", "2026-06-31", "2026-09-31",
                   "2026-11-31", "2026-02-30"});
}

TEST(DateTime, LeapYearsHaveTheirDayAndOthersDoNot)
{
    expectKept({"2024-02-29", "2000-02-29", "2400-02-29T00:00:00"});
    expectRefused({"2026-02-29", "1900-02-29", "2100-02-29T00:00:00"});
}

TEST(DateTime, YearsMayHaveMoreThanFourDigitsAndASign)
{
    expectKept({"12026-03-01T00:00:00", "-0044-03-15T12:00:00", "123456789012345678901234567890-01-01T00:00:00",
                "-0001-02-29T00:00:00", "-0005-02-29T00:00:00"});
    expectRefused({"02026-03-01T00:00:00", "0000-03-01T00:00:00", "-0000-03-01T00:00:00", "+2026-03-01T00:00:00",
                   "-0004-02-29T00:00:00", "12100-02-29T00:00:00"});
}

TEST(DateTime, TheShorterFormsHavePlainYears)
{
    expectRefused({"12026", "-0044", "12026-03", "-0044-03-15", "12026-03-01T12:30Z"});
}

TEST(DateTime, HoursMinutesAndSecondsStayInTheirBounds)
{
    expectKept({"2026-03-01T00:00:00", "2026-03-01T23:59:59.999"});
    expectRefused({"2026-03-01T25:00:00", "2026-03-01T12:60:00", "2026-03-01T12:00:60", "2026-03-01T12:00:61Z"});
}

TEST(DateTime, HourTwentyFourIsTheMidnightThatEndsTheDay)
{
    expectKept({"2026-03-01T24:00:00", "2026-03-01T24:00:00.000Z"});
    expectRefused({"2026-03-01T24:00:01", "2026-03-01T24:01:00", "2026-03-01T24:00:00.001"});
}

TEST(DateTime, ZonesReachToFourteenHours)
{
    expectKept({"2026-03-01T12:00:00+14:00", "2026-03-01T12:00:00-14:00", "2026-03-01T12:00:00+13:59"});
    expectRefused({"2026-03-01T12:00:00+14:01", "2026-03-01T12:00:00+15:00", "2026-03-01T12:00:00+01:60",
                   "2026-03-01T12:00:00+1:00", "2026-03-01T12:00:00+0100", "2026-03-01T12:00:00z",
                   "2026-03-01T12:00:00+", "2026-03-01T12:00:00+01:", "2026-03-01T12:00:00Z+01:00"});
}

TEST(DateTime, RefusesWhatIsNoTime)
{
    expectRefused({"yesterday",
                   "26-03-01",
                   "2026-3-1",
                   "2026/03/01",
                   "2026-03-01 12:30:00",
                   "2026-03-01T",
                   "2026-03-01T12",
                   "2026-03-01T12:",
                   "2026-03-01T12:30:",
                   "2026-03-01T12:30:0",
                   "2026-03-01T12:30:00.",
                   "2026-03-01T12:30:00.Z",
                   "2026-03-01T12:30:00,5",
                   "2026-03-01T12:30:00Zx",
                   "2026-",
                   "2026-03-",
                   "-",
                   "2026-03-01t12:30:00",
                   "2026-03-01Z",
                   "2026-03-01T12 :30:00",
                   "２０２６"});
    EXPECT_EQ(read(std::string_view{"2026\0", 5}), "refused");
}

TEST(DateTime, AnErrorShowsTheText)
{
    EXPECT_EQ(DateTime::fromXSDDateTime(u8"2026-02-30").error().message(),
              String2{u8"2026-02-30: not a date and time that exists; write it as 2025-12-31T23:59:59Z"});
}

TEST(DateTime, EqualTimesHaveTheSameWords)
{
    EXPECT_EQ(DateTime::fromXSDDateTime(u8"2026").value(), DateTime::fromXSDDateTime(u8" 2026 ").value());
    EXPECT_NE(DateTime::fromXSDDateTime(u8"2026").value(), DateTime::fromXSDDateTime(u8"2026-01").value());
}
