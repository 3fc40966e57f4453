#include "authoring/guarded.h"

#include "kelvaris/system/core_error.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

using namespace Kelvaris::System;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Guarded : public testing::Test
{
protected:
    LogCapture log;
};

} // namespace

TEST_F(Guarded, AnErrorOfTheHostIsLoggedAsItsSentence)
{
    const ErrorCode2 error{static_cast<int>(CoreError::cancelled), core_error_category()};
    const Expected<int, ErrorCode2> none = error;
    EXPECT_FALSE(runGuarded([&] { (void)none.value(); }));
    const String2 sentence = error.message();
    EXPECT_THAT(log.lines(), ElementsAre("error [ui] " + std::string{reinterpret_cast<const char*>(sentence.data()),
                                                                     sentence.length()}));
}

TEST_F(Guarded, AnExceptionIsLoggedAsItsText)
{
    EXPECT_FALSE(runGuarded([] { throw std::runtime_error{"the disk is gone"}; }));
    EXPECT_THAT(log.lines(), ElementsAre("error [ui] the disk is gone"));
}

TEST_F(Guarded, WhatIsNoExceptionIsLoggedToo)
{
    EXPECT_FALSE(runGuarded([] { throw 7; }));
    EXPECT_THAT(log.lines(), ElementsAre("error [ui] unknown error"));
}

TEST_F(Guarded, ASlotGetsAllArgumentsOfItsSignalOrNone)
{
    std::string seen;
    guarded([&] { seen += "none"; })(1, 2);
    guarded([&](int first, int second) { seen += " " + std::to_string(first) + std::to_string(second); })(1, 2);
    EXPECT_EQ(seen, "none 12");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(Guarded, ASlotThatThrowsRunsAgainTheNextTime)
{
    int calls = 0;
    const auto slot = guarded([&](bool fails) {
        ++calls;
        if (fails)
            throw std::runtime_error{"once"};
    });
    slot(true);
    slot(false);
    EXPECT_EQ(calls, 2);
    EXPECT_THAT(log.lines(), ElementsAre("error [ui] once"));
}
