#include "kelvaris/system/url.h"

#include "host/core/text/text_view.h"
#include "kelvaris/system/core_error.h"

#include <gtest/gtest.h>

#include <string>

using namespace Kelvaris::System;

namespace {

using enum UrlLocalFileOptions;

/// The local file as UTF-8, or the value of the core error.
std::string localFile(std::string_view text, UrlLocalFileOptions options = relativePath)
{
    const auto path = Url{Text::toString2(text)}.toLocalFile(options);
    if (path)
        return Text::toUtf8(path->c_str());
    EXPECT_EQ(&path.error().category(), &core_error_category());
    return "core " + std::to_string(path.error().value());
}

std::string message(std::string_view text)
{
    return std::string{Text::narrow(Url{Text::toString2(text)}.toLocalFile(relativePath).error().message())};
}

} // namespace

TEST(Url, ThePartNameBecomesARelativePath)
{
    EXPECT_EQ(localFile("/content/a.kvsch"), "content/a.kvsch");
    EXPECT_EQ(localFile("/a"), "a");
}

TEST(Url, ThePartNameIsPercentDecoded)
{
    EXPECT_EQ(localFile("/content/a%20b.txt"), "content/a b.txt");
    EXPECT_EQ(localFile("/content/100%25%23%3f%2B%26%22%27.txt"), "content/100%#?+&\"'.txt");
    EXPECT_EQ(localFile("/content/gr%C3%B6%c3%9fe.txt"), "content/größe.txt");
    EXPECT_EQ(localFile("/content/%E6%97%A5%E6%9C%AC/%F0%9F%98%80"), "content/日本/😀");
}

TEST(Url, ThePartNameIsDecodedOnce)
{
    EXPECT_EQ(localFile("/a%2520b"), "a%20b");
}

TEST(Url, APlusSignIsNoBlank)
{
    EXPECT_EQ(localFile("/a+b&c"), "a+b&c");
}

TEST(Url, UnicodeInAPartNameStays)
{
    EXPECT_EQ(localFile("/größe/日本"), "größe/日本");
}

TEST(Url, QueryAndFragmentOfAPartNameTakeNoPart)
{
    EXPECT_EQ(localFile("/a.txt?b=c#d"), "a.txt");
    EXPECT_EQ(localFile("/a.txt#d?e"), "a.txt");
    EXPECT_EQ(localFile("/a.txt#%"), "a.txt");
}

TEST(Url, ThePackageItselfIsTheEmptyRelativePath)
{
    EXPECT_EQ(localFile("/"), "");
}

TEST(Url, ARawPathIsUnchanged)
{
    for (const char* path : {"content/a b.txt", "content/100%.txt", "a%20b", "a%2Fb", "a#b", "a?b=c", "a+b&c",
                             "content/größe/日本 😀", "a/b:c", "", "12:30.txt", "a b:c", "größe:x"}) {
        EXPECT_EQ(localFile(path), path);
        EXPECT_EQ(localFile(path, keepRoot), path);
    }
}

TEST(Url, KeepRootKeepsTheSeparatorAtTheBeginning)
{
    EXPECT_EQ(localFile("/content/a%20b.txt", keepRoot), "/content/a b.txt");
}

TEST(Url, FileUrlsAreAbsolutePathsWithEveryOption)
{
    for (const auto options : {fileUrl, keepRoot, relativePath}) {
        EXPECT_EQ(localFile("file:///home/a%20b.txt", options), "/home/a b.txt");
        EXPECT_EQ(localFile("FILE:/home/a", options), "/home/a");
        EXPECT_EQ(localFile("file://LocalHost/home/gr%C3%B6%C3%9Fe?q#f", options), "/home/größe");
    }
}

TEST(Url, FileUrlsOfOtherMachinesOrWithoutAnAbsolutePathDenoteNoLocalFile)
{
    EXPECT_EQ(localFile("file://server/share/a"), "core 3");
    EXPECT_EQ(localFile("file:a/b"), "core 3");
    EXPECT_EQ(localFile("file:"), "core 3");
    EXPECT_EQ(localFile("file://localhost"), "core 3");
}

TEST(Url, OtherSchemesDenoteNoLocalFile)
{
    for (const char* text : {"http://kelvaris.example/a", "mailto:a@b", "urn:x", "C:/a", "x-1.+y:/a"}) {
        EXPECT_EQ(localFile(text), "core 3") << text;
        EXPECT_EQ(localFile(text, keepRoot), "core 3") << text;
    }
}

TEST(Url, AnAuthorityDenotesNoLocalFile)
{
    EXPECT_EQ(localFile("//server/share"), "core 3");
    EXPECT_EQ(localFile("///a"), "core 3");
}

TEST(Url, WithoutASchemeNothingIsAFileUrl)
{
    EXPECT_EQ(localFile("/content/a", fileUrl), "core 3");
    EXPECT_EQ(localFile("content/a", fileUrl), "core 3");
}

TEST(Url, PercentEncodingOfNothingIsMalformed)
{
    for (const char* text : {"/a%", "/a%2", "/a%zz", "/a%2g", "/a%-1", "/a%+1", "/a% 1", "/%%"})
        EXPECT_EQ(localFile(text), "core 9") << text;
}

TEST(Url, APercentEncodedSeparatorIsMalformed)
{
    EXPECT_EQ(localFile("/a%2Fb"), "core 9");
    EXPECT_EQ(localFile("/%2fetc/passwd"), "core 9");
    EXPECT_EQ(localFile("file:///a%2Fb"), "core 9");
}

TEST(Url, PercentEncodingOfInvalidTextOrANulIsInvalidText)
{
    EXPECT_EQ(localFile("/a%FF"), "core 5");
    EXPECT_EQ(localFile("/a%C3"), "core 5");
    EXPECT_EQ(localFile("/a%ED%A0%80"), "core 5");
    EXPECT_EQ(localFile("/a%00b"), "core 5");
}

TEST(Url, InvalidTextInARawPathIsInvalidText)
{
    EXPECT_EQ(localFile("content/a\xFF"), "core 5");
    EXPECT_EQ(localFile(std::string_view{"a\0b", 3}), "core 5");
}

TEST(Url, ErrorsShowTheTextAndTheReason)
{
    EXPECT_EQ(message("http://kelvaris.example/a"),
              "http://kelvaris.example/a: the address is not that of a local file: its scheme is not \"file\"; copy "
              "the file to this computer first");
    EXPECT_EQ(message("file://server/a"), "file://server/a: the address is not that of a local file: it names another "
                                          "machine; copy the file to this computer first");
    EXPECT_EQ(message("/a%2"),
              "/a%2: the address is malformed: a \"%\" without two hexadecimal digits; write a \"%\" as "
              "\"%25\", and a \"/\" as it is");
    EXPECT_EQ(message("/a%00b"), "/a%00b: not valid Unicode text: it holds a NUL; write the text in UTF-8");
}

TEST(Url, KeepsItsText)
{
    EXPECT_EQ(Url{String2{u8"/a%20b#c"}}.text(), String2{u8"/a%20b#c"});
}
