#include "authoring/guarded.h"
#include "host/support/function_registry.h"
#include "kelvaris/system/date_time.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/temporary_path2.h"
#include "kelvaris/system/qt/text_bridge.h"
#include "kelvaris/system/url.h"
#include "script/func_registration.h"
#include "tests/faults/allocation_faults.h"
#include "tests/script/recorded_call.h"
#include "tests/support/environment_variable.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Kelvaris;
using namespace Kelvaris::System;

namespace {

constexpr std::size_t everyAllocation = 0;

enum class Outcome { success, failure, exception };

/// Calls `action`, which tells whether it succeeded, once for each of its allocations, which fails that time.
/// @return  how often it failed; once it has let an exception out, no more
int failuresWithoutMemory(const std::function<bool()>& action)
{
    const auto attempt = [&] {
        try {
            return action() ? Outcome::success : Outcome::failure;
        } catch (...) {
            return Outcome::exception;
        }
    };
    AllocationFaults::count(everyAllocation);
    const Outcome rehearsal = attempt();
    const std::uint64_t calls = AllocationFaults::calls();
    AllocationFaults::clear();
    EXPECT_NE(rehearsal, Outcome::exception);
    int failures = 0;
    for (std::uint64_t call = 0; call < calls; ++call) {
        AllocationFaults::fail(call, everyAllocation);
        const Outcome outcome = attempt();
        AllocationFaults::clear();
        EXPECT_NE(outcome, Outcome::exception) << "allocation " << call << " of " << calls;
        failures += outcome == Outcome::failure ? 1 : 0;
    }
    return failures;
}

const char* const longText = "a text that is too long to stand in the object of a string itself";

String2 longText2()
{
    return String2{u8"/a text that is too long to stand in the object of a string itself"};
}

} // namespace

TEST(ScarceMemory, IsAnErrorOfTheOperationAndNoException)
{
    const Url url{longText2()};
    const FilePath2 path{longText2()};
    const String2 date{u8"2026-11-21T12:34:56.123456789012345678901234567890Z"};
    const DateTime time = DateTime::fromXSDDateTime(date).value();
    const QString qtText = QString::fromUtf8(longText);
    const String2 text = longText2();
    const String2 noDate = longText2();

    EXPECT_GT(failuresWithoutMemory([&] { return url.toLocalFile(UrlLocalFileOptions::keepRoot).hasValue(); }), 0);
    EXPECT_GT(failuresWithoutMemory([&] { return path.filename().hasValue(); }), 0);
    EXPECT_GT(failuresWithoutMemory([&] { return DateTime::fromXSDDateTime(date).hasValue(); }), 0);
    EXPECT_GT(failuresWithoutMemory([&] { return DateTime::fromXSDDateTime(noDate).hasValue(); }), 0);
    EXPECT_GT(failuresWithoutMemory([&] { return time.toXSDDateTime().hasValue(); }), 0);
    EXPECT_GT(failuresWithoutMemory([&] { return qStringToUTF8(qtText).hasValue(); }), 0);
    EXPECT_EQ(failuresWithoutMemory([&] { return utf8ToQString(text).hasValue(); }), 0);
}

TEST(ScarceMemory, LeavesNoTemporaryDirectoryBehind)
{
    const TemporaryFolder folder;
    const EnvironmentVariable directory{"TMPDIR", folder.path()};
    std::vector<IO::TemporaryPath2> all; // they go when there is memory again
    all.reserve(100);
    EXPECT_GT(failuresWithoutMemory([&] {
                  auto made = IO::TemporaryPath2::createTemporaryDirectory();
                  if (made)
                      all.push_back(*std::move(made));
                  return made.hasValue();
              }),
              0);
    all.clear();
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(ScarceMemory, DoesNotLetAnExceptionOutOfAScriptFunctionThatFails)
{
    constexpr auto fail = [](Script::FuncCallFrame) -> FUNC_ERROR { throw std::runtime_error{longText}; };
    const Script::FuncRegistration registration{"_failing", {argTypeStringArray}, 0, 1, fail};
    const auto entry = FunctionRegistry::instance().find("_failing")->entry;
    const RecordedArgs arguments;
    const YRef<MessageHandler> messages;
    EXPECT_GT(failuresWithoutMemory([&] { return entry(arguments, nullptr, messages) == FUNC_OK; }), 0);
}

TEST(ScarceMemory, DoesNotLetAnExceptionOutOfASlotThatFails)
{
    EXPECT_GT(failuresWithoutMemory([] { return runGuarded([] { throw std::runtime_error{longText}; }); }), 0);
}
