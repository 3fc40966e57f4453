#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "tests/script/loaded_module.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace Kelvaris;
using System::FilePath2;
using System::String2;
using System::StringVector2;
using System::IO::Bundle::BarrelOfExamplesBundle;
using System::IO::Bundle::ExampleBundle;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::string narrow(const String2& text)
{
    return {reinterpret_cast<const char*>(text.data()), text.length()};
}

FilePath2 toPath(const std::string& path)
{
    return {reinterpret_cast<const char8_t*>(path.data()), path.size()};
}

class CreationFunctions : public testing::Test
{
protected:
    ExampleBundle example() const { return ExampleBundle::open(toPath(output)).value(); }

    LoadedModule module;
    TemporaryFolder folder;
    std::string top = folder.write("design/top.kvsch", "top");
    std::string output = folder / "example.kvbdl.zip";
    LogCapture log;
};

TEST_F(CreationFunctions, AnExampleFromThreeArgumentsHasATitleOnly)
{
    const CallResult result = call("_create_example", {{top}, {output}, {"Low-pass", "ignored"}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, ElementsAre("OK"));
    EXPECT_EQ(narrow(example().title().value()), "Low-pass");
    EXPECT_EQ(narrow(example().description().valueOr({})), "");
    EXPECT_EQ(narrow(example().manufacturer().valueOr({})), "");
    EXPECT_EQ(example().keywords().valueOr({}).size(), 0U);
}

TEST_F(CreationFunctions, AnExampleFromSixArgumentsCarriesThemAll)
{
    call("_create_example", {{top}, {output}, {"Tiefpaß"}, {"2nd order"}, {"Höller"}, {"filter", "low pass"}});
    EXPECT_EQ(narrow(example().title().value()), "Tiefpaß");
    EXPECT_EQ(narrow(example().description().value()), "2nd order");
    EXPECT_EQ(narrow(example().manufacturer().value()), "Höller");
    const StringVector2 keywords = example().keywords().value();
    ASSERT_EQ(keywords.size(), 2U);
    EXPECT_EQ(narrow(keywords.data()[1]), "low pass");
}

TEST_F(CreationFunctions, AnEmptyOptionalTextActsLikeAMissingOne)
{
    call("_create_example", {{top}, {output}, {"T"}, {""}, {""}, {}});
    const std::string withEmpty = readFile(output);
    call("_create_example", {{top}, {output}, {"T"}});
    EXPECT_EQ(withEmpty, readFile(output));
    call("_create_example", {{top}, {output}, {"T"}, {}, {}});
    EXPECT_EQ(withEmpty, readFile(output));
}

TEST_F(CreationFunctions, AnExampleWithoutAnOutputOrATitleFails)
{
    EXPECT_EQ(call("_create_example", {{top}, {}, {"T"}}).status, FUNC_FAILED);
    EXPECT_EQ(call("_create_example", {{top}, {output}, {}}).status, FUNC_FAILED);
    const std::string line = "error [script/function] _create_example failed: argument index out of range";
    EXPECT_THAT(log.lines(), ElementsAre(line, line));
    EXPECT_FALSE(std::filesystem::exists(output));
}

TEST_F(CreationFunctions, AnExampleWithoutAFileFailsWithASentence)
{
    const CallResult result = call("_create_example", {{}, {output}, {"T"}});
    EXPECT_EQ(result.status, FUNC_FAILED);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("_create_example failed: the list of files is empty")));
}

TEST_F(CreationFunctions, AFileOutsideOfThePrimaryFilesTreeFailsTheCall)
{
    const std::string outside = folder.write("b.va", "");
    const CallResult result = call("_create_example", {{top, outside}, {output}, {"T"}});
    EXPECT_EQ(result.status, FUNC_FAILED);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _create_example failed: secondary file must exist "
                                         "within the directory hierarchy of the primary file: " +
                                         outside));
    EXPECT_FALSE(std::filesystem::exists(output));
}

TEST_F(CreationFunctions, AFileThatCannotBeReadFailsTheCallWithoutItsMessage)
{
    EXPECT_EQ(call("_create_example", {{folder / "missing.kvsch"}, {output}, {"T"}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _create_example failed: bad expected access"));
}

TEST_F(CreationFunctions, AnExampleThatCannotBeWrittenTellsTheScriptInTheResult)
{
    const CallResult result = call("_create_example", {{top}, {folder / "not there/e.zip"}, {"T"}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, ElementsAre(AllOf(StartsWith("FAILED: "), HasSubstr("not there/e.zip"))));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(CreationFunctions, ABarrelOfExamplesIsCreated)
{
    call("_create_example", {{top}, {output}, {"T"}});
    const std::string barrel = folder / "barrel.kvexs";
    const CallResult result = call("_create_examples", {{output}, {barrel}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, ElementsAre("OK"));
    EXPECT_EQ(BarrelOfExamplesBundle::open(toPath(barrel)).value().numberExamples(), 1U);
}

TEST_F(CreationFunctions, ABarrelOfAFileThatIsNoExampleFailsWithPlainWording)
{
    const CallResult result = call("_create_examples", {{top}, {folder / "barrel.kvexs"}});
    EXPECT_EQ(result.status, FUNC_FAILED);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _create_examples failed: bad expected access"));
}

TEST_F(CreationFunctions, ABarrelWithoutAnOutputFails)
{
    EXPECT_EQ(call("_create_examples", {{output}, {}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(),
                ElementsAre("error [script/function] _create_examples failed: argument index out of range"));
}

TEST_F(CreationFunctions, ABarrelWithoutAnExampleFailsWithASentence)
{
    EXPECT_EQ(call("_create_examples", {{}, {folder / "barrel.kvexs"}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("_create_examples failed: the list of files is empty")));
}

TEST_F(CreationFunctions, ABarrelThatCannotBeWrittenTellsTheScriptInTheResult)
{
    call("_create_example", {{top}, {output}, {"T"}});
    const CallResult result = call("_create_examples", {{output}, {folder / "not there/b.kvexs"}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, ElementsAre(AllOf(StartsWith("FAILED: "), HasSubstr("not there/b.kvexs"))));
}

} // namespace
