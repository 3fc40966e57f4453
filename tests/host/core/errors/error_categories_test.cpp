#include "host/core/text/text_view.h"
#include "kelvaris/system/core_error.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/io/bundle/bundle_error.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"
#include "kelvaris/system/string2.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <set>
#include <string>

using namespace Kelvaris::System;
using IO::Bundle::bundle_error_category;
using IO::Bundle::BundleError;
using IO::OpcPackaging::opc_error_category;
using IO::OpcPackaging::OpcError;

namespace {

std::string sentence(const ErrorCategory2& category, int value)
{
    return std::string{Text::narrow(category.message(value))};
}

/// Each value from 1 to `last` has a sentence of its own; the values around them are unknown, and say which they are.
void expectSentences(const ErrorCategory2& category, int last)
{
    const std::string unknown = std::string{"unknown "} + category.name() + " error ";
    std::set<std::string> seen;
    for (int value = 1; value <= last; ++value) {
        const std::string text = sentence(category, value);
        EXPECT_FALSE(text.empty()) << value;
        EXPECT_FALSE(text.starts_with("unknown")) << value;
        EXPECT_FALSE(text.ends_with(".")) << text;
        EXPECT_TRUE(seen.insert(text).second) << text;
    }
    for (const int value : {-1, 0, last + 1})
        EXPECT_EQ(sentence(category, value), unknown + std::to_string(value));
}

} // namespace

TEST(ErrorCategories, EveryCoreErrorHasItsSentence)
{
    expectSentences(core_error_category(), static_cast<int>(CoreError::malformedAddress));
}

TEST(ErrorCategories, EveryOpcErrorHasItsSentence)
{
    expectSentences(opc_error_category(), static_cast<int>(OpcError::packageInUse));
}

TEST(ErrorCategories, EveryBundleErrorHasItsSentence)
{
    expectSentences(bundle_error_category(), static_cast<int>(BundleError::noRoot));
}

TEST(ErrorCategories, ValuesThatOthersRelyOnStay)
{
    EXPECT_EQ(static_cast<int>(CoreError::cancelled), 1);
    EXPECT_EQ(static_cast<int>(BundleError::notADirectory), 5);
    EXPECT_EQ(static_cast<int>(OpcError::notADirectory), 2);
}

TEST(ErrorCategories, AreOneObjectForEachDomain)
{
    const std::set<const ErrorCategory2*> all{
        &core_error_category(),   &system_error_category(), &generic_error_category(), &iostream_error_category(),
        &future_error_category(), &opc_error_category(),    &bundle_error_category(),
    };
    EXPECT_EQ(all.size(), 7u);
    EXPECT_EQ(&core_error_category(), &core_error_category());
}

TEST(ErrorCategories, HaveNames)
{
    EXPECT_STREQ(core_error_category().name(), "core");
    EXPECT_STREQ(system_error_category().name(), "system");
    EXPECT_STREQ(generic_error_category().name(), "generic");
    EXPECT_STREQ(iostream_error_category().name(), "iostream");
    EXPECT_STREQ(future_error_category().name(), "future");
    EXPECT_STREQ(opc_error_category().name(), "opc");
    EXPECT_STREQ(bundle_error_category().name(), "bundle");
}

TEST(ErrorCategories, TheSystemSpeaksForItsOwnValues)
{
    EXPECT_EQ(sentence(system_error_category(), ENOENT), std::strerror(ENOENT));
    EXPECT_EQ(sentence(system_error_category(), ENOSPC), std::strerror(ENOSPC));
    EXPECT_EQ(sentence(generic_error_category(), EACCES), std::strerror(EACCES));
    EXPECT_FALSE(sentence(system_error_category(), 123456).empty());
}

TEST(ErrorCategories, AFailureThatNobodyDescribedIsUnknown)
{
    EXPECT_EQ(sentence(system_error_category(), -1), "unknown failure");
}

TEST(ErrorCategories, StreamsAndFuturesHaveSentences)
{
    const ErrorCode2 stream = ErrorCodeEnumConstructor<std::io_errc>{}(std::io_errc::stream);
    EXPECT_EQ(&stream.category(), &iostream_error_category());
    EXPECT_EQ(Text::narrow(stream.message()), std::iostream_category().message(1));
    for (const auto value : {std::future_errc::broken_promise, std::future_errc::future_already_retrieved,
                             std::future_errc::promise_already_satisfied, std::future_errc::no_state}) {
        const ErrorCode2 code = ErrorCodeEnumConstructor<std::future_errc>{}(value);
        EXPECT_EQ(&code.category(), &future_error_category());
        EXPECT_EQ(Text::narrow(code.message()), std::future_category().message(static_cast<int>(value)));
    }
}
