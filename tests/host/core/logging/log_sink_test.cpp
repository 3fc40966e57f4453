#include "host/core/logging/log_sink.h"

#include "kelvaris/system/application.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

#include <atomic>
#include <stdexcept>
#include <thread>

using namespace Kelvaris::System;
using namespace Kelvaris::System::Logging;
using testing::ElementsAre;

namespace {

ApplicationLogger& logger()
{
    return Application::instance()->logger();
}

/// Sets a sink for the time of a test.
class SinkForNow
{
public:
    explicit SinkForNow(LogSink sink) : m_before{setLogSink(std::move(sink))} {}
    ~SinkForNow() { setLogSink(std::move(m_before)); }

    SinkForNow(const SinkForNow&) = delete;
    SinkForNow& operator=(const SinkForNow&) = delete;

private:
    LogSink m_before;
};

} // namespace

TEST(LogSink, LinesGoToStandardErrorAtFirst)
{
    testing::internal::CaptureStderr();
    logger().error("ui", "größe {} %v");
    logger().diagnostic("script", "b");
    logger().error(ErrorCode2{-1, system_error_category()});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "error [ui] größe {} %v\ndiagnostic [script] b\nerror unknown failure\n");
}

TEST(LogSink, GetsLevelCategoryAndMessageApart)
{
    std::vector<LogLine> lines;
    const SinkForNow sink{[&lines](const LogLine& line) { lines.push_back(line); }};
    logger().error("ui", "a");
    logger().diagnostic("script", "b");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].level, LogLevel::error);
    EXPECT_EQ(lines[0].category, "ui");
    EXPECT_EQ(lines[0].message, "a");
    EXPECT_EQ(lines[1].level, LogLevel::diagnostic);
}

TEST(LogSink, SettingASinkGivesTheOneBefore)
{
    EXPECT_FALSE(setLogSink([](const LogLine&) {}));
    EXPECT_TRUE(setLogSink({}));
    EXPECT_FALSE(setLogSink({}));
}

TEST(LogSink, TheEmptySinkIsStandardErrorAgain)
{
    {
        const LogCapture log;
    }
    testing::internal::CaptureStderr();
    logger().error("ui", "a");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "error [ui] a\n");
}

TEST(LogSink, WhatASinkThrowsIsDroppedAndTheNextLineComes)
{
    int calls = 0;
    const SinkForNow sink{[&calls](const LogLine&) {
        ++calls;
        throw std::runtime_error{"the disk is full"};
    }};
    EXPECT_NO_THROW(logger().error("ui", "a"));
    EXPECT_NO_THROW(logger().error("ui", "b"));
    EXPECT_EQ(calls, 2);
}

TEST(LogSink, LinesComeFromAnyThreadWhileSinksComeAndGo)
{
    std::atomic<int> seen = 0;
    const SinkForNow outermost{[&seen](const LogLine&) { ++seen; }};
    constexpr int many = 1000;
    std::thread other{[] {
        for (int i = 0; i < many; ++i)
            logger().diagnostic("qt/js", "a");
    }};
    for (int i = 0; i < many; ++i)
        const SinkForNow inner{[&seen](const LogLine&) { ++seen; }};
    other.join();
    EXPECT_EQ(seen, many);
}

TEST(LogSink, ASinkMaySetAnother)
{
    const LogCapture log;
    const SinkForNow sink{[calls = std::string(100, 'x')](const LogLine& line) {
        setLogSink([](const LogLine&) {});
        // what the sink holds is still there
        EXPECT_EQ(calls.size(), 100u);
        EXPECT_EQ(line.message, "a");
    }};
    logger().error("ui", "a");
    logger().error("ui", "b");
}

TEST(LogSink, LinesBelowTheLevelAreDroppedWhateverTheSink)
{
    const LogCapture log;
    setLogLevel(LogLevel::error);
    logger().diagnostic("script", "dropped");
    logger().error("ui", "kept");
    setLogLevel(LogLevel::diagnostic);
    logger().diagnostic("script", "kept");
    EXPECT_THAT(log.lines(), ElementsAre("error [ui] kept", "diagnostic [script] kept"));
}

TEST(LogCapture, CapturesNestAndRestore)
{
    const LogCapture outer;
    {
        const LogCapture inner;
        logger().error("ui", "a");
        EXPECT_THAT(inner.lines(), ElementsAre("error [ui] a"));
    }
    logger().error("ui", "b");
    EXPECT_THAT(outer.lines(), ElementsAre("error [ui] b"));
}
