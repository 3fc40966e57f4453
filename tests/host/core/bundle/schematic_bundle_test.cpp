#include "kelvaris/system/io/bundle/schematic_bundle.h"

#include "host/core/opc/package_inspection.h"
#include "tests/host/core/bundle/bundle_making.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SchematicBundleTest : public testing::Test
{
protected:
    FilePath2 file(std::string_view name) const
    {
        return toFilePath2(m_folder.write(name, "schematic " + std::string{name}));
    }

    OpcPackagePart setRoot(std::string_view name) { return m_bundle.setRootSchematic(file(name)).value(); }

    OpcPackagePart add(std::string_view name, OpcPackagePart parent)
    {
        return m_bundle.addDescendantSchematic(file(name), file("p/parent.kvsch"), parent).value();
    }

    /// "id source -> target" of the relationships between schematics, and of those to the root.
    std::vector<std::string> hierarchy() const
    {
        const PackageInspection package{m_bundle.package()};
        std::vector<std::string> lines;
        const auto sources = package.sources().value();
        for (const std::string& source : sources) {
            const auto relationships = package.relationships(source).value();
            for (const InspectedRelationship& relationship : relationships) {
                if (relationship.type.find("/schematic-bundle/") != std::string::npos)
                    lines.push_back(source + " -> " + relationship.target);
            }
        }
        return lines;
    }

    TemporaryFolder m_folder;
    SchematicBundle m_bundle;
};

} // namespace

TEST_F(SchematicBundleTest, AnEmptyOneMayBeWritten)
{
    ASSERT_TRUE(m_bundle.writeToFile(toFilePath2(m_folder / "s.zip")));
    expectVerified(m_folder / "s.zip");
    const auto opened = ContentBundle::open(toFilePath2(m_folder / "s.zip"));
    EXPECT_EQ(opened.error(), code(BundleError::wrongKind));
}

TEST_F(SchematicBundleTest, PartNamesFollowTheFilesBelowTheRootsDirectory)
{
    const OpcPackagePart root = setRoot("p/top.kvsch");
    EXPECT_EQ(nameOf(root), "/schematics/top.kvsch");
    EXPECT_EQ(nameOf(add("p/filters/low pass.kvsch", root)), "/schematics/filters/low%20pass.kvsch");
    EXPECT_THAT(hierarchy(), ElementsAre("/ -> /schematics/top.kvsch",
                                         "/schematics/top.kvsch -> /schematics/filters/low%20pass.kvsch"));
}

TEST_F(SchematicBundleTest, SchematicsFromElsewhereGetNamesOfTheirOwn)
{
    const OpcPackagePart root = setRoot("p/top.kvsch");
    EXPECT_EQ(nameOf(add("q/stage.kvsch", root)), "/schematics/external/stage.kvsch");
    EXPECT_EQ(nameOf(add("r/stage.kvsch", root)), "/schematics/external/stage-2.kvsch");
    EXPECT_EQ(nameOf(add("s/STAGE.kvsch", root)), "/schematics/external/STAGE-3.kvsch");
    EXPECT_EQ(nameOf(add("p/external/stage.kvsch", root)), "/schematics/external/stage-4.kvsch");
    EXPECT_EQ(bytesOf(add("r/stage.kvsch", root)), "schematic r/stage.kvsch");
}

TEST_F(SchematicBundleTest, ADirectoryThatBeginsWithTwoDotsIsNotElsewhere)
{
    const OpcPackagePart root = setRoot("p/top.kvsch");
    EXPECT_EQ(nameOf(add("p/..hidden/a.kvsch", root)), "/schematics/..hidden/a.kvsch");
}

