#include "host/core/opc/markup/media_type_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using testing::HasSubstr;

TEST(MediaTypeText, TakesTypesWithAndWithoutParameters)
{
    for (const char* text : {"text/plain", "application/vnd.a-b+xml", "a/b;c=d", "a/b;c=d;e=f", "a/b;c=\"d;e, (f)\"",
                             "a/b;c=\"\\\"\"", "a/b;c=\"\"", "!#$%&'*+-.^_`|~/0", "A/B", "a/b;c=\"d e\""})
        EXPECT_EQ(mediaTypeFault(text), "") << text;
}

// RFC 2616 lets white space stand between what is separated anyway; the standard forbids it inside the pieces alone.
TEST(MediaTypeText, TakesBlanksInFrontOfAndBehindASemicolon)
{
    EXPECT_EQ(mediaTypeFault("text/plain; charset=utf-8"), "");
    EXPECT_EQ(mediaTypeFault("text/plain ;charset=utf-8"), "");
}

TEST(MediaTypeText, RefusesWhatIsNoMediaType)
{
    for (const char* text :
         {"", "text", "/", "text/", "/plain", "a/b/c", "a/b;", "a/b;c", "a/b;c=", "a/b;=d", "a/b;c=\"d", "a/b,c/d",
          "a/b;c=d;", "a/[b]", "a/b;c=\"d\"e", "\xC3\xA9/b", "a/b;c=d e=f", "a/b c"})
        EXPECT_THAT(mediaTypeFault(text), HasSubstr("ISO/IEC 29500-2 M1.1")) << text;
    EXPECT_THAT(mediaTypeFault("text"), HasSubstr("M1.13"));
}

TEST(MediaTypeText, RefusesWhiteSpaceAroundAndInside)
{
    for (const char* text : {" text/plain", "text/plain ", "text/plain\t", "text /plain", "text/ plain", "a/b;c =d",
                             "a/b;c= d", "text/plain\n", "te xt/plain"})
        EXPECT_THAT(mediaTypeFault(text), HasSubstr("M1.14")) << text;
}

TEST(MediaTypeText, RefusesComments)
{
    for (const char* text : {"text/plain(comment)", "text/plain (comment)", "(c)text/plain", "a/b;c=d(e)"})
        EXPECT_THAT(mediaTypeFault(text), HasSubstr("M1.15")) << text;
}

TEST(MediaTypeText, RefusesParametersOfTheStandardsOwnTypes)
{
    for (const char* text : {"application/vnd.openxmlformats-package.relationships+xml;a=b",
                             "application/vnd.openxmlformats-package.core-properties+xml;charset=utf-8",
                             "Application/VND.openxmlformats-package.digital-signature-origin;a=b"})
        EXPECT_THAT(mediaTypeFault(text), HasSubstr("M1.22")) << text;
    EXPECT_EQ(mediaTypeFault("application/vnd.openxmlformats-package.relationships+xml"), "");
}

TEST(MediaTypeText, ComparesTypesInAnyCaseAndParametersAsTheyStand)
{
    EXPECT_TRUE(isSameMediaType("Text/HTML", "text/html"));
    EXPECT_TRUE(isSameMediaType("text/html;a=B", "TEXT/html;a=B"));
    EXPECT_FALSE(isSameMediaType("text/html;a=B", "text/html;a=b"));
    EXPECT_FALSE(isSameMediaType("text/html", "text/html;a=b"));
    EXPECT_EQ(mediaTypeEssence("text/html ;a=b"), "text/html");
}

} // namespace
