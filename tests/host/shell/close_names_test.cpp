#include "host/shell/close_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using HostShell::closeNames;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::vector<std::string> names{"_filename",
                                     "_parent_path",
                                     "_create_example",
                                     "_create_examples",
                                     "_create_example_bundle_editor",
                                     "_create_examples_bundle_editor"};

} // namespace

TEST(CloseNames, FindsANameWithAFewWrongLetters)
{
    EXPECT_THAT(closeNames("_filname", names), ElementsAre("_filename"));
    EXPECT_THAT(closeNames("filename", names), ElementsAre("_filename"));
}

TEST(CloseNames, FindsANameByAPartOfIt)
{
    EXPECT_THAT(closeNames("parent", names), ElementsAre("_parent_path"));
}

TEST(CloseNames, GivesTheClosestFirstAndAtMostThree)
{
    EXPECT_THAT(closeNames("_create_exampels", names), ElementsAre("_create_example", "_create_examples"));
    EXPECT_EQ(closeNames("create", names).size(), 3U);
}

TEST(CloseNames, FindsNothingForAnUnrelatedName)
{
    EXPECT_THAT(closeNames("zzz", names), IsEmpty());
    EXPECT_THAT(closeNames("", names), IsEmpty());
}
