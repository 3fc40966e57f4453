#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/relationships.h"
#include "tests/host/core/opc/markup/markup_verdict.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using namespace MarkupTest;
using Kelvaris::System::IO::OpcPackaging::OpcTargetMode;
using testing::HasSubstr;
using testing::Not;

std::string document(std::string_view content, std::string_view attributes = "mc:Ignorable=\"x\"")
{
    return "<Relationships xmlns=\"" + std::string{relationshipsNamespace} + "\" xmlns:mc=\"" +
           std::string{markupCompatibilityNamespace} + "\" xmlns:x=\"u:x\" xmlns:y=\"u:y\" xmlns:r=\"" +
           std::string{relationshipsNamespace} + "\" " + std::string{attributes} + ">" + std::string{content} +
           "</Relationships>";
}

std::string rel(std::string_view id)
{
    return "<Relationship Id=\"" + std::string{id} + "\" Type=\"t\" Target=\"/p.xml\"/>";
}

Verdict verdictOf(const std::string& text)
{
    return verdictOn(Relationships::parse(bytesOf(text), "/", subject));
}

std::string idsOf(const std::string& text)
{
    const auto relationships = Relationships::parse(bytesOf(text), "/", subject).value();
    std::string ids;
    for (const Relationship& relationship : relationships.all())
        ids += relationship.id + " ";
    return ids;
}

auto isAgainstCompatibility()
{
    return IsRefused(OpcError::invalidRelationships, "M1.31");
}

TEST(MarkupCompatibility, DropsIgnorableElementsAndAttributes)
{
    EXPECT_EQ(idsOf(document("<x:a><x:b/>" + rel("inside") + "</x:a>" + rel("kept"))), "kept ");
    EXPECT_EQ(idsOf(document("<Relationship x:note=\"1\" Id=\"a\" Type=\"t\" Target=\"x\"><x:b/></Relationship>")),
              "a ");
}

TEST(MarkupCompatibility, RefusesWhatIsNeitherUnderstoodNorIgnorable)
{
    EXPECT_THAT(verdictOf(document("<y:a/>")), IsRefused(OpcError::invalidXml, "M1.20"));
    EXPECT_THAT(verdictOf(document("<x:a/>", "")), IsRefused(OpcError::invalidXml, "M1.20"));
    EXPECT_THAT(verdictOf(document("<Relationship y:n=\"1\" Id=\"a\" Type=\"t\" Target=\"x\"/>")),
                IsRefused(OpcError::invalidXml, "M1.20"));
}

TEST(MarkupCompatibility, HoldsForTheElementThatSaysItAndWhatIsInIt)
{
    EXPECT_EQ(idsOf(document("<y:a mc:Ignorable=\"y\"/>" + rel("a"))), "a ");
    EXPECT_THAT(verdictOf(document("<y:a mc:Ignorable=\"y\"/><y:b/>")), IsRefused(OpcError::invalidXml, "M1.20"));
}

TEST(MarkupCompatibility, DissolvesElementsWhoseContentIsToBeProcessed)
{
    EXPECT_EQ(idsOf(document("<x:a>" + rel("in") + "</x:a><x:b>" + rel("out") + "</x:b>",
                             "mc:Ignorable=\"x\" mc:ProcessContent=\"x:a\"")),
              "in ");
    EXPECT_EQ(
        idsOf(document("<x:a><x:b>" + rel("in") + "</x:b></x:a>", "mc:Ignorable=\"x\" mc:ProcessContent=\"x:*\"")),
        "in ");
}

TEST(MarkupCompatibility, ChoosesTheFirstAlternativeThatIsUnderstood)
{
    EXPECT_EQ(idsOf(document("<mc:AlternateContent><mc:Choice Requires=\"x\">" + rel("strange") +
                             "</mc:Choice><mc:Choice Requires=\"r\">" + rel("first") +
                             "</mc:Choice><mc:Choice Requires=\"r\">" + rel("second") + "</mc:Choice><mc:Fallback>" +
                             rel("fallback") + "</mc:Fallback></mc:AlternateContent>")),
              "first ");
}

