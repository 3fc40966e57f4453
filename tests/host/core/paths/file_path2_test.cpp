#include "kelvaris/system/file_path2.h"

#include "kelvaris/system/core_error.h"
#include "kelvaris/system/system_error.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

using namespace Kelvaris::System;

namespace {

FilePath2 pathOf(std::wstring_view text)
{
    return {text.data(), text.size()};
}

/// The paths' texts with the platform's separator between them.
std::wstring joined(std::wstring_view first, std::wstring_view second)
{
    FilePath2 path = pathOf(first);
    path /= pathOf(second);
    return path.c_str();
}

std::wstring separator()
{
    return {static_cast<wchar_t>(std::filesystem::path::preferred_separator)};
}

} // namespace

TEST(FilePath2, IsEmptyAtFirst)
{
    EXPECT_STREQ(FilePath2{}.c_str(), L"");
}

TEST(FilePath2, TakesWideTextUtf8AndString2)
{
    const std::wstring expected = L"größe/日本 😀";
    EXPECT_EQ(pathOf(expected).c_str(), expected);
    EXPECT_EQ(FilePath2{String2{u8"größe/日本 😀"}}.c_str(), expected);
    const std::u8string text = u8"größe/日本 😀";
    EXPECT_EQ((FilePath2{text.data(), text.size()}.c_str()), expected);
}

TEST(FilePath2, TakesNoMoreThanTheLength)
{
    EXPECT_STREQ((FilePath2{L"abc", 2}.c_str()), L"ab");
    EXPECT_STREQ((FilePath2{u8"abc", 2}.c_str()), L"ab");
}

TEST(FilePath2, ThrowsInvalidTextForInvalidUtf8)
{
    String2 text;
    text.assign(reinterpret_cast<const char8_t*>("a\xFF"), 2);
    try {
        FilePath2{text};
        FAIL() << "nothing was thrown";
    } catch (const SystemError& error) {
        EXPECT_EQ(error.code(), (ErrorCode2{static_cast<int>(CoreError::invalidText), core_error_category()}));
    }
}

TEST(FilePath2, CarriesWideTextThatIsNoUnicode)
{
    const wchar_t text[] = {L'a', static_cast<wchar_t>(0xD800), L'\0'};
    EXPECT_STREQ(pathOf(text).c_str(), text);
}

TEST(FilePath2, AppendsBehindASeparator)
{
    EXPECT_EQ(joined(L"a", L"b"), L"a" + separator() + L"b");
    EXPECT_EQ(joined(L"a", L"b/c"), L"a" + separator() + L"b/c");
}

TEST(FilePath2, AppendsBehindASeparatorThatIsThereWithoutAnother)
{
    EXPECT_EQ(joined(L"a/", L"b"), L"a/b");
    EXPECT_EQ(joined(L"/", L"b"), L"/b");
}

TEST(FilePath2, AppendsToTheEmptyPathWithoutASeparator)
{
    EXPECT_EQ(joined(L"", L"b"), L"b");
    EXPECT_EQ(joined(L"", L"/b"), L"/b");
}

TEST(FilePath2, AnAbsoluteComponentNeverReplacesWhatIsThere)
{
    EXPECT_EQ(joined(L"a", L"/etc/passwd"), L"a" + separator() + L"etc/passwd");
    EXPECT_EQ(joined(L"a/", L"///b"), L"a/b");
}

TEST(FilePath2, AnEmptyComponentAddsNothing)
{
    EXPECT_EQ(joined(L"a", L""), L"a");
    EXPECT_EQ(joined(L"a", L"/"), L"a");
}

TEST(FilePath2, AppendsItself)
{
    FilePath2 path = pathOf(L"a long name that does not fit into any small buffer");
    const std::wstring name = path.c_str();
    const FilePath2& itself = path;
    path /= itself;
    EXPECT_EQ(path.c_str(), name + separator() + name);
}

TEST(FilePath2, AppendGivesThePath)
{
    FilePath2 path = pathOf(L"a");
    EXPECT_EQ(&(path /= pathOf(L"b")), &path);
}

TEST(FilePath2, FilenameIsTheLastComponent)
{
    EXPECT_STREQ(pathOf(L"/a/b c.txt").filename().value().c_str(), L"b c.txt");
    EXPECT_STREQ(pathOf(L"größe").filename().value().c_str(), L"größe");
    EXPECT_STREQ(pathOf(L"a/..").filename().value().c_str(), L"..");
}

#ifndef _WIN32
TEST(FilePath2, ABackslashIsALetterOfANameHere)
{
    EXPECT_STREQ(pathOf(L"a/b\\c").filename().value().c_str(), L"b\\c");
    EXPECT_EQ(joined(L"a\\", L"\\b"), L"a\\/\\b");
}
#endif

TEST(FilePath2, APathWithoutALastComponentAnswersNoFileName)
{
    for (const wchar_t* text : {L"", L"/", L"a/", L"/a/b/"}) {
        const auto name = pathOf(text).filename();
        ASSERT_FALSE(name) << text;
        EXPECT_EQ(name.error(), (ErrorCode2{static_cast<int>(CoreError::noFileName), core_error_category()}));
    }
    EXPECT_EQ(pathOf(L"größe/").filename().error().message(),
              String2{u8"größe/: the path has no file name; put a name at the end of the path"});
}

TEST(FilePath2, PathsDifferByTheirText)
{
    EXPECT_FALSE(pathOf(L"a/b") != pathOf(L"a/b"));
    EXPECT_TRUE(pathOf(L"a/b") != pathOf(L"a//b"));
    EXPECT_TRUE(pathOf(L"a") != pathOf(L"A"));
    EXPECT_TRUE(pathOf({L"a\0b", 3}) != pathOf({L"a\0c", 3}));
}

TEST(FilePath2, MovedPathStandsInTheTarget)
{
    FilePath2 source = pathOf(L"a long name that does not fit into any small buffer");
    FilePath2 target;
    target = std::move(source);
    EXPECT_STREQ(target.c_str(), L"a long name that does not fit into any small buffer");
}
