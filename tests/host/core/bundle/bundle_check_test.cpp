#include "host/core/bundle/bundle_inspection.h"

#include "host/core/errors/error_words.h"
#include "tests/host/core/opc/package_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using IO::Bundle::checkBundle;
using IO::Bundle::CheckReport;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
namespace fs = std::filesystem;

namespace {

const std::string types = "http://schemas.kelvaris.example/package/2025/relationships/";

constexpr const char* propertiesType =
    "<Override PartName=\"/bundle.xml\" ContentType=\"application/vnd.kelvaris.bundle-properties+xml\"/>";

std::string relationship(const std::string& id, const std::string& type, const std::string& target)
{
    return "<Relationship Id=\"" + id + "\" Type=\"" + types + type + "\" Target=\"" + target + "\"/>";
}

std::string bundleXml(const std::string& kind)
{
    return "<bundle xmlns=\"http://schemas.kelvaris.example/package/2025/bundle\"><kind>" + kind + "</kind></bundle>";
}

/// A bundle of a kind with the content part "/content/a.txt" and more relationships.
void writeBundle(const fs::path& path, const std::string& kind, const std::string& relationships)
{
    PackageFile{}
        .addContentTypes(propertiesType)
        .addRelationships(relationship("p", "bundle/properties", "bundle.xml") +
                          relationship("c", "content-bundle/content", "content/a.txt") + relationships)
        .add("bundle.xml", bundleXml(kind))
        .add("content/a.txt", "a")
        .write(path);
}

class BundleCheckTest : public testing::Test
{
protected:
    CheckReport check() const { return checkBundle(toFilePath2(file())).value(); }

    /// Each as "where: what: why", the file's own path left out.
    std::vector<std::string> faults() const
    {
        std::vector<std::string> found;
        for (const ErrorCode2& fault : check().faults) {
            std::string text = Errors::reasonFrom(fault);
            if (const std::size_t at = text.find(file().string()); at != std::string::npos)
                text.erase(at, file().string().size() + 2);
            found.push_back(text);
        }
        return found;
    }

