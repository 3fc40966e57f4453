#include "kelvaris/system/io/bundle/example_bundle.h"

#include "host/core/paths/disk/native_path.h"
#include "tests/host/core/bundle/bundle_making.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class ExampleBundleTest : public testing::Test
{
protected:
    void addHtml(std::string_view path) { addText(m_example, m_folder, path, "page " + std::string{path}); }

    /// What a reader of the saved file gets.
    ExampleBundle reopened()
    {
        m_example.writeToFile(toFilePath2(m_folder / "e.kvbdl.zip")).value();
        expectVerified(m_folder / "e.kvbdl.zip");
        return ExampleBundle::open(toFilePath2(m_folder / "e.kvbdl.zip")).value();
    }

    std::string primaryPath(const ExampleBundle& example) const
    {
        const FilePath2 path = example.primaryFileRelationship()
                                   .value()
                                   .targetUri()
                                   .value()
                                   .toLocalFile(UrlLocalFileOptions::relativePath)
                                   .value();
        return Disk::nativePath(path).value();
    }

    TemporaryFolder m_folder;
    ExampleBundle m_example = ExampleBundle::create().value();
};

std::string documentationOf(const ExampleBundle& example)
{
    const ByteArray2 bytes = example.documentationHTML().value().content().value();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.length()};
}

} // namespace

TEST_F(ExampleBundleTest, ANewOneHasNeitherContentNorTexts)
{
    EXPECT_THAT(relationshipLines(m_example.contentRelationships().value()), testing::IsEmpty());
    EXPECT_EQ(m_example.title().error(), code(OpcError::propertyNotSet));
    EXPECT_EQ(m_example.manufacturer().error(), code(BundleError::noManufacturer));
    EXPECT_EQ(m_example.primaryFileRelationship().error(), code(BundleError::noPrimaryFile));
    EXPECT_EQ(m_example.documentationHTML().error(), code(BundleError::noDocumentation));
}

TEST_F(ExampleBundleTest, AddFileMakesAContentPartWithTheMediaTypeOfItsKind)
{
    const auto source = toFilePath2(m_folder.write("src/amp.kvsch", "schematic"));
    ASSERT_TRUE(m_example.addFile(source, OpcPackagePartUri{L"content\\amp.kvsch"}, OpcPackageCompressionType::normal));
    const ExampleBundle read = reopened();
    EXPECT_THAT(relationshipLines(read.contentRelationships().value()), ElementsAre("rId2 content /content/amp.kvsch"));
    EXPECT_THAT(readEntries(m_folder / "e.kvbdl.zip").front().second,
                HasSubstr("Extension=\"kvsch\" ContentType=\"application/vnd.kelvaris.schematic\""));
}

TEST_F(ExampleBundleTest, AddFileTakesTheBytesInAtOnce)
{
    addText(m_example, m_folder, "a.txt", "first");
    m_folder.write("sources/text", "changed later");
    std::filesystem::remove_all(m_folder / "sources");
    const ExampleBundle read = reopened();
    EXPECT_EQ(bytesOf(read.package().part(OpcPackagePartUri{L"/content/a.txt"}).value()), "first");
}

