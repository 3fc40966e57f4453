#include "kelvaris/system/application.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Kelvaris::System;

TEST(Application, IsOneAndNeverNull)
{
    ASSERT_NE(Application::instance(), nullptr);
    EXPECT_EQ(Application::instance(), Application::instance());
}

TEST(Application, DoesNotLogScriptCallsUntilItIsTold)
{
    EXPECT_FALSE(ApplicationSettings{}.logScriptCalls());
}

TEST(Application, SettingsAreReadAfresh)
{
    Application& application = *Application::instance();
    const ApplicationSettings& settings = std::as_const(application).settings();
    application.settings().setLogScriptCalls(true);
    EXPECT_TRUE(settings.logScriptCalls());
    application.settings().setLogScriptCalls(false);
    EXPECT_FALSE(settings.logScriptCalls());
}
