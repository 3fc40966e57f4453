#include "kelvaris/system/io/bundle/content_bundle.h"

#include "kelvaris/system/io/bundle/scriptable_bundle.h"
#include "tests/host/core/bundle/bundle_making.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class ContentBundleTest : public testing::Test
{
protected:
    Expected<ContentBundle, ErrorCode2> open(std::string_view name) const
    {
        return ContentBundle::open(toFilePath2(m_folder / name));
    }

    TemporaryFolder m_folder;
};

constexpr const char* propertiesRelationship =
    "<Relationship Id='p' Target='bundle.xml' "
    "Type='http://schemas.kelvaris.example/package/2025/relationships/bundle/properties'/>";

std::string properties(std::string_view kind)
{
    std::string text = "<bundle xmlns='http://schemas.kelvaris.example/package/2025/bundle'><kind>";
    text += kind;
    return text + "</kind></bundle>";
}

} // namespace

TEST_F(ContentBundleTest, ANewOneComesBackEmpty)
{
    ASSERT_TRUE(ContentBundle::create().value().writeToFile(toFilePath2(m_folder / "c.zip")));
    expectVerified(m_folder / "c.zip");
    EXPECT_THAT(relationshipLines(open("c.zip").value().contentRelationships().value()), IsEmpty());
    EXPECT_THAT(entryNames(m_folder / "c.zip"), ElementsAre("[Content_Types].xml", "_rels/.rels", "bundle.xml"));
}

TEST_F(ContentBundleTest, CreateContentPartFromFileRelatesThePackageToIt)
{
    auto bundle = ContentBundle::create().value();
    const auto part = bundle.createContentPartFromFile(toFilePath2(m_folder.write("a.bin", "bytes")),
                                                       OpcPackagePartUri{L"/content/a.bin"}, MIMEType{u8"x/y;a=b"},
                                                       OpcPackageCompressionType::maximum);
    EXPECT_EQ(nameOf(part.value()), "/content/a.bin");
    ASSERT_TRUE(bundle.writeToFile(toFilePath2(m_folder / "c.zip")));
    EXPECT_THAT(relationshipLines(open("c.zip").value().contentRelationships().value()),
                ElementsAre("rId2 content /content/a.bin"));
    EXPECT_THAT(readEntries(m_folder / "c.zip").front().second, HasSubstr("x/y;a=b"));
}

TEST_F(ContentBundleTest, CreateContentPartFromFileRefusesWhatIsNoMediaType)
{
    auto bundle = ContentBundle::create().value();
    const auto part = bundle.createContentPartFromFile(toFilePath2(m_folder.write("a.bin", "bytes")),
                                                       OpcPackagePartUri{L"/content/a.bin"}, MIMEType{u8"no type"},
                                                       OpcPackageCompressionType::normal);
    EXPECT_EQ(part.error(), code(OpcError::invalidMediaType));
    EXPECT_THAT(partNames(bundle.package()), ElementsAre("/bundle.xml"));
}

TEST_F(ContentBundleTest, AnExampleOpensAsAContentBundle)
{
    writeExample(m_folder, "e.zip", "Example");
    EXPECT_EQ(open("e.zip").value().title().value(), String2{u8"Example"});
}

TEST_F(ContentBundleTest, APackageThatDoesNotSayWhatItIsOpensAsAContentBundle)
{
    PackageFile file;
    file.addContentTypes().addRelationships("").add("bundle.xml", "<mine/>").write(m_folder / "p.zip");
    EXPECT_TRUE(open("p.zip"));
}

TEST_F(ContentBundleTest, OtherKindsAreRefusedAndBothAreNamed)
{
    ASSERT_TRUE(BarrelOfExamplesBundle::create().value().writeToFile(toFilePath2(m_folder / "b.zip")));
    ASSERT_TRUE(ScriptableBundle::create().value().writeToFile(toFilePath2(m_folder / "s.zip")));
    EXPECT_EQ(open("b.zip").error(), code(BundleError::wrongKind));
    EXPECT_THAT(toStdString(open("b.zip").error().message()),
                HasSubstr("a content bundle was expected, this is a barrel of examples"));
    EXPECT_THAT(toStdString(open("s.zip").error().message()), HasSubstr("this is a scriptable bundle"));
}

TEST_F(ContentBundleTest, AKindThatNobodyKnowsIsRefusedByItsName)
{
    PackageFile file;
    file.addContentTypes().addRelationships(propertiesRelationship).add("bundle.xml", properties("future"));
    file.write(m_folder / "p.zip");
    EXPECT_EQ(open("p.zip").error(), code(BundleError::wrongKind));
    EXPECT_THAT(toStdString(open("p.zip").error().message()), HasSubstr("\"future\""));
}

TEST_F(ContentBundleTest, PropertiesThatCannotBeReadAreNotPassedOver)
{
    PackageFile broken;
    broken.addContentTypes().addRelationships(propertiesRelationship).add("bundle.xml", "<bundle");
    broken.write(m_folder / "broken.zip");
    EXPECT_EQ(open("broken.zip").error(), code(BundleError::invalidProperties));
    PackageFile missing;
    missing.addContentTypes().addRelationships(propertiesRelationship).write(m_folder / "missing.zip");
    EXPECT_EQ(open("missing.zip").error(), code(BundleError::invalidProperties));
    PackageFile twice;
    std::string both = propertiesRelationship;
    both += "<Relationship Id='q' Target='/bundle.xml' "
            "Type='http://schemas.kelvaris.example/package/2025/relationships/bundle/properties'/>";
    twice.addContentTypes().addRelationships(both).add("bundle.xml", properties("content"));
    twice.write(m_folder / "twice.zip");
    EXPECT_EQ(open("twice.zip").error(), code(BundleError::invalidProperties));
}

TEST_F(ContentBundleTest, AFileThatIsNoPackageIsRefused)
{
    m_folder.write("t.zip", "text");
    EXPECT_EQ(open("t.zip").error(), code(OpcError::notAnArchive));
    EXPECT_EQ(open("gone.zip").error(), ErrorCode2(ENOENT, system_error_category()));
}

TEST_F(ContentBundleTest, ManyContentPartsAreAddedAndReadBack)
{
    constexpr int count = 2000;
    auto bundle = ContentBundle::create().value();
    const FilePath2 source = toFilePath2(m_folder.write("a.txt", "a"));
    for (int number = 0; number < count; ++number)
        ASSERT_TRUE(bundle.createContentPartFromFile(
            source, OpcPackagePartUri{toString2("content/" + std::to_string(number) + ".txt")},
            MIMEType{FileType::text}, OpcPackageCompressionType::normal));
    ASSERT_TRUE(bundle.writeToFile(toFilePath2(m_folder / "c.zip")));
    EXPECT_EQ(relationshipLines(open("c.zip").value().contentRelationships().value()).size(),
              static_cast<std::size_t>(count));
}
