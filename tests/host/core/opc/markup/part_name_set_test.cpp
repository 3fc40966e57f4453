#include "host/core/opc/markup/part_name_set.h"
#include "tests/host/core/opc/markup/markup_verdict.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using namespace MarkupTest;

Verdict added(PartNameSet& names, std::string_view name)
{
    return verdictOn(names.add(name, [] { return std::string{subject}; }));
}

TEST(PartNameSet, RefusesEquivalentNames)
{
    PartNameSet names;
    EXPECT_THAT(added(names, "/a/B.xml"), IsOk());
    EXPECT_THAT(added(names, "/A/b.XML"), IsRefused(OpcError::partExists, "M1.12"));
    EXPECT_TRUE(names.contains("/a/b.xml"));
    EXPECT_EQ(names.size(), 1U);
}

TEST(PartNameSet, RefusesANameThatContinuesAnother)
{
    PartNameSet names;
    EXPECT_THAT(added(names, "/a"), IsOk());
    EXPECT_THAT(added(names, "/a/b"), IsRefused(OpcError::derivedPartName, "M1.11"));
    EXPECT_THAT(added(names, "/A/b/c/d"), IsRefused(OpcError::derivedPartName, "M1.11"));
}

TEST(PartNameSet, RefusesANameThatAnotherContinues)
{
    PartNameSet names;
    EXPECT_THAT(added(names, "/a/b/c/d.xml"), IsOk());
    for (const char* name : {"/a", "/A/b", "/a/b/C"})
        EXPECT_THAT(added(names, name), IsRefused(OpcError::derivedPartName, "M1.11")) << name;
}

TEST(PartNameSet, FindsDerivedNamesThatAreNoNeighboursInOrder)
{
    PartNameSet names;
    for (const char* name : {"/a", "/a!", "/a-b", "/a.b", "/ab"})
        EXPECT_THAT(added(names, name), IsOk()) << name;
    EXPECT_THAT(added(names, "/a/z"), IsRefused(OpcError::derivedPartName, "M1.11"));
}

TEST(PartNameSet, LetsNamesShareBeginningsThatAreNoSegments)
{
    PartNameSet names;
    for (const char* name : {"/a.xml", "/a", "/ab/c", "/ab/d", "/_rels/a.rels", "/x/a1", "/x/a01"})
        EXPECT_THAT(added(names, name), IsOk()) << name;
}

TEST(PartNameSet, ForgetsWhatIsRemovedAndTheDirectoriesOfIt)
{
    PartNameSet names;
    EXPECT_THAT(added(names, "/a/b/c"), IsOk());
    EXPECT_THAT(added(names, "/a/d"), IsOk());
    names.remove("/A/B/C");
    EXPECT_THAT(added(names, "/a/b"), IsOk());
    EXPECT_THAT(added(names, "/a"), IsRefused(OpcError::derivedPartName, "M1.11"));
    names.remove("/a/b");
    names.remove("/a/d");
    names.remove("/never/there");
    EXPECT_THAT(added(names, "/a"), IsOk());
}

TEST(PartNameSet, KnowsTheOthersWhenSomeOfManyAreRemoved)
{
    PartNameSet names;
    const auto nameOf = [](int i) { return "/d" + std::to_string(i % 7) + "/e/" + std::to_string(i); };
    for (int i = 0; i < 100; ++i)
        EXPECT_THAT(added(names, nameOf(i)), IsOk());
    for (int i = 0; i < 100; i += 3)
        names.remove(nameOf(i));
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(names.contains(nameOf(i)), i % 3 != 0) << i;
        if (i % 3 == 0)
            EXPECT_THAT(added(names, nameOf(i) + "/x"), IsOk());
        else
            EXPECT_THAT(added(names, nameOf(i) + "/x"), IsRefused(OpcError::derivedPartName, "M1.11"));
    }
    EXPECT_EQ(names.size(), 100U);
    EXPECT_THAT(added(names, "/d1/e"), IsRefused(OpcError::derivedPartName, "M1.11"));
}

TEST(PartNameSet, IsAsItWasAfterARefusal)
{
    PartNameSet names;
    EXPECT_THAT(added(names, "/x"), IsOk());
    EXPECT_FALSE(added(names, "/x/y/z").isOk);
    names.remove("/x");
    EXPECT_THAT(added(names, "/x/y"), IsOk());
}

} // namespace
