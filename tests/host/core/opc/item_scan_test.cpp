#include "host/core/opc/item_scan.h"

#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::ItemScan;
using OpcPackaging::detail::Result;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Zip::ArchivePtr archiveOf(std::initializer_list<const char*> names)
{
    const TemporaryFolder folder;
    PackageFile file;
    for (const char* name : names)
        file.add(name, "bytes");
    file.write(folder / "a.zip");
    return Zip::Archive::open(Zip::openFileSource(toFilePath2(folder / "a.zip")).value()).value();
}

Result<ItemScan> scan(std::initializer_list<const char*> names)
{
    return OpcPackaging::detail::scanItems(*archiveOf(names));
}

std::vector<std::string> named(const ItemScan& scan)
{
    std::vector<std::string> names;
    for (const auto& item : scan.named)
        names.push_back(item->name + ' ' + std::to_string(item->entries().size()));
    return names;
}

} // namespace

TEST(ItemScan, ItemsBecomePartNamesInTheirOrder)
{
    const Zip::ArchivePtr archive = archiveOf({"b.txt", "[Content_Types].xml", "sub/a.txt"});
    const ItemScan found = OpcPackaging::detail::scanItems(*archive).value();
    EXPECT_THAT(named(found), ElementsAre("/b.txt 1", "/sub/a.txt 1"));
    ASSERT_NE(found.contentTypes, nullptr);
    EXPECT_EQ(found.contentTypes->itemName, "[Content_Types].xml");
    EXPECT_THAT(found.diagnostics, IsEmpty());
}

TEST(ItemScan, TheContentTypesAreFoundInAnyAsciiCase)
{
    EXPECT_NE(scan({"[CONTENT_types].XML"}).value().contentTypes, nullptr);
    EXPECT_TRUE(OpcPackaging::detail::hasContentTypes(*archiveOf({"[content_types].xml"})));
    EXPECT_FALSE(OpcPackaging::detail::hasContentTypes(*archiveOf({"sub/[Content_Types].xml"})));
}

TEST(ItemScan, NamesThatCannotBeDerivedFromEachOtherAreKnown)
{
    EXPECT_TRUE(scan({"a/b.txt", "a/c.txt", "ab.txt", "a.txt/[0].last.piece", "A b/"}).value().areUnrelated);
    EXPECT_FALSE(scan({"a/b.txt", "x.txt", "a"}).value().areUnrelated);
    EXPECT_FALSE(scan({"A", "a/b/c.txt"}).value().areUnrelated);
    EXPECT_FALSE(scan({"a/b/c.txt", "a/B/[0].piece"}).value().areUnrelated);
    EXPECT_FALSE(scan({"1/2/3/4/5/6/7/8/9/10.txt"}).value().areUnrelated); // perhaps: nobody looks so deep
}

TEST(ItemScan, NamesBeyondAsciiArePercentEncoded)
{
    EXPECT_THAT(named(scan({"größe.txt"}).value()), ElementsAre("/gr%C3%B6%C3%9Fe.txt 1"));
}

TEST(ItemScan, WhatMakesNoPartNameIsLeftAloneWithASentence)
{
    const ItemScan found =
        scan({"a b.txt", "a\\b.txt", "/a.txt", "a/../b.txt", "dot.", "d/", "%2Fx", "ok.txt"}).value();
    EXPECT_THAT(named(found), ElementsAre("/ok.txt 1"));
    EXPECT_EQ(found.diagnostics.size(), 7U);
}

TEST(ItemScan, TwoItemsOfEquivalentNamesAreRefused)
{
    EXPECT_EQ(scan({"a.txt", "A.TXT"}).error(), code(OpcError::partExists));
    EXPECT_EQ(scan({"ä.txt", "%c3%A4.txt"}).error(), code(OpcError::partExists));
    EXPECT_EQ(scan({"[Content_Types].xml", "[content_types].xml"}).error(), code(OpcError::partExists));
    EXPECT_EQ(scan({"no name.", "no name."}).error(), code(OpcError::partExists));
}

TEST(ItemScan, DirectoriesMayStandThereTwice)
{
    EXPECT_TRUE(scan({"d/", "d/", "d/a.txt"}));
}

TEST(ItemScan, PiecesMakeUpOneItemWhateverTheirOrderAndCase)
{
    const ItemScan found =
        scan({"x.txt", "a.txt/[1].last.PIECE", "b.txt", "A.txt/[0].piece", "[Content_Types].xml/[0].last.piece"})
            .value();
    EXPECT_THAT(named(found), ElementsAre("/x.txt 1", "/a.txt 2", "/b.txt 1"));
    EXPECT_THAT(found.named[1]->entries(), ElementsAre(3U, 1U));
    ASSERT_NE(found.contentTypes, nullptr);
}

TEST(ItemScan, PiecesThatAreMissingMakeNoPart)
{
    const ItemScan noLast = scan({"a.txt/[0].piece", "a.txt/[1].piece"}).value();
    EXPECT_THAT(named(noLast), IsEmpty());
    EXPECT_THAT(noLast.incomplete, ElementsAre("/a.txt"));
    EXPECT_EQ(noLast.diagnostics.size(), 1U);
    EXPECT_THAT(named(scan({"a.txt/[1].last.piece"}).value()), IsEmpty());
    EXPECT_THAT(named(scan({"a.txt/[0].last.piece", "a.txt/[1].last.piece"}).value()), IsEmpty());
}

TEST(ItemScan, AnItemAndPiecesOfOneNameAreRefused)
{
    EXPECT_EQ(scan({"a.txt", "A.txt/[0].last.piece"}).error(), code(OpcError::invalidPieces));
}

TEST(ItemScan, TwoPiecesOfOneNumberAreRefused)
{
    EXPECT_EQ(scan({"a.txt/[0].piece", "a.txt/[0].last.piece"}).error(), code(OpcError::invalidPieces));
}
