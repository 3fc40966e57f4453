#include "tests/e2e/host_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

using testing::HasSubstr;

namespace {

const fs::path samples = SAMPLES_DIRECTORY;

ProgramEnd build(const TemporaryFolder& folder)
{
    return runHost({"run", (samples / "build_samples.js").string(), samples.string(), folder.path().string()});
}

} // namespace

TEST(Samples, AreBuiltIntoExamplesABarrelAndASchematicBundle)
{
    const TemporaryFolder folder;
    const auto end = build(folder);
    EXPECT_EQ(end.status, 0) << end;
    EXPECT_EQ(end.errors, "");
    EXPECT_THAT(end.output, HasSubstr("example   rc_lowpass.kvbdl.zip: RC low-pass filter, 1.06 kHz, 4 files\n"));
    EXPECT_THAT(end.output, HasSubstr("barrel    samples.kvexs: 13 examples\n"));
    EXPECT_THAT(end.output, HasSubstr("hierarchy active_crossover.schematics.zip: 8 instances in 4 parts\n"));
    EXPECT_THAT(end.output, HasSubstr("          content/data/load step 50 % to 100 %.csv\n"));
}

TEST(Samples, ComeBackAsTheyWere)
{
    const TemporaryFolder folder;
    ASSERT_EQ(build(folder).status, 0);
    for (const auto& design : fs::directory_iterator{samples / "designs"}) {
        const std::string name = design.path().filename().string();
        const std::string bundle = (folder / (name + ".kvbdl.zip")).string();
        EXPECT_EQ(runHost({"call", "_unpack_content_bundle", bundle, (folder / ("back/" + name)).string()}),
                  (ProgramEnd{0, "OK\n", ""}))
            << name;
        // every file of the design is in the manifest of the script
        EXPECT_EQ(filesBelow(folder / ("back/" + name + "/content")), filesBelow(design.path())) << name;
    }
}

TEST(Samples, AreTheSameBytesEachTimeTheyAreBuilt)
{
    const TemporaryFolder first;
    const TemporaryFolder second;
    ASSERT_EQ(build(first).status, 0);
    ASSERT_EQ(build(second).status, 0);
    EXPECT_TRUE(filesBelow(first.path()) == filesBelow(second.path()));
}

TEST(Samples, AreSoundForAnotherZipTool)
{
    const TemporaryFolder folder;
    ASSERT_EQ(build(folder).status, 0);
    for (const auto& file : fs::directory_iterator{folder.path()}) {
        if (file.is_directory())
            continue;
        EXPECT_EQ(runProgram(QStringLiteral("unzip"), {"-tqq", file.path().string()}).status, 0) << file.path();
    }
}

TEST(Samples, AreNotBuiltOverFilesThatCannotBeRead)
{
    const TemporaryFolder folder;
    const auto end = runHost({"run", (samples / "build_samples.js").string(), "/not/there", folder.path().string()});
    EXPECT_EQ(end.status, 1);
    EXPECT_THAT(end.errors, HasSubstr("Error: _create_example failed: "));
    EXPECT_TRUE(filesBelow(folder.path()).empty());
}
