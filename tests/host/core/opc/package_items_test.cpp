#include "host/core/opc/package_items.h"

#include "host/core/opc/package_data.h"
#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;
using testing::ElementsAre;
using testing::Pair;

namespace {

class PackageItemsTest : public testing::Test
{
protected:
    PackagePtr open(const PackageFile& file) const
    {
        file.write(m_folder / "p.zip");
        return PackageData::openFile(toFilePath2(m_folder / "p.zip")).value();
    }

    static Zip::PayloadPtr payload(PackageData& package, std::string_view text)
    {
        return package.parts().items().take(std::as_bytes(std::span{text}), OpcPackageCompressionType::normal).value();
    }

    static void setText(PackageData& package, std::string_view part, std::string_view text)
    {
        package.setBytes(package.findPart(part).value(), payload(package, text));
    }

    std::filesystem::path save(PackageData& package) const
    {
        package.write(toFilePath2(m_folder / "s.zip")).value();
        return m_folder / "s.zip";
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(PackageItemsTest, AnUnchangedPackageIsSavedByteForByte)
{
    PackageFile file;
    const PackagePtr package = open(file.addContentTypes()
                                        .add("d/", "")
                                        .add("a.txt", std::string(3000, 'a'))
                                        .add("left alone.bin", "x")
                                        .add("b.txt/[0].piece", "1")
                                        .add("b.txt/[1].last.piece", "2"));
    (void)package->parts().all().value();
    EXPECT_EQ(readFile(save(*package)), readFile(m_folder / "p.zip"));
}

TEST_F(PackageItemsTest, AChangedPartIsRewrittenInItsPlaceAndTheOthersAreCopied)
{
    PackageFile file;
    const PackagePtr package = open(file.add("a.txt", "first")
                                        .add("b.txt", "old")
                                        .add("[trash]/0.dat", "junk")
                                        .addContentTypes()
                                        .add("c.txt", "c"));
    setText(*package, "/b.txt", "new and longer");
    const auto saved = save(*package);
    EXPECT_THAT(entryNames(saved), ElementsAre("a.txt", "b.txt", "[trash]/0.dat", "[Content_Types].xml", "c.txt"));
    EXPECT_EQ(readEntries(saved)[1].second, "new and longer");
    const auto before = readRawEntries(m_folder / "p.zip");
    const auto after = readRawEntries(saved);
    for (const std::size_t unchanged : {0U, 2U, 3U, 4U})
        EXPECT_EQ(after[unchanged], before[unchanged]);
}

TEST_F(PackageItemsTest, ANewPartStandsBehindAllOthers)
{
    PackageFile file;
    const PackagePtr package = open(file.addContentTypes().add("a.txt", "a"));
    ASSERT_TRUE(package->createPart("/b.txt", "text/plain", payload(*package, "b")));
    EXPECT_THAT(entryNames(save(*package)), ElementsAre("[Content_Types].xml", "a.txt", "b.txt"));
}

TEST_F(PackageItemsTest, APartThatWasRemovedIsNotSaved)
{
    PackageFile file;
    const PackagePtr package = open(file.addContentTypes().add("a.txt", "a").add("b.txt", "b"));
    ASSERT_TRUE(package->createPart("/c.txt", "text/plain", payload(*package, "c")));
    setText(*package, "/b.txt", "changed first");
    for (const char* name : {"/a.txt", "/b.txt", "/c.txt"})
        package->parts().remove(package->findPart(name).value());
    EXPECT_THAT(entryNames(save(*package)), ElementsAre("[Content_Types].xml"));
}

TEST_F(PackageItemsTest, AChangedInterleavedPartBecomesOneItemInThePlaceOfItsFirstPiece)
{
    PackageFile file;
    const PackagePtr package =
        open(file.addContentTypes().add("a.txt/[1].last.piece", "2").add("b.txt", "b").add("a.txt/[0].piece", "1"));
    setText(*package, "/a.txt", "whole");
    EXPECT_THAT(entryNames(save(*package)), ElementsAre("[Content_Types].xml", "a.txt", "b.txt"));
    EXPECT_THAT(readEntries(m_folder / "s.zip"), testing::Contains(Pair("a.txt", "whole")));
}

TEST_F(PackageItemsTest, InterleavedContentTypesThatChangeBecomeOneItem)
{
    PackageFile file;
    const PackagePtr package =
        open(file.add("[Content_Types].xml/[0].piece",
                      "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>")
                 .add("a.txt", "a")
                 .add("[Content_Types].xml/[1].last.piece", "<Default Extension='txt' ContentType='x/y'/></Types>"));
    ASSERT_TRUE(package->createPart("/b.new", "x/new", payload(*package, "b")));
    EXPECT_THAT(entryNames(save(*package)), ElementsAre("[Content_Types].xml", "a.txt", "b.new"));
    EXPECT_TRUE(PackageData::openFile(toFilePath2(m_folder / "s.zip")).value()->findPart("/b.new"));
}

TEST_F(PackageItemsTest, BytesThatDoNotShrinkAreStored)
{
    PackageFile file;
    const PackagePtr package = open(file.addContentTypes());
    EXPECT_EQ(payload(*package, "ab")->method(), Zip::Method::stored);
    EXPECT_EQ(payload(*package, std::string(1000, 'a'))->method(), Zip::Method::deflated);
    const auto stored = package->parts().items().take(std::vector<std::byte>(1000), OpcPackageCompressionType::none);
    EXPECT_EQ(stored.value()->method(), Zip::Method::stored);
}
