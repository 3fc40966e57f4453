#include "kelvaris/support/y_ref.h"

#include <gtest/gtest.h>

namespace {

using Kelvaris::YRef;

struct Counted
{
    explicit Counted(int& destroyed) : m_destroyed{destroyed} {}
    ~Counted() { ++m_destroyed; }

    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

private:
    int& m_destroyed;
};

TEST(YRef, DeletesTheObjectWithTheLastReference)
{
    int destroyed = 0;
    {
        const YRef<Counted> first{new Counted{destroyed}};
        {
            const YRef<Counted> second{first};
        }
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(YRef, AssignmentReleasesWhatWasHeld)
{
    int firstDestroyed = 0;
    int secondDestroyed = 0;
    YRef<Counted> first{new Counted{firstDestroyed}};
    const YRef<Counted> second{new Counted{secondDestroyed}};
    first = second;
    EXPECT_EQ(firstDestroyed, 1);
    EXPECT_EQ(secondDestroyed, 0);
    EXPECT_EQ(first.get(), second.get());
}

TEST(YRef, AssignmentToItselfKeepsTheObject)
{
    int destroyed = 0;
    YRef<Counted> reference{new Counted{destroyed}};
    const YRef<Counted>& same = reference;
    reference = same;
    EXPECT_EQ(destroyed, 0);
}

TEST(YRef, AReferenceToNothingIsFalse)
{
    const YRef<Counted> nothing;
    EXPECT_FALSE(nothing);
    EXPECT_EQ(nothing.get(), nullptr);
}

} // namespace
