#include "host/core/opc/zip/archive.h"

#include "tests/host/core/opc/zip/zip_testing.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

const std::string text = "The quick brown fox jumps over the lazy dog, over and over and over.";

RawArchive simpleArchive()
{
    return {.entries = {storedEntry("a.txt", "stored"), deflatedEntry("b.txt", text), storedEntry("c.txt", "last")}};
}

/// Breaks a sound archive and expects an error with a code and a piece of its sentence, however it is read.
void expectRefusal(OpcError error, const std::string& sentence, const std::function<void(RawArchive&)>& damage)
{
    RawArchive raw = simpleArchive();
    ASSERT_EQ(verdict(raw.bytes()), "ok");
    damage(raw);
    const std::string message = verdict(raw.bytes());
    EXPECT_NE(message.find(sentence), std::string::npos) << message;
    EXPECT_EQ(message.rfind("test.zip", 0), 0U) << message;
    const auto archive = openBytes(raw.bytes());
    std::optional<ErrorCode2> found;
    if (!archive)
        found = archive.error();
    for (std::size_t i = 0; archive && !found && i < (*archive)->entries().size(); ++i) {
        if (const auto read = (*archive)->read(i); !read)
            found = read.error();
    }
    ASSERT_TRUE(found);
    EXPECT_EQ(*found, code(error)) << message;
}

void setDescriptor(RawEntry& entry, std::string descriptor)
{
    entry.flags |= 8U;
    entry.localCrc = 0;
    entry.localSize = 0;
    entry.localCompressedSize = 0;
    entry.descriptor = std::move(descriptor);
}

} // namespace

TEST(ArchiveDamage, BytesThatAreNoArchiveAreRefused)
{
    for (const std::string& bytes : {std::string{}, std::string{"text"}, std::string(100'000, '\0'), noise(70'000)})
        EXPECT_EQ(openBytes(bytes).error(), code(OpcError::notAnArchive));
}

TEST(ArchiveDamage, AFileThatIsCutAnywhereIsRefused)
{
    RawArchive raw = simpleArchive();
    raw.zip64 = true;
    raw.comment = "a comment";
    const std::string bytes = raw.bytes();
    ASSERT_EQ(verdict(bytes), "ok");
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(openBytes(std::string_view{bytes}.substr(0, length))) << length;
}

TEST(ArchiveDamage, ACutArchiveDoesNotPassForTheOneWithinIt)
{
    RawArchive outer = simpleArchive();
    outer.entries.push_back(storedEntry("nested.zip", simpleArchive().bytes()));
    outer.entries.push_back(storedEntry("behind", "x"));
    const std::string bytes = outer.bytes();
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(openBytes(std::string_view{bytes}.substr(0, length))) << length;
}

TEST(ArchiveDamage, ABitThatFlipsAnywhereIsFoundOrHarmless)
{
    const std::string sound = simpleArchive().bytes();
    const auto expected = contents(*openBytes(sound).value());
    for (std::size_t i = 0; i < sound.size() * 8; ++i) {
        std::string bytes = sound;
        bytes[i / 8] = static_cast<char>(bytes[i / 8] ^ (1 << (i % 8)));
        const bool isHarmless = verdict(bytes) == "ok";
        EXPECT_TRUE(!isHarmless || contents(*openBytes(bytes).value()) == expected) << "bit " << i;
    }
}

TEST(ArchiveDamage, ACommentLongerThanTheFileIsRefused)
{
    std::string bytes = simpleArchive().bytes();
    bytes[bytes.size() - 2] = 5;
    EXPECT_EQ(openBytes(bytes).error(), code(OpcError::notAnArchive));
}

TEST(ArchiveDamage, TwoArchivesInARowAreRefused)
{
    EXPECT_EQ(openBytes(simpleArchive().bytes() + simpleArchive().bytes()).error(), code(OpcError::damagedArchive));
}

