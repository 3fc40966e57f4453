#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/core_error.h"
#include "kelvaris/system/exception2.h"
#include "kelvaris/system/runtime_error.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/system_error.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

using namespace Kelvaris::System;
using IO::Bundle::BundleError;
using IO::OpcPackaging::OpcError;

namespace {

std::string messageOf(const ErrorCode2& code)
{
    const String2 text = code.message();
    return {reinterpret_cast<const char*>(text.data()), text.length()};
}

} // namespace

TEST(BadExpectedAccess, BothSayTheSameFixedTextAndNotThatOfTheError)
{
    const ErrorCode2 code{1, core_error_category(), String2{u8"subject"}, String2{u8"reason"}};
    EXPECT_STREQ(bad_expected_access<void>{}.what(), "bad expected access");
    EXPECT_STREQ(bad_expected_access<ErrorCode2>{code}.what(), "bad expected access");
}

TEST(BadExpectedAccess, CarriesTheErrorWithItsWholeMessage)
{
    const ErrorCode2 code{1, core_error_category(), String2{u8"subject"}, String2{u8"reason"}};
    const bad_expected_access<ErrorCode2> error{code};
    EXPECT_EQ(error.error(), code);
    EXPECT_EQ(messageOf(error.error()), messageOf(code));
}

TEST(BadExpectedAccess, IsCaughtAsItsBase)
{
    static_assert(std::is_base_of_v<std::exception, bad_expected_access<void>>);
    static_assert(std::is_base_of_v<bad_expected_access<void>, bad_expected_access<ErrorCode2>>);
    EXPECT_THROW((throw bad_expected_access<ErrorCode2>{ErrorCode2{1, core_error_category()}}),
                 bad_expected_access<void>);
}

TEST(Exceptions, SayTheirText)
{
    EXPECT_STREQ(Exception2{"größe"}.what(), "größe");
    EXPECT_STREQ(RuntimeError{"a"}.what(), "a");
    static_assert(std::is_base_of_v<std::exception, Exception2>);
    static_assert(std::is_base_of_v<Exception2, RuntimeError>);
    static_assert(std::is_base_of_v<RuntimeError, SystemError>);
}

TEST(SystemError, SaysTheMessageOfItsCode)
{
    const ErrorCode2 code{3, core_error_category(), String2{u8"größe"}, String2{u8"reason"}};
    const SystemError error{code};
    EXPECT_EQ(error.what(), messageOf(code));
    EXPECT_EQ(error.code(), code);
}

TEST(SystemError, IsMadeOfAnEnumeratorOfBundlesOrPackages)
{
    const SystemError bundle{BundleError::notADirectory};
    EXPECT_EQ(bundle.code(), (ErrorCode2{5, IO::Bundle::bundle_error_category()}));
    EXPECT_EQ(bundle.what(), messageOf(ErrorCode2{5, IO::Bundle::bundle_error_category()}));

    const SystemError opc{OpcError::notADirectory};
    EXPECT_EQ(opc.code(), (ErrorCode2{2, IO::OpcPackaging::opc_error_category()}));
    EXPECT_EQ(opc.what(), messageOf(ErrorCode2{2, IO::OpcPackaging::opc_error_category()}));
}

TEST(SystemError, IsCaughtByWhoeverWantsOnlyTheText)
{
    try {
        throw SystemError{BundleError::noRoot};
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "the bundle has no root schematic yet; set the root schematic first");
    }
}