TEST(MarkupCompatibility, FallsBackWhenNoAlternativeIsUnderstood)
{
    EXPECT_EQ(idsOf(document("<mc:AlternateContent><mc:Choice Requires=\"r x\">" + rel("a") +
                             "</mc:Choice><mc:Fallback>" + rel("b") + "</mc:Fallback></mc:AlternateContent>")),
              "b ");
    EXPECT_EQ(idsOf(document("<mc:AlternateContent><mc:Choice Requires=\"x\">" + rel("a") +
                             "</mc:Choice></mc:AlternateContent>")),
              "");
}

TEST(MarkupCompatibility, RefusesAlternativesThatAreNotWrittenAsTheyMust)
{
    for (const char* content :
         {"<mc:AlternateContent/>", "<mc:AlternateContent><mc:Fallback/></mc:AlternateContent>",
          "<mc:AlternateContent><mc:Choice/></mc:AlternateContent>",
          "<mc:AlternateContent><mc:Choice Requires=\" \"/></mc:AlternateContent>",
          "<mc:AlternateContent><mc:Choice Requires=\"undeclared\"/></mc:AlternateContent>",
          "<mc:AlternateContent><mc:Choice Requires=\"r\"/><mc:Fallback/><mc:Fallback/></mc:AlternateContent>",
          "<mc:AlternateContent><mc:Choice Requires=\"r\"/><mc:Fallback/><mc:Choice "
          "Requires=\"r\"/></mc:AlternateContent>",
          "<mc:AlternateContent><Relationship/></mc:AlternateContent>"})
        EXPECT_THAT(verdictOf(document(content)), isAgainstCompatibility()) << content;
}

TEST(MarkupCompatibility, RefusesWhatMustBeUnderstoodAndIsNot)
{
    EXPECT_THAT(verdictOf(document("", "mc:MustUnderstand=\"y\"")), isAgainstCompatibility());
    EXPECT_THAT(verdictOf(document("<x:a mc:Ignorable=\"x\" mc:MustUnderstand=\"x\"/>")), isAgainstCompatibility());
    EXPECT_THAT(verdictOf(document(rel("a"), "mc:MustUnderstand=\"r mc\"")), IsOk());
}

TEST(MarkupCompatibility, RefusesPrefixesThatAreNotDeclaredAndAttributesThatItDoesNotKnow)
{
    for (const char* attributes : {"mc:Ignorable=\"none\"", "mc:MustUnderstand=\"none\"",
                                   "mc:ProcessContent=\"none:a\"", "mc:ProcessContent=\"a\"", "mc:Strange=\"x\""})
        EXPECT_THAT(verdictOf(document("", attributes)), isAgainstCompatibility()) << attributes;
}

TEST(MarkupCompatibility, IsNoWayAroundTheBanOnAttributesOfXml)
{
    EXPECT_THAT(
        verdictOf(document("<Relationship xml:lang=\"en\" Id=\"a\" Type=\"t\" Target=\"x\"/>", "mc:Ignorable=\"xml\"")),
        IsRefused(OpcError::invalidXml, "M1.21"));
}

TEST(MarkupCompatibility, RefusesTwoRelationshipsOfOneIdAcrossAlternatives)
{
    EXPECT_THAT(verdictOf(document(rel("a") + "<mc:AlternateContent><mc:Choice Requires=\"r\">" + rel("a") +
                                   "</mc:Choice></mc:AlternateContent>")),
                IsRefused(OpcError::duplicateRelationshipId, "M1.26"));
}

TEST(MarkupCompatibility, IsKeptInADocumentThatDoesNotChangeAndNotWrittenInOneThatDoes)
{
    const std::string text = document("<x:a/>" + rel("a"));
    auto relationships = Relationships::parse(bytesOf(text), "/", subject).value();
    EXPECT_EQ(relationships.serialised(), text);
    ASSERT_TRUE(relationships.add("/", "t", "/new.xml", OpcTargetMode::internal));
    const std::string written = relationships.serialised();
    EXPECT_THAT(written, Not(HasSubstr(markupCompatibilityNamespace)));
    EXPECT_EQ(idsOf(written), "a rId1 ");
}

TEST(MarkupCompatibility, LeavesADocumentThatOnlyDeclaresItAsItStands)
{
    const std::string text = document(rel("a"), "");
    auto relationships = Relationships::parse(bytesOf(text), "/", subject).value();
    ASSERT_TRUE(relationships.add("/", "t", "/new.xml", OpcTargetMode::internal));
    EXPECT_THAT(relationships.serialised(), HasSubstr(markupCompatibilityNamespace));
}

} // namespace
