#include "authoring/example_creation.h"

#include "authoring/path_conversion.h"
#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "kelvaris/system/runtime_error.h"
#include "tests/authoring/bundle_reading.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using namespace Kelvaris::System;
using IO::Bundle::ExampleBundle;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CreateExample : public testing::Test
{
protected:
    Expected<void, ErrorCode2> create(const std::vector<fs::path>& files, const Authoring::ExampleTexts& texts = {})
    {
        std::vector<FilePath2> paths;
        for (const fs::path& file : files)
            paths.push_back(Authoring::toFilePath2(file));
        return Authoring::createExample(paths, Authoring::toFilePath2(output), texts);
    }

    ExampleBundle opened() const { return ExampleBundle::open(Authoring::toFilePath2(output)).value(); }

    std::string primaryFile() const
    {
        const FilePath2 path = opened()
                                   .primaryFileRelationship()
                                   .value()
                                   .targetUri()
                                   .value()
                                   .toLocalFile(UrlLocalFileOptions::relativePath)
                                   .value();
        return Authoring::toStdPath(path).string();
    }

    TemporaryFolder folder;
    fs::path output = folder / "example.kvbdl.zip";
    fs::path top = folder.write("design/top.kvsch", "top");
};

TEST_F(CreateExample, OfOneFileHasThatFileAndNoFurtherTexts)
{
    Authoring::ExampleTexts onlyTitle;
    onlyTitle.title = u8"Low-pass";
    create({top}, onlyTitle).value();

    const ExampleBundle example = opened();
    EXPECT_THAT(partNames(example.package(), "/content/"), ElementsAre("/content/top.kvsch"));
    EXPECT_EQ(text(example.title().value()), "Low-pass");
    EXPECT_EQ(text(example.description().valueOr({})), "");
    EXPECT_EQ(text(example.manufacturer().valueOr({})), "");
    EXPECT_THAT(texts(example.keywords().valueOr({})), IsEmpty());
}

TEST_F(CreateExample, CarriesAllTextsThatWereGiven)
{
    Authoring::ExampleTexts all{u8"Tiefpaß", u8"second order, 1 kHz", u8"Höller", {}};
    all.keywords.push_back(u8"filter").value();
    all.keywords.push_back(u8"low pass").value();
    create({top}, all).value();

    const ExampleBundle example = opened();
    EXPECT_EQ(text(example.title().value()), "Tiefpaß");
    EXPECT_EQ(text(example.description().value()), "second order, 1 kHz");
    EXPECT_EQ(text(example.manufacturer().value()), "Höller");
    EXPECT_THAT(texts(example.keywords().value()), ElementsAre("filter", "low pass"));
}

TEST_F(CreateExample, TheFirstFileIsThePrimaryFile)
{
    create({top, folder.write("design/a.kvsch", "a")}).value();
    EXPECT_EQ(primaryFile(), "content/top.kvsch");
}

TEST_F(CreateExample, ThePrimaryFileOfAStrangeNameIsFoundAgain)
{
    create({folder.write("design/50% #1 Übertrager?.kvsch", "x")}).value();
    EXPECT_EQ(primaryFile(), "content/50% #1 Übertrager?.kvsch");
}

TEST_F(CreateExample, KeepsSubdirectoriesAndBytes)
{
    const std::string bytes(100'000, '\x7f');
    create({top, folder.write("design/models/a.va", bytes), folder.write("design/b.va", "")}).value();

    opened().unpack(Authoring::toFilePath2(folder / "unpacked")).value();

    EXPECT_THAT(filesBelow(folder / "unpacked"),
                ElementsAre("content/b.va", "content/models/a.va", "content/top.kvsch"));
    EXPECT_EQ(readFile(folder / "unpacked/content/models/a.va"), bytes);
    EXPECT_EQ(readFile(folder / "unpacked/content/top.kvsch"), "top");
    EXPECT_EQ(readFile(folder / "unpacked/content/b.va"), "");
}

TEST_F(CreateExample, UsesTheOutputPathAsItIs)
{
    output = folder / "no extension";
    create({top}).value();
    EXPECT_TRUE(fs::exists(output));
}

TEST_F(CreateExample, ARefusedFileLeavesNoOutput)
{
    EXPECT_THROW((void)create({top, folder.write("outside.va", "")}), RuntimeError);
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(CreateExample, APlaceIsRefusedBeforeAnyFileIsRead)
{
    // the first file is missing, which would be the failure of adding it
    EXPECT_THROW((void)create({folder / "design/missing.kvsch", folder.write("outside.va", "")}), RuntimeError);
}

TEST_F(CreateExample, AFileThatCannotBeReadRaisesAndLeavesNoOutput)
{
    EXPECT_THROW((void)create({top, folder / "design/missing.va"}), bad_expected_access<ErrorCode2>);
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(CreateExample, TheSameFileTwiceRaises)
{
    EXPECT_THROW((void)create({top, top}), bad_expected_access<ErrorCode2>);
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(CreateExample, ADirectoryInThePlaceOfAFileRaises)
{
    fs::create_directory(folder / "design/models");
    EXPECT_THROW((void)create({top, folder / "design/models"}), bad_expected_access<ErrorCode2>);
}

TEST_F(CreateExample, NoFileRaisesASentence)
{
    EXPECT_THROW((void)create({}), RuntimeError);
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(CreateExample, ATextThatCannotBeSetIsPassedOverAndTheBundleIsWritten)
{
    Authoring::ExampleTexts texts{u8"no text of an XML file may hold \x01", u8"fine", {}, {}};
    create({top}, texts).value();
    EXPECT_FALSE(opened().title());
    EXPECT_EQ(text(opened().description().value()), "fine");
    EXPECT_EQ(primaryFile(), "content/top.kvsch");
}

TEST_F(CreateExample, AnOutputThatCannotBeWrittenIsAnErrorThatNamesIt)
{
    output = folder / "not there/example.kvbdl.zip";
    const auto written = create({top});
    ASSERT_FALSE(written);
    EXPECT_THAT(text(written.error().message()), HasSubstr("not there/example.kvbdl.zip"));
}

TEST_F(CreateExample, AnExistingOutputIsReplaced)
{
    folder.write("example.kvbdl.zip", "old");
    create({top}).value();
    EXPECT_THAT(partNames(opened().package(), "/content/"), ElementsAre("/content/top.kvsch"));
}

} // namespace
