#include "authoring/schematic_bundle_building.h"

#include "authoring/path_conversion.h"
#include "authoring/schematic_bundle_table.h"
#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/runtime_error.h"
#include "tests/authoring/bundle_reading.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

using namespace Kelvaris::System;
using IO::OpcPackaging::OpcPackage;
using IO::OpcPackaging::OpcPackageOpenFlag;
using IO::OpcPackaging::OpcPackagePartUri;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;

class SchematicBundles : public testing::Test
{
protected:
    ~SchematicBundles() override { Authoring::closeAllSchematicBundles(); }

    FilePath2 schematic(const std::string& name)
    {
        return Authoring::toFilePath2(folder.write("design/" + name, "schematic " + name));
    }

    FilePath2 outputPath() const { return Authoring::toFilePath2(output); }

    static std::string create() { return Authoring::createSchematicBundle().toLegacyUtf8(); }

    String2 add(const std::string& name, const FilePath2& parent, const String2& parentUri, const std::string& id)
    {
        return Authoring::addDescendantSchematic(schematic(name), parent, OpcPackagePartUri{parentUri}, id);
    }

    OpcPackage written() const { return OpcPackage::open(outputPath(), OpcPackageOpenFlag::verify).value(); }

    TemporaryFolder folder;
    fs::path output = folder / "bundle.zip";
};

TEST_F(SchematicBundles, TheIdentifierIsTheKeyOfTheTable)
{
    const std::string id = create();
    EXPECT_EQ(Authoring::schematicBundleTable().count(id), 1U);
    EXPECT_NE(Authoring::schematicBundleTable()[id], nullptr);
}

TEST_F(SchematicBundles, TwoIdentifiersDifferAndClosingOneLeavesTheOtherUsable)
{
    const std::string first = create();
    const std::string second = create();
    EXPECT_NE(first, second);
    Authoring::closeSchematicBundle(first);
    EXPECT_EQ(text(Authoring::setRootSchematic(schematic("top.kvsch"), second)), "/schematics/top.kvsch");
}

TEST_F(SchematicBundles, AHierarchyIsBuiltOverSeveralCallsAndWritten)
{
    const std::string id = create();
    const FilePath2 top = schematic("top.kvsch");
    const FilePath2 filter = schematic("filters/a.kvsch");

    const String2 topUri = Authoring::setRootSchematic(top, id);
    const String2 filterUri = Authoring::addDescendantSchematic(filter, top, OpcPackagePartUri{topUri}, id);
    const String2 stageUri = add("filters/b.kvsch", filter, filterUri, id);
    Authoring::writeSchematicBundle(outputPath(), id);

    EXPECT_THAT(partNames(written(), "/schematics/"), ElementsAre(text(topUri), text(filterUri), text(stageUri)));
}

TEST_F(SchematicBundles, ASchematicThatIsUsedTwiceIsOnePart)
{
    const std::string id = create();
    const FilePath2 top = schematic("top.kvsch");
    const String2 topUri = Authoring::setRootSchematic(top, id);
    EXPECT_EQ(text(add("a.kvsch", top, topUri, id)), text(add("a.kvsch", top, topUri, id)));
}

TEST_F(SchematicBundles, ABundleCanBeWrittenAgainAfterFurtherAdditions)
{
    const std::string id = create();
    const FilePath2 top = schematic("top.kvsch");
    const String2 topUri = Authoring::setRootSchematic(top, id);
    Authoring::writeSchematicBundle(outputPath(), id);
    add("a.kvsch", top, topUri, id);
    Authoring::writeSchematicBundle(outputPath(), id);
    EXPECT_THAT(partNames(written(), "/schematics/"), ElementsAre("/schematics/top.kvsch", "/schematics/a.kvsch"));
}

TEST_F(SchematicBundles, NothingRefusesASecondRoot)
{
    const std::string id = create();
    Authoring::setRootSchematic(schematic("top.kvsch"), id);
    EXPECT_EQ(text(Authoring::setRootSchematic(schematic("other.kvsch"), id)), "/schematics/other.kvsch");
}

TEST_F(SchematicBundles, ABundleWithoutARootIsWrittenAllTheSame)
{
    Authoring::writeSchematicBundle(outputPath(), create());
    EXPECT_THAT(partNames(written(), "/schematics/"), IsEmpty());
}

TEST_F(SchematicBundles, AFailureToWriteIsPassedOverInSilence)
{
    const LogCapture log;
    const std::string id = create();
    EXPECT_NO_THROW(Authoring::writeSchematicBundle(Authoring::toFilePath2(folder / "not there/b.zip"), id));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(SchematicBundles, ARootThatCannotBeReadRaisesAndTheBundleStaysUsable)
{
    const std::string id = create();
    EXPECT_THROW(Authoring::setRootSchematic(Authoring::toFilePath2(folder / "missing.kvsch"), id),
                 bad_expected_access<ErrorCode2>);
    EXPECT_EQ(text(Authoring::setRootSchematic(schematic("top.kvsch"), id)), "/schematics/top.kvsch");
}

TEST_F(SchematicBundles, AParentPartThatTheBundleDoesNotHaveRaisesAndTheBundleStaysUsable)
{
    const std::string id = create();
    const FilePath2 top = schematic("top.kvsch");
    const String2 topUri = Authoring::setRootSchematic(top, id);
    EXPECT_THROW(add("a.kvsch", top, u8"/schematics/unknown.kvsch", id), bad_expected_access<ErrorCode2>);
    EXPECT_THROW(add("a.kvsch", top, u8"", id), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(text(add("a.kvsch", top, topUri, id)), "/schematics/a.kvsch");
}

TEST_F(SchematicBundles, AnUnknownIdentifierThrowsWithTheIdentifierInTheText)
{
    EXPECT_THAT([&] { Authoring::setRootSchematic(schematic("top.kvsch"), "no such id"); },
                ThrowsMessage<RuntimeError>(HasSubstr("no such id")));
    EXPECT_THAT([&] { add("a.kvsch", {}, u8"/a", "no such id"); },
                ThrowsMessage<RuntimeError>(HasSubstr("no such id")));
    EXPECT_THAT([&] { Authoring::writeSchematicBundle(outputPath(), "no such id"); },
                ThrowsMessage<RuntimeError>(HasSubstr("no such id")));
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(SchematicBundles, AnUnknownIdentifierLeavesAnEntryWithoutABundleBehind)
{
    EXPECT_THROW(Authoring::writeSchematicBundle(outputPath(), "unknown"), RuntimeError);
    ASSERT_EQ(Authoring::schematicBundleTable().count("unknown"), 1U);
    EXPECT_EQ(Authoring::schematicBundleTable()["unknown"], nullptr);
}

TEST_F(SchematicBundles, ClosingAnUnknownIdentifierAddsNoEntry)
{
    Authoring::closeSchematicBundle("unknown");
    EXPECT_TRUE(Authoring::schematicBundleTable().empty());
}

TEST_F(SchematicBundles, ClosingDropsABundleUnwritten)
{
    const std::string id = create();
    Authoring::closeSchematicBundle(id);
    EXPECT_TRUE(Authoring::schematicBundleTable().empty());
    EXPECT_THROW(Authoring::writeSchematicBundle(outputPath(), id), RuntimeError);
}

TEST_F(SchematicBundles, ClosingAllEmptiesTheTableAndMayBeRepeated)
{
    create();
    create();
    Authoring::closeAllSchematicBundles();
    EXPECT_TRUE(Authoring::schematicBundleTable().empty());
    Authoring::closeAllSchematicBundles();
    EXPECT_TRUE(Authoring::schematicBundleTable().empty());
}

} // namespace
