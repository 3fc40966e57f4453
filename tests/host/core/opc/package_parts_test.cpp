#include "host/core/opc/package_parts.h"

#include "host/core/opc/package_data.h"
#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackageParts;
using OpcPackaging::detail::PackagePtr;
using OpcPackaging::detail::PartPtr;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

PackagePtr openPackage(const PackageFile& file)
{
    const TemporaryFolder folder;
    file.write(folder / "p.zip");
    return PackageData::openFile(toFilePath2(folder / "p.zip")).value();
}

/// "name type" of each part, or the error.
std::vector<std::string> typedParts(const PackagePtr& package)
{
    std::vector<std::string> lines;
    for (const PartPtr& part : *package->parts().all().value())
        lines.push_back(part->name + ' ' + std::string{std::string_view{part->mediaType}});
    return lines;
}

ErrorCode2 errorOf(const PackageFile& file)
{
    return openPackage(file)->parts().all().error();
}

constexpr auto byExtension = PackageParts::Typing::byExtension;

/// The content types of the saved package.
std::string savedTypes(const PackagePtr& package)
{
    const TemporaryFolder folder;
    package->write(toFilePath2(folder / "s.zip")).value();
    return readEntries(folder / "s.zip").front().second;
}

} // namespace

TEST(PackageParts, ItemsWithAContentTypeArePartsAndOthersAreLeftAlone)
{
    PackageFile file;
    const PackagePtr package = openPackage(file.addContentTypes("<Override PartName='/b.BIN' ContentType='x/y'/>")
                                               .add("A.TXT", "")
                                               .add("B.bin", "")
                                               .add("c.bin", "")
                                               .add("[trash]/0000.dat", ""));
    EXPECT_THAT(typedParts(package), ElementsAre("/A.TXT text/plain", "/B.bin x/y"));
    EXPECT_THAT(package->parts().diagnostics(), ElementsAre(HasSubstr("[trash]/0000.dat"), HasSubstr("c.bin")));
}

TEST(PackageParts, NoContentTypesStreamThatIsWholeIsAnError)
{
    PackageFile file;
    EXPECT_EQ(errorOf(file.add("[Content_Types].xml/[0].piece", "<Types/>")), code(OpcError::noContentTypes));
}

TEST(PackageParts, BrokenContentTypesAreAnErrorWithTheirName)
{
    PackageFile file;
    const ErrorCode2 error = errorOf(file.add("[Content_Types].xml", "<Types"));
    EXPECT_EQ(error, code(OpcError::invalidXml));
    EXPECT_THAT(toStdString(error.message()), HasSubstr("[Content_Types].xml"));
}

TEST(PackageParts, ANameThatContinuesAnothersIsAnErrorWhateverTheirOrder)
{
    PackageFile longFirst;
    EXPECT_EQ(errorOf(longFirst.addContentTypes().add("a.txt/b/c.txt", "").add("x.txt", "").add("A.txt", "")),
              code(OpcError::derivedPartName));
    PackageFile shortFirst;
    EXPECT_EQ(errorOf(shortFirst.addContentTypes().add("a.txt", "").add("x.txt", "").add("a.txt/b/c.txt", "")),
              code(OpcError::derivedPartName));
}

TEST(PackageParts, ARelationshipsPartOfAnotherTypeIsAnError)
{
    PackageFile file;
    EXPECT_EQ(errorOf(file.addContentTypes("<Override PartName='/_rels/.rels' ContentType='application/xml'/>")
                          .addRelationships("")),
              code(OpcError::invalidRelationships));
}

TEST(PackageParts, RelationshipsOfRelationshipsAreAnError)
{
    PackageFile file;
    EXPECT_EQ(errorOf(file.addContentTypes().add("_rels/_rels/.rels.rels", "<Relationships/>")),
              code(OpcError::invalidRelationships));
}

TEST(PackageParts, InterleavedPiecesAreReadAsOnePart)
{
    PackageFile file;
    const PackagePtr package = openPackage(
        file.addContentTypes().add("a.txt/[0].piece", "one ").add("b.txt", "b").add("a.txt/[1].last.piece", "two"));
    const PartPtr part = package->parts().find("/a.txt").value();
    const auto bytes = package->parts().read(*part).value();
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), "one two");
}

TEST(PackageParts, InterleavedContentTypesAreRead)
{
    PackageFile file;
    const PackagePtr package = openPackage(
        file.add("[Content_Types].xml/[0].piece",
                 "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>")
            .add("a.txt", "")
            .add("[Content_Types].xml/[1].last.piece", "<Default Extension='txt' ContentType='text/plain'/></Types>"));
    EXPECT_THAT(typedParts(package), ElementsAre("/a.txt text/plain"));
}

