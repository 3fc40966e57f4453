#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"

#include "tests/host/core/bundle/bundle_making.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class BarrelOfExamplesBundleTest : public testing::Test
{
protected:
    Expected<ExamplePart, ErrorCode2> add(const std::filesystem::path& file, const wchar_t* name)
    {
        return m_barrel.addExample(toFilePath2(file), OpcPackagePartUri{name});
    }

    BarrelOfExamplesBundle reopened()
    {
        m_barrel.writeToFile(toFilePath2(m_folder / "b.kvexs")).value();
        expectVerified(m_folder / "b.kvexs");
        return BarrelOfExamplesBundle::open(toFilePath2(m_folder / "b.kvexs")).value();
    }

    TemporaryFolder m_folder;
    BarrelOfExamplesBundle m_barrel = BarrelOfExamplesBundle::create().value();
};

std::string titleOf(const ExamplePart& part)
{
    return toStdString(part.bundle().value().title().value());
}

std::string bytesOf(const ExamplePart& part)
{
    const ByteArray2 bytes = part.content().value();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.length()};
}

/// The same barrel with its examples in pieces: the first one ahead of all other entries, the last one behind them.
void writeInPieces(const std::filesystem::path& barrel, const std::filesystem::path& path)
{
    auto entries = readEntries(barrel);
    const auto firstOther = std::stable_partition(
        entries.begin(), entries.end(), [](const auto& entry) { return entry.first.starts_with("examples/"); });
    const std::span examples{entries.begin(), firstOther};
    const std::span others{firstOther, entries.end()};
    PackageFile pieces;
    for (const auto& [name, bytes] : examples)
        pieces.add(name + "/[0].piece", std::string_view{bytes}.substr(0, bytes.size() / 2));
    for (const auto& [name, bytes] : others)
        pieces.add(name, bytes);
    for (const auto& [name, bytes] : examples)
        pieces.add(name + "/[1].last.piece", std::string_view{bytes}.substr(bytes.size() / 2));
    pieces.write(path);
}

} // namespace

TEST_F(BarrelOfExamplesBundleTest, ANewOneHasNoExamples)
{
    EXPECT_EQ(m_barrel.numberExamples(), 0U);
    EXPECT_EQ(reopened().numberExamples(), 0U);
}

TEST_F(BarrelOfExamplesBundleTest, ExamplesStandInTheOrderInWhichTheyWereAdded)
{
    ASSERT_TRUE(add(writeExample(m_folder, "z.kvbdl.zip", "Last letter"), L"examples\\z.kvbdl.zip"));
    ASSERT_TRUE(add(writeExample(m_folder, "a.kvbdl.zip", "First letter"), L"examples\\sub\\a.kvbdl.zip"));
    const BarrelOfExamplesBundle read = reopened();
    EXPECT_EQ(read.numberExamples(), 2U);
    EXPECT_THAT(relationshipLines(read.exampleRelationships().value()),
                ElementsAre("rId2 example /examples/z.kvbdl.zip", "rId3 example /examples/sub/a.kvbdl.zip"));
    auto it = read.exampleRelationships().value().begin();
    EXPECT_EQ(titleOf(read.example(*it).value()), "Last letter");
    EXPECT_EQ(titleOf(read.example(*++it).value()), "First letter");
    EXPECT_EQ(titleOf(read.example(OpcPackagePartUri{L"/examples/sub/a.kvbdl.zip"}).value()), "First letter");
}

TEST_F(BarrelOfExamplesBundleTest, AnExampleIsStoredByteForByte)
{
    const auto example = writeExample(m_folder, "a.kvbdl.zip", "A");
    ASSERT_TRUE(add(example, L"examples\\a.kvbdl.zip"));
    const std::string text = bytesOf(reopened().example(OpcPackagePartUri{L"/examples/a.kvbdl.zip"}).value());
    EXPECT_EQ(text, readFile(example));
    EXPECT_THAT(readFile(m_folder / "b.kvexs"), HasSubstr(text)) << "it must not be compressed";
}

