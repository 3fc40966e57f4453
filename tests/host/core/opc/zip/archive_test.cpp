#include "host/core/opc/zip/archive.h"

#include "tests/host/core/opc/zip/zip_testing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <optional>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;
namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

const std::string text = "The quick brown fox jumps over the lazy dog, over and over and over.";

RawArchive simpleArchive()
{
    return {.entries = {storedEntry("a.txt", "stored"), deflatedEntry("sub/b.txt", text)}};
}

const Texts simpleContents = {"a.txt=stored", "sub/b.txt=" + text};

RawEntry withDescriptor(RawEntry entry, bool hasSignature, bool isWide)
{
    const auto number = isWide ? le64 : le32;
    entry.flags |= 8U;
    entry.descriptor =
        (hasSignature ? le32(0x08074b50) : "") + le32(entry.crc) + number(entry.data.size()) + number(entry.size);
    entry.localCrc = 0;
    entry.localSize = 0;
    entry.localCompressedSize = 0;
    return entry;
}

} // namespace

TEST(Archive, ReadsStoredAndDeflatedEntriesInTheirOrder)
{
    const auto archive = openBytes(simpleArchive().bytes()).value();
    EXPECT_EQ(contents(*archive), simpleContents);
    EXPECT_EQ(verdict(simpleArchive().bytes()), "ok");
}

TEST(Archive, ReadsFromAFileAsFromMemory)
{
    const TemporaryFolder folder;
    EXPECT_EQ(contents(*openFile(folder.write("a.zip", simpleArchive().bytes()))), simpleContents);
}

TEST(Archive, AnEmptyArchiveHasNoEntries)
{
    EXPECT_TRUE(openBytes(RawArchive{}.bytes()).value()->entries().empty());
}

TEST(Archive, AnEntryMayBeEmptyWithBothMethods)
{
    EXPECT_EQ(verdict(RawArchive{.entries = {storedEntry("a", ""), deflatedEntry("b", "")}}.bytes()), "ok");
}

TEST(Archive, TwoEntriesOfOneNameAreTwoEntriesHere)
{
    const RawArchive raw{.entries = {storedEntry("a", "1"), storedEntry("a", "2")}};
    EXPECT_EQ(contents(*openBytes(raw.bytes()).value()), (Texts{"a=1", "a=2"}));
}

TEST(Archive, NamesAreBytes)
{
    const RawArchive raw{.entries = {storedEntry("\xff\xfe", "1"), storedEntry(std::string{"\0", 1}, "2"),
                                     storedEntry("", "3"), storedEntry("../x", "4")}};
    EXPECT_EQ(contents(*openBytes(raw.bytes()).value()), (Texts{"\xff\xfe=1", std::string{"\0=2", 3}, "=3", "../x=4"}));
}

TEST(Archive, AnInfoZipUnicodePathDoesNotRenameAnEntry)
{
    RawEntry entry = storedEntry("a", "1");
    entry.extra = le16(0x7075) + le16(6) + "\x01" + le32(0xe8b7be43) + "b";
    EXPECT_EQ(openBytes(RawArchive{.entries = {entry}}.bytes()).value()->entries()[0].name, "a");
}

TEST(Archive, TheDirectoryMayListEntriesInAnotherOrderThanTheyStand)
{
    RawArchive raw{.entries = {storedEntry("a", "1"), storedEntry("b", "22")}};
    raw.entries[0].centralOffset = 32;
    raw.entries[1].centralOffset = 0;
    std::swap(raw.entries[0].name, raw.entries[1].name);
    std::swap(raw.entries[0].crc, raw.entries[1].crc);
    raw.entries[0].localName = "a";
    raw.entries[1].localName = "b";
    raw.entries[0].localCrc = raw.entries[1].crc;
    raw.entries[1].localCrc = raw.entries[0].crc;
    raw.entries[0].localSize = raw.entries[0].localCompressedSize = 1;
    raw.entries[1].localSize = raw.entries[1].localCompressedSize = 2;
    raw.entries[0].centralSize = raw.entries[0].centralCompressedSize = 2;
    raw.entries[1].centralSize = raw.entries[1].centralCompressedSize = 1;
    EXPECT_EQ(contents(*openBytes(raw.bytes()).value()), (Texts{"b=22", "a=1"}));
}

