#include "kelvaris/system/core_error.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/string2.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>

using namespace Kelvaris::System;

namespace {

ErrorCode2 noFileName(const char8_t* subject, const char8_t* reason)
{
    return {static_cast<int>(CoreError::noFileName), core_error_category(), String2{subject}, String2{reason}};
}

} // namespace

TEST(ErrorCode2, MessageIsSubjectSentenceAndReason)
{
    EXPECT_EQ(noFileName(u8"größe/", u8"it ends").message(),
              String2{u8"größe/: the path has no file name: it ends; put a name at the end of the path"});
}

TEST(ErrorCode2, MessageLeavesOutWhatIsNotKnown)
{
    EXPECT_EQ(noFileName(u8"a/", u8"").message(),
              String2{u8"a/: the path has no file name; put a name at the end of the path"});
    EXPECT_EQ(noFileName(u8"", u8"it ends").message(),
              String2{u8"the path has no file name: it ends; put a name at the end of the path"});
    EXPECT_EQ(noFileName(u8"", u8"").message(),
              String2{u8"the path has no file name; put a name at the end of the path"});
    EXPECT_EQ((ErrorCode2{2, core_error_category()}.message()),
              String2{u8"the path has no file name; put a name at the end of the path"});
}

TEST(ErrorCode2, EqualCodesHaveTheSameValueInTheSameCategoryWhateverTheyAreAbout)
{
    EXPECT_EQ(noFileName(u8"a", u8"b"), noFileName(u8"c", u8""));
    EXPECT_EQ(noFileName(u8"a", u8"b"), (ErrorCode2{2, core_error_category()}));
    EXPECT_NE((ErrorCode2{2, core_error_category()}), (ErrorCode2{3, core_error_category()}));
    EXPECT_NE((ErrorCode2{ENOENT, system_error_category()}), (ErrorCode2{ENOENT, generic_error_category()}));
}

TEST(ErrorCode2, CopiesAndMovesKeepTheWholeMessage)
{
    ErrorCode2 code = noFileName(u8"a", u8"b");
    const String2 message = code.message();
    ErrorCode2 copy{code};
    EXPECT_EQ(copy.message(), message);
    ErrorCode2 assigned{1, core_error_category()};
    assigned = copy;
    EXPECT_EQ(assigned.message(), message);
    const ErrorCode2 moved{std::move(copy)};
    EXPECT_EQ(moved.message(), message);
    EXPECT_EQ(moved.value(), 2);
    EXPECT_EQ(&moved.category(), &core_error_category());
}

TEST(ErrorCode2, StandardEnumeratorsGoToTheMatchingCategory)
{
    const ErrorCode2 code = ErrorCodeEnumConstructor<std::errc>{}(std::errc::no_such_file_or_directory);
    EXPECT_EQ(code, (ErrorCode2{ENOENT, generic_error_category()}));
    EXPECT_EQ(ErrorCodeEnumConstructor<std::io_errc>{}(std::io_errc::stream),
              (ErrorCode2{static_cast<int>(std::io_errc::stream), iostream_error_category()}));
    EXPECT_EQ(ErrorCodeEnumConstructor<std::future_errc>{}(std::future_errc::no_state),
              (ErrorCode2{static_cast<int>(std::future_errc::no_state), future_error_category()}));
}

TEST(StringIntermediary, HoldsTheMessageOfTheCode)
{
    const detail::StringIntermediary text{noFileName(u8"größe/", u8"it ends")};
    EXPECT_STREQ(text.data(), "größe/: the path has no file name: it ends; put a name at the end of the path");
    EXPECT_EQ(text.length(), std::string{text.data()}.size());
}