TEST_F(BarrelOfExamplesBundleTest, AnExampleInPiecesIsReadUnpackedAndSavedLikeAWholeOne)
{
    const auto example = writeExample(m_folder, "a.kvbdl.zip", "In pieces");
    ASSERT_TRUE(add(example, L"examples\\a.kvbdl.zip"));
    ASSERT_TRUE(add(writeExample(m_folder, "b.kvbdl.zip", "As well"), L"examples\\b.kvbdl.zip"));
    ASSERT_TRUE(m_barrel.writeToFile(toFilePath2(m_folder / "whole.kvexs")));
    writeInPieces(m_folder / "whole.kvexs", m_folder / "pieces.kvexs");
    expectVerified(m_folder / "pieces.kvexs");
    const auto expectExamples = [&](const BarrelOfExamplesBundle& barrel, const char* directory) {
        EXPECT_EQ(barrel.numberExamples(), 2U);
        const ExamplePart part = barrel.example(OpcPackagePartUri{L"/examples/a.kvbdl.zip"}).value();
        EXPECT_EQ(titleOf(part), "In pieces");
        EXPECT_EQ(bytesOf(part), readFile(example));
        EXPECT_EQ(toStdString(part.package().packageProperties().value()->title().value()), "In pieces");
        EXPECT_TRUE(part.bundle().value().unpack(toFilePath2(m_folder / directory)));
        EXPECT_THAT(filesBelow(m_folder / directory), ElementsAre("content/amp.kvsch", "content/sub/amp.txt"));
        EXPECT_EQ(titleOf(barrel.example(OpcPackagePartUri{L"/examples/b.kvbdl.zip"}).value()), "As well");
    };
    m_barrel = BarrelOfExamplesBundle::open(toFilePath2(m_folder / "pieces.kvexs")).value();
    expectExamples(m_barrel, "from pieces");
    expectExamples(reopened(), "from a copy");
}

TEST_F(BarrelOfExamplesBundleTest, AnExampleCanBeOpenedBeforeTheBarrelIsSaved)
{
    const auto part = add(writeExample(m_folder, "a.kvbdl.zip", "Not saved"), L"examples\\a.kvbdl.zip");
    std::filesystem::remove(m_folder / "a.kvbdl.zip");
    EXPECT_EQ(titleOf(part.value()), "Not saved");
}

TEST_F(BarrelOfExamplesBundleTest, AddExampleRefusesWhatIsNoExampleAndSaysWhy)
{
    ASSERT_TRUE(ContentBundle::create().value().writeToFile(toFilePath2(m_folder / "content.zip")));
    ASSERT_TRUE(m_barrel.writeToFile(toFilePath2(m_folder / "barrel.kvexs")));
    PackageFile other;
    other.addContentTypes().write(m_folder / "other.zip");
    const auto reason = [&](const std::filesystem::path& file) {
        const auto added = add(file, L"examples\\x.zip");
        EXPECT_EQ(added.error(), code(BundleError::notAnExample));
        EXPECT_THAT(toStdString(added.error().message()), HasSubstr(file.filename().string()));
        return toStdString(added.error().message());
    };
    EXPECT_THAT(reason(m_folder / "content.zip"), HasSubstr("this is a content bundle"));
    EXPECT_THAT(reason(m_folder / "barrel.kvexs"), HasSubstr("this is a barrel of examples"));
    EXPECT_THAT(reason(m_folder / "other.zip"), HasSubstr("does not say"));
    EXPECT_THAT(reason(m_folder.write("text.txt", "text")), HasSubstr("ZIP"));
    EXPECT_EQ(m_barrel.numberExamples(), 0U);
    EXPECT_THAT(partNames(m_barrel.package()), ElementsAre("/bundle.xml"));
}

TEST_F(BarrelOfExamplesBundleTest, AddExampleRefusesNamesThatWillNotDoAndFilesThatAreNotThere)
{
    const auto example = writeExample(m_folder, "a.kvbdl.zip", "A");
    ASSERT_TRUE(add(example, L"examples\\a.kvbdl.zip"));
    EXPECT_EQ(add(example, L"examples\\A.kvbdl.zip").error(), code(OpcError::partExists));
    EXPECT_EQ(add(example, L"examples").error(), code(OpcError::derivedPartName));
    EXPECT_EQ(add(example, L"examples\\..\\a").error(), code(OpcError::invalidPartName));
    EXPECT_EQ(add(m_folder / "gone", L"examples\\b").error(), ErrorCode2(ENOENT, system_error_category()));
    EXPECT_EQ(m_barrel.numberExamples(), 1U);
}

TEST_F(BarrelOfExamplesBundleTest, ExampleOfAnUnknownNameIsAnError)
{
    EXPECT_EQ(m_barrel.example(OpcPackagePartUri{L"/examples/x.zip"}).error(), code(OpcError::noSuchPart));
}

TEST_F(BarrelOfExamplesBundleTest, OpenRefusesAnotherKindAndNamesBoth)
{
    const auto opened = BarrelOfExamplesBundle::open(toFilePath2(writeExample(m_folder, "a.zip", "A")));
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error(), code(BundleError::wrongKind));
    EXPECT_THAT(toStdString(opened.error().message()),
                HasSubstr("a barrel of examples was expected, this is an example bundle"));
}
