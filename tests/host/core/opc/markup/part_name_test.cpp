#include "host/core/opc/markup/part_name.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using testing::HasSubstr;
using namespace std::string_literals;

auto breaks(const char* rule)
{
    return HasSubstr("ISO/IEC 29500-2 "s + rule + ": ");
}

std::string fromRaw(std::string_view path)
{
    const PartName name = partNameFromRawPath(path);
    return name.isValid() ? name.text : "invalid " + name.text;
}

std::string fromItem(std::string_view item, bool isUtf8 = true)
{
    const PartName name = partNameFromItemName(item, isUtf8);
    return name.isValid() ? name.text : "no part";
}

TEST(PartName, TakesWhatTheStandardAllows)
{
    for (const char* name : {"/a", "/a/b.xml", "/a.b.c", "/...a", "/a%20b", "/%C3%A9", "/!$&'()*+,;=:@-._~", "/%e4",
                             "/_rels/.rels", "/A/a/A", "/a%25b"})
        EXPECT_EQ(partNameFault(name), "") << name;
}

TEST(PartName, IsNotEmpty)
{
    EXPECT_THAT(partNameFault(""), breaks("M1.1"));
}

TEST(PartName, HasNoEmptySegment)
{
    EXPECT_THAT(partNameFault("/a//b"), breaks("M1.3"));
    EXPECT_THAT(partNameFault("//a"), breaks("M1.3"));
}

TEST(PartName, BeginsWithASlash)
{
    EXPECT_THAT(partNameFault("a/b"), breaks("M1.4"));
}

TEST(PartName, DoesNotEndWithASlash)
{
    EXPECT_THAT(partNameFault("/a/"), breaks("M1.5"));
    EXPECT_THAT(partNameFault("/"), breaks("M1.5"));
}

TEST(PartName, HoldsNothingThatMustBePercentEncoded)
{
    for (const char* name : {"/a b", "/a\\b", "/[Content_Types].xml", "/a?b", "/a#b", "/a%", "/a%2", "/a%zz",
                             "/\xC3\xA9", "/a\"b", "/a<b", "/a|b", "/a^b", "/a`b", "/a{b", "/a\tb", "/a\x7F"})
        EXPECT_THAT(partNameFault(name), breaks("M1.6")) << name;
    EXPECT_THAT(partNameFault("/a\0b"s), breaks("M1.6"));
}

TEST(PartName, HoldsNoPercentEncodedSlashOrBackslash)
{
    for (const char* name : {"/a%2Fb", "/a%2fb", "/a%5Cb", "/a%5cb"})
        EXPECT_THAT(partNameFault(name), breaks("M1.7")) << name;
}

TEST(PartName, HoldsNoPercentEncodedUnreservedCharacter)
{
    for (const char* name : {"/%41", "/%7a", "/%30", "/%2D", "/%2E", "/%5F", "/%7E", "/%2e%2e"})
        EXPECT_THAT(partNameFault(name), breaks("M1.8")) << name;
}

TEST(PartName, HasNoSegmentThatEndsWithADot)
{
    EXPECT_THAT(partNameFault("/a./b"), breaks("M1.9"));
    EXPECT_THAT(partNameFault("/a/b."), breaks("M1.9"));
}

TEST(PartName, HasNoSegmentOfDotsAlone)
{
    for (const char* name : {"/.", "/..", "/a/../b", "/...", "/a/./b"})
        EXPECT_THAT(partNameFault(name), breaks("M1.10")) << name;
}

TEST(PartName, IsCarriedWithItsFaultWhenItIsInvalid)
{
    const PartName name = partNameFromText("/a//b");
    EXPECT_FALSE(name.isValid());
    EXPECT_EQ(name.text, "/a//b");
    EXPECT_THAT(name.fault, breaks("M1.3"));
}

TEST(PartNameOfRawPath, TakesBackslashesAndSlashesAsSeparators)
{
    EXPECT_EQ(fromRaw("content\\a/b.txt"), "/content/a/b.txt");
}

TEST(PartNameOfRawPath, EncodesEverySegmentInFullThePercentSignIncluded)
{
    EXPECT_EQ(fromRaw("a b"), "/a%20b");
    EXPECT_EQ(fromRaw("100%.txt"), "/100%25.txt");
    EXPECT_EQ(fromRaw("a%20b"), "/a%2520b");
    EXPECT_EQ(fromRaw("#?[]\"<>^`{|}"), "/%23%3F%5B%5D%22%3C%3E%5E%60%7B%7C%7D");
    EXPECT_EQ(fromRaw("\xC3\xBC/\xE4\xBA\xBA/\xF0\x9F\x98\x80"), "/%C3%BC/%E4%BA%BA/%F0%9F%98%80");
}

TEST(PartNameOfRawPath, KeepsWhatASegmentMayHoldAsItStands)
{
    EXPECT_EQ(fromRaw("a-._~!$&'()*+,;=:@Z9"), "/a-._~!$&'()*+,;=:@Z9");
}

TEST(PartNameOfRawPath, DropsSegmentsOfOneDot)
{
    EXPECT_EQ(fromRaw("./a/./b"), "/a/b");
    EXPECT_EQ(fromRaw(".\\a"), "/a");
}

TEST(PartNameOfRawPath, IsInvalidWithEmptyOrUpwardSegmentsAndWithDotsAtTheEnd)
{
    for (const char* path :
         {"", ".", "./.", "..", "../a", "a/../b", "a//b", "a/", "\\a", "\\\\a\\b", "a.", "a./b", "...", "C:\\.."})
        EXPECT_EQ(fromRaw(path), "invalid "s + path);
}

