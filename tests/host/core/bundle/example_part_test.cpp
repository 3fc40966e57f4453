#include "kelvaris/system/io/bundle/example_part.h"

#include "host/core/opc/package_data.h"
#include "tests/host/core/bundle/bundle_making.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::HasSubstr;

namespace {

class ExamplePartTest : public testing::Test
{
protected:
    /// A barrel of one example of the title "inside".
    BarrelOfExamplesBundle barrel() const
    {
        auto barrel = BarrelOfExamplesBundle::create().value();
        barrel
            .addExample(toFilePath2(writeExample(m_folder, "inside.kvbdl.zip", "inside")),
                        OpcPackagePartUri{L"examples\\inside.kvbdl.zip"})
            .value();
        barrel.writeToFile(toFilePath2(m_folder / "b.kvexs")).value();
        return BarrelOfExamplesBundle::open(toFilePath2(m_folder / "b.kvexs")).value();
    }

    /// A barrel that somebody else made, whose example has these bytes.
    BarrelOfExamplesBundle foreignBarrel(std::string_view bytes) const
    {
        PackageFile file;
        file.addContentTypes()
            .addRelationships(
                "<Relationship Id='p' Target='bundle.xml' "
                "Type='http://schemas.kelvaris.example/package/2025/relationships/bundle/properties'/>"
                "<Relationship Id='e' Target='e.txt' "
                "Type='http://schemas.kelvaris.example/package/2025/relationships/barrel-of-examples/example'/>")
            .add("bundle.xml", "<b:bundle xmlns:b='http://schemas.kelvaris.example/package/2025/bundle'>"
                               "<b:kind> barrel-of-examples </b:kind></b:bundle>")
            .add("e.txt", bytes);
        file.write(m_folder / "f.kvexs");
        return BarrelOfExamplesBundle::open(toFilePath2(m_folder / "f.kvexs")).value();
    }

    TemporaryFolder m_folder;
};

ExamplePart firstExample(const BarrelOfExamplesBundle& barrel)
{
    return barrel.example(*barrel.exampleRelationships().value().begin()).value();
}

} // namespace

TEST_F(ExamplePartTest, StaysUsableAfterItsBarrelIsGone)
{
    const ExamplePart original = firstExample(barrel());
    const ExamplePart copy = original;
    EXPECT_EQ(copy.bundle().value().title().value(), String2{u8"inside"});
    EXPECT_EQ(toStdString(copy.uri().value().toString().value()), "/examples/inside.kvbdl.zip");
}

TEST_F(ExamplePartTest, PackagePropertiesAreThoseOfTheExampleInside)
{
    const ExamplePart part = firstExample(barrel());
    EXPECT_EQ(part.package().packageProperties().value()->title().value(), String2{u8"inside"});
}

TEST_F(ExamplePartTest, WhatIsSetInThePropertiesChangesTheHandlesViewAndNotTheBarrel)
{
    auto opened = barrel();
    const ExamplePart part = firstExample(opened);
    const ExamplePart copy = part;
    ASSERT_TRUE(part.package().packageProperties().value()->setTitle(u8"changed"));
    EXPECT_EQ(copy.package().packageProperties().value()->title().value(), String2{u8"changed"});
    EXPECT_EQ(firstExample(opened).bundle().value().title().value(), String2{u8"inside"});
    ASSERT_TRUE(opened.writeToFile(toFilePath2(m_folder / "again.kvexs")));
    EXPECT_EQ(readFile(m_folder / "again.kvexs"), readFile(m_folder / "b.kvexs"));
}

TEST_F(ExamplePartTest, BytesThatAreNoPackageGiveEmptyPropertiesAndNoBundle)
{
    const auto opened = foreignBarrel("no package");
    const ExamplePart part = firstExample(opened);
    EXPECT_EQ(part.package().packageProperties().value()->title().error(), code(OpcError::propertyNotSet));
    const auto bundle = part.bundle();
    ASSERT_FALSE(bundle);
    EXPECT_EQ(bundle.error(), code(OpcError::notAnArchive));
    EXPECT_THAT(toStdString(bundle.error().message()), HasSubstr("f.kvexs"));
    EXPECT_THAT(toStdString(bundle.error().message()), HasSubstr("e.txt"));
}

TEST_F(ExamplePartTest, ABundleOfAnotherKindIsRefused)
{
    ASSERT_TRUE(ContentBundle::create().value().writeToFile(toFilePath2(m_folder / "c.zip")));
    const auto opened = foreignBarrel(readFile(m_folder / "c.zip"));
    EXPECT_EQ(firstExample(opened).bundle().error(), code(BundleError::wrongKind));
}

TEST_F(ExamplePartTest, ACompressedExampleOpensInMemory)
{
    auto example = ExampleBundle::create().value();
    for (int number = 0; number < 50; ++number)
        addText(example, m_folder, std::to_string(number) + ".txt", "the same text in each of them");
    ASSERT_TRUE(example.setTitle(u8"compressed"));
    ASSERT_TRUE(example.writeToFile(toFilePath2(m_folder / "c.zip")));
    const auto opened = foreignBarrel(readFile(m_folder / "c.zip"));
    ASSERT_LT(std::filesystem::file_size(m_folder / "f.kvexs"), std::filesystem::file_size(m_folder / "c.zip"));
    EXPECT_EQ(firstExample(opened).bundle().value().title().value(), String2{u8"compressed"});
}

TEST_F(ExamplePartTest, BundlesOfOnePartAreIndependent)
{
    const ExamplePart part = firstExample(barrel());
    auto first = part.bundle().value();
    ASSERT_TRUE(first.setTitle(u8"first"));
    EXPECT_EQ(part.bundle().value().title().value(), String2{u8"inside"});
}

TEST_F(ExamplePartTest, ABundleFromABarrelIsUnpackedAndSavedLikeAnyOther)
{
    auto bundle = firstExample(barrel()).bundle().value();
    ASSERT_TRUE(bundle.unpack(toFilePath2(m_folder / "out")));
    EXPECT_EQ(readFile(m_folder / "out/content/amp.kvsch"), "schematic of inside");
    ASSERT_TRUE(bundle.writeToFile(toFilePath2(m_folder / "copy.kvbdl.zip")));
    EXPECT_EQ(readFile(m_folder / "copy.kvbdl.zip"), readFile(m_folder / "inside.kvbdl.zip"));
}

TEST_F(ExamplePartTest, ABarrelThatIsTruncatedWhileItIsOpenGivesAnError)
{
    const auto opened = barrel();
    const ExamplePart part = firstExample(opened);
    std::filesystem::resize_file(m_folder / "b.kvexs", 100);
    EXPECT_FALSE(part.bundle());
    EXPECT_FALSE(part.content());
    EXPECT_FALSE(part.package().packageProperties());
}