TEST_F(SchematicBundleTest, ASchematicUnderSeveralParentsIsOnePartWithARelationshipFromEach)
{
    const OpcPackagePart root = setRoot("p/top.kvsch");
    const OpcPackagePart first = add("p/a.kvsch", root);
    const OpcPackagePart second = add("p/b.kvsch", root);
    const std::string name = nameOf(add("p/c.kvsch", first));
    EXPECT_EQ(nameOf(add("p/c.kvsch", second)), name);
    EXPECT_THAT(hierarchy(), ElementsAre("/ -> /schematics/top.kvsch", "/schematics/top.kvsch -> /schematics/a.kvsch",
                                         "/schematics/top.kvsch -> /schematics/b.kvsch",
                                         "/schematics/a.kvsch -> /schematics/c.kvsch",
                                         "/schematics/b.kvsch -> /schematics/c.kvsch"));
}

TEST_F(SchematicBundleTest, ASchematicTwiceUnderOneParentIsRelatedOnce)
{
    const OpcPackagePart root = setRoot("p/top.kvsch");
    EXPECT_EQ(nameOf(add("p/a.kvsch", root)), nameOf(add("p/a.kvsch", root)));
    EXPECT_THAT(hierarchy(), ElementsAre("/ -> /schematics/top.kvsch", "/schematics/top.kvsch -> /schematics/a.kvsch"));
}

TEST_F(SchematicBundleTest, OneFileIsOnePartHoweverItsPathIsSpelt)
{
    const OpcPackagePart root = setRoot("p/top.kvsch");
    OpcPackagePart parent = root;
    const std::string name = nameOf(add("p/a.kvsch", root));
    std::filesystem::create_directories(m_folder / "p/sub");
    std::filesystem::create_symlink(m_folder / "p/a.kvsch", m_folder / "link.kvsch");
    for (const char* spelling : {"p/./a.kvsch", "p/sub/../a.kvsch", "link.kvsch"}) {
        const auto part = m_bundle.addDescendantSchematic(toFilePath2(m_folder / spelling), {}, parent);
        EXPECT_EQ(nameOf(part.value()), name) << spelling;
    }
}

TEST_F(SchematicBundleTest, ADescendantMayBeTheRootItself)
{
    const OpcPackagePart root = setRoot("p/top.kvsch");
    EXPECT_EQ(nameOf(add("p/top.kvsch", root)), "/schematics/top.kvsch");
    EXPECT_THAT(hierarchy(),
                ElementsAre("/ -> /schematics/top.kvsch", "/schematics/top.kvsch -> /schematics/top.kvsch"));
}

TEST_F(SchematicBundleTest, ADescendantWithoutARootIsRefused)
{
    ASSERT_TRUE(m_bundle.package().createPart(OpcPackagePartUri{L"/x"}, MIMEType{FileType::text},
                                              OpcPackageCompressionType::normal));
    OpcPackagePart part = m_bundle.package().part(OpcPackagePartUri{L"/x"}).value();
    EXPECT_EQ(m_bundle.addDescendantSchematic(file("p/a.kvsch"), {}, part).error(), code(BundleError::noRoot));
}

TEST_F(SchematicBundleTest, AFileThatIsNotThereIsAnErrorAndLeavesTheBundleAsItWas)
{
    EXPECT_EQ(m_bundle.setRootSchematic(toFilePath2(m_folder / "gone")).error(),
              ErrorCode2(ENOENT, system_error_category()));
    OpcPackagePart root = setRoot("p/top.kvsch");
    EXPECT_EQ(m_bundle.addDescendantSchematic(toFilePath2(m_folder / "gone"), {}, root).error(),
              ErrorCode2(ENOENT, system_error_category()));
    EXPECT_EQ(m_bundle.setRootSchematic(toFilePath2(m_folder / "gone")).error(),
              ErrorCode2(ENOENT, system_error_category()));
    EXPECT_THAT(hierarchy(), ElementsAre("/ -> /schematics/top.kvsch"));
}