TEST(PartNameOfRawPath, IsInvalidWithControlCharactersAndBytesThatAreNoUtf8)
{
    for (const auto& path : {"a\nb"s, "a\0b"s, "a\x7F"s, "a\xFF"s, "\xC3"s})
        EXPECT_EQ(fromRaw(path), "invalid " + path);
}

TEST(PartNameOfRawPath, TakesNamesOf200Characters)
{
    EXPECT_EQ(fromRaw(std::string(200, 'n')), "/" + std::string(200, 'n'));
}

TEST(PartNameOfFilePath, HasNoPlaceForABackslashThatIsAnOrdinaryCharacter)
{
    EXPECT_EQ(partNameFromFilePath("a\\b", '\\').text, "/a/b");
    EXPECT_THAT(partNameFromFilePath("a\\b", '/').fault, breaks("M1.7"));
    EXPECT_EQ(partNameFromFilePath("a/b c", '/').text, "/a/b%20c");
}

TEST(PartNameOfItem, IsTheItemsNameBehindASlash)
{
    EXPECT_EQ(fromItem("a/b.xml"), "/a/b.xml");
    EXPECT_EQ(fromItem("a%20b.xml"), "/a%20b.xml");
}

TEST(PartNameOfItem, EncodesWhatIsBeyondAsciiWhenTheNameIsUtf8)
{
    EXPECT_EQ(fromItem("d/\xD1\x86.xml"), "/d/%D1%86.xml");
    EXPECT_EQ(fromItem("d/\xD1\x86.xml", false), "no part");
    EXPECT_EQ(fromItem("d/\xFF.xml"), "no part");
}

TEST(PartNameOfItem, IsNoPartWhenTheItemsNameMakesNone)
{
    for (const char* item : {"", "a b.xml", "a\\b.xml", "/a.xml", "a/", "a//b", "a.", "..", "../a", "a/../b", "a%2Fb",
                             "%41.xml", "[Content_Types].xml", "[trash]/0000.dat", "a%zz", "C:\\a"})
        EXPECT_EQ(fromItem(item), "no part") << item;
    EXPECT_EQ(partNameFromItemName("a b.xml", false).text, "a b.xml");
}

TEST(PartNameKey, IsEqualForNamesThatDifferInAsciiCaseAlone)
{
    EXPECT_EQ(partNameKey("/Word/Document.XML"), partNameKey("/word/document.xml"));
    EXPECT_EQ(partNameKey("/%D1%86"), partNameKey("/%d1%86"));
    EXPECT_NE(partNameKey("/a1"), partNameKey("/a01"));
}

TEST(PartNameExtension, IsWhatStandsBehindTheLastDotOfTheLastSegment)
{
    EXPECT_EQ(extensionOf("/a.b/c.tar.GZ"), "GZ");
    EXPECT_EQ(extensionOf("/a.b/c"), "");
    EXPECT_EQ(extensionOf("/_rels/.rels"), "rels");
}

TEST(RelationshipsPartName, IsKnownInAnyCase)
{
    for (const char* name : {"/_rels/.rels", "/_RELS/.Rels", "/a/_rels/b.xml.rels", "/a/_Rels/b.RELS"})
        EXPECT_TRUE(isRelationshipsPartName(name)) << name;
    for (const char* name : {"", "/", "/.rels", "/a/b.rels", "/_rels/a", "/x_rels/a.rels", "/_rels", "/a/_rels/.rels",
                             "/_rels/a/b.rels", "_rels/.rels"})
        EXPECT_FALSE(isRelationshipsPartName(name)) << name;
}

TEST(RelationshipsPartName, LeadsToItsSourceAndBack)
{
    for (const auto& [source, name] :
         {std::pair{"/", "/_rels/.rels"}, {"/b.xml", "/_rels/b.xml.rels"}, {"/a/b.xml", "/a/_rels/b.xml.rels"}}) {
        EXPECT_EQ(relationshipsPartNameOf(source), name);
        EXPECT_EQ(sourceOfRelationshipsPart(name), source);
    }
    EXPECT_EQ(sourceOfRelationshipsPart("/a/b.xml"), std::nullopt);
}

TEST(RelationshipsPartName, OfARelationshipsPartHasASourceThatTellsSo)
{
    const auto source = sourceOfRelationshipsPart("/_rels/_rels/.rels.rels");
    ASSERT_EQ(source, "/_rels/.rels");
    EXPECT_TRUE(isRelationshipsPartName(*source));
}

std::string pieceOf(std::string_view itemName)
{
    const auto piece = pieceNameOf(itemName);
    if (!piece)
        return "whole";
    return std::string{piece->itemName} + " " + std::to_string(piece->number) + (piece->isLast ? " last" : "");
}

TEST(PieceName, TellsItemNumberAndEnd)
{
    EXPECT_EQ(pieceOf("a/b.xml/[0].piece"), "a/b.xml 0");
    EXPECT_EQ(pieceOf("a.xml/[12].last.piece"), "a.xml 12 last");
    EXPECT_EQ(pieceOf("[Content_Types].xml/[0].piece"), "[Content_Types].xml 0");
}

TEST(PieceName, IsComparedInAnyCase)
{
    EXPECT_EQ(pieceOf("a.xml/[0].PIECE"), "a.xml 0");
    EXPECT_EQ(pieceOf("a.xml/[1].Last.Piece"), "a.xml 1 last");
}

TEST(PieceName, IsNoOtherName)
{
    for (const char* name : {"a.xml", "[0].piece", "/[0].piece", "a.piece", "a/[].piece", "a/[x].piece", "a/[00].piece",
                             "a/[01].piece", "a/[-1].piece", "a/[+1].piece", "a/[1].last", "a/[1]piece", "a[1].piece",
                             "a/[99999999999].piece", "a/[0].piece/b", ".piece", "", "a/0].piece"})
        EXPECT_EQ(pieceOf(name), "whole") << name;
}

} // namespace
