#include "kelvaris/system/io/bundle/scriptable_bundle.h"

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

std::string textOf(const AbstractBundlePart& part)
{
    const ByteArray2 bytes = part.content().value();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.length()};
}

} // namespace

TEST(ScriptableBundle, SetScriptStoresTheText)
{
    const TemporaryFolder folder;
    auto bundle = ScriptableBundle::create().value();
    EXPECT_EQ(textOf(bundle.setScript(u8"print('größe')").value()), "print('größe')");
    ASSERT_TRUE(bundle.writeToFile(toFilePath2(folder / "s.kvsbd.zip")));
    expectVerified(folder / "s.kvsbd.zip");
    const auto read = ScriptableBundle::open(toFilePath2(folder / "s.kvsbd.zip")).value();
    EXPECT_THAT(relationshipLines(read.package().relationships().value()),
                ElementsAre("rId1 properties /bundle.xml", "rId2 script /script.kvscr"));
    EXPECT_EQ(bytesOf(read.package().part(OpcPackagePartUri{L"/script.kvscr"}).value()), "print('größe')");
}

TEST(ScriptableBundle, SetScriptReplacesTheOneBefore)
{
    const TemporaryFolder folder;
    auto bundle = ScriptableBundle::create().value();
    ASSERT_TRUE(bundle.setScript(u8"one"));
    ASSERT_TRUE(bundle.writeToFile(toFilePath2(folder / "s.zip")));
    auto read = ScriptableBundle::open(toFilePath2(folder / "s.zip")).value();
    EXPECT_EQ(textOf(read.setScript(u8"two").value()), "two");
    EXPECT_THAT(partNames(read.package()), ElementsAre("/bundle.xml", "/script.kvscr"));
    EXPECT_EQ(relationshipLines(read.package().relationships().value()).size(), 2U);
}

TEST(ScriptableBundle, TheEmptyTextIsAScriptToo)
{
    auto bundle = ScriptableBundle::create().value();
    EXPECT_EQ(textOf(bundle.setScript({}).value()), "");
    EXPECT_THAT(partNames(bundle.package()), ElementsAre("/bundle.xml", "/script.kvscr"));
}

TEST(ScriptableBundle, AScriptPartThatIsMissingIsMadeAnew)
{
    const TemporaryFolder folder;
    auto bundle = ScriptableBundle::create().value();
    ASSERT_TRUE(bundle.package().createRelationship(
        OpcPackagePartUri{L"/gone.kvscr"}, OpcTargetMode::internal,
        u8"http://schemas.kelvaris.example/package/2025/relationships/scriptable-bundle/script"));
    EXPECT_EQ(textOf(bundle.setScript(u8"text").value()), "text");
    EXPECT_THAT(relationshipLines(bundle.package().relationships().value()),
                ElementsAre("rId1 properties /bundle.xml", HasSubstr("script /script.kvscr")));
}

TEST(ScriptableBundle, TheScriptGetsAnotherNameWhenItsOwnIsTaken)
{
    auto bundle = ScriptableBundle::create().value();
    ASSERT_TRUE(bundle.package().createPart(OpcPackagePartUri{L"/script.kvscr"}, MIMEType{FileType::script},
                                            OpcPackageCompressionType::normal));
    EXPECT_EQ(toStdString(bundle.setScript(u8"text").value().uri().value().toString().value()), "/script-2.kvscr");
}

TEST(ScriptableBundle, OpenRefusesAnotherKindAndNamesBoth)
{
    const TemporaryFolder folder;
    const auto opened = ScriptableBundle::open(toFilePath2(writeExample(folder, "e.zip", "t")));
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error(), code(BundleError::wrongKind));
    EXPECT_THAT(toStdString(opened.error().message()),
                HasSubstr("a scriptable bundle was expected, this is an example bundle"));
}