TEST_F(SchematicBundleTest, AParentOfAnotherBundleIsRefused)
{
    (void)setRoot("p/top.kvsch");
    SchematicBundle other;
    OpcPackagePart parent = other.setRootSchematic(file("p/top.kvsch")).value();
    EXPECT_EQ(m_bundle.addDescendantSchematic(file("p/a.kvsch"), {}, parent).error(), code(OpcError::noSuchPart));
    EXPECT_THAT(partNames(m_bundle.package()), ElementsAre("/bundle.xml", "/schematics/top.kvsch"));
}

TEST_F(SchematicBundleTest, TheSameRootOnceMoreTakesItsBytesAnew)
{
    (void)setRoot("p/top.kvsch");
    const FilePath2 path = toFilePath2(m_folder.write("p/top.kvsch", "edited"));
    EXPECT_EQ(bytesOf(m_bundle.setRootSchematic(path).value()), "edited");
    EXPECT_THAT(partNames(m_bundle.package()), ElementsAre("/bundle.xml", "/schematics/top.kvsch"));
}

TEST_F(SchematicBundleTest, AnotherRootTakesThePlaceOfOneThatNothingBelongsTo)
{
    (void)setRoot("p/top.kvsch");
    const OpcPackagePart root = setRoot("q/top.kvsch");
    EXPECT_EQ(nameOf(root), "/schematics/top.kvsch");
    EXPECT_EQ(bytesOf(root), "schematic q/top.kvsch");
    EXPECT_THAT(partNames(m_bundle.package()), ElementsAre("/bundle.xml", "/schematics/top.kvsch"));
    EXPECT_EQ(nameOf(add("q/sub/a.kvsch", root)), "/schematics/sub/a.kvsch");
}

TEST_F(SchematicBundleTest, AnotherRootLeavesOneThatOthersBelongTo)
{
    const OpcPackagePart old = setRoot("p/top.kvsch");
    (void)add("p/a.kvsch", old);
    EXPECT_EQ(nameOf(setRoot("q/new.kvsch")), "/schematics/new.kvsch");
    EXPECT_THAT(hierarchy(), ElementsAre("/ -> /schematics/new.kvsch", "/schematics/top.kvsch -> /schematics/a.kvsch"));
}

TEST_F(SchematicBundleTest, ADescendantMayBecomeTheRoot)
{
    const OpcPackagePart old = setRoot("p/top.kvsch");
    (void)add("p/a.kvsch", old);
    EXPECT_EQ(nameOf(setRoot("p/a.kvsch")), "/schematics/a.kvsch");
    EXPECT_THAT(hierarchy(), ElementsAre("/ -> /schematics/a.kvsch", "/schematics/top.kvsch -> /schematics/a.kvsch"));
}

TEST_F(SchematicBundleTest, ANameThatMakesNoPartNameIsRefused)
{
    EXPECT_EQ(m_bundle.setRootSchematic(file("p/dot.")).error(), code(OpcError::invalidPartName));
    EXPECT_THAT(hierarchy(), IsEmpty());
}

TEST_F(SchematicBundleTest, GoesOnAfterItWasWrittenAndGivesEqualBytesEachTime)
{
    const OpcPackagePart root = setRoot("p/top.kvsch");
    ASSERT_TRUE(m_bundle.writeToFile(toFilePath2(m_folder / "1.zip")));
    ASSERT_TRUE(m_bundle.writeToFile(toFilePath2(m_folder / "2.zip")));
    EXPECT_EQ(readFile(m_folder / "1.zip"), readFile(m_folder / "2.zip"));
    (void)add("p/a.kvsch", root);
    ASSERT_TRUE(m_bundle.writeToFile(toFilePath2(m_folder / "3.zip")));
    expectVerified(m_folder / "3.zip");
    EXPECT_THAT(entryNames(m_folder / "3.zip"),
                ElementsAre("[Content_Types].xml", "_rels/.rels", "bundle.xml", "schematics/top.kvsch",
                            "schematics/a.kvsch", "schematics/_rels/top.kvsch.rels"));
}