TEST(PackageParts, NewPartsOfOneKindShareOneDefault)
{
    PackageFile file;
    const PackagePtr package = openPackage(file.addContentTypes());
    ASSERT_TRUE(package->parts().create("/a.net", "x/net", byExtension));
    ASSERT_TRUE(package->parts().create("/b.NET", "x/net", byExtension));
    ASSERT_TRUE(package->parts().create("/c.net", "x/other", byExtension));
    ASSERT_TRUE(package->parts().create("/noextension", "x/none", byExtension));
    ASSERT_TRUE(package->parts().create("/d.new", "x/d", PackageParts::Typing::byName));
    EXPECT_THAT(typedParts(package),
                ElementsAre("/a.net x/net", "/b.NET x/net", "/c.net x/other", "/noextension x/none", "/d.new x/d"));
}

TEST(PackageParts, ANewPartMakesNoPartOfAnItemThatWasNone)
{
    PackageFile file;
    const PackagePtr package = openPackage(file.addContentTypes().add("left.alone", "x"));
    auto part = package->createPart("/new.alone", "x/y", package->parts().items().take({}, {}).value());
    ASSERT_TRUE(part);
    const std::string types = savedTypes(package);
    EXPECT_THAT(types, HasSubstr("PartName=\"/new.alone\""));
    EXPECT_THAT(types, testing::Not(HasSubstr("Extension=\"alone\"")));
}

TEST(PackageParts, APartThatWasRemovedIsNotFoundAndItsNameIsFree)
{
    PackageFile file;
    const PackagePtr package = openPackage(file.addContentTypes().add("a.txt", "a").add("b.txt", "b"));
    const PartPtr part = package->parts().find("/a.txt").value();
    package->parts().remove(part);
    EXPECT_TRUE(part->isRemoved);
    EXPECT_EQ(package->parts().find("/a.txt").error(), code(OpcError::noSuchPart));
    EXPECT_THAT(typedParts(package), ElementsAre("/b.txt text/plain"));
    EXPECT_TRUE(package->parts().create("/a.txt", "text/plain", byExtension));
}

TEST(PackageParts, OfManyTheOthersAreFoundInTheirOrderWhenSomeAreRemoved)
{
    PackageFile file;
    file.addContentTypes();
    for (int i = 0; i < 60; ++i)
        file.add("Part" + std::to_string(i) + ".txt", "x");
    const PackagePtr package = openPackage(file);
    std::vector<std::string> left;
    for (int i = 0; i < 60; ++i) {
        const std::string name = "/Part" + std::to_string(i) + ".txt";
        if (i % 4 == 2)
            left.push_back(name + " text/plain");
        else
            package->parts().remove(package->parts().find("/part" + std::to_string(i) + ".TXT").value());
    }
    EXPECT_EQ(typedParts(package), left);
    EXPECT_TRUE(package->parts().find("/part2.txt"));
    EXPECT_EQ(package->parts().find("/part3.txt").error(), code(OpcError::noSuchPart));
    EXPECT_TRUE(package->parts().create("/part3.txt", "text/plain", byExtension));
    EXPECT_EQ(package->parts().create("/PART2.txt", "text/plain", byExtension).error(), code(OpcError::partExists));
}

TEST(PackageParts, ThirtyThousandPiecesAreOnePart)
{
    constexpr int count = 30'000;
    PackageFile file;
    file.addContentTypes().add("a.txt/[" + std::to_string(count) + "].last.piece", "!");
    for (int number = count; number-- > 0;)
        file.add("a.txt/[" + std::to_string(number) + "].piece", std::string(1, static_cast<char>('a' + number % 26)));
    const PackagePtr package = openPackage(file);
    ASSERT_EQ(package->parts().all().value()->size(), 1U);
    const auto bytes = package->parts().read(*package->parts().find("/a.txt").value()).value();
    ASSERT_EQ(bytes.size(), static_cast<std::size_t>(count) + 1);
    EXPECT_EQ(static_cast<char>(bytes.front()), 'a');
    EXPECT_EQ(static_cast<char>(bytes[27]), 'b');
    EXPECT_EQ(static_cast<char>(bytes.back()), '!');
}

TEST(PackageParts, SeventyThousandPartsAreWrittenAndReadBack)
{
    constexpr int count = 70'000;
    const TemporaryFolder folder;
    const PackagePtr package = PackageData::create();
    const auto nothing = package->parts().items().take({}, {}).value();
    for (int number = 0; number < count; ++number)
        ASSERT_TRUE(package->createPart("/parts/" + std::to_string(number) + ".txt", "text/plain", nothing));
    ASSERT_TRUE(package->write(toFilePath2(folder / "many.zip")));
    const PackagePtr read = PackageData::openFile(toFilePath2(folder / "many.zip")).value();
    EXPECT_EQ(read->parts().all().value()->size(), static_cast<std::size_t>(count));
    EXPECT_TRUE(read->parts().find("/parts/69999.txt"));
    EXPECT_LT(savedTypes(read).size(), 1000U);
}
