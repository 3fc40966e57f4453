#include "kelvaris/system/string.h"

#include "kelvaris/system/core_error.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/system_error.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace Kelvaris::System;

namespace {

constexpr const char* invalidBytes = "a\xFF\xC3";

/// The code of what `callable` throws.
template <class Callable>
ErrorCode2 codeThrownBy(Callable callable)
{
    try {
        callable();
    } catch (const SystemError& error) {
        return error.code();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {0, core_error_category()};
}

const ErrorCode2 invalidText{static_cast<int>(CoreError::invalidText), core_error_category()};

} // namespace

TEST(String, IsEmptyAtFirst)
{
    EXPECT_EQ(String{}.size(), 0u);
    EXPECT_STREQ(String{}.toLegacyUtf8().c_str(), "");
}

TEST(String, TakesEveryFormOfTheSameText)
{
    const std::string expected = "z\xC3\xB6 \xF0\x9F\x98\x80";
    EXPECT_EQ(String{"zö 😀"}.toLegacyUtf8(), expected);
    EXPECT_EQ(String{u8"zö 😀"}.toLegacyUtf8(), expected);
    EXPECT_EQ(String{std::u8string{u8"zö 😀"}}.toLegacyUtf8(), expected);
    EXPECT_EQ(String{std::string{"zö 😀"}}.toLegacyUtf8(), expected);
    EXPECT_EQ(String{std::wstring{L"zö 😀"}}.toLegacyUtf8(), expected);
}

TEST(String, SizeCountsBytesWithoutTheTerminator)
{
    EXPECT_EQ(String{"ö"}.size(), 2u);
    static_assert(std::is_same_v<decltype(String{}.size()), std::uint64_t>);
}

TEST(String, ByteViewShowsExactlyTheBytes)
{
    const String text{"aö"};
    const ByteArrayView view = text.byteView();
    ASSERT_EQ(view.length(), 3u);
    EXPECT_EQ(view.data()[0], std::byte{'a'});
    EXPECT_EQ(view.data()[1], std::byte{0xC3});
    EXPECT_EQ(view.data()[2], std::byte{0xB6});
}

TEST(String, KeepsNulBytesAmongTheText)
{
    const String text{std::string{"a\0b", 3}};
    EXPECT_EQ(text.size(), 3u);
    EXPECT_EQ(text.toLegacyUtf8(), (std::string{"a\0b", 3}));
    EXPECT_EQ(text.toStdWString(), (std::wstring{L"a\0b", 3}));
}

TEST(String, EndsInANulForWhoReadsItAsACString)
{
    const String text{"abc"};
    EXPECT_EQ(text.c_str()[text.size()], u8'\0');
    EXPECT_EQ(text.toStdStringView(), u8"abc");
}

TEST(String, AppendGrowsInPlaceAndGivesItself)
{
    String text{"a"};
    EXPECT_EQ(&text.append(u8"ö").append(u8""), &text);
    EXPECT_EQ(text.toLegacyUtf8(), "aö");
}

TEST(String, GivesInvalidBytesBackUnchanged)
{
    EXPECT_EQ(String{invalidBytes}.toLegacyUtf8(), invalidBytes);
}

TEST(String, WideTextOfInvalidBytesThrowsInvalidTextAndShowsThem)
{
    const ErrorCode2 code = codeThrownBy([] { (void)String{invalidBytes}.toStdWString(); });
    EXPECT_EQ(code, invalidText);
    EXPECT_EQ(code.message(), String2{u8"a\\xFF\\xC3: not valid Unicode text; write the text in UTF-8"});
}

TEST(String, HalfASurrogatePairThrowsInvalidText)
{
    const ErrorCode2 code = codeThrownBy([] { String{std::wstring{L'a', static_cast<wchar_t>(0xD800)}}; });
    EXPECT_EQ(code, invalidText);
    EXPECT_EQ(code.message(), String2{u8"a\\xD800: not valid Unicode text; write the text in UTF-8"});
}

TEST(String, MessageAboutALongInvalidTextShowsOnlyItsBeginning)
{
    const std::string text = std::string(200, 'a') + "\xFF";
    const ErrorCode2 code = codeThrownBy([&text] { (void)String{text}.toStdWString(); });
    const std::u8string expected = std::u8string(100, u8'a') + u8"...: not valid Unicode text; write the text in UTF-8";
    EXPECT_EQ(code.message(), String2{expected.c_str()});
}

TEST(String, WideTextComesBackThroughUtf8)
{
    const std::wstring text = L"\\\\server\\größe\\日本語\\😀";
    EXPECT_EQ(String{text}.toStdWString(), text);
}

TEST(String, DerivesFromObjectWithAVirtualDestructor)
{
    static_assert(std::is_base_of_v<Object, String>);
    static_assert(std::has_virtual_destructor_v<Object>);
}
