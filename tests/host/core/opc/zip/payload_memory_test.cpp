#include "host/core/opc/zip/payload_memory.h"

#include "tests/host/core/opc/zip/zip_testing.h"

#include <gtest/gtest.h>

#include <optional>

using namespace Kelvaris::System::IO::OpcPackaging;
using Zip::ByteSourcePtr;
using Zip::PayloadMemory;

namespace {

std::string bytesIn(const ByteSourcePtr& source)
{
    return textOf(source->inMemory(0, source->size()));
}

/// As many as there is room for.
std::vector<ByteSourcePtr> filled(PayloadMemory& memory, std::string_view bytes)
{
    std::vector<ByteSourcePtr> kept;
    while (auto next = memory.keep(bytesOf(bytes)))
        kept.push_back(std::move(next));
    return kept;
}

} // namespace

TEST(PayloadMemory, KeepsCopiesOfAllSizesThatOutliveIt)
{
    std::vector<std::string> texts;
    for (const std::size_t size : {0U, 1U, 65'535U, 65'536U, 65'537U, 3U, 3'000'000U, 40'000U})
        texts.push_back(noise(size, static_cast<unsigned>(size)));
    std::vector<ByteSourcePtr> kept;
    {
        PayloadMemory memory;
        for (std::string text : texts) {
            kept.push_back(memory.keep(bytesOf(text)));
            text.assign(text.size(), 'x');
        }
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(kept[i]->size(), texts[i].size());
        EXPECT_TRUE(bytesIn(kept[i]) == texts[i]) << i;
    }
}

TEST(PayloadMemory, SmallPayloadsStandSideBySide)
{
    PayloadMemory memory;
    const auto first = memory.keep(bytesOf("first"));
    const auto second = memory.keep(bytesOf("second"));
    EXPECT_EQ(first->inMemory(0, 5).data() + 5, second->inMemory(0, 6).data());
}

TEST(PayloadMemory, WhatIsLargeStaysWhereItIs)
{
    PayloadMemory memory;
    const auto large = Zip::memorySource(std::vector<std::byte>(1'000'000), {});
    EXPECT_EQ(memory.keep(large)->inMemory(0, 1).data(), large->inMemory(0, 1).data());
    const auto small = Zip::memorySource(std::vector<std::byte>(1'000), {});
    EXPECT_NE(memory.keep(small)->inMemory(0, 1).data(), small->inMemory(0, 1).data());
}

TEST(PayloadMemory, TakesUpToSixteenMebibytesAndGivesThemBack)
{
    constexpr std::size_t budget = std::size_t{16} << 20U;
    constexpr std::size_t block = std::size_t{2} << 20U;
    PayloadMemory memory;
    for (const std::size_t size : {4'000U, 60'000U, 1'000'000U}) {
        const std::string text = noise(size);
        auto kept = filled(memory, text);
        const std::size_t sum = kept.size() * size;
        EXPECT_GT(sum + 2 * block, budget) << size;
        EXPECT_LE(sum, budget + block) << size;
        EXPECT_EQ(memory.keep(Zip::memorySource(std::vector<std::byte>(block), {})), nullptr);
        for (const auto& each : kept)
            EXPECT_TRUE(bytesIn(each) == text);
        // one payload holds no more than the block that it stands in
        const ByteSourcePtr last = kept.back();
        kept.clear();
        EXPECT_GE(filled(memory, text).size() * size + 2 * block, sum) << size;
    }
}
