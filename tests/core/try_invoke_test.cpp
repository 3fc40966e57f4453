#include "kelvaris/system/try_invoke.h"

#include "kelvaris/system/core_error.h"
#include "kelvaris/system/string2.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

using namespace Kelvaris::System;
using IO::Bundle::BundleError;

namespace {

/// Somebody else's category, whose values mean nothing to the host.
class ForeignCategory : public std::error_category
{
public:
    const char* name() const noexcept override { return "foreign"; }
    std::string message(int) const override { return "foreign"; }
};

const ErrorCode2 unknownFailure{-1, system_error_category()};

template <class Exception>
ErrorCode2 codeFor(const Exception& exception)
{
    const auto result = tryInvoke([&exception]() -> int { throw exception; });
    EXPECT_FALSE(result);
    return result.error();
}

} // namespace

TEST(TryInvoke, TurnsErrcIntoAGenericError)
{
    EXPECT_EQ(codeFor(std::errc::permission_denied), (ErrorCode2{EACCES, generic_error_category()}));
}

TEST(TryInvoke, TurnsIoErrcIntoAStreamError)
{
    EXPECT_EQ(codeFor(std::io_errc::stream),
              (ErrorCode2{static_cast<int>(std::io_errc::stream), iostream_error_category()}));
}

TEST(TryInvoke, TurnsFutureErrcIntoAFutureError)
{
    EXPECT_EQ(codeFor(std::future_errc::no_state),
              (ErrorCode2{static_cast<int>(std::future_errc::no_state), future_error_category()}));
}

TEST(TryInvoke, MapsAStandardErrorByItsCategoryAndKeepsTheValue)
{
    EXPECT_EQ(codeFor(std::system_error{7, std::generic_category()}), (ErrorCode2{7, generic_error_category()}));
    EXPECT_EQ(codeFor(std::system_error{7, std::system_category()}), (ErrorCode2{7, system_error_category()}));
    EXPECT_EQ(codeFor(std::system_error{7, std::iostream_category()}), (ErrorCode2{7, iostream_error_category()}));
    EXPECT_EQ(codeFor(std::system_error{7, std::future_category()}), (ErrorCode2{7, future_error_category()}));
}

TEST(TryInvoke, MapsTheErrorsThatDeriveFromAStandardErrorLikeIt)
{
    EXPECT_EQ(codeFor(std::ios_base::failure{"a"}),
              (ErrorCode2{static_cast<int>(std::io_errc::stream), iostream_error_category()}));
}

TEST(TryInvoke, AStandardErrorOfAForeignCategoryIsTheUnknownFailureAndNotItsValue)
{
    const ForeignCategory foreign;
    EXPECT_EQ(codeFor(std::system_error{7, foreign}), unknownFailure);
}

TEST(TryInvoke, GivesTheCodeOfASystemError)
{
    const ErrorCode2 code = codeFor(SystemError{BundleError::notADirectory});
    EXPECT_EQ(code, (ErrorCode2{5, IO::Bundle::bundle_error_category()}));
    EXPECT_EQ(code.message(), (ErrorCode2{5, IO::Bundle::bundle_error_category()}.message()));
}

TEST(TryInvoke, GivesTheErrorThatAMissingValueCarries)
{
    const ErrorCode2 code{3, core_error_category(), String2{u8"subject"}, String2{u8"reason"}};
    EXPECT_EQ(codeFor(bad_expected_access<ErrorCode2>{code}).message(), code.message());
    EXPECT_EQ(codeFor(bad_expected_access<ErrorCode2>{code}), code);
}

TEST(TryInvoke, AnythingElseIsTheUnknownFailure)
{
    EXPECT_EQ(codeFor(std::runtime_error{"a"}), unknownFailure);
    EXPECT_EQ(codeFor(std::bad_alloc{}), unknownFailure);
    EXPECT_EQ(codeFor(RuntimeError{"a"}), unknownFailure);
    EXPECT_EQ(codeFor(bad_expected_access<void>{}), unknownFailure);
    EXPECT_EQ(codeFor(42), unknownFailure);
}

TEST(TryInvoke, GivesTheValueWhenNothingIsThrown)
{
    EXPECT_EQ(tryInvoke([] { return 42; }).value(), 42);
    EXPECT_EQ(*tryInvoke([] { return std::make_unique<int>(42); }).value(), 42);
    EXPECT_TRUE(tryInvoke([] {}));
}

TEST(TryInvoke, AnExpectedIsNotWrappedAgain)
{
    const auto value = tryInvoke([]() -> Expected<int, ErrorCode2> { return 42; });
    static_assert(std::is_same_v<decltype(value), const Expected<int, ErrorCode2>>);
    EXPECT_EQ(value.value(), 42);
    const auto error = tryInvoke([]() -> Expected<int, ErrorCode2> { return unknownFailure; });
    EXPECT_EQ(error.error(), unknownFailure);
}

TEST(TryInvoke, AFailureOfNothingIsAFailure)
{
    const auto result = tryInvoke([] { throw SystemError{BundleError::noRoot}; });
    static_assert(std::is_same_v<decltype(result), const Expected<void, ErrorCode2>>);
    EXPECT_EQ(result.error(), (ErrorCode2{9, IO::Bundle::bundle_error_category()}));
}
