#include "host/core/opc/package_relationships.h"

#include "host/core/opc/package_data.h"
#include "host/core/text/text_view.h"
#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr auto internal = OpcTargetMode::internal;

class PackageRelationshipsTest : public testing::Test
{
protected:
    PackagePtr open(const PackageFile& file) const
    {
        file.write(m_folder / "p.zip");
        return PackageData::openFile(toFilePath2(m_folder / "p.zip")).value();
    }

    PackagePtr reopened(const PackagePtr& package) const
    {
        package->write(toFilePath2(m_folder / "s.zip")).value();
        return PackageData::openFile(toFilePath2(m_folder / "s.zip")).value();
    }

    TemporaryFolder m_folder;
};

std::vector<std::string> lines(const PackagePtr& package, std::string_view source)
{
    std::vector<std::string> lines;
    const auto records = package->relationships().records(source).value();
    for (const auto& record : records)
        lines.push_back(toStdString(record->id) + ' ' + record->target);
    return lines;
}

} // namespace

TEST_F(PackageRelationshipsTest, ASourceWithoutRelationshipsHasNone)
{
    PackageFile file;
    const PackagePtr package = open(file.addContentTypes().add("a.txt", "a"));
    EXPECT_THAT(lines(package, "/"), IsEmpty());
    EXPECT_THAT(lines(package, "/a.txt"), IsEmpty());
    EXPECT_EQ(readFile(m_folder / "p.zip"), (reopened(package), readFile(m_folder / "s.zip")));
}

TEST_F(PackageRelationshipsTest, OfAPartAreReadFromBesideItInAnyCase)
{
    PackageFile file;
    const PackagePtr package =
        open(file.addContentTypes()
                 .add("d/A.txt", "a")
                 .add("D/_RELS/a.txt.RELS", "<Relationships "
                                            "xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
                                            "<Relationship Id='x' Type='http://t.example/t' Target='b.txt'/>"
                                            "</Relationships>"));
    const auto records = package->relationships().records("/d/a.TXT").value();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records.front()->resolved().partName, "/d/b.txt");
}

TEST_F(PackageRelationshipsTest, OfAPartAreWrittenBesideIt)
{
    PackageFile file;
    const PackagePtr package = open(file.addContentTypes().add("d/a.txt", "a"));
    ASSERT_TRUE(package->relationships().add("/d/a.txt", "http://t.example/t", "/d/a.txt", internal));
    const PackagePtr read = reopened(package);
    EXPECT_THAT(entryNames(m_folder / "s.zip"), ElementsAre("[Content_Types].xml", "d/a.txt", "d/_rels/a.txt.rels"));
    EXPECT_THAT(lines(read, "/d/a.txt"), ElementsAre("rId1 /d/a.txt"));
}

TEST_F(PackageRelationshipsTest, AnAdditionLeavesTheTextOfTheOthersAsItStands)
{
    PackageFile file;
    const std::string old =
        "<Relationship  TargetMode = 'External' Type='http://t.example/t' Target='a  b|c' Id='_1'/>";
    const PackagePtr package = open(file.addContentTypes().addRelationships(old));
    ASSERT_TRUE(package->relationships().add("/", "http://t.example/t", "/a.txt", internal));
    reopened(package);
    EXPECT_THAT(readEntries(m_folder / "s.zip")[1].second, HasSubstr(old));
}

TEST_F(PackageRelationshipsTest, ARefusedAdditionLeavesNoPartBehind)
{
    PackageFile file;
    const PackagePtr package = open(file.addContentTypes().add("a.txt", "a"));
    EXPECT_EQ(package->relationships().add("/a.txt", "http://t.example/t", "http://out.example/", internal).error(),
              code(OpcError::invalidRelationships));
    EXPECT_EQ(package->parts().all().value()->size(), 1U);
    EXPECT_TRUE(package->relationships().add("/a.txt", "http://t.example/t", "/a.txt", internal));
}

TEST_F(PackageRelationshipsTest, AnAdditionRefusesToHideAnItemThatIsNoPart)
{
    PackageFile file;
    file.add("[Content_Types].xml", "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'/>");
    const PackagePtr package = open(file.addRelationships(""));
    EXPECT_EQ(package->relationships().add("/", "http://t.example/t", "/a", internal).error(),
              code(OpcError::partExists));
}

TEST_F(PackageRelationshipsTest, ReplaceByTypeLeavesOneOfTheTypeAndAllOthers)
{
    PackageFile file;
    const PackagePtr package =
        open(file.addContentTypes().addRelationships("<Relationship Id='a' Type='http://t.example/1' Target='/a'/>"
                                                     "<Relationship Id='b' Type='http://t.example/2' Target='/b'/>"
                                                     "<Relationship Id='c' Type='http://t.example/1' Target='/c'/>"));
    ASSERT_TRUE(package->relationships().replaceByType("/", "http://t.example/1", "/new"));
    EXPECT_THAT(lines(reopened(package), "/"), ElementsAre("b /b", "rId1 /new"));
}

TEST_F(PackageRelationshipsTest, ReplaceByTypeWithWhatStandsThereChangesNoByte)
{
    PackageFile file;
    const PackagePtr package =
        open(file.addContentTypes().addRelationships("<Relationship Id='a' Type='http://t.example/1' Target='/a'/>"));
    ASSERT_TRUE(package->relationships().replaceByType("/", "http://t.example/1", "/a"));
    reopened(package);
    EXPECT_EQ(readFile(m_folder / "s.zip"), readFile(m_folder / "p.zip"));
}

TEST_F(PackageRelationshipsTest, ABrokenPartIsAnErrorWithItsName)
{
    PackageFile file;
    const PackagePtr package =
        open(file.addContentTypes().addRelationships("<Relationship Id='a' Type='http://t.example/1' Target='/a'/>"
                                                     "<Relationship Id='a' Type='http://t.example/1' Target='/b'/>"));
    const auto records = package->relationships().records("/");
    ASSERT_FALSE(records);
    EXPECT_EQ(records.error(), code(OpcError::duplicateRelationshipId));
    EXPECT_THAT(toStdString(records.error().message()), HasSubstr("/_rels/.rels"));
}