TEST(ArchiveDamage, ADirectoryOutsideTheFileIsRefused)
{
    for (const std::uint64_t value : {std::uint64_t{100'000}, std::uint64_t{0xfffffffe}}) {
        expectRefusal(OpcError::damagedArchive, "directory", [&](RawArchive& raw) { raw.directoryOffset = value; });
        expectRefusal(OpcError::damagedArchive, "directory", [&](RawArchive& raw) { raw.directorySize = value; });
    }
}

TEST(ArchiveDamage, ADirectoryThatDoesNotBeginWhereItIsToldIsRefused)
{
    expectRefusal(OpcError::damagedArchive, "4.3.16", [](RawArchive& raw) { raw.directoryOffset = 3; });
}

TEST(ArchiveDamage, BytesBetweenTheDirectoryAndTheEndRecordAreRefused)
{
    expectRefusal(OpcError::damagedArchive, "directory", [](RawArchive& raw) { raw.behindDirectory = "junk"; });
}

TEST(ArchiveDamage, ACountThatIsTooHighOrTooLowIsRefused)
{
    expectRefusal(OpcError::damagedArchive, "directory", [](RawArchive& raw) { raw.count = 4; });
    expectRefusal(OpcError::damagedArchive, "more than the end record counts", [](RawArchive& raw) { raw.count = 2; });
    expectRefusal(OpcError::damagedArchive, "more than the end record counts", [](RawArchive& raw) { raw.count = 0; });
}

TEST(ArchiveDamage, SeveralDisksAreRefused)
{
    expectRefusal(OpcError::unsupportedEntry, "disk", [](RawArchive& raw) { raw.disk = 1; });
    expectRefusal(OpcError::unsupportedEntry, "disk", [](RawArchive& raw) { raw.directoryDisk = 1; });
    expectRefusal(OpcError::unsupportedEntry, "disk", [](RawArchive& raw) { raw.countOnDisk = 2; });
    expectRefusal(OpcError::unsupportedEntry, "disk", [](RawArchive& raw) { raw.entries[0].disk = 1; });
    expectRefusal(OpcError::unsupportedEntry, "disk", [](RawArchive& raw) {
        raw.zip64 = true;
        raw.disks = 2;
    });
}

TEST(ArchiveDamage, Zip64EndRecordsThatDoNotFitAreRefused)
{
    const auto damaged = [](const std::function<void(RawArchive&)>& damage) {
        expectRefusal(OpcError::damagedArchive, "application note", [&](RawArchive& raw) {
            raw.zip64 = true;
            raw.saturated = true;
            damage(raw);
        });
    };
    damaged([](RawArchive& raw) { raw.zip64RecordOffset = 0; });
    damaged([](RawArchive& raw) { raw.zip64RecordOffset = ~std::uint64_t{0}; });
    damaged([](RawArchive& raw) { raw.zip64RecordSize = 45; });
    damaged([](RawArchive& raw) { raw.zip64RecordSize = ~std::uint64_t{0}; });
    damaged([](RawArchive& raw) { raw.count = std::uint64_t{1} << 62U; });
    damaged([](RawArchive& raw) { raw.directorySize = ~std::uint64_t{0}; });
    damaged([](RawArchive& raw) { raw.directoryOffset = ~std::uint64_t{0}; });
    damaged([](RawArchive& raw) { raw.directoryOffset = std::uint64_t{1} << 63U; });
}

TEST(ArchiveDamage, EndRecordsThatContradictEachOtherAreRefused)
{
    RawArchive raw = simpleArchive();
    raw.zip64 = true;
    std::string bytes = raw.bytes();
    bytes[bytes.size() - 22 + 10] = 2; // the count of the small record
    bytes[bytes.size() - 22 + 8] = 2;
    EXPECT_EQ(openBytes(bytes).error(), code(OpcError::damagedArchive));
}

TEST(ArchiveDamage, AVersionAbove45IsRefused)
{
    expectRefusal(OpcError::unsupportedEntry, "test.zip: b.txt", [](RawArchive& raw) { raw.entries[1].version = 46; });
    expectRefusal(OpcError::unsupportedEntry, "4.5", [](RawArchive& raw) {
        raw.zip64 = true;
        raw.zip64Version = 62;
    });
}

TEST(ArchiveDamage, MethodsOtherThanStoredAndDeflatedAreRefusedAndNamed)
{
    for (const std::uint16_t method : {1, 6, 9, 12, 14, 93, 95, 98, 99})
        expectRefusal(OpcError::unsupportedEntry, "method " + std::to_string(method),
                      [&](RawArchive& raw) { raw.entries[1].method = method; });
}

TEST(ArchiveDamage, EncryptedEntriesAreRefused)
{
    for (const unsigned flag : {0x0001U, 0x0041U, 0x2000U})
        expectRefusal(OpcError::encryptedEntry, "test.zip: b.txt",
                      [&](RawArchive& raw) { raw.entries[1].flags = static_cast<std::uint16_t>(flag); });
}

TEST(ArchiveDamage, PatchedDataIsRefused)
{
    expectRefusal(OpcError::unsupportedEntry, "Annex C", [](RawArchive& raw) { raw.entries[1].flags = 0x0020; });
}

TEST(ArchiveDamage, EntriesThatOverlapAreRefused)
{
    expectRefusal(OpcError::damagedArchive, "overlaps", [](RawArchive& raw) { raw.entries[1].centralOffset = 0; });
    expectRefusal(OpcError::damagedArchive, "overlaps", [](RawArchive& raw) { raw.entries[1].centralOffset = 10; });
    expectRefusal(OpcError::damagedArchive, "overlaps",
                  [](RawArchive& raw) { raw.entries[0].centralSize = raw.entries[0].centralCompressedSize = 20; });
}

TEST(ArchiveDamage, EntriesThatReachIntoTheDirectoryOrBeyondTheFileAreRefused)
{
    for (const std::uint32_t size : {5U, 100U, 100'000U, 0xfffffffeU})
        expectRefusal(OpcError::damagedArchive, "test.zip: c.txt", [&](RawArchive& raw) {
            raw.entries[2].centralSize = raw.entries[2].centralCompressedSize = size;
        });
    for (const std::uint32_t offset : {200U, 100'000U, 0xfffffffeU})
        expectRefusal(OpcError::damagedArchive, "test.zip: c.txt",
                      [&](RawArchive& raw) { raw.entries[2].centralOffset = offset; });
}

TEST(ArchiveDamage, AbsurdZip64ValuesOfAnEntryAreRefused)
{
    for (const std::uint64_t value : {std::uint64_t{1} << 40U, std::uint64_t{1} << 63U, ~std::uint64_t{0}}) {
        expectRefusal(OpcError::damagedArchive, "test.zip: c.txt", [&](RawArchive& raw) {
            raw.entries[2].centralSize = raw.entries[2].centralCompressedSize = 0xffffffff;
            raw.entries[2].extra = le16(1) + le16(16) + le64(value) + le64(value);
        });
        expectRefusal(OpcError::damagedArchive, "test.zip: c.txt", [&](RawArchive& raw) {
            raw.entries[2].centralOffset = 0xffffffff;
            raw.entries[2].extra = le16(1) + le16(8) + le64(value);
        });
    }
}

TEST(ArchiveDamage, AZip64ExtraFieldThatIsMissingOrTooShortIsRefused)
{
    for (const std::string& extra : {std::string{}, le16(1) + le16(0), le16(1) + le16(8) + le64(4),
                                     le16(1) + le16(100) + le64(4), le16(2) + le16(16) + le64(4) + le64(4)})
        expectRefusal(OpcError::damagedArchive, "ZIP64", [&](RawArchive& raw) {
            raw.entries[2].centralSize = raw.entries[2].centralCompressedSize = 0xffffffff;
            raw.entries[2].extra = extra;
        });
}

TEST(ArchiveDamage, AStoredEntryWithTwoSizesIsRefused)
{
    expectRefusal(OpcError::damagedArchive, "sizes differ", [](RawArchive& raw) { raw.entries[0].size = 7; });
}

TEST(ArchiveDamage, AMissingLocalHeaderIsRefused)
{
    expectRefusal(OpcError::damagedArchive, "no local header",
                  [](RawArchive& raw) { raw.entries[1].localSignature = 0x04034b51; });
}

TEST(ArchiveDamage, ALocalHeaderThatDiffersFromTheDirectoryIsRefusedWithWhatDiffers)
{
    const auto differs = [](const std::string& what, const std::function<void(RawEntry&)>& damage) {
        expectRefusal(OpcError::damagedArchive,
                      what + " in the local header and the directory differ, ISO/IEC "
                             "29500-2 M3.14",
                      [&](RawArchive& raw) { damage(raw.entries[1]); });
    };
    differs("names", [](RawEntry& entry) { entry.localName = "B.txt"; });
    differs("methods", [](RawEntry& entry) { entry.localMethod = 0; });
    differs("flags", [](RawEntry& entry) { entry.localFlags = 0x0800; });
    differs("flags", [](RawEntry& entry) { entry.localFlags = 0x0008; });
    differs("checksums", [](RawEntry& entry) { entry.localCrc = 1; });
    differs("checksums", [](RawEntry& entry) { entry.localCrc = 0; });
    differs("sizes", [](RawEntry& entry) { entry.localSize = 1; });
    differs("sizes", [](RawEntry& entry) { entry.localCompressedSize = 1; });
    differs("sizes", [](RawEntry& entry) { entry.localSize = 0; });
}

TEST(ArchiveDamage, ALocalHeaderThatIsLongerThanItsRoomIsRefused)
{
    expectRefusal(OpcError::damagedArchive, "overlaps what follows", [](RawArchive& raw) {
        // the field takes the room of the data, which the next entry then lends
        raw.entries[1].localExtra = std::string(40, 'x');
        raw.entries[2].centralOffset = static_cast<std::uint32_t>(36 + 5 + 35 + raw.entries[1].data.size());
        raw.entries[2].between = "";
    });
}

TEST(ArchiveDamage, ADataDescriptorThatDiffersOrIsMissingIsRefused)
{
    const RawEntry sound = simpleArchive().entries[1];
    const std::string sizes = le32(sound.data.size()) + le32(sound.size);
    for (const std::string& descriptor : {le32(0x08074b50) + le32(sound.crc + 1) + sizes,
                                          le32(0x08074b50) + le32(sound.crc) + le32(1) + le32(sound.size),
                                          le32(sound.crc) + le32(sound.data.size()) + le32(1), std::string(24, '\0'),
                                          le32(sound.crc) + le32(0) + le32(0)})
        expectRefusal(OpcError::damagedArchive, "data descriptor",
                      [&](RawArchive& raw) { setDescriptor(raw.entries[1], descriptor); });
    expectRefusal(OpcError::damagedArchive, "overlaps", [&](RawArchive& raw) { setDescriptor(raw.entries[1], {}); });
}

TEST(ArchiveDamage, BytesThatDoNotMatchTheirChecksumAreRefused)
{
    expectRefusal(OpcError::checksumMismatch, "test.zip: a.txt", [](RawArchive& raw) { raw.entries[0].crc ^= 1U; });
    expectRefusal(OpcError::checksumMismatch, "test.zip: b.txt", [](RawArchive& raw) { raw.entries[1].crc ^= 1U; });
}

TEST(ArchiveDamage, BytesThatDoNotInflateAreRefused)
{
    expectRefusal(OpcError::damagedEntry, "test.zip: b.txt",
                  [](RawArchive& raw) { raw.entries[1].data = std::string(20, '\xff'); });
    expectRefusal(OpcError::damagedEntry, "test.zip: b.txt", [](RawArchive& raw) { raw.entries[1].data.pop_back(); });
    expectRefusal(OpcError::damagedEntry, "test.zip: b.txt", [](RawArchive& raw) { raw.entries[1].data.clear(); });
}

TEST(ArchiveDamage, AnEntryThatInflatesToAnotherSizeIsRefused)
{
    expectRefusal(OpcError::damagedEntry, "size", [](RawArchive& raw) { ++raw.entries[1].size; });
    expectRefusal(OpcError::damagedEntry, "size", [](RawArchive& raw) { --raw.entries[1].size; });
    expectRefusal(OpcError::damagedEntry, "size", [](RawArchive& raw) { raw.entries[1].size = 0; });
}

TEST(ArchiveDamage, BytesBehindADeflateStreamAreRefused)
{
    expectRefusal(OpcError::damagedEntry, "follow", [](RawArchive& raw) { raw.entries[1].data += "x"; });
}

TEST(ArchiveDamage, LargeEntriesAreRefusedForTheSameReasonsWhenStreamed)
{
    const std::string data = noise(6'000'000);
    const auto refusal = [&](const std::function<void(RawEntry&)>& damage) {
        RawEntry entry = deflatedEntry("large", data);
        damage(entry);
        const auto archive = openBytes(RawArchive{.entries = {entry}}.bytes()).value();
        const auto stream = streamed(*archive, 0);
        EXPECT_FALSE(stream);
        EXPECT_EQ(archive->read(0).error(), stream.error());
        return stream.error();
    };
    EXPECT_EQ(refusal([](RawEntry& entry) { entry.crc ^= 1U; }), code(OpcError::checksumMismatch));
    EXPECT_EQ(refusal([](RawEntry& entry) { ++entry.size; }), code(OpcError::damagedEntry));
    EXPECT_EQ(refusal([](RawEntry& entry) { --entry.size; }), code(OpcError::damagedEntry));
    EXPECT_EQ(refusal([](RawEntry& entry) { entry.data += "x"; }), code(OpcError::damagedEntry));
    EXPECT_EQ(refusal([](RawEntry& entry) { entry.data += std::string(300'000, 'x'); }), code(OpcError::damagedEntry));
    EXPECT_EQ(refusal([](RawEntry& entry) { entry.data.resize(entry.data.size() / 2); }), code(OpcError::damagedEntry));
}
