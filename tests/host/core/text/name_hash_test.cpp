#include "host/core/text/name_hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <vector>

using Kelvaris::System::Text::NameHash;
using Kelvaris::System::Text::NameMap;
using Kelvaris::System::Text::NameTable;

namespace {

/// What libstdc++ makes of eight bytes before it mixes them into its hash, and the way back.
constexpr std::uint64_t factor = 0xc6a4a7935bd1e995U;

std::uint64_t mixed(std::uint64_t word)
{
    word *= factor;
    return (word ^ (word >> 47U)) * factor;
}

std::uint64_t unmixed(std::uint64_t word)
{
    std::uint64_t inverse = factor;
    for (int i = 0; i < 6; ++i)
        inverse *= 2 - factor * inverse;
    word *= inverse;
    return (word ^ (word >> 47U)) * inverse;
}

std::string bytesOf(std::uint64_t word)
{
    std::string bytes(sizeof word, '\0');
    std::memcpy(bytes.data(), &word, sizeof word);
    return bytes;
}

/// Two to the power of `pieces` names that the hash of the standard library cannot tell apart: a difference in the
/// highest bit of one word is undone by the same difference in the next.
std::vector<std::string> collidingNames(int pieces)
{
    const std::uint64_t word = 0x6e6f7468696e6721U;
    const std::string one = bytesOf(word) + bytesOf(word);
    const std::uint64_t other = unmixed(mixed(word) ^ (std::uint64_t{1} << 63U));
    const std::string two = bytesOf(other) + bytesOf(other);
    std::vector<std::string> names{""};
    for (int piece = 0; piece < pieces; ++piece) {
        std::vector<std::string> longer;
        for (const std::string& name : names) {
            longer.push_back(name + one);
            longer.push_back(name + two);
        }
        names = std::move(longer);
    }
    return names;
}

} // namespace

TEST(NameHash, TellsNamesApartThatWereMadeToFallTogetherInTheStandardHash)
{
    const auto names = collidingNames(12);
    std::set<std::size_t> standard;
    std::set<std::size_t> ours;
    for (const std::string& name : names) {
        standard.insert(std::hash<std::string>{}(name));
        ours.insert(NameHash{}(name));
    }
    EXPECT_EQ(standard.size(), 1U) << "these names are no attack on this standard library";
    EXPECT_EQ(ours.size(), names.size());
}

TEST(NameHash, KeepsTheBucketsOfATableSmallWhateverTheNamesAre)
{
    NameTable table;
    for (const std::string& name : collidingNames(14))
        table.insert(name);
    std::size_t largest = 0;
    for (std::size_t bucket = 0; bucket < table.bucket_count(); ++bucket)
        largest = std::max(largest, table.bucket_size(bucket));
    EXPECT_LE(largest, 16U);
}

TEST(NameHash, IsTheSameForTheSameNameWhereverItStands)
{
    const std::string name = "/content/a-name-of-more-than-one-word.kvsch";
    for (std::size_t length = 0; length <= name.size(); ++length) {
        const std::string copy = "x" + name.substr(0, length) + "y";
        EXPECT_EQ(NameHash{}(std::string_view{name}.substr(0, length)),
                  NameHash{}(std::string_view{copy}.substr(1, length)));
    }
}

TEST(NameHash, TellsLengthsApart)
{
    EXPECT_NE(NameHash{}(std::string(1, '\0')), NameHash{}(std::string(2, '\0')));
    EXPECT_NE(NameHash{}(""), NameHash{}(std::string(8, '\0')));
}

TEST(NameMap, FindsANameWithoutACopyOfIt)
{
    NameMap<int> map;
    map.emplace("/a", 1);
    EXPECT_EQ(map.find(std::string_view{"/a"})->second, 1);
    EXPECT_EQ(map.find(std::string_view{"/b"}), map.end());
}
