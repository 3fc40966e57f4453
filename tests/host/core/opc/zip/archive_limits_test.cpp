#include "host/core/opc/limits.h"
#include "host/core/opc/zip/archive.h"

#include "tests/host/core/opc/zip/zip_testing.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

/// An entry of a few bytes that is told to be large.
RawArchive told(std::uint64_t size)
{
    RawArchive raw{.entries = {deflatedEntry("large", "few bytes")}};
    raw.entries[0].size = size;
    return raw;
}

ErrorCode2 failureOfReading(const RawArchive& raw)
{
    const auto archive = openBytes(raw.bytes()).value();
    EXPECT_EQ(archive->read(0).error(), streamed(*archive, 0).error());
    return archive->read(0).error();
}

} // namespace

TEST(ArchiveLimits, WithinTheGraceNobodyAsksForTheRatio)
{
    EXPECT_EQ(failureOfReading(told(Limits::inflateGrace)), code(OpcError::damagedEntry));
}

TEST(ArchiveLimits, AnEntryThatInflatesBeyondTheRatioIsRefusedAndNamed)
{
    EXPECT_EQ(failureOfReading(told(Limits::inflateGrace + 1)), code(OpcError::limitExceeded));
    const std::string message = verdict(told(Limits::inflateGrace + 1).bytes());
    EXPECT_NE(message.find("test.zip: large"), std::string::npos) << message;
    EXPECT_NE(message.find("1000 times"), std::string::npos) << message;
}

TEST(ArchiveLimits, ZerosAsOrdinaryToolsPackThemAreRead)
{
    EXPECT_EQ(verdict(RawArchive{.entries = {deflatedEntry("zeros", std::string(20'000'000, '\0'))}}.bytes()), "ok");
}

TEST(ArchiveLimits, AnEntryTooLargeForMemoryIsRefusedBeforeMemoryIsTaken)
{
    RawArchive raw{.entries = {deflatedEntry("large", noise(2'000'000))}};
    raw.entries[0].size = Limits::partInMemory + 1;
    const auto archive = openBytes(raw.bytes()).value();
    const auto read = archive->read(0);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error(), code(OpcError::limitExceeded));
    EXPECT_EQ(archive->openNested(0).error(), code(OpcError::limitExceeded));
    EXPECT_EQ(streamed(*archive, 0).error(), code(OpcError::damagedEntry)) << "a stream has no such limit";
}

TEST(ArchiveLimits, EntriesBeyondTheLimitAreRefused)
{
    RawArchive raw;
    raw.zip64 = raw.saturated = true;
    raw.count = Limits::entries + 1;
    raw.behindDirectory = std::string((Limits::entries + 1) * 46, '\0');
    raw.directorySize = raw.behindDirectory.size();
    EXPECT_EQ(openBytes(raw.bytes()).error(), code(OpcError::limitExceeded));
}
