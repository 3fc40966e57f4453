#include "host/core/opc/markup/target_reference.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string partOf(std::string_view source, std::string_view target)
{
    const ResolvedTarget resolved = resolveTarget(source, target);
    return resolved.isPartName() ? resolved.partName : "none";
}

TEST(TargetReference, ResolvesAgainstTheSourcePart)
{
    EXPECT_EQ(partOf("/a/b/c.xml", "d.xml"), "/a/b/d.xml");
    EXPECT_EQ(partOf("/a/b/c.xml", "d/e.xml"), "/a/b/d/e.xml");
    EXPECT_EQ(partOf("/a/b/c.xml", "../d.xml"), "/a/d.xml");
    EXPECT_EQ(partOf("/a/b/c.xml", "./d.xml"), "/a/b/d.xml");
    EXPECT_EQ(partOf("/a/b/c.xml", "/d.xml"), "/d.xml");
    EXPECT_EQ(partOf("/a/b/c.xml", "../x/../../y/./z.xml"), "/y/z.xml");
}

TEST(TargetReference, ResolvesAgainstTheRootForThePackage)
{
    EXPECT_EQ(partOf("/", "a/b.xml"), "/a/b.xml");
    EXPECT_EQ(partOf("/", "/a/b.xml"), "/a/b.xml");
}

TEST(TargetReference, StaysAtTheRootWhenItLeadsAboveIt)
{
    EXPECT_EQ(partOf("/a/b.xml", "../../../c.xml"), "/c.xml");
    EXPECT_EQ(partOf("/", "/../../c.xml"), "/c.xml");
}

TEST(TargetReference, FindsThePartWithoutQueryAndFragment)
{
    EXPECT_EQ(partOf("/a/b.xml", "c.xml?q=/x#f/../g"), "/a/c.xml");
    EXPECT_EQ(resolveTarget("/a/b.xml", "c.xml?q#f").uri, "/a/c.xml?q#f");
}

TEST(TargetReference, IsTheSourceItselfWhenThereIsNoPath)
{
    EXPECT_EQ(partOf("/a/b.xml", "#frag"), "/a/b.xml");
    EXPECT_EQ(partOf("/a/b.xml", ""), "/a/b.xml");
    EXPECT_EQ(partOf("/a/b.xml", "?q"), "/a/b.xml");
}

TEST(TargetReference, TurnsLettersBeyondAsciiIntoAUri)
{
    const ResolvedTarget resolved = resolveTarget("/", "d/\xD1\x86.xml");
    EXPECT_EQ(resolved.partName, "/d/%D1%86.xml");
    EXPECT_THAT(resolved.warning, IsEmpty());
    EXPECT_EQ(partOf("/", "d/%d1%86.xml"), "/d/%D1%86.xml");
}

TEST(TargetReference, DecodesCharactersThatNeedNoEncoding)
{
    EXPECT_EQ(partOf("/", "%61%2Exml"), "/a.xml");
}

TEST(TargetReference, ReadsBackslashesAsSlashesWithAWarning)
{
    const ResolvedTarget resolved = resolveTarget("/xl/workbook.xml", "..\\media\\a.png");
    EXPECT_EQ(resolved.partName, "/media/a.png");
    EXPECT_THAT(resolved.warning, HasSubstr("M1.28"));
}

TEST(TargetReference, EncodesCharactersThatNoUriHasWithAWarning)
{
    const ResolvedTarget blank = resolveTarget("/", "a b.xml");
    EXPECT_EQ(blank.partName, "/a%20b.xml");
    EXPECT_THAT(blank.warning, HasSubstr("M1.28"));
    EXPECT_EQ(partOf("/", "100%.xml"), "/100%25.xml");
    EXPECT_EQ(partOf("/", "a[1].xml"), "/a%5B1%5D.xml");
}

TEST(TargetReference, WarnsOfFragmentsThatAreNoneButFindsThePart)
{
    const ResolvedTarget resolved = resolveTarget("/xl/drawings/drawing1.xml", "#'Another Sheet'!A1");
    EXPECT_EQ(resolved.partName, "/xl/drawings/drawing1.xml");
    EXPECT_EQ(resolved.uri, "/xl/drawings/drawing1.xml#'Another%20Sheet'!A1");
    EXPECT_THAT(resolved.warning, HasSubstr("M1.28"));
}

TEST(TargetReference, DropsWhiteSpaceAroundTheTarget)
{
    EXPECT_EQ(partOf("/", " a.xml\n"), "/a.xml");
}

TEST(TargetReference, CarriesATargetThatIsNoPartNameWithItsFault)
{
    for (const char* target : {"a//b.xml", "a/", "a.", "a%2Fb", "a%5Cb", "b/c../", "..", "."}) {
        const ResolvedTarget resolved = resolveTarget("/x/y.xml", target);
        EXPECT_FALSE(resolved.isPartName()) << target;
        EXPECT_THAT(resolved.partName, IsEmpty());
        EXPECT_THAT(resolved.uri, Not(IsEmpty()));
    }
}

TEST(TargetReference, SaysWhenItIsThePackageItself)
{
    EXPECT_THAT(resolveTarget("/", "").fault, HasSubstr("the package itself"));
    EXPECT_THAT(resolveTarget("/a.xml", "/").fault, HasSubstr("the package itself"));
    EXPECT_THAT(resolveTarget("/", "#x").fault, HasSubstr("the package itself"));
}

TEST(InternalTarget, IsNoAbsoluteUri)
{
    for (const char* target :
         {"http://x/y", "file:///a", "mailto:a@b", "pack:x", "C:\\a", "urn:a", " http://x", "a+b.c-1:d"})
        EXPECT_THAT(internalTargetFault(target), HasSubstr("M1.29")) << target;
}

TEST(InternalTarget, HasNoAuthority)
{
    for (const char* target : {"//host/a", "\\\\host\\a", "/\\host", "//"})
        EXPECT_THAT(internalTargetFault(target), HasSubstr("M1.29")) << target;
}

TEST(InternalTarget, MayHoldColonsThatEndNoScheme)
{
    for (const char* target : {"a/b:c", "./a:b", "/a:b", ":a", "1a:b", "a_b:c", "#a:b", "", "\xD1\x86:b"})
        EXPECT_EQ(internalTargetFault(target), "") << target;
}

TEST(TargetText, LeadsToItsPartFromAnySource)
{
    for (const char* name : {"/a/b.xml", "/a:b", "/%20"}) {
        EXPECT_EQ(internalTargetFault(targetText(name)), "");
        EXPECT_EQ(partOf("/x/y/z.xml", targetText(name)), name);
    }
}

} // namespace
