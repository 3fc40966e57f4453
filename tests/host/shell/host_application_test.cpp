#include "host/shell/host_application.h"

#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/core_error.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/string2.h"
#include "tests/support/log_capture.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

using HostShell::HostApplication;
using testing::ElementsAre;

namespace {

using namespace Kelvaris::System;

HostApplication& application()
{
    return *static_cast<HostApplication*>(QCoreApplication::instance());
}

// A click on a button whose slot throws.
std::vector<std::string> linesAfterThrowing(const std::function<void()>& thrower)
{
    QPushButton button;
    QObject::connect(&button, &QPushButton::clicked, &button, thrower);
    button.show();
    const LogCapture log;
    QTest::mouseClick(&button, Qt::LeftButton);
    return log.lines();
}

} // namespace

TEST(HostApplication, LogsAnExceptionThatLeavesAnEventHandlerAndGoesOn)
{
    EXPECT_THAT(linesAfterThrowing([] { throw std::runtime_error{"bad cell"}; }), ElementsAre("error [ui] bad cell"));
}

TEST(HostApplication, LogsTheMessageOfAnErrorThatWasTakenForAValue)
{
    const ErrorCode2 code{1, core_error_category(), String2{u8"a.zip"}, String2{u8"broken"}};
    const String2 message = code.message();
    const std::string text{reinterpret_cast<const char*>(message.data()), message.length()};
    EXPECT_THAT(linesAfterThrowing([code] { throw bad_expected_access<ErrorCode2>{code}; }),
                ElementsAre("error [ui] " + text));
}

TEST(HostApplication, LogsWhatIsNoExceptionAtAll)
{
    EXPECT_THAT(linesAfterThrowing([] { throw 7; }), ElementsAre("error [ui] unknown error"));
}

TEST(HostApplication, WaitsUntilTheLastWindowIsClosed)
{
    QWidget first;
    auto* second = new QWidget;
    second->setAttribute(Qt::WA_DeleteOnClose);
    first.show();
    second->show();
    QStringList closed;
    QTimer::singleShot(0, &first, [&] {
        closed << QStringLiteral("first");
        first.close();
        QTimer::singleShot(0, second, [&] {
            closed << QStringLiteral("second");
            second->close();
        });
    });
    application().runUntilWindowsAreClosed();
    EXPECT_EQ(closed.join(QLatin1Char{' '}), QStringLiteral("first second"));
}

TEST(HostApplication, WaitsForNothingWhenNoWindowIsOpen)
{
    bool looped = false;
    QObject life;
    QTimer::singleShot(0, &life, [&] { looped = true; });
    application().runUntilWindowsAreClosed();
    EXPECT_FALSE(looped);
}
