#include "kelvaris/system/byte_array_view.h"

#include <gtest/gtest.h>

#include <array>

using namespace Kelvaris::System;

namespace {

constexpr std::array bytes{std::byte{1}, std::byte{0}, std::byte{255}};

} // namespace

TEST(ByteArrayView, MemcpyCopiesTheFirstBytesAndGivesTheTarget)
{
    std::array target{std::byte{7}, std::byte{7}, std::byte{7}};
    const ByteArrayView view{bytes.data(), bytes.size()};
    EXPECT_EQ(view.memcpy(target.data(), 2), target.data());
    EXPECT_EQ(target, (std::array{std::byte{1}, std::byte{0}, std::byte{7}}));
}

TEST(ByteArrayView, MemcpyOfAnEmptyViewTouchesNothing)
{
    std::byte target{7};
    EXPECT_EQ((ByteArrayView{nullptr, 0}.memcpy(&target, 0)), &target);
    EXPECT_EQ(target, std::byte{7});
}

TEST(ByteArrayViewDeathTest, MemcpyOfMoreThanThereIsIsOurOwnMistake)
{
    std::array<std::byte, 8> target{};
    const ByteArrayView view{bytes.data(), bytes.size()};
    EXPECT_DEBUG_DEATH(view.memcpy(target.data(), bytes.size() + 1), "size");
}
