#include "kelvaris/system/io/opc_packaging/opc_package.h"

#include "kelvaris/system/core_error.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/host/core/opc/package_walks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class OpcPackageTest : public testing::Test
{
protected:
    std::filesystem::path write(const PackageFile& file) const
    {
        file.write(m_folder / "package.zip");
        return m_folder / "package.zip";
    }

    OpcPackage open(const PackageFile& file) const { return open_package(toFilePath2(write(file))).value(); }

    static PackageFile smallPackage()
    {
        PackageFile file;
        file.addContentTypes().addRelationships(
            R"(<Relationship Id="a" Type="http://t.example/text" Target="docs/b.txt"/>)"
            R"(<Relationship Id="b" Type="http://t.example/other" Target="/docs/A.xml"/>)"
            R"(<Relationship Id="c" Type="http://t.example/text" Target="http://out.example/x y" )"
            R"(TargetMode="External"/>)"
            R"(<Relationship Id="d" Type="http://t.example/gone" Target="docs/gone.txt"/>)");
        file.add("docs/b.txt", "bee").add("docs/a.xml", "<a/>").add("docs/", "");
        return file;
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(OpcPackageTest, PartsStandInTheOrderOfTheArchiveWithoutRelationshipParts)
{
    EXPECT_THAT(partNames(open(smallPackage())), ElementsAre("/docs/b.txt", "/docs/a.xml"));
}

TEST_F(OpcPackageTest, RelationshipsStandInTheOrderOfTheDocument)
{
    EXPECT_THAT(relationshipLines(open(smallPackage()).relationships().value()),
                ElementsAre("a text /docs/b.txt", "b other /docs/A.xml", "c text http://out.example/x y",
                            "d gone /docs/gone.txt"));
}

TEST_F(OpcPackageTest, RelationshipsByTypeAreThoseOfExactlyThatType)
{
    const OpcPackage package = open(smallPackage());
    EXPECT_THAT(relationshipLines(package.relationshipsByType(u8"http://t.example/text").value()),
                ElementsAre("a text /docs/b.txt", "c text http://out.example/x y"));
    EXPECT_THAT(relationshipLines(package.relationshipsByType(u8"http://t.example/TEXT").value()), IsEmpty());
    EXPECT_THAT(relationshipLines(package.relationshipsByType(u8"").value()), IsEmpty());
}

TEST_F(OpcPackageTest, ACollectionWithoutElementsBeginsAtItsEnd)
{
    PackageFile file;
    const OpcPackage package = open(file.addContentTypes());
    EXPECT_TRUE(package.parts().value().begin() == OpcPackaging::detail::OpcPackagePartCollectionIteratorSentinel{});
    EXPECT_TRUE(package.relationships().value().begin() ==
                OpcPackaging::detail::OpcPackageRelationshipCollectionIteratorSentinel{});
}

TEST_F(OpcPackageTest, PartIsFoundInAnyAsciiCase)
{
    const OpcPackage package = open(smallPackage());
    EXPECT_EQ(nameOf(package.part(OpcPackagePartUri{L"/DOCS/A.XML"}).value()), "/docs/a.xml");
    EXPECT_EQ(nameOf(package.part(OpcPackagePartUri{L"docs\\b.txt"}).value()), "/docs/b.txt");
}

TEST_F(OpcPackageTest, PartOfAnUnknownNameIsAnErrorWithTheName)
{
    const auto part = open(smallPackage()).part(OpcPackagePartUri{L"/docs/c.txt"});
    ASSERT_FALSE(part);
    EXPECT_EQ(part.error(), code(OpcError::noSuchPart));
    EXPECT_THAT(toStdString(part.error().message()), HasSubstr("/docs/c.txt"));
}

TEST_F(OpcPackageTest, PartOfAnInvalidNameIsAnErrorWithTheName)
{
    const auto part = open(smallPackage()).part(OpcPackagePartUri{L"docs/../c.txt"});
    ASSERT_FALSE(part);
    EXPECT_EQ(part.error(), code(OpcError::invalidPartName));
    EXPECT_THAT(toStdString(part.error().message()), HasSubstr("c.txt"));
}

TEST_F(OpcPackageTest, PartDoesNotGiveRelationshipParts)
{
    EXPECT_EQ(open(smallPackage()).part(OpcPackagePartUri{L"/_rels/.rels"}).error(), code(OpcError::noSuchPart));
}

TEST_F(OpcPackageTest, PartFromRelationshipFollowsInternalTargetsOnly)
{
    const OpcPackage package = open(smallPackage());
    auto it = package.relationships().value().begin();
    EXPECT_EQ(nameOf(package.partFromRelationship(*it).value()), "/docs/b.txt");
    EXPECT_EQ(nameOf(package.partFromRelationship(*++it).value()), "/docs/a.xml");
    EXPECT_EQ(package.partFromRelationship(*++it).error(), code(OpcError::targetIsExternal));
    EXPECT_EQ(package.partFromRelationship(*++it).error(), code(OpcError::noSuchPart));
}

TEST_F(OpcPackageTest, HandlesOutliveThePackage)
{
    auto package = std::make_unique<OpcPackage>(open(smallPackage()));
    const OpcPackagePart part = package->part(OpcPackagePartUri{L"/docs/b.txt"}).value();
    const OpcPackagePartCollection parts = package->parts().value();
    package.reset();
    EXPECT_EQ(bytesOf(part), "bee");
    EXPECT_THAT(partNames(parts), ElementsAre("/docs/b.txt", "/docs/a.xml"));
}

TEST_F(OpcPackageTest, OpenOfNoFileGivesTheSystemsErrorWithThePath)
{
    const auto package = open_package(toFilePath2(m_folder / "gone.zip"));
    ASSERT_FALSE(package);
    EXPECT_EQ(package.error(), ErrorCode2(ENOENT, system_error_category()));
    EXPECT_THAT(toStdString(package.error().message()), HasSubstr("gone.zip"));
}

TEST_F(OpcPackageTest, OpenOfADirectoryIsAnError)
{
    const auto package = open_package(toFilePath2(m_folder.path()));
    EXPECT_EQ(package.error(), ErrorCode2(static_cast<int>(CoreError::notARegularFile), core_error_category()));
}

TEST_F(OpcPackageTest, OpenOfAnyArchiveWithoutContentTypesIsAnError)
{
    PackageFile file;
    const auto package = open_package(toFilePath2(write(file.add("mimetype", "application/x").add("a.txt", "a"))));
    ASSERT_FALSE(package);
    EXPECT_EQ(package.error(), code(OpcError::noContentTypes));
    EXPECT_THAT(toStdString(package.error().message()), HasSubstr("package.zip"));
}

TEST_F(OpcPackageTest, OpenOfTextIsAnError)
{
    EXPECT_EQ(open_package(toFilePath2(m_folder.write("a.zip", "no archive"))).error(), code(OpcError::notAnArchive));
    EXPECT_EQ(open_package(toFilePath2(m_folder.write("empty.zip", ""))).error(), code(OpcError::notAnArchive));
}

TEST_F(OpcPackageTest, OpenOnDemandPutsUpWithABrokenPieceUntilItIsUsed)
{
    PackageFile file;
    file.addContentTypes().addRelationships("<oops/>").add("a.txt", "a");
    const OpcPackage package = open(file);
    EXPECT_THAT(partNames(package), ElementsAre("/a.txt"));
    EXPECT_FALSE(package.relationships());
}

TEST_F(OpcPackageTest, OpenWithVerificationRefusesABrokenPiece)
{
    PackageFile file;
    file.addContentTypes().addRelationships("<oops/>").add("a.txt", "a");
    EXPECT_FALSE(OpcPackage::open(toFilePath2(write(file)), OpcPackageOpenFlag::verify));
    EXPECT_TRUE(OpcPackage::open(toFilePath2(write(smallPackage())), OpcPackageOpenFlag::verify));
}

TEST_F(OpcPackageTest, CreatePartMakesAnEmptyPartBehindTheOthers)
{
    OpcPackage package = open(smallPackage());
    const OpcPackagePart part = package
                                    .createPart(OpcPackagePartUri{L"docs\\c d.txt"}, MIMEType{FileType::text},
                                                OpcPackageCompressionType::normal)
                                    .value();
    EXPECT_EQ(nameOf(part), "/docs/c%20d.txt");
    EXPECT_EQ(bytesOf(part), "");
    EXPECT_THAT(partNames(package), ElementsAre("/docs/b.txt", "/docs/a.xml", "/docs/c%20d.txt"));
}

TEST_F(OpcPackageTest, CreatePartRefusesNamesThatWillNotDo)
{
    OpcPackage package = open(smallPackage());
    const auto create = [&](const wchar_t* name) {
        return package.createPart(OpcPackagePartUri{name}, MIMEType{FileType::text}, OpcPackageCompressionType::normal);
    };
    EXPECT_EQ(create(L"").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(create(L"/").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(create(L"a/../b").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(create(L"/[Content_Types].xml").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(create(L"/docs/_rels/a.xml.rels").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(create(L"/docs/b.txt").error(), code(OpcError::partExists));
    EXPECT_EQ(create(L"/DOCS/B.TXT").error(), code(OpcError::partExists));
    EXPECT_EQ(create(L"/docs").error(), code(OpcError::derivedPartName));
    EXPECT_EQ(create(L"/docs/b.txt/more").error(), code(OpcError::derivedPartName));
    EXPECT_THAT(partNames(package), ElementsAre("/docs/b.txt", "/docs/a.xml"));
}

TEST_F(OpcPackageTest, CreatePartRefusesANameThatNoZipFileHolds)
{
    OpcPackage package = open(smallPackage());
    const std::wstring name = L"/" + std::wstring(70'000, L'n');
    const auto part = package.createPart(OpcPackagePartUri{name.c_str()}, MIMEType{FileType::text},
                                         OpcPackageCompressionType::normal);
    ASSERT_FALSE(part);
    EXPECT_EQ(part.error(), code(OpcError::invalidPartName));
    EXPECT_LT(part.error().message().length(), 300U);
}

TEST_F(OpcPackageTest, CreatePartRefusesTheNameOfAnItemThatIsNoPart)
{
    PackageFile file;
    OpcPackage package = open(file.addContentTypes().add("a.unknown", "carried along"));
    const auto part = package.createPart(OpcPackagePartUri{L"/A.unknown"}, MIMEType{FileType::text},
                                         OpcPackageCompressionType::normal);
    EXPECT_EQ(part.error(), code(OpcError::partExists));
}

TEST_F(OpcPackageTest, CreatePartRefusesWhatIsNoMediaTypeAndKeepsTheNameFree)
{
    OpcPackage package = open(smallPackage());
    const OpcPackagePartUri uri{L"/new.bin"};
    for (const char8_t* text : {u8"", u8"text", u8"text/plain (comment)", u8" text/plain", u8"text/pl ain"})
        EXPECT_EQ(package.createPart(uri, MIMEType{String2{text}}, OpcPackageCompressionType::normal).error(),
                  code(OpcError::invalidMediaType))
            << reinterpret_cast<const char*>(text);
    EXPECT_TRUE(package.createPart(uri, MIMEType{FileType::unknown}, OpcPackageCompressionType::normal));
}

TEST_F(OpcPackageTest, CreateRelationshipGivesAnIdentifierOfItsOwn)
{
    OpcPackage package = open(smallPackage());
    const auto first = package.createRelationship(OpcPackagePartUri{L"/docs/b.txt"}, OpcTargetMode::internal,
                                                  u8"http://t.example/new");
    const auto second = package.createRelationship(OpcPackagePartUri{L"later/x y.txt"}, OpcTargetMode::internal,
                                                   u8"http://t.example/new");
    EXPECT_EQ(toStdString(first.value().id()), "rId1");
    EXPECT_EQ(toStdString(second.value().id()), "rId2");
    EXPECT_THAT(relationshipLines(package.relationshipsByType(u8"http://t.example/new").value()),
                ElementsAre("rId1 new /docs/b.txt", "rId2 new /later/x%20y.txt"));
}

TEST_F(OpcPackageTest, CreateRelationshipRefusesATargetThatIsNoName)
{
    OpcPackage package = open(smallPackage());
    EXPECT_EQ(package.createRelationship(OpcPackagePartUri{L"a/../b"}, OpcTargetMode::internal, u8"http://t.example/n")
                  .error(),
              code(OpcError::invalidPartName));
}