TEST_F(ExampleBundleTest, AddFileRefusesWhatWillNotDoAndLeavesTheBundleAsItWas)
{
    addText(m_example, m_folder, "a.txt", "a");
    const FilePath2 source = toFilePath2(m_folder.write("b.txt", "b"));
    const auto add = [&](const FilePath2& file, const wchar_t* name) {
        return m_example.addFile(file, OpcPackagePartUri{name}, OpcPackageCompressionType::normal);
    };
    EXPECT_EQ(add(source, L"content\\A.TXT").error(), code(OpcError::partExists));
    EXPECT_EQ(add(source, L"content\\a.txt\\b.txt").error(), code(OpcError::derivedPartName));
    EXPECT_EQ(add(source, L"content\\").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(add(source, L"content\\dot.").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(add(toFilePath2(m_folder / "gone"), L"content\\c.txt").error(),
              ErrorCode2(ENOENT, system_error_category()));
    EXPECT_THAT(partNames(m_example.package()), ElementsAre("/bundle.xml", "/content/a.txt"));
    EXPECT_THAT(relationshipLines(m_example.contentRelationships().value()),
                ElementsAre("rId2 content /content/a.txt"));
}

TEST_F(ExampleBundleTest, TextsComeBackAsTheyWereSet)
{
    StringVector2 keywords;
    ASSERT_TRUE(keywords.push_back(u8"low noise"));
    ASSERT_TRUE(keywords.push_back(u8"Größe <&>"));
    ASSERT_TRUE(m_example.setTitle(u8"Ein \"Titel\" & mehr"));
    ASSERT_TRUE(m_example.setDescription(u8"zwei\nZeilen"));
    ASSERT_TRUE(m_example.setKeywords(keywords));
    ASSERT_TRUE(m_example.setManufacturer(u8"Müller & <Söhne>"));
    const ExampleBundle read = reopened();
    EXPECT_EQ(read.title().value(), String2{u8"Ein \"Titel\" & mehr"});
    EXPECT_EQ(read.description().value(), String2{u8"zwei\nZeilen"});
    EXPECT_EQ(read.keywords().value(), keywords);
    EXPECT_EQ(read.manufacturer().value(), String2{u8"Müller & <Söhne>"});
}

TEST_F(ExampleBundleTest, TheEmptyManufacturerRemovesIt)
{
    ASSERT_TRUE(m_example.setManufacturer(u8"Acme"));
    ASSERT_TRUE(m_example.setManufacturer(u8""));
    EXPECT_EQ(m_example.manufacturer().error(), code(BundleError::noManufacturer));
    EXPECT_EQ(reopened().manufacturer().error(), code(BundleError::noManufacturer));
}

TEST_F(ExampleBundleTest, AManufacturerThatXmlCannotHoldIsRefusedAndTheOldOneStays)
{
    ASSERT_TRUE(m_example.setManufacturer(u8"Acme"));
    EXPECT_EQ(m_example.setManufacturer(u8"bell \a").error(), code(BundleError::invalidProperties));
    EXPECT_EQ(m_example.manufacturer().value(), String2{u8"Acme"});
}

TEST_F(ExampleBundleTest, SetPrimaryFileReplacesTheOneBefore)
{
    addText(m_example, m_folder, "a.txt", "a");
    addText(m_example, m_folder, "b.txt", "b");
    ASSERT_TRUE(m_example.setPrimaryFile(OpcPackagePartUri{L"/content/a.txt"}));
    ASSERT_TRUE(m_example.setPrimaryFile(OpcPackagePartUri{L"content\\b.txt"}));
    EXPECT_EQ(primaryPath(m_example), "content/b.txt");
    EXPECT_EQ(primaryPath(reopened()), "content/b.txt");
}

TEST_F(ExampleBundleTest, SetPrimaryFileToAPartThatIsNotThereLeavesThePrimaryFileAsItWas)
{
    addText(m_example, m_folder, "a.txt", "a");
    ASSERT_TRUE(m_example.setPrimaryFile(OpcPackagePartUri{L"/content/a.txt"}));
    EXPECT_EQ(m_example.setPrimaryFile(OpcPackagePartUri{L"/content/b.txt"}).error(), code(OpcError::noSuchPart));
    EXPECT_EQ(m_example.setPrimaryFile(OpcPackagePartUri{L"a/../b"}).error(), code(OpcError::invalidPartName));
    EXPECT_EQ(m_example.setPrimaryFile(Url{u8"content/sub"}).error(), code(OpcError::noSuchPart));
    EXPECT_EQ(primaryPath(m_example), "content/a.txt");
}

TEST_F(ExampleBundleTest, SetPrimaryFileByThePathThatAModelShowsGivesThatPathBack)
{
    for (const char* name : {"a b.txt", "50%.txt", "a%20b.txt", "#1.txt", "a?b.txt", "a+b&c.txt", "größe.txt",
                             "回路.txt", "😀.txt", "sub dir/ä%/x.txt", "it's [1] {2} ^~`.txt", "semi;colon,.txt"}) {
        addText(m_example, m_folder, name, name);
        const std::string path = "content/" + std::string{name};
        ASSERT_TRUE(m_example.setPrimaryFile(Url{toString2(path)})) << name;
        EXPECT_EQ(primaryPath(m_example), path);
    }
    EXPECT_EQ(primaryPath(reopened()), "content/semi;colon,.txt");
}

TEST_F(ExampleBundleTest, SetPrimaryFileTakesAPartNameAsToUriGivesIt)
{
    addText(m_example, m_folder, "50% #1.txt", "x");
    const Url url = OpcPackagePartUri{L"content\\50% #1.txt"}.toUri().value();
    ASSERT_TRUE(m_example.setPrimaryFile(url));
    EXPECT_EQ(primaryPath(m_example), "content/50% #1.txt");
}

TEST_F(ExampleBundleTest, SeveralPrimaryFilesAreNone)
{
    addText(m_example, m_folder, "a.txt", "a");
    ASSERT_TRUE(m_example.setPrimaryFile(OpcPackagePartUri{L"/content/a.txt"}));
    const String2 type = m_example.primaryFileRelationship().value().type();
    ASSERT_TRUE(
        m_example.package().createRelationship(OpcPackagePartUri{L"/bundle.xml"}, OpcTargetMode::internal, type));
    EXPECT_EQ(m_example.primaryFileRelationship().error(), code(BundleError::noPrimaryFile));
}

TEST_F(ExampleBundleTest, APrimaryFileThatIsNotThereIsNone)
{
    ASSERT_TRUE(m_example.package().createRelationship(
        OpcPackagePartUri{L"/content/gone.txt"}, OpcTargetMode::internal,
        u8"http://schemas.kelvaris.example/package/2025/relationships/example-bundle/primary-file"));
    const auto primary = m_example.primaryFileRelationship();
    ASSERT_FALSE(primary);
    EXPECT_EQ(primary.error(), code(BundleError::noPrimaryFile));
    EXPECT_THAT(toStdString(primary.error().message()), HasSubstr("/content/gone.txt"));
}

TEST_F(ExampleBundleTest, DocumentationIsLookedForUnderThreeNamesInTheirOrder)
{
    addHtml("sub/documentation.html");
    EXPECT_EQ(m_example.documentationHTML().error(), code(BundleError::noDocumentation));
    addHtml("Index.HTML");
    EXPECT_EQ(documentationOf(m_example), "page Index.HTML");
    addHtml("README.html");
    EXPECT_EQ(documentationOf(m_example), "page README.html");
    addHtml("documentation.html");
    EXPECT_EQ(documentationOf(m_example), "page documentation.html");
    EXPECT_EQ(documentationOf(reopened()), "page documentation.html");
}

TEST_F(ExampleBundleTest, DocumentationThatWasNamedGoesBeforeTheOthers)
{
    addHtml("documentation.html");
    addHtml("other.html");
    ASSERT_TRUE(m_example.setDocumentationHTML(OpcPackagePartUri{L"/content/other.html"}));
    EXPECT_EQ(documentationOf(m_example), "page other.html");
    ASSERT_TRUE(m_example.setDocumentationHTML(OpcPackagePartUri{L"/content/documentation.html"}));
    EXPECT_EQ(documentationOf(reopened()), "page documentation.html");
    EXPECT_EQ(m_example.setDocumentationHTML(OpcPackagePartUri{L"/gone.html"}).error(), code(OpcError::noSuchPart));
}

TEST_F(ExampleBundleTest, APageThatIsNoContentPartIsNoDocumentation)
{
    ASSERT_TRUE(m_example.package().createPart(OpcPackagePartUri{L"/content/index.html"}, MIMEType{FileType::html},
                                               OpcPackageCompressionType::normal));
    EXPECT_EQ(m_example.documentationHTML().error(), code(BundleError::noDocumentation));
}

TEST_F(ExampleBundleTest, OpenRefusesAnotherKindAndNamesBoth)
{
    ASSERT_TRUE(ContentBundle::create().value().writeToFile(toFilePath2(m_folder / "c.zip")));
    const auto opened = ExampleBundle::open(toFilePath2(m_folder / "c.zip"));
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error(), code(BundleError::wrongKind));
    const std::string message = toStdString(opened.error().message());
    EXPECT_THAT(message, HasSubstr("c.zip"));
    EXPECT_THAT(message, HasSubstr("an example bundle was expected, this is a content bundle"));
}

TEST_F(ExampleBundleTest, OpenRefusesAPackageThatDoesNotSayWhatItIs)
{
    PackageFile file;
    file.addContentTypes().write(m_folder / "p.zip");
    EXPECT_EQ(ExampleBundle::open(toFilePath2(m_folder / "p.zip")).error(), code(BundleError::wrongKind));
}

TEST_F(ExampleBundleTest, EqualInputGivesEqualBytes)
{
    const auto first = writeExample(m_folder, "1.zip", "Same");
    const auto second = writeExample(m_folder, "2.zip", "Same");
    EXPECT_EQ(readFile(first), readFile(second));
    EXPECT_NE(readFile(first), readFile(writeExample(m_folder, "3.zip", "Other")));
}

TEST_F(ExampleBundleTest, ANewFileBeginsWithItsContentTypesAndRelationships)
{
    EXPECT_THAT(entryNames(writeExample(m_folder, "1.zip", "Title")),
                ElementsAre("[Content_Types].xml", "_rels/.rels", "bundle.xml", "content/amp.kvsch",
                            "content/sub/amp.txt", "docProps/core.xml"));
}
