#include "host/core/text/text_view.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"
#include "kelvaris/system/io/opc_packaging/opc_package_uri.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>
#include <string>

namespace {

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::HasSubstr;

std::string textOf(const OpcPackageUri& uri)
{
    const auto text = uri.toString();
    if (text)
        return std::string{Text::narrow(*text)};
    EXPECT_EQ(text.error(), (ErrorCode2{static_cast<int>(OpcError::invalidPartName), opc_error_category()}));
    const String2 message = text.error().message();
    return "error: " + std::string{Text::narrow(message)};
}

OpcPackagePartUri fromPath(const wchar_t* path)
{
    return OpcPackagePartUri{FilePath2{path, std::wcslen(path)}};
}

TEST(OpcPackageUri, IsThePackageItselfByDefault)
{
    EXPECT_EQ(textOf(OpcPackageUri{}), "/");
}

TEST(OpcPackagePartUri, TakesTextWithALeadingSlashAsItStands)
{
    EXPECT_EQ(textOf(OpcPackagePartUri{L"/content/a%20b.txt"}), "/content/a%20b.txt");
}

TEST(OpcPackagePartUri, MakesAPartNameOfARawPath)
{
    EXPECT_EQ(textOf(OpcPackagePartUri{L"content\\a b\\100%.txt"}), "/content/a%20b/100%25.txt");
    EXPECT_EQ(textOf(OpcPackagePartUri{L"content/\x4EBA.txt"}), "/content/%E4%BA%BA.txt");
    EXPECT_EQ(textOf(OpcPackagePartUri{String2{u8"a\\\u00FC"}}), "/a/%C3%BC");
}

TEST(OpcPackagePartUri, GivesTheSamePartForTheTextThatItGave)
{
    for (const wchar_t* path : {L"a b", L"100%", L"a#b?c", L"\x00FC\x4EBA", L"a%20b", L"+&'\""}) {
        const auto text = OpcPackagePartUri{path}.toString().value();
        const std::wstring wide = Text::toWide(Text::narrow(text));
        EXPECT_EQ(textOf(OpcPackagePartUri{wide.c_str()}), Text::narrow(text));
    }
}

TEST(OpcPackagePartUri, MakesSegmentsOfTheComponentsOfAPath)
{
    EXPECT_EQ(textOf(fromPath(L"a/b c.txt")), "/a/b%20c.txt");
}

TEST(OpcPackagePartUri, TakesNoAbsolutePath)
{
    EXPECT_THAT(textOf(fromPath(L"/a/b")), HasSubstr("M1.3"));
}

#ifndef _WIN32
// There the backslash is an ordinary character of a file's name, and no part name can hold one.
TEST(OpcPackagePartUri, TakesNoFileNameWithABackslash)
{
    EXPECT_THAT(textOf(fromPath(L"a\\b")), HasSubstr("M1.7"));
}
#endif

TEST(OpcPackagePartUri, CarriesAnInvalidNameAndShowsItInEachError)
{
    for (const wchar_t* text : {L"a/../b", L"", L"a.", L"/a//b", L"/a b", L"a/", L"\\a"}) {
        const OpcPackagePartUri uri{text};
        EXPECT_THAT(textOf(uri), HasSubstr("error: '" + Text::toUtf8(text) + "'"));
        EXPECT_FALSE(uri.toUri());
    }
}

TEST(OpcPackagePartUri, ShowsControlCharactersSoThatTheyBreakNoLine)
{
    EXPECT_THAT(textOf(OpcPackagePartUri{L"a\nb"}), HasSubstr("'a\\x0Ab'"));
}

TEST(OpcPackagePartUri, CarriesTextThatIsNoUnicode)
{
    const wchar_t loneSurrogate[] = {L'a', static_cast<wchar_t>(0xD800), L'\0'};
    EXPECT_THAT(textOf(OpcPackagePartUri{loneSurrogate}), HasSubstr("not valid Unicode"));
    EXPECT_THAT(textOf(fromPath(loneSurrogate)), HasSubstr("not valid Unicode"));
    String2 invalid;
    invalid.assign(reinterpret_cast<const char8_t*>("\xFF"), 1);
    EXPECT_THAT(textOf(OpcPackagePartUri{invalid}), HasSubstr("not valid Unicode"));
}

TEST(OpcPackagePartUri, GivesAUrlThatDecodesToTheRawPath)
{
    const auto url = OpcPackagePartUri{L"content/a b%.txt"}.toUri().value();
    EXPECT_EQ(Text::narrow(url.text()), "/content/a%20b%25.txt");
    const auto path = url.toLocalFile(UrlLocalFileOptions::relativePath).value();
    EXPECT_STREQ(path.c_str(), L"content/a b%.txt");
}

TEST(OpcPackagePartUri, ShortensAVeryLongNameInItsError)
{
    const std::wstring name = std::wstring(5000, L'n') + L".";
    EXPECT_LT(textOf(OpcPackagePartUri{name.c_str()}).size(), 1000U);
}

} // namespace