    fs::path file() const { return m_folder / "a.zip"; }
    const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

} // namespace

TEST_F(BundleCheckTest, FindsNothingInAGoodBundle)
{
    writeBundle(file(), "example", relationship("f", "example-bundle/primary-file", "content/a.txt"));
    EXPECT_THAT(faults(), IsEmpty());
    EXPECT_THAT(check().remarks, IsEmpty());
}

TEST_F(BundleCheckTest, TellsAllFaultsAndNotTheFirstAlone)
{
    PackageFile{}
        .addContentTypes("<Default Extension=\"rels\" ContentType=\"a/b\"/><Default ContentType=\"a/b\"/>")
        .addRelationships("<Relationship Id=\"1\" Type=\"urn:t\" Target=\"a\"/>"
                          "<Relationship Id=\"r\" Type=\"urn:t\" Target=\"content/a.txt\"/>"
                          "<Relationship Id=\"r\" Type=\"urn:t\" Target=\"content/a.txt\"/>")
        .add("content/a.txt", "a")
        .add("CONTENT/A.TXT", "b")
        .write(file());
    EXPECT_THAT(faults(), ElementsAre(HasSubstr("M2.14"), HasSubstr("M2.5"), HasSubstr("M2.6"),
                                      HasSubstr("'1' is no id"), HasSubstr("the id 'r' stands twice")));
}

TEST_F(BundleCheckTest, TellsFilesThatCannotBeUnpackedOnceAndInTheirOrder)
{
    PackageFile package;
    std::string relationships = relationship("p", "bundle/properties", "bundle.xml");
    std::vector<testing::Matcher<std::string>> expected;
    for (int number = 0; number < 10; ++number) {
        const std::string name = "content/" + std::to_string(number) + "%FF.txt";
        package.add(name, "a");
        for (const char* id : {"a", "b"})
            relationships += relationship(id + std::to_string(number), "content-bundle/content", name);
        expected.emplace_back(StartsWith("/" + name));
    }
    package.addContentTypes(propertiesType)
        .addRelationships(relationships)
        .add("bundle.xml", bundleXml("content"))
        .write(file());
    EXPECT_THAT(faults(), ElementsAreArray(expected));
}

TEST_F(BundleCheckTest, TellsWhatIsNoPartOfTheFormat)
{
    writeBundle(file(), "sculpture", "");
    EXPECT_THAT(faults(), ElementsAre("/bundle.xml: the properties of the bundle cannot be read: a bundle of the kind "
                                      "\"sculpture\" is none that there is"));
}

TEST_F(BundleCheckTest, TellsWhenAnExampleHasNoPrimaryFileOrSeveral)
{
    writeBundle(file(), "example", "");
    EXPECT_THAT(faults(), ElementsAre(HasSubstr("the example has no primary file")));
    writeBundle(file(), "example",
                relationship("f", "example-bundle/primary-file", "content/a.txt") +
                    relationship("g", "example-bundle/primary-file", "content/a.txt"));
    EXPECT_THAT(faults(), ElementsAre(HasSubstr("there are 2 of the type " + types + "example-bundle/primary-file")));
    writeBundle(file(), "example", relationship("f", "example-bundle/primary-file", "bundle.xml"));
    EXPECT_THAT(faults(), ElementsAre(HasSubstr("it is none of the content files")));
}

TEST_F(BundleCheckTest, TellsWhereARelationshipOfTheFormatLeadsNowhere)
{
    writeBundle(file(), "scriptable", relationship("s", "scriptable-bundle/script", "none.kvscr"));
    EXPECT_THAT(faults(), ElementsAre(HasSubstr("/none.kvscr: the package has no such part")));
}

TEST_F(BundleCheckTest, LooksIntoTheExamplesOfABarrel)
{
    writeBundle(folder() / "in.zip", "content", "");
    PackageFile{}
        .addContentTypes("<Default Extension=\"zip\" "
                         "ContentType=\"application/vnd.kelvaris.example-bundle+zip\"/>")
        .addRelationships(relationship("p", "bundle/properties", "bundle.xml") +
                          relationship("e", "barrel-of-examples/example", "examples/in.zip") +
                          relationship("f", "barrel-of-examples/example", "examples/plain.zip"))
        .add("bundle.xml", bundleXml("barrel-of-examples"))
        .add("examples/in.zip", readFile(folder() / "in.zip"))
        .add("examples/plain.zip", "no package")
        .write(file());
    EXPECT_THAT(faults(), ElementsAre(HasSubstr("examples/in.zip: the file is a bundle of another kind"),
                                      HasSubstr("examples/plain.zip: not a ZIP file")));
}

TEST_F(BundleCheckTest, AnswersThatThereIsNothingToCheck)
{
    EXPECT_FALSE(checkBundle(toFilePath2(folder() / "none.zip")));
    const auto checked = checkBundle(toFilePath2(folder().write("text.zip", "no package")));
    ASSERT_FALSE(checked);
    EXPECT_EQ(checked.error(), code(IO::OpcPackaging::OpcError::notAnArchive));
}

TEST_F(BundleCheckTest, PlansWhatUnpackingWrites)
{
    writeBundle(file(), "content", "");
    const auto package = IO::OpcPackaging::open_package(toFilePath2(file())).value();
    const auto files = IO::Bundle::plannedFiles(package, toFilePath2(folder() / "new")).value();
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files.front().path, "content/a.txt");
    EXPECT_EQ(files.front().size, 1U);
    EXPECT_FALSE(fs::exists(folder() / "new"));
    folder().write("new/content/a.txt", "old");
    const auto again = IO::Bundle::plannedFiles(package, toFilePath2(folder() / "new"));
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error(), code(IO::OpcPackaging::OpcError::destinationExists));
}
