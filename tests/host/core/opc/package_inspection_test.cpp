#include "host/core/opc/package_inspection.h"

#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

PackageInspection inspected()
{
    const TemporaryFolder folder;
    PackageFile file;
    file.addContentTypes()
        .addRelationships("<Relationship Id='a' Type='http://t.example/1' Target='d/a.txt#x'/>"
                          "<Relationship Id='b' Type='http://t.example/2' Target='out' TargetMode='External'/>")
        .add("d/a.txt", std::string(1000, 'a'))
        .add("d/_rels/a.txt.rels", "<Relationships "
                                   "xmlns='http://schemas.openxmlformats.org/package/2006/relationships'/>")
        .add("left.alone", "x")
        .write(folder / "p.zip");
    return PackageInspection::open(toFilePath2(folder / "p.zip")).value();
}

} // namespace

TEST(PackageInspection, ShowsEveryEntryWithThePartThatItIs)
{
    std::vector<std::string> lines;
    const auto entries = inspected().entries().value();
    for (const InspectedEntry& entry : entries)
        lines.push_back(entry.name + " | " + entry.partName + " | " + entry.mediaType);
    constexpr const char* relationshipsType = "application/vnd.openxmlformats-package.relationships+xml";
    EXPECT_THAT(lines, ElementsAre("[Content_Types].xml |  | ",
                                   std::string{"_rels/.rels | /_rels/.rels | "} + relationshipsType,
                                   "d/a.txt | /d/a.txt | text/plain",
                                   std::string{"d/_rels/a.txt.rels | /d/_rels/a.txt.rels | "} + relationshipsType,
                                   "left.alone |  | "));
}

TEST(PackageInspection, ShowsSizes)
{
    const InspectedEntry entry = inspected().entries().value()[2];
    EXPECT_EQ(entry.size, 1000U);
    EXPECT_LT(entry.compressedSize, 100U);
    EXPECT_TRUE(entry.isCompressed);
    EXPECT_FALSE(inspected().entries().value()[4].isCompressed);
}

TEST(PackageInspection, ShowsTheSourcesOfRelationships)
{
    EXPECT_THAT(inspected().sources().value(), ElementsAre("/", "/d/a.txt"));
}

TEST(PackageInspection, ShowsRelationshipsAsTheyAreWrittenAndWhereTheyLead)
{
    std::vector<std::string> lines;
    const auto relationships = inspected().relationships("/").value();
    for (const InspectedRelationship& relationship : relationships)
        lines.push_back(relationship.id + ' ' + relationship.type + ' ' + relationship.target + " -> " +
                        relationship.partName);
    EXPECT_THAT(lines, ElementsAre("a http://t.example/1 d/a.txt#x -> /d/a.txt", "b http://t.example/2 out -> "));
    EXPECT_THAT(inspected().relationships("/d/a.txt").value(), IsEmpty());
}

TEST(PackageInspection, ReadsAnyPart)
{
    EXPECT_EQ(inspected().read("/d/a.txt").value().length(), 1000U);
    EXPECT_GT(inspected().read("/_rels/.rels").value().length(), 100U);
    EXPECT_EQ(inspected().read("/left.alone").error(), code(OpcError::noSuchPart));
}

TEST(PackageInspection, VerifiesAndTellsWhatIsLeftAlone)
{
    EXPECT_EQ(inspected().verify().value().size(), 1U);
}

TEST(PackageInspection, OfAnOpenPackageSeesItsChanges)
{
    const TemporaryFolder folder;
    PackageFile file;
    file.addContentTypes().write(folder / "p.zip");
    OpcPackage package = open_package(toFilePath2(folder / "p.zip")).value();
    const PackageInspection inspection{package};
    ASSERT_TRUE(package.createRelationship(OpcPackagePartUri{L"/a"}, OpcTargetMode::internal, u8"http://t.example/1"));
    EXPECT_THAT(inspection.sources().value(), ElementsAre("/"));
    EXPECT_EQ(inspection.entries().value().size(), 1U);
}

TEST(PackageInspection, OpenOfNoPackageIsAnError)
{
    const TemporaryFolder folder;
    EXPECT_EQ(PackageInspection::open(toFilePath2(folder.write("a.txt", "a"))).error(), code(OpcError::notAnArchive));
}
