#include "host/core/opc/markup/text_edits.h"

#include <gtest/gtest.h>

namespace {

using Kelvaris::System::IO::OpcPackaging::Markup::TextEdits;

TEST(TextEdits, LeaveATextAloneWhenThereAreNone)
{
    EXPECT_EQ(TextEdits{}.appliedTo("abc"), "abc");
}

TEST(TextEdits, AreAppliedInOrderOfThePlacesWhateverTheOrderOfTheCalls)
{
    TextEdits edits;
    edits.insert(6, "!");
    edits.erase({1, 3});
    edits.replace({4, 5}, "xyz");
    edits.insert(0, ">");
    EXPECT_EQ(edits.appliedTo("abcdef"), ">adxyzf!");
}

TEST(TextEdits, KeepTheOrderOfInsertionsAtOnePlace)
{
    TextEdits edits;
    edits.insert(1, "1");
    edits.insert(1, "2");
    EXPECT_EQ(edits.appliedTo("ab"), "a12b");
}

TEST(TextEdits, InsertBeforeAnEndTag)
{
    TextEdits edits;
    edits.insertBeforeEnd({3, 7}, "a", "x");
    EXPECT_EQ(edits.appliedTo("<a></a>"), "<a>x</a>");
}

TEST(TextEdits, OpenAnElementThatWasWrittenAsEmpty)
{
    TextEdits edits;
    edits.insertBeforeEnd({12, 12}, "p:a", "x");
    EXPECT_EQ(edits.appliedTo("<p:a b='' />\n"), "<p:a b='' >x</p:a>\n");
}

} // namespace
