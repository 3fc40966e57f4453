#include "host/core/paths/disk/native_path.h"
#include "tests/host/core/bundle/bundle_making.h"
#include "tests/host/core/bundle/generated_names.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

/// From the text that a script gets for a part to the path below a directory.
std::string localPath(const OpcPackagePart& part)
{
    const Url url = part.uri().value().toUri().value();
    return Disk::nativePath(url.toLocalFile(UrlLocalFileOptions::relativePath).value()).value();
}

std::string rawPath(std::string name)
{
    std::ranges::replace(name, '/', '\\');
    return "content\\" + name;
}

} // namespace

TEST(RoundTrip, NamesOfEverySortComeBackWithTheirBytes)
{
    const std::vector<std::string> names = generatedNames(200);
    const TemporaryFolder folder;
    auto example = ExampleBundle::create().value();
    for (const std::string& name : names) {
        const FilePath2 source = toFilePath2(folder.write("source/" + name, "bytes of " + name));
        const auto part =
            example.addFile(source, OpcPackagePartUri{toString2(rawPath(name))}, OpcPackageCompressionType::normal);
        ASSERT_TRUE(part) << name << ": " << toStdString(part.error().message());
        EXPECT_EQ(localPath(*part), "content/" + name);
    }
    ASSERT_TRUE(example.writeToFile(toFilePath2(folder / "e.kvbdl.zip")));
    expectVerified(folder / "e.kvbdl.zip");
    auto read = ContentBundle::open(toFilePath2(folder / "e.kvbdl.zip")).value();
    ASSERT_TRUE(read.unpack(toFilePath2(folder / "out")));
    EXPECT_EQ(filesBelow(folder / "out/content"), filesBelow(folder / "source"));
    for (const std::string& name : names)
        EXPECT_EQ(readFile(folder.path() / "out/content" / name), "bytes of " + name);
}

TEST(RoundTrip, TheTextThatAScriptGetsForAPartFindsThePart)
{
    const TemporaryFolder folder;
    auto example = ExampleBundle::create().value();
    for (const std::string& name : generatedNames(200)) {
        addText(example, folder, name, name);
        const auto added = example.package().part(OpcPackagePartUri{toString2(rawPath(name))}).value();
        const auto found = example.package().part(OpcPackagePartUri{toString2(nameOf(added))});
        ASSERT_TRUE(found) << name;
        EXPECT_EQ(bytesOf(*found), name);
    }
}

TEST(RoundTrip, ThePathThatAModelShowsMarksThePrimaryFile)
{
    const TemporaryFolder folder;
    auto example = ExampleBundle::create().value();
    for (const std::string& name : generatedNames(200)) {
        addText(example, folder, name, name);
        ASSERT_TRUE(example.setPrimaryFile(Url{toString2("content/" + name)})) << name;
        const Url target = example.primaryFileRelationship().value().targetUri().value();
        const FilePath2 path = target.toLocalFile(UrlLocalFileOptions::relativePath).value();
        EXPECT_EQ(Disk::nativePath(path).value(), "content/" + name);
    }
}

TEST(RoundTrip, NamesThatMakeNoPartNameAreRefusedAndShown)
{
    const TemporaryFolder folder;
    const FilePath2 source = toFilePath2(folder.write("a.txt", "a"));
    auto example = ExampleBundle::create().value();
    for (const char* name : {"dot.", "sub./a", "a\\\\b", "..\\a", "a\\..\\b", "bell\a", "a\tb", ""}) {
        const auto part = example.addFile(source, OpcPackagePartUri{toString2(std::string{"content\\"} + name)},
                                          OpcPackageCompressionType::normal);
        ASSERT_FALSE(part) << name;
        EXPECT_EQ(part.error(), code(OpcError::invalidPartName));
        EXPECT_NE(toStdString(part.error().message()).find("content"), std::string::npos);
    }
}

TEST(RoundTrip, ABarrelOfAThousandExamplesListsTheirTitles)
{
    constexpr std::size_t count = 1000;
    const TemporaryFolder folder;
    const FilePath2 example = toFilePath2(writeExample(folder, "e.kvbdl.zip", "the same"));
    auto barrel = BarrelOfExamplesBundle::create().value();
    for (std::size_t number = 0; number < count; ++number)
        ASSERT_TRUE(barrel.addExample(
            example, OpcPackagePartUri{toString2("examples\\" + std::to_string(number) + ".kvbdl.zip")}));
    ASSERT_TRUE(barrel.writeToFile(toFilePath2(folder / "b.kvexs")));
    const auto read = BarrelOfExamplesBundle::open(toFilePath2(folder / "b.kvexs")).value();
    std::size_t titles = 0;
    const auto relationships = read.exampleRelationships().value();
    for (auto it = relationships.begin();
         it != OpcPackaging::detail::OpcPackageRelationshipCollectionIteratorSentinel{}; ++it)
        titles += read.example(*it).value().bundle().value().title().value() == String2{u8"the same"} ? 1 : 0;
    EXPECT_EQ(titles, count);
    EXPECT_EQ(read.numberExamples(), count);
}
