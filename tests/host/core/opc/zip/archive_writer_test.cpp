#include "host/core/opc/zip/archive_writer.h"

#include "host/core/opc/zip/payload_store.h"
#include "host/core/paths/disk/faults.h"
#include "tests/host/core/opc/zip/zip_testing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <functional>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;
using Disk::ReplacementFile;
using Zip::ArchiveWriter;
using Zip::Effort;
namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

/// Writes an archive and gives its path.
fs::path write(const fs::path& path, const std::function<void(ArchiveWriter&)>& fill, std::string_view comment = {})
{
    auto file = ReplacementFile::create(filePath(path)).value();
    ArchiveWriter writer{file};
    fill(writer);
    writer.finish(comment).value();
    file.commit().value();
    return path;
}

/// Writes a copy of all entries.
std::string copied(const TemporaryFolder& folder, const std::string& bytes)
{
    const auto archive = openFile(folder.write("original.zip", bytes));
    return readFile(write(
        folder / "copy.zip",
        [&](ArchiveWriter& writer) {
            for (std::size_t i = 0; i < archive->entries().size(); ++i)
                writer.copyEntry(*archive, i).value();
        },
        archive->comment()));
}

/// What other tools write: times, attributes, comments, extra fields, a descriptor.
RawArchive foreignArchive()
{
    RawArchive raw{.entries = {storedEntry("first", "1"), deflatedEntry("second", std::string(5000, '2')),
                               storedEntry("directory/", ""), deflatedEntry("first", "a twin")},
                   .comment = "written elsewhere"};
    raw.entries[0].extra = le16(0x5455) + le16(5) + "\x01" + le32(1'700'000'000);
    raw.entries[0].localExtra = le16(0x5455) + le16(9) + "\x03" + le32(1'700'000'000) + le32(1'700'000'001);
    raw.entries[1].comment = "an entry's comment";
    raw.entries[1].flags = 8;
    raw.entries[1].localCrc = raw.entries[1].localSize = raw.entries[1].localCompressedSize = 0;
    raw.entries[1].descriptor = le32(raw.entries[1].crc) + le32(raw.entries[1].data.size()) + le32(raw.entries[1].size);
    return raw;
}

} // namespace

TEST(ArchiveWriter, WhatItWritesReadsBack)
{
    const TemporaryFolder folder;
    Zip::PayloadStore store;
    const auto path = write(folder / "a.zip", [&](ArchiveWriter& writer) {
        writer.add("[Content_Types].xml", *store.take(bytesOf("<Types/>"), Effort::normal).value()).value();
        writer.add("größe.txt", *store.take(bytesOf(std::string(1000, 'x')), Effort::normal).value()).value();
        writer.add("empty", *store.take({}, Effort::normal).value()).value();
    });
    EXPECT_EQ(contents(*openFile(path)),
              (Texts{"[Content_Types].xml=<Types/>", "größe.txt=" + std::string(1000, 'x'), "empty="}));
    EXPECT_EQ(verdict(readFile(path)), "ok");
}

TEST(ArchiveWriter, ANewEntryCarriesAFixedTimeNoAttributesAndNothingThatItDoesNotNeed)
{
    const TemporaryFolder folder;
    Zip::PayloadStore store;
    const auto path = write(folder / "a.zip", [&](ArchiveWriter& writer) {
        writer.add("a", *store.take(bytesOf("b"), Effort::normal).value()).value();
    });
    const std::string crc = le32(0x71beeff9);
    const std::string fields =
        le16(10) + le16(0) + le16(0) + le16(0) + le16(0x21) + crc + le32(1) + le32(1) + le16(1) + le16(0);
    const std::string local = le32(0x04034b50) + fields + "ab";
    const std::string directory = le32(0x02014b50) + le16(20) + fields + std::string(14, '\0') + "a";
    const std::string end =
        le32(0x06054b50) + le32(0) + le16(1) + le16(1) + le32(directory.size() - 0) + le32(local.size()) + le16(0);
    EXPECT_EQ(readFile(path), local + directory + end);
}

