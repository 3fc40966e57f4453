#include "host/core/opc/zip/payload_store.h"

#include "host/core/paths/disk/faults.h"
#include "tests/host/core/opc/zip/zip_testing.h"
#include "tests/support/running_threads.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <optional>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;
using Zip::Effort;
using Zip::Method;
using Zip::PayloadPtr;
using Zip::PayloadStore;
namespace fs = std::filesystem;

namespace {

constexpr Effort efforts[] = {Effort::store, Effort::fast, Effort::normal, Effort::maximum};

constexpr std::size_t mebibyte = std::size_t{1} << 20U;

/// Lines that compress, of a given size.
std::string lines(std::size_t size)
{
    std::string text;
    for (std::uint64_t i = 0; text.size() < size; ++i)
        text += "R" + std::to_string(i * 7919 % 10'007) + " net" + std::to_string(i % 97) + " 4.7k\n";
    text.resize(size);
    return text;
}

std::string bytesIn(const Zip::Payload& payload)
{
    return textOf(payload.read("test").value());
}

std::string streamOf(const Zip::Payload& payload)
{
    std::string text;
    payload
        .stream("test",
                [&](std::span<const std::byte> bytes) {
                    text += textOf(bytes);
                    return Expected<void, ErrorCode2>{};
                })
        .value();
    return text;
}

std::string packedBytes(const Zip::Payload& payload)
{
    std::vector<std::byte> bytes(payload.compressedSize());
    payload.packed().readAt(0, bytes).value();
    return textOf(bytes);
}

Expected<PayloadPtr, ErrorCode2> takeFile(PayloadStore& store, const fs::path& path, Effort effort)
{
    const auto file = Disk::InputFile::open(filePath(path));
    if (!file)
        return file.error();
    return store.take(*file, effort);
}

} // namespace

TEST(PayloadStore, GivesBackWhatItTookInOfAnySizeAndEffort)
{
    const TemporaryFolder folder;
    PayloadStore store;
    for (const std::size_t size : {0U, 1U, 100U, 70'000U, 4U << 20U, (4U << 20U) + 1, 9'000'000U}) {
        const std::string text = lines(size);
        const auto path = folder.write("a", text);
        for (const Effort effort : efforts) {
            const auto fromFile = takeFile(store, path, effort).value();
            const auto fromMemory = store.take(bytesOf(text), effort).value();
            EXPECT_TRUE(bytesIn(*fromFile) == text) << size;
            EXPECT_TRUE(streamOf(*fromFile) == text) << size;
            EXPECT_TRUE(packedBytes(*fromFile) == packedBytes(*fromMemory)) << size;
            EXPECT_EQ(fromFile->size(), size);
            EXPECT_EQ(fromFile->method(), effort == Effort::store || size < 2 ? Method::stored : Method::deflated);
            EXPECT_TRUE(size < 2 || effort == Effort::store || fromFile->compressedSize() < size);
        }
    }
}

TEST(PayloadStore, MoreEffortNeverTakesMoreBytes)
{
    PayloadStore store;
    for (const std::size_t size : {100'000U, 6'000'000U}) {
        const std::string text = lines(size);
        std::uint64_t previous = size + 1;
        for (const Effort effort : efforts) {
            const auto payload = store.take(bytesOf(text), effort).value();
            EXPECT_LE(payload->compressedSize(), previous) << size;
            previous = payload->compressedSize();
        }
    }
}

TEST(PayloadStore, BytesThatDoNotShrinkAreStored)
{
    PayloadStore store;
    for (const std::size_t size : {1U, 10U, 50'000U, 1'000'000U, 10'000'000U}) {
        const std::string text = noise(size);
        for (const Effort effort : efforts) {
            const auto payload = store.take(bytesOf(text), effort).value();
            EXPECT_EQ(payload->method(), Method::stored) << size;
            EXPECT_TRUE(bytesIn(*payload) == text) << size;
        }
    }
}

TEST(PayloadStore, ALargeFileOfWhichOnlyAPartShrinksIsCompressed)
{
    PayloadStore store;
    const std::string text = noise(6 * mebibyte) + lines(2 * mebibyte);
    const auto payload = store.take(bytesOf(text), Effort::normal).value();
    EXPECT_EQ(payload->method(), Method::deflated);
    EXPECT_LT(payload->compressedSize(), 7 * mebibyte);
    EXPECT_TRUE(bytesIn(*payload) == text);
}

TEST(PayloadStore, ZerosShrinkNoFurtherThanReadersBelieve)
{
    const TemporaryFolder folder;
    PayloadStore store;
    const auto path = folder.write("zeros", "");
    for (const std::size_t size : {4 * mebibyte, 9 * mebibyte, 100 * mebibyte}) {
        fs::resize_file(path, size);
        for (const Effort effort : {Effort::fast, Effort::normal, Effort::maximum}) {
            const auto payload = takeFile(store, path, effort).value();
            EXPECT_LT(payload->compressedSize(), size / 200);
            EXPECT_TRUE(bytesIn(*payload) == std::string(size, '\0')) << size;
        }
    }
}

TEST(PayloadStore, AFileIsReadToItsRealEndWhenItHasGrown)
{
    const TemporaryFolder folder;
    PayloadStore store;
    for (const std::size_t size : {10U, 5U << 20U}) {
        const auto path = folder.write("a", lines(size));
        const auto file = Disk::InputFile::open(filePath(path)).value();
        for (const std::size_t added : {1U, 5U << 20U}) {
            std::ofstream{path, std::ios::app | std::ios::binary} << lines(added);
            EXPECT_TRUE(bytesIn(*store.take(file, Effort::normal).value()) == readFile(path)) << size;
        }
    }
}

TEST(PayloadStore, AFileThatHasBecomeShorterIsAnErrorThatNamesIt)
{
    const TemporaryFolder folder;
    PayloadStore store;
    for (const std::size_t size : {10'000U, 10'000'000U}) {
        const auto path = folder.write("shrinking", lines(size));
        const auto file = Disk::InputFile::open(filePath(path)).value();
        fs::resize_file(path, size - 1);
        for (const Effort effort : efforts) {
            const auto payload = store.take(file, effort);
            ASSERT_FALSE(payload);
            EXPECT_EQ(payload.error(), code(CoreError::fileTruncated));
            EXPECT_NE(messageOf(payload.error()).find("shrinking"), std::string::npos);
        }
    }
}

TEST(PayloadStore, LaterChangesToTheFileDoNotMatter)
{
    const TemporaryFolder folder;
    PayloadStore store;
    const auto path = folder.write("a", "before");
    const auto payload = takeFile(store, path, Effort::normal).value();
    fs::remove(path);
    EXPECT_EQ(bytesIn(*payload), "before");
}

TEST(PayloadStore, APayloadOutlivesItsStore)
{
    std::optional<PayloadStore> store{std::in_place};
    const auto small = store->take(bytesOf("small"), Effort::normal).value();
    const std::string text = noise(20'000'000);
    const auto large = store->take(bytesOf(text), Effort::normal).value();
    store.reset();
    EXPECT_EQ(bytesIn(*small), "small");
    EXPECT_TRUE(bytesIn(*large) == text);
}

TEST(PayloadStore, SmallPayloadsNeedNoTemporaryFileUntilTheirBudgetIsSpent)
{
    const TemporaryFolder folder;
    const EnvironmentVariable directory{"TMPDIR", folder / "missing"};
    PayloadStore store;
    std::vector<PayloadPtr> kept;
    const std::string text = noise(mebibyte);
    for (int i = 0; i < 16; ++i)
        kept.push_back(store.take(bytesOf(text), Effort::store).value());
    EXPECT_EQ(store.take(bytesOf(text), Effort::store).error(), systemCode(ENOENT));
    kept.pop_back(); // what nobody needs any longer makes room
    EXPECT_TRUE(store.take(bytesOf(text), Effort::store));
}

TEST(PayloadStore, ManyPayloadsBeyondTheBudgetAreAllKept)
{
    PayloadStore store;
    std::vector<PayloadPtr> kept;
    for (unsigned i = 0; i < 40; ++i)
        kept.push_back(store.take(bytesOf(noise(mebibyte, i)), Effort::normal).value());
    for (unsigned i = 0; i < 40; ++i)
        EXPECT_TRUE(bytesIn(*kept[i]) == noise(mebibyte, i)) << i;
}

namespace {

constexpr unsigned threadCounts[] = {0, 1, 2, 7};

/// Files of many sizes, of which each fifth does not shrink.
std::vector<fs::path> manyFiles(const TemporaryFolder& folder, unsigned count)
{
    std::vector<fs::path> paths;
    for (unsigned i = 0; i < count; ++i) {
        const std::size_t size = i * 7919U % 60'000U;
        const std::string name = std::to_string(i);
        paths.push_back(folder.write(name, i % 5 == 0 ? noise(size, i) : lines(size) + name));
    }
    return paths;
}

std::vector<PayloadPtr> takeAll(PayloadStore& store, const std::vector<fs::path>& paths)
{
    std::vector<PayloadPtr> payloads;
    for (const fs::path& path : paths)
        payloads.push_back(takeFile(store, path, Effort::normal).value());
    return payloads;
}

/// The payloads are those of the files, which may have been taken several times over.
void expectBytesOf(const std::vector<fs::path>& paths, const std::vector<PayloadPtr>& payloads)
{
    for (std::size_t i = 0; i < payloads.size(); ++i)
        EXPECT_TRUE(bytesIn(*payloads[i]) == readFile(paths[i % paths.size()])) << i;
}

} // namespace

TEST(PayloadStore, GivesTheSameBytesForAnyNumberOfThreads)
{
    const TemporaryFolder folder;
    const auto paths = manyFiles(folder, 300);
    PayloadStore alone;
    alone.setThreads(0);
    const auto expected = takeAll(alone, paths);
    for (const unsigned threads : threadCounts) {
        PayloadStore store;
        store.setThreads(threads);
        const auto payloads = takeAll(store, paths);
        for (std::size_t i = 0; i < paths.size(); ++i) {
            EXPECT_TRUE(packedBytes(*payloads[i]) == packedBytes(*expected[i])) << i;
            EXPECT_EQ(payloads[i]->crc(), expected[i]->crc());
            EXPECT_EQ(payloads[i]->method(), expected[i]->method());
            EXPECT_TRUE(bytesIn(*payloads[i]) == readFile(paths[i])) << i;
        }
    }
}

TEST(PayloadStore, LetsNoThreadRunAfterItRestsOrIsGone)
{
    const TemporaryFolder folder;
    const auto paths = manyFiles(folder, 100);
    const auto before = runningThreads();
    std::vector<PayloadPtr> payloads;
    {
        PayloadStore store;
        store.setThreads(3);
        payloads = takeAll(store, paths);
        store.rest();
        EXPECT_TRUE(onlyRun(before));
        std::ranges::move(takeAll(store, paths), std::back_inserter(payloads));
    }
    EXPECT_TRUE(onlyRun(before));
    expectBytesOf(paths, payloads);
}

TEST(PayloadStore, PackAllLeavesNothingButWhatAThreadHasInHand)
{
    const TemporaryFolder folder;
    const auto paths = manyFiles(folder, 100);
    PayloadStore store;
    store.setThreads(1);
    const auto payloads = takeAll(store, paths);
    store.packAll();
    const auto isWaiting = [](const PayloadPtr& payload) { return !payload->isPacked(); };
    EXPECT_LE(std::ranges::count_if(payloads, isWaiting), 1);
    expectBytesOf(paths, payloads);
}

TEST(PayloadStore, FilesThatThreadsCompressAreTakenInWhenTheCallReturns)
{
    const TemporaryFolder folder;
    const auto paths = manyFiles(folder, 50);
    PayloadStore store;
    store.setThreads(2);
    std::vector<std::string> expected;
    std::vector<PayloadPtr> payloads;
    for (const fs::path& path : paths) {
        expected.push_back(readFile(path));
        payloads.push_back(takeFile(store, path, Effort::normal).value());
        std::ofstream{path, std::ios::binary} << "changed";
    }
    for (std::size_t i = 0; i < payloads.size(); ++i)
        EXPECT_TRUE(bytesIn(*payloads[i]) == expected[i]) << i;
}

TEST(PayloadStore, PayloadsThatNobodyWantsAreDroppedWhateverTheirState)
{
    const TemporaryFolder folder;
    const auto paths = manyFiles(folder, 50);
    PayloadStore store;
    store.setThreads(2);
    for (int round = 0; round < 20; ++round) {
        for (const fs::path& path : paths)
            (void)takeFile(store, path, Effort::fast).value();
    }
    EXPECT_EQ(takeAll(store, paths).size(), paths.size());
}

TEST(PayloadStore, WhatThreadsCompressBeyondTheBudgetIsKeptAndAFullDiskIsToldWithoutLoss)
{
    const TemporaryFolder folder;
    // sixteen fill the budget, and the threads may be eight behind
    std::vector<fs::path> paths;
    for (unsigned i = 0; i < 28; ++i)
        paths.push_back(folder.write(std::to_string(i), noise(mebibyte, i)));
    for (const unsigned threads : {0U, 2U}) {
        PayloadStore store;
        store.setThreads(threads);
        const auto payloads = takeAll(store, paths);
        for (std::size_t i = 0; i < paths.size(); ++i)
            EXPECT_TRUE(bytesIn(*payloads[i]) == readFile(paths[i])) << i;

        PayloadStore full;
        full.setThreads(threads);
        std::vector<PayloadPtr> kept;
        std::optional<ErrorCode2> error;
        {
            const EnvironmentVariable directory{"TMPDIR", folder / "missing"};
            for (std::size_t i = 0; i < paths.size() && !error; ++i) {
                auto payload = takeFile(full, paths[i], Effort::normal);
                if (payload)
                    kept.push_back(*payload);
                else
                    error = payload.error();
            }
        }
        ASSERT_TRUE(error) << threads;
        EXPECT_EQ(*error, systemCode(ENOENT));
        EXPECT_GE(kept.size(), 16U);
        EXPECT_LE(kept.size(), 25U) << "more than the budget and the backlog stands in memory";
        for (std::size_t i = 0; i < kept.size(); ++i)
            EXPECT_TRUE(bytesIn(*kept[i]) == readFile(paths[i])) << i;
        EXPECT_TRUE(takeFile(full, paths.back(), Effort::normal)) << "there is room now";
    }
}

TEST(PayloadStore, AFailureLeavesTheStoreUsable)
{
    const TemporaryFolder folder;
    const std::string kept = noise(10'000'000, 1);
    EXPECT_EQ(inChild([&] {
                  const rlimit limit{15'000'000, 15'000'000};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  PayloadStore store;
                  const auto first = store.take(bytesOf(kept), Effort::normal).value();
                  const auto tooMuch = store.take(bytesOf(noise(10'000'000, 2)), Effort::normal);
                  if (tooMuch || !(tooMuch.error() == systemCode(EFBIG)))
                      return 1;
                  const auto second = store.take(bytesOf(noise(4'900'000, 3)), Effort::normal).value();
                  return bytesIn(*first) == kept && bytesIn(*second) == noise(4'900'000, 3) ? 0 : 2;
              }),
              0);
}

TEST(PayloadStore, AnArchiveThatWasTakenInIsOpenedWithoutBeingWritten)
{
    PayloadStore store;
    const std::string bytes = RawArchive{.entries = {storedEntry("a", std::string(1000, 'x'))}}.bytes();
    for (const Effort effort : {Effort::store, Effort::normal}) {
        const auto payload = store.take(bytesOf(bytes), effort).value();
        const auto archive = Zip::Archive::open(payload->openNested("b.zip: in.zip").value()).value();
        EXPECT_EQ(archive->describe(0), "b.zip: in.zip: a");
        EXPECT_EQ(contents(*archive).front(), "a=" + std::string(1000, 'x'));
    }
}

#if defined(HOLLERWICK_FAULTS)

TEST(PayloadStore, WhicheverCallFailsTheErrorIsToldAndTheNextTryWorks)
{
    const TemporaryFolder folder;
    const std::string text = lines(6'000'000);
    const auto path = folder.write("a", text);
    Disk::Faults::clear();
    PayloadStore counting;
    ASSERT_TRUE(takeFile(counting, path, Effort::normal));
    const auto calls = Disk::Faults::calls();
    ASSERT_GT(calls, 10U);
    for (std::uint64_t call = 0; call < calls; ++call) {
        PayloadStore store;
        Disk::Faults::fail(call, EIO);
        const auto payload = takeFile(store, path, Effort::normal);
        Disk::Faults::clear();
        ASSERT_FALSE(payload) << call;
        EXPECT_EQ(payload.error(), systemCode(EIO)) << call;
        EXPECT_TRUE(bytesIn(*takeFile(store, path, Effort::normal).value()) == text) << call;
    }
}

#endif