TEST(Archive, ACommentOfAnyLengthIsFoundBehind)
{
    RawArchive raw = simpleArchive();
    for (const std::size_t length : {1U, 100U, 9000U, 65'535U}) {
        raw.comment = std::string(length, 'c');
        const auto archive = openBytes(raw.bytes()).value();
        EXPECT_EQ(archive->comment(), raw.comment);
        EXPECT_EQ(contents(*archive), simpleContents);
    }
}

TEST(Archive, ACommentMayHoldTheSignatureOfAnEndRecord)
{
    RawArchive raw = simpleArchive();
    raw.comment = "PK\x05\x06 is how an end record begins, and this is none of them";
    EXPECT_EQ(verdict(raw.bytes()), "ok");
}

TEST(Archive, BytesBehindTheArchiveAreTolerated)
{
    RawArchive raw = simpleArchive();
    for (const std::size_t length : {1U, 3U, 10'000U, 60'000U}) {
        raw.suffix = std::string(length, '\0');
        EXPECT_EQ(verdict(raw.bytes()), "ok") << length;
    }
}

TEST(Archive, BytesBeforeTheArchiveAreToleratedWhetherItsOffsetsCountThemOrNot)
{
    RawArchive raw = simpleArchive();
    raw.prefix = "#!/bin/sh\nexit\n";
    EXPECT_EQ(verdict(raw.bytes()), "ok");
    RawArchive counted = simpleArchive();
    counted.entries[0].between = raw.prefix;
    EXPECT_EQ(verdict(counted.bytes()), "ok");
}

TEST(Archive, BytesBetweenEntriesAreTolerated)
{
    RawArchive raw = simpleArchive();
    raw.entries[1].between = std::string(500'000, 'x');
    EXPECT_EQ(verdict(raw.bytes()), "ok");
}

TEST(Archive, AZip64EndRecordThatNobodyNeedsIsRead)
{
    RawArchive raw = simpleArchive();
    raw.zip64 = true;
    EXPECT_EQ(verdict(raw.bytes()), "ok");
    raw.saturated = true;
    EXPECT_EQ(verdict(raw.bytes()), "ok");
    raw.prefix = "junk";
    EXPECT_EQ(verdict(raw.bytes()), "ok");
}

TEST(Archive, Zip64SizesOfAnEntryAreRead)
{
    RawArchive raw = simpleArchive();
    RawEntry& entry = raw.entries[1];
    const std::string sizes = le16(1) + le16(16) + le64(entry.size) + le64(entry.data.size());
    entry.centralSize = entry.centralCompressedSize = entry.localSize = entry.localCompressedSize = 0xffffffff;
    entry.extra = le16(0xcafe) + le16(2) + "xy" + sizes;
    entry.localExtra = sizes;
    EXPECT_EQ(verdict(raw.bytes()), "ok");
}

TEST(Archive, AZip64OffsetOfAnEntryIsRead)
{
    RawArchive raw = simpleArchive();
    raw.entries[0].centralOffset = 0xffffffff;
    raw.entries[0].extra = le16(1) + le16(8) + le64(0);
    EXPECT_EQ(verdict(raw.bytes()), "ok");
}

TEST(Archive, ADataDescriptorOfAnyFormIsRead)
{
    for (const bool hasSignature : {false, true}) {
        for (const bool isWide : {false, true}) {
            RawArchive raw = simpleArchive();
            for (RawEntry& entry : raw.entries)
                entry = withDescriptor(entry, hasSignature, isWide);
            EXPECT_EQ(verdict(raw.bytes()), "ok") << hasSignature << isWide;
        }
    }
}

TEST(Archive, ALongExtraFieldInTheLocalHeaderIsSkipped)
{
    RawArchive raw = simpleArchive();
    for (RawEntry& entry : raw.entries)
        entry.localExtra = le16(0xa220) + le16(60'000) + std::string(60'000, '\0');
    EXPECT_EQ(verdict(raw.bytes()), "ok");
    raw.entries[1] = deflatedEntry("large", noise(400'000));
    raw.entries[1].localExtra = raw.entries[0].localExtra;
    EXPECT_EQ(verdict(raw.bytes()), "ok");
}

TEST(Archive, PaddingInTheLocalExtraFieldIsNoFault)
{
    RawArchive raw = simpleArchive();
    raw.entries[0].localExtra = std::string(3, '\0');
    EXPECT_EQ(verdict(raw.bytes()), "ok");
}

TEST(Archive, ASignatureBehindTheDirectoryIsSkipped)
{
    RawArchive raw = simpleArchive();
    const std::size_t directory = raw.bytes().find("PK\x01\x02");
    raw.behindDirectory = le32(0x05054b50) + le16(4) + "sign";
    raw.directorySize = raw.bytes().size() - 22 - directory;
    EXPECT_EQ(verdict(raw.bytes()), "ok");
}

TEST(Archive, LargeEntriesAreReadAndStreamedAlike)
{
    std::string large;
    for (std::uint64_t i = 0; i < 400'000; ++i)
        large += "line " + std::to_string(i * 7919) + "\n";
    ASSERT_GT(large.size(), std::size_t{5} << 20U);
    const std::string noisy = noise(5'000'000);
    EXPECT_EQ(verdict(RawArchive{.entries = {deflatedEntry("a", large), storedEntry("b", large),
                                             deflatedEntry("c", noisy), deflatedEntry("d", "x")}}
                          .bytes()),
              "ok");
}

TEST(Archive, ASinksErrorEndsTheStreamAndIsHandedOn)
{
    const auto archive = openBytes(RawArchive{.entries = {storedEntry("a", noise(1'000'000)),
                                                          deflatedEntry("b", noise(6'000'000)), storedEntry("c", "c")}}
                                       .bytes())
                             .value();
    for (std::size_t i = 0; i < 3; ++i) {
        int calls = 0;
        const auto result = archive->stream(i, [&](std::span<const std::byte>) -> Expected<void, ErrorCode2> {
            ++calls;
            return code(CoreError::cancelled);
        });
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), code(CoreError::cancelled));
        EXPECT_EQ(calls, 1);
    }
}

TEST(Archive, AnArchiveWithinAnArchiveIsOpenedWhereItStands)
{
    const TemporaryFolder folder;
    const RawArchive outer{.entries = {storedEntry("pad", "x"), storedEntry("in/stored.zip", simpleArchive().bytes()),
                                       deflatedEntry("in/deflated.zip", simpleArchive().bytes())}};
    for (const std::size_t index : {1U, 2U}) {
        std::optional<Zip::ArchivePtr> archive = openFile(folder.write("outer.zip", outer.bytes()));
        const auto nested = Zip::Archive::open((*archive)->openNested(index).value()).value();
        archive.reset(); // what lies within keeps alive what it reads from
        EXPECT_EQ(contents(*nested), simpleContents);
        EXPECT_NE(nested->describe(0).find("outer.zip: in/"), std::string::npos) << nested->describe(0);
        EXPECT_TRUE(nested->describe(0).ends_with(".zip: a.txt")) << nested->describe(0);
    }
}

TEST(Archive, AFileThatIsReplacedWhileOpenIsStillTheOldOne)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a.zip", simpleArchive().bytes());
    const auto archive = openFile(path);
    fs::rename(folder.write("b", "no archive"), path);
    EXPECT_EQ(contents(*archive), simpleContents);
}

TEST(Archive, AFileThatIsTruncatedWhileOpenIsAnErrorForEveryWayOfReading)
{
    const TemporaryFolder folder;
    const auto path = folder.write(
        "a.zip", RawArchive{.entries = {deflatedEntry("a", noise(6'000'000)), storedEntry("b", "small")}}.bytes());
    const auto archive = openFile(path);
    const auto untouched = openFile(path);
    ASSERT_TRUE(untouched->verify(0));
    fs::resize_file(path, 1'000'000);
    EXPECT_EQ(archive->read(0).error(), code(CoreError::fileTruncated));
    EXPECT_EQ(streamed(*archive, 0).error(), code(CoreError::fileTruncated));
    EXPECT_EQ(archive->read(1).error(), code(CoreError::fileTruncated));
    EXPECT_EQ(archive->verify(1).error(), code(CoreError::fileTruncated));
    EXPECT_EQ(streamed(*untouched, 0).error(), code(CoreError::fileTruncated));
}

TEST(Archive, ALocalHeaderIsComparedOnceAndThenRemembered)
{
    const TemporaryFolder folder;
    RawArchive raw{.entries = {storedEntry("a", noise(400'000))}};
    const auto path = folder.write("a.zip", raw.bytes());
    const auto archive = openFile(path);
    ASSERT_TRUE(archive->verify(0));
    raw.entries[0].localName = "b";
    folder.write("a.zip", raw.bytes());
    EXPECT_TRUE(archive->verify(0));
    EXPECT_FALSE(openFile(path)->verify(0));
}
