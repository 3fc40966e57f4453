#include "host/shell/function_documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using testing::HasSubstr;

TEST(FunctionDocuments, TellAboutEachFunctionOnce)
{
    EXPECT_EQ(functionDocuments().size(), 23U);
    for (const FunctionDocument& document : functionDocuments())
        EXPECT_EQ(findFunctionDocument(document.name), &document);
    EXPECT_EQ(findFunctionDocument("_nothing"), nullptr);
}

TEST(FunctionDocuments, HoldTheArgumentsOfTheHeading)
{
    ASSERT_NE(findFunctionDocument("_filename"), nullptr);
    EXPECT_EQ(findFunctionDocument("_filename")->arguments, "(path)");
    EXPECT_EQ(findFunctionDocument("_create_example")->arguments,
              "(files, output, title[, description[, manufacturer[, keywords]]])");
}

TEST(FunctionDocuments, BeginWithASentenceThatStandsAlone)
{
    EXPECT_EQ(findFunctionDocument("_filename")->summary,
              "The last component of a path; the empty text for a path that ends in a separator.");
    EXPECT_EQ(findFunctionDocument("_bundle_viewer")->summary,
              "Shows the parts of any package of the Open Packaging Conventions, an office document for instance.");
    for (const FunctionDocument& document : functionDocuments()) {
        EXPECT_THAT(document.summary, testing::EndsWith(".")) << document.name;
        EXPECT_THAT(document.summary, testing::Not(HasSubstr("\n"))) << document.name;
    }
}

TEST(FunctionDocuments, EndWhereTheNextHeadingBegins)
{
    for (const FunctionDocument& document : functionDocuments()) {
        EXPECT_THAT(document.text, testing::Not(HasSubstr("\n## "))) << document.name;
        EXPECT_THAT(document.text, testing::Not(HasSubstr("\n### "))) << document.name;
    }
}
