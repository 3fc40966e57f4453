#include "kelvaris/system/logging/application_logger.h"

#include "kelvaris/system/application.h"
#include "kelvaris/system/core_error.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

using namespace Kelvaris::System;
using testing::ElementsAre;

namespace {

const ErrorCode2 noFileName{2, core_error_category(), String2{u8"größe/"}, String2{}};

Logging::ApplicationLogger& logger()
{
    return Application::instance()->logger();
}

} // namespace

TEST(ApplicationLogger, TakesDiagnosticLines)
{
    const LogCapture log;
    logger().diagnostic("script", "function started: größe");
    EXPECT_THAT(log.lines(), ElementsAre("diagnostic [script] function started: größe"));
}

TEST(ApplicationLogger, TakesErrorsAsTexts)
{
    const LogCapture log;
    logger().error(String{"script/function"}, String{"failed"});
    logger().error("ui", "größe");
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] failed", "error [ui] größe"));
}

TEST(ApplicationLogger, TakesErrorsAsCodes)
{
    const LogCapture log;
    logger().error("ui", noFileName);
    logger().error(String2{u8"example browser"}, noFileName);
    EXPECT_THAT(
        log.lines(),
        ElementsAre("error [ui] größe/: the path has no file name; put a name at the end of the path",
                    "error [example browser] größe/: the path has no file name; put a name at the end of the path"));
}

TEST(ApplicationLogger, ALineWithoutACategoryHasNoBrackets)
{
    const LogCapture log;
    logger().error(noFileName);
    EXPECT_THAT(log.lines(), ElementsAre("error größe/: the path has no file name; put a name at the end of the path"));
}

TEST(ApplicationLogger, KeepsTheOrderOfLines)
{
    const LogCapture log;
    logger().error("ui", "1");
    logger().diagnostic("script", "2");
    logger().error("ui", "3");
    EXPECT_THAT(log.lines(), ElementsAre("error [ui] 1", "diagnostic [script] 2", "error [ui] 3"));
}

TEST(ApplicationLogger, PassesNulsAndInvalidBytesOn)
{
    const LogCapture log;
    logger().error(String{"ui"}, String{std::string{"a\0b\xFF", 4}});
    EXPECT_THAT(log.lines(), ElementsAre((std::string{"error [ui] a\0b\xFF", 15})));
}
