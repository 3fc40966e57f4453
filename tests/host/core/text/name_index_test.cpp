#include "host/core/text/name_index.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using Kelvaris::System::Text::NameHash;
using Kelvaris::System::Text::NameIndex;

namespace {

/// A list with its index, as owners keep them.
class Names
{
    auto nameAt() const
    {
        return [this](NameIndex::Place place) -> std::string_view { return m_names[place]; };
    }

public:
    void reserve(std::size_t count) { m_index.reserve(count); }

    NameIndex::Place add(std::string name)
    {
        m_names.push_back(std::move(name));
        const NameIndex::Place twin = m_index.add(nameAt());
        if (twin != NameIndex::none)
            m_names.pop_back();
        return twin;
    }

    void removeFromAnywhere(NameIndex::Place place)
    {
        m_index.removeBy(place, [this](NameIndex::Place at) { return NameHash{}(m_names[at]); });
        m_names[place] = m_names.back();
        m_names.pop_back();
    }

    void removeInOrder(NameIndex::Place place)
    {
        m_index.removeInOrder(place, nameAt());
        m_names.erase(m_names.begin() + place);
    }

    NameIndex::Place find(std::string_view name) const { return m_index.find(name, nameAt()); }
    const std::vector<std::string>& all() const { return m_names; }
    const NameIndex& index() const { return m_index; }

    void expectAllFound() const
    {
        for (NameIndex::Place place = 0; place < m_names.size(); ++place)
            EXPECT_EQ(find(m_names[place]), place) << m_names[place];
    }

private:
    std::vector<std::string> m_names;
    NameIndex m_index;
};

Names namesOf(std::size_t count)
{
    Names names;
    for (std::size_t i = 0; i < count; ++i)
        names.add("/names/" + std::to_string(i));
    return names;
}

} // namespace

TEST(NameIndex, FindsFewAndMany)
{
    for (const std::size_t count : {0U, 1U, 15U, 16U, 17U, 18U, 1000U}) {
        const Names names = namesOf(count);
        names.expectAllFound();
        EXPECT_EQ(names.find("/names/" + std::to_string(count)), NameIndex::none);
        EXPECT_EQ(names.find(""), NameIndex::none);
    }
}

TEST(NameIndex, RoomThatWasMadeBeforehandChangesNothing)
{
    for (const std::size_t count : {0U, 16U, 17U, 1000U}) {
        Names names;
        names.reserve(500);
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_EQ(names.add(std::to_string(i)), NameIndex::none);
        names.expectAllFound();
    }
}

TEST(NameIndex, TellsWhereAnEqualNameStandsAndForgetsTheSecond)
{
    for (const std::size_t count : {5U, 16U, 17U, 1000U}) {
        Names names = namesOf(count);
        EXPECT_EQ(names.add("/names/3"), 3U);
        EXPECT_EQ(names.add("/names/0"), 0U);
        EXPECT_EQ(names.add("new"), NameIndex::none);
        EXPECT_EQ(names.find("new"), count);
        names.expectAllFound();
    }
}

TEST(NameIndex, FewNamesAreComparedAndNotHashed)
{
    const auto hashes = [](const Names& names) {
        int count = 0;
        names.index().findBy(
            [&] {
                ++count;
                return NameHash{}("x");
            },
            [](NameIndex::Place) { return false; });
        return count;
    };
    EXPECT_EQ(hashes(namesOf(16)), 0);
    EXPECT_EQ(hashes(namesOf(17)), 1);
}

/// Removals of both kinds, and additions, at random: what is there is found at its place, and nothing else.
TEST(NameIndex, FindsAllThatIsLeftAfterAnyRemovals)
{
    for (const std::size_t most : {10U, 20U, 300U}) {
        std::mt19937 random{static_cast<unsigned>(most)};
        Names names;
        for (int step = 0; step < 3000; ++step) {
            const std::string name = std::to_string(random() % most);
            const NameIndex::Place place = names.find(name);
            if (place == NameIndex::none)
                EXPECT_EQ(names.add(name), NameIndex::none);
            else if (random() % 2 == 0)
                names.removeInOrder(place);
            else
                names.removeFromAnywhere(place);
            EXPECT_EQ(names.find(name) == NameIndex::none, place != NameIndex::none);
        }
        names.expectAllFound();
    }
}

TEST(NameIndex, RemovingInOrderKeepsTheOrder)
{
    for (const std::size_t count : {4U, 40U}) {
        Names names = namesOf(count);
        names.removeInOrder(1);
        EXPECT_EQ(names.all()[0], "/names/0");
        EXPECT_EQ(names.all()[1], "/names/2");
        names.expectAllFound();
    }
}
