#include "authoring/barrel_creation.h"

#include "authoring/example_creation.h"
#include "authoring/path_conversion.h"
#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
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
using IO::Bundle::BarrelOfExamplesBundle;
using testing::ElementsAre;
using testing::HasSubstr;

class CreateExamples : public testing::Test
{
protected:
    fs::path example(const std::string& name)
    {
        const fs::path path = folder / name;
        fs::create_directories(path.parent_path());
        Authoring::ExampleTexts texts;
        texts.title = std::u8string{name.begin(), name.end()}.c_str();
        Authoring::createExample({Authoring::toFilePath2(folder.write("design/top.kvsch", name))},
                                 Authoring::toFilePath2(path), texts)
            .value();
        return path;
    }

    Expected<void, ErrorCode2> create(const std::vector<fs::path>& files)
    {
        std::vector<FilePath2> paths;
        for (const fs::path& file : files)
            paths.push_back(Authoring::toFilePath2(file));
        return Authoring::createExamples(paths, Authoring::toFilePath2(output));
    }

    BarrelOfExamplesBundle opened() const
    {
        return BarrelOfExamplesBundle::open(Authoring::toFilePath2(output)).value();
    }

    TemporaryFolder folder;
    fs::path output = folder / "barrel.kvexs";
};

TEST_F(CreateExamples, OneExampleStandsUnderExamplesByItsName)
{
    create({example("a.kvbdl.zip")}).value();
    EXPECT_EQ(opened().numberExamples(), 1U);
    EXPECT_THAT(partNames(opened().package(), "/examples/"), ElementsAre("/examples/a.kvbdl.zip"));
}

TEST_F(CreateExamples, SubdirectoriesOfTheFirstExamplesDirectoryAreKept)
{
    create({example("all/a.kvbdl.zip"), example("all/filters/b.kvbdl.zip")}).value();
    EXPECT_THAT(partNames(opened().package(), "/examples/"),
                ElementsAre("/examples/a.kvbdl.zip", "/examples/filters/b.kvbdl.zip"));
}

TEST_F(CreateExamples, TheListIsTakenAsItComes)
{
    create({example("c.kvbdl.zip"), example("a.zip"), example("b")}).value();

    const BarrelOfExamplesBundle barrel = opened();
    std::vector<std::string> titles;
    const auto relationships = barrel.exampleRelationships().value();
    IO::OpcPackaging::detail::OpcPackageRelationshipCollectionIteratorSentinel end;
    for (auto it = relationships.begin(); it != end; ++it)
        titles.push_back(text(barrel.example(*it).value().bundle().value().title().value()));
    EXPECT_THAT(titles, ElementsAre("c.kvbdl.zip", "a.zip", "b"));
}

TEST_F(CreateExamples, TheBarrelHasNoTextsOfItsOwn)
{
    create({example("a.kvbdl.zip")}).value();
    EXPECT_FALSE(opened().title());
    EXPECT_FALSE(opened().description());
    EXPECT_FALSE(opened().keywords());
}

TEST_F(CreateExamples, AnExampleOutsideTheFirstOnesTreeIsRefusedInTheWordsOfAPrimaryFile)
{
    const fs::path outside = example("b.kvbdl.zip");
    const fs::path first = example("all/a.kvbdl.zip");
    EXPECT_THAT(
        [&] {
            (void)create({first, outside});
        },
        testing::ThrowsMessage<RuntimeError>(
            "secondary file must exist within the directory hierarchy of the primary file: " + outside.string()));
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(CreateExamples, AnExampleBesideTheFirstWhoseNameBeginsWithTwoDotsIsRefused)
{
    const fs::path first = example("a.kvbdl.zip");
    const fs::path dotted = example("..b.kvbdl.zip");
    EXPECT_THROW((void)create({first, dotted}), RuntimeError);
}

TEST_F(CreateExamples, AFileThatIsNoExampleRaisesAndLeavesNoOutput)
{
    const fs::path first = example("a.kvbdl.zip");
    EXPECT_THROW((void)create({first, folder.write("b.kvbdl.zip", "no package")}), bad_expected_access<ErrorCode2>);
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(CreateExamples, ABarrelInThePlaceOfAnExampleRaises)
{
    create({example("a.kvbdl.zip")}).value();
    EXPECT_THROW((void)create({output}), bad_expected_access<ErrorCode2>);
}

TEST_F(CreateExamples, NoExampleRaisesASentence)
{
    EXPECT_THROW((void)create({}), RuntimeError);
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(CreateExamples, AnOutputThatCannotBeWrittenIsAnErrorThatNamesIt)
{
    const fs::path first = example("a.kvbdl.zip");
    output = folder / "not there/barrel.kvexs";
    const auto written = create({first});
    ASSERT_FALSE(written);
    EXPECT_THAT(text(written.error().message()), HasSubstr("not there/barrel.kvexs"));
}

} // namespace
