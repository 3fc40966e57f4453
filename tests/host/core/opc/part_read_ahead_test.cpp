#include "host/core/opc/part_read_ahead.h"

#include "host/core/opc/package_data.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/host/core/opc/zip/raw_archive.h"
#include "tests/support/noise.h"
#include "tests/support/running_threads.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;
using OpcPackaging::detail::PartPtr;
using OpcPackaging::detail::PartReadAhead;
using testing::HasSubstr;

namespace {

constexpr unsigned threadCounts[] = {0, 1, 3};
constexpr std::size_t count = 60;

/// Half of it shrinks; some are empty, some larger than what is inflated ahead.
std::string textOf(std::size_t number)
{
    const std::size_t size = number % 13 == 5 ? 0 : number % 20 == 7 ? 1'500'000 : number * 1'237 % 40'000;
    return noise(size / 2, static_cast<unsigned>(number)) + std::string(size - size / 2, 'x');
}

std::string nameOf(std::size_t number)
{
    return std::to_string(number) + ".txt";
}

class PartReadAheadTest : public testing::Test
{
protected:
    /// Its parts are "/0.txt", "/1.txt", ...: deflated, each ninth stored, one in pieces.
    RawArchive archive() const
    {
        RawArchive archive;
        archive.entries.push_back(storedEntry(
            "[Content_Types].xml", "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>"
                                   "<Default Extension='txt' ContentType='text/plain'/></Types>"));
        for (std::size_t i = 0; i < count; ++i) {
            if (i == 30) {
                archive.entries.push_back(deflatedEntry(nameOf(i) + "/[0].piece", textOf(i).substr(0, 100)));
                archive.entries.push_back(deflatedEntry(nameOf(i) + "/[1].last.piece", textOf(i).substr(100)));
            } else {
                archive.entries.push_back(i % 9 == 0 ? storedEntry(nameOf(i), textOf(i))
                                                     : deflatedEntry(nameOf(i), textOf(i)));
            }
        }
        return archive;
    }

    PackagePtr open(const RawArchive& archive) const
    {
        return PackageData::openFile(toFilePath2(m_folder.write("p.zip", archive.bytes()))).value();
    }

    TemporaryFolder m_folder;
};

std::vector<PartPtr> partsOf(PackageData& package)
{
    return *package.parts().all().value();
}

OpcPackaging::detail::Result<std::string> nextText(PartReadAhead& parts)
{
    std::string text;
    auto streamed = parts.next([&](std::span<const std::byte> bytes) -> OpcPackaging::detail::Result<> {
        text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return {};
    });
    if (!streamed)
        return streamed.error();
    return text;
}

} // namespace

TEST_F(PartReadAheadTest, GivesTheBytesOfEachPartInItsTurnForAnyNumberOfThreads)
{
    const PackagePtr package = open(archive());
    const PartPtr changed = package->findPart("/20.txt").value();
    const std::string newText(5'000, 'n');
    package->setBytes(
        changed,
        package->parts().items().take(std::as_bytes(std::span{newText}), OpcPackageCompressionType::normal).value());
    const std::vector<PartPtr> order = partsOf(*package);
    ASSERT_EQ(order.size(), count);
    for (const unsigned threads : threadCounts) {
        PartReadAhead parts{package->parts(), order};
        parts.setThreads(threads);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string text = nextText(parts).value();
            EXPECT_TRUE(text == (order[i] == changed ? newText : textOf(i))) << i << " with " << threads;
        }
    }
}

TEST_F(PartReadAheadTest, TellsOfADamagedPartWhenItIsItsTurn)
{
    RawArchive damaged = archive();
    RawEntry& entry = damaged.entries[42];
    ASSERT_EQ(entry.method, 8);
    entry.crc ^= 1U;
    const PackagePtr package = open(damaged);
    for (const unsigned threads : threadCounts) {
        PartReadAhead parts{package->parts(), partsOf(*package)};
        parts.setThreads(threads);
        std::size_t streamed = 0;
        auto text = nextText(parts);
        for (; text; text = nextText(parts))
            ++streamed;
        EXPECT_EQ(text.error(), code(OpcError::checksumMismatch));
        EXPECT_EQ(entry.name, partsOf(*package)[streamed]->name.substr(1));
        EXPECT_THAT(toStdString(text.error().message()), HasSubstr(entry.name));
    }
}

TEST_F(PartReadAheadTest, AnErrorOfTheSinkEndsThatPart)
{
    const PackagePtr package = open(archive());
    PartReadAhead parts{package->parts(), partsOf(*package)};
    parts.setThreads(1);
    const auto full = code(OpcError::limitExceeded);
    std::size_t refused = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto streamed =
            parts.next([&](std::span<const std::byte>) -> OpcPackaging::detail::Result<> { return full; });
        EXPECT_EQ(streamed.hasValue(), textOf(i).empty()) << i;
        refused += streamed ? 0U : 1U;
    }
    EXPECT_GT(refused, count / 2);
}

TEST_F(PartReadAheadTest, LetsNoThreadRunAfterItIsGone)
{
    const PackagePtr package = open(archive());
    const auto before = runningThreads();
    {
        PartReadAhead parts{package->parts(), partsOf(*package)};
        parts.setThreads(3);
        for (int i = 0; i < 3; ++i)
            ASSERT_TRUE(nextText(parts));
    }
    EXPECT_TRUE(onlyRun(before));
}