TEST(ArchiveWriter, OnlyANameThatIsNotAsciiIsMarkedAsUtf8)
{
    const TemporaryFolder folder;
    Zip::PayloadStore store;
    const auto payload = store.take(bytesOf("x"), Effort::normal).value();
    const auto archive = openFile(write(folder / "a.zip", [&](ArchiveWriter& writer) {
        writer.add("plain ~", *payload).value();
        writer.add("ü", *payload).value();
    }));
    EXPECT_FALSE(archive->entries()[0].hasUtf8Name());
    EXPECT_TRUE(archive->entries()[1].hasUtf8Name());
}

TEST(ArchiveWriter, TheSameCallsGiveTheSameBytes)
{
    const TemporaryFolder folder;
    const auto writeOnce = [&](const char* name) {
        Zip::PayloadStore store;
        return readFile(write(folder / name, [&](ArchiveWriter& writer) {
            for (unsigned i = 0; i < 20; ++i)
                writer
                    .add("part " + std::to_string(i),
                         *store.take(bytesOf(noise(i * 1000, i) + std::string(i * 300'000, 'x')), Effort::normal)
                              .value())
                    .value();
        }));
    };
    EXPECT_TRUE(writeOnce("one.zip") == writeOnce("two.zip"));
}

TEST(ArchiveWriter, AnExtraFieldStandsInBothHeaders)
{
    const TemporaryFolder folder;
    Zip::PayloadStore store;
    const std::string extra = le16(0xa220) + le16(4) + le16(0xa028) + le16(0);
    const std::string bytes = readFile(write(folder / "a.zip", [&](ArchiveWriter& writer) {
        writer.add("a", *store.take(bytesOf("b"), Effort::normal).value(), bytesOf(extra)).value();
    }));
    EXPECT_EQ(verdict(bytes), "ok");
    EXPECT_NE(bytes.find(extra), bytes.rfind(extra));
}

TEST(ArchiveWriter, ANameThatIsTooLongForAZipFileIsRefused)
{
    const TemporaryFolder folder;
    Zip::PayloadStore store;
    const auto payload = store.take(bytesOf("x"), Effort::normal).value();
    auto file = ReplacementFile::create(filePath(folder / "a.zip")).value();
    ArchiveWriter writer{file};
    EXPECT_TRUE(writer.add(std::string(65'535, 'n'), *payload));
    const auto tooLong = writer.add(std::string(65'536, 'n'), *payload);
    ASSERT_FALSE(tooLong);
    EXPECT_EQ(tooLong.error(), code(OpcError::invalidPartName));
    EXPECT_NE(messageOf(tooLong.error()).find("M3.8"), std::string::npos);
    EXPECT_EQ(writer.add(std::string(65'530, 'n'), *payload, bytesOf(le16(1) + le16(2) + "xx")).error(),
              code(OpcError::invalidPartName));
}

TEST(ArchiveWriter, CopyingEveryEntryGivesTheSameFile)
{
    const TemporaryFolder folder;
    const std::string bytes = foreignArchive().bytes();
    EXPECT_EQ(copied(folder, bytes), bytes);
}

TEST(ArchiveWriter, ACopyLeavesOutWhatBelongsToNoEntry)
{
    const TemporaryFolder folder;
    RawArchive raw = foreignArchive();
    const std::string tidy = raw.bytes();
    raw.prefix = "#!/bin/sh\n";
    raw.suffix = "";
    raw.entries[1].between = "junk";
    raw.entries[3].between = std::string(100'000, 'j');
    EXPECT_EQ(copied(folder, raw.bytes()), tidy);
}

TEST(ArchiveWriter, AZip64OffsetThatACopyNoLongerNeedsIsSetRight)
{
    const TemporaryFolder folder;
    RawArchive raw{.entries = {storedEntry("a", "1"), storedEntry("b", "2")}};
    raw.entries[1].between = "junk";
    raw.entries[1].centralOffset = 0xffffffff;
    raw.entries[1].centralSize = raw.entries[1].centralCompressedSize = 0xffffffff;
    raw.entries[1].extra = le16(0xcafe) + le16(0) + le16(1) + le16(24) + le64(1) + le64(1) + le64(36);
    EXPECT_EQ(verdict(copied(folder, raw.bytes())), "ok");
}

TEST(ArchiveWriter, LargeEntriesAreCopiedWhole)
{
    const TemporaryFolder folder;
    const std::string bytes =
        RawArchive{.entries = {storedEntry("a", noise(5'000'000)), storedEntry("b", "x")}}.bytes();
    EXPECT_TRUE(copied(folder, bytes) == bytes);
}

TEST(ArchiveWriter, EntriesOfANestedArchiveAreCopied)
{
    const TemporaryFolder folder;
    const std::string inner = foreignArchive().bytes();
    const auto outer =
        openFile(folder.write("outer.zip", RawArchive{.entries = {storedEntry("in.zip", inner)}}.bytes()));
    const auto nested = Zip::Archive::open(outer->openNested(0).value()).value();
    const auto path = write(
        folder / "copy.zip",
        [&](ArchiveWriter& writer) {
            for (std::size_t i = 0; i < nested->entries().size(); ++i)
                writer.copyEntry(*nested, i).value();
        },
        nested->comment());
    EXPECT_EQ(readFile(path), inner);
}

TEST(ArchiveWriter, OldAndNewEntriesStandTogetherInAFileSavedOverItself)
{
    const TemporaryFolder folder;
    Zip::PayloadStore store;
    const auto path = folder.write("a.zip", foreignArchive().bytes());
    const auto archive = openFile(path);
    write(path, [&](ArchiveWriter& writer) {
        writer.copyEntry(*archive, 1).value();
        writer.add("new", *store.take(bytesOf("bytes"), Effort::normal).value()).value();
        writer.copyEntry(*archive, 0).value();
    });
    EXPECT_EQ(contents(*openFile(path)), (Texts{"second=" + std::string(5000, '2'), "new=bytes", "first=1"}));
    EXPECT_EQ(contents(*archive).size(), 4U) << "the archive that is open is still the old one";
}

TEST(ArchiveWriter, ADamagedEntryIsNotCopied)
{
    const TemporaryFolder folder;
    RawArchive raw = foreignArchive();
    raw.entries[0].localName = "other";
    const auto archive = openFile(folder.write("a.zip", raw.bytes()));
    auto file = ReplacementFile::create(filePath(folder / "b.zip")).value();
    ArchiveWriter writer{file};
    EXPECT_EQ(writer.copyEntry(*archive, 0).error(), code(OpcError::damagedArchive));
}

TEST(ArchiveWriter, AFileThatIsTruncatedWhileItIsCopiedIsAnErrorAndLeavesTheTarget)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a.zip", RawArchive{.entries = {storedEntry("a", noise(3'000'000))}}.bytes());
    const auto archive = openFile(path);
    ASSERT_TRUE(archive->verify(0));
    fs::resize_file(path, 1'000'000);
    folder.write("b.zip", "old");
    {
        auto file = ReplacementFile::create(filePath(folder / "b.zip")).value();
        ArchiveWriter writer{file};
        EXPECT_EQ(writer.copyEntry(*archive, 0).error(), code(CoreError::fileTruncated));
    }
    EXPECT_EQ(readFile(folder / "b.zip"), "old");
}

TEST(ArchiveWriter, Zip64RecordsStandWhereTheCountNeedsThemAndOnlyThere)
{
    const TemporaryFolder folder;
    Zip::PayloadStore store;
    const auto payload = store.take(bytesOf("x"), Effort::normal).value();
    for (const std::size_t count : {65'534U, 65'535U, 70'000U}) {
        const auto path = write(folder / "a.zip", [&](ArchiveWriter& writer) {
            for (std::size_t i = 0; i < count; ++i)
                writer.add("part" + std::to_string(i), *payload).value();
        });
        const auto archive = openFile(path);
        ASSERT_EQ(archive->entries().size(), count);
        EXPECT_EQ(archive->entries().back().name, "part" + std::to_string(count - 1));
        EXPECT_EQ(textOf(archive->read(count - 1).value()), "x");
        const bool hasZip64 = readFile(path).find(le32(0x06064b50)) != std::string::npos;
        EXPECT_EQ(hasZip64, count >= 65'535) << count;
    }
}

TEST(ArchiveWriter, PartsAndOffsetsBeyondFourGibibytesReadBack)
{
    if (std::getenv("HOLLERWICK_LARGE_TESTS") == nullptr)
        GTEST_SKIP() << "takes minutes and 20 GB; set HOLLERWICK_LARGE_TESTS to run it";
    const TemporaryFolder folder;
    Zip::PayloadStore store;
    constexpr std::uint64_t size = (std::uint64_t{4} << 30U) + 12'345;
    fs::resize_file(folder.write("large", ""), size);
    const auto file = Disk::InputFile::open(filePath(folder / "large")).value();
    const auto path = write(folder / "a.zip", [&](ArchiveWriter& writer) {
        writer.add("deflated", *store.take(file, Effort::normal).value()).value();
        writer.add("stored", *store.take(file, Effort::store).value()).value();
        writer.add("behind", *store.take(bytesOf("x"), Effort::normal).value()).value();
    });
    const auto archive = openFile(path);
    for (const std::size_t index : {0U, 1U, 2U}) {
        std::uint64_t count = 0;
        ASSERT_TRUE(archive->stream(index, [&](std::span<const std::byte> bytes) {
            count += bytes.size();
            return Expected<void, ErrorCode2>{};
        }));
        EXPECT_EQ(count, index < 2 ? size : 1);
    }
    const auto copy = openFile(write(folder / "b.zip", [&](ArchiveWriter& writer) {
        for (const std::size_t index : {1U, 2U, 0U})
            writer.copyEntry(*archive, index).value();
    }));
    EXPECT_EQ(textOf(copy->read(1).value()), "x");
    EXPECT_TRUE(copy->verify(2));
}

#if defined(HOLLERWICK_FAULTS)

TEST(ArchiveWriter, WhicheverCallFailsWhileOpeningAndSavingTheErrorIsTold)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a.zip", foreignArchive().bytes());
    const auto save = [&]() -> Expected<void, ErrorCode2> {
        auto archive = Zip::openFileSource(filePath(path)).andThen([](Zip::ByteSourcePtr source) {
            return Zip::Archive::open(std::move(source));
        });
        if (!archive)
            return archive.error();
        auto file = ReplacementFile::create(filePath(folder / "b.zip"));
        if (!file)
            return file.error();
        ArchiveWriter writer{*file};
        for (std::size_t i = 0; i < (*archive)->entries().size(); ++i) {
            if (auto done = writer.copyEntry(**archive, i); !done)
                return done;
        }
        return writer.finish((*archive)->comment()).andThen([&] { return file->commit(); });
    };
    Disk::Faults::clear();
    ASSERT_TRUE(save());
    const auto calls = Disk::Faults::calls();
    ASSERT_GT(calls, 10U);
    for (std::uint64_t call = 0; call < calls; ++call) {
        folder.write("b.zip", "old");
        Disk::Faults::fail(call, EIO);
        const auto saved = save();
        Disk::Faults::clear();
        EXPECT_TRUE(saved || saved.error() == systemCode(EIO)) << call << ": " << outcome(saved);
        EXPECT_EQ(readFile(folder / "b.zip"), saved ? readFile(path) : "old") << call;
    }
}

#endif
