#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/relationships.h"
#include "tests/host/core/opc/markup/markup_verdict.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging;
using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using namespace MarkupTest;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string relationshipsWith(std::string_view content, std::string_view attributes = {})
{
    return "<?xml version=\"1.0\"?><Relationships xmlns=\"" + std::string{relationshipsNamespace} + "\"" +
           std::string{attributes} + ">" + std::string{content} + "</Relationships>";
}

std::string one(std::string_view attributes)
{
    return relationshipsWith("<Relationship " + std::string{attributes} + "/>");
}

Verdict verdictOf(std::string_view document, std::string_view source = "/")
{
    return verdictOn(Relationships::parse(bytesOf(document), source, subject));
}

Relationships read(std::string_view document, std::string_view source = "/")
{
    return Relationships::parse(bytesOf(document), source, subject).value();
}

std::string add(Relationships& relationships, std::string_view target, OpcTargetMode mode = OpcTargetMode::internal)
{
    return relationships.add("/", "http://t", target, mode).value()->id;
}

std::vector<std::string> idsOf(const Relationships& relationships)
{
    std::vector<std::string> ids;
    for (const Relationship& relationship : relationships.all())
        ids.push_back(relationship.id);
    return ids;
}

TEST(Relationships, AreReadInOrderWithAllThatTheyTell)
{
    const auto relationships = read(
        relationshipsWith("<Relationship Id=\"b\" Type=\"http://t/1\" Target=\"x.xml\"/>"
                          "<Relationship TargetMode=\"External\" Target=\"http://a/?b&amp;c\" Type=\"http://t/2\" "
                          "Id=\"a\"></Relationship>"
                          "<Relationship Id=\"c\" Type=\"http://t/3\" Target=\"/y.xml\" TargetMode=\"Internal\"/>"));
    ASSERT_THAT(idsOf(relationships), ElementsAre("b", "a", "c"));
    EXPECT_EQ(relationships.all()[0].target, "x.xml");
    EXPECT_EQ(relationships.all()[0].mode, OpcTargetMode::internal);
    EXPECT_EQ(relationships.all()[1].type, "http://t/2");
    EXPECT_EQ(relationships.all()[1].target, "http://a/?b&c");
    EXPECT_EQ(relationships.all()[1].mode, OpcTargetMode::external);
    EXPECT_EQ(relationships.all()[2].mode, OpcTargetMode::internal);
    EXPECT_EQ(relationships.find("a"), &relationships.all()[1]);
    EXPECT_EQ(relationships.find("d"), nullptr);
    EXPECT_THAT(relationships.diagnostics(), IsEmpty());
}

TEST(Relationships, MayBeNone)
{
    EXPECT_THAT(read(relationshipsWith("")).all(), IsEmpty());
    EXPECT_THAT(read("<Relationships xmlns='" + std::string{relationshipsNamespace} + "'/>").all(), IsEmpty());
}

TEST(Relationships, MayHoldTextAndCommentsThatMeanNothing)
{
    EXPECT_THAT(
        verdictOf(relationshipsWith("<!-- c -->\n<Relationship Id=\"a\" Type=\"t\" Target=\"x\">text</Relationship>")),
        IsOk());
}

TEST(Relationships, AreReadAsUtf16AndWithAByteOrderMark)
{
    const std::string document = "<Relationships xmlns='" + std::string{relationshipsNamespace} +
                                 "'><Relationship Id='a' Type='t' Target='x'/></Relationships>";
    EXPECT_THAT(idsOf(read("\xFE\xFF" + utf16(document, ByteOrder::big))), ElementsAre("a"));
    EXPECT_THAT(idsOf(read("\xEF\xBB\xBF" + document)), ElementsAre("a"));
}

TEST(Relationships, RefuseADocumentType)
{
    EXPECT_THAT(verdictOf("<!DOCTYPE x [<!ENTITY a 'b'>]>" + relationshipsWith("")),
                IsRefused(OpcError::documentTypeDeclared, "M1.18"));
}

TEST(Relationships, RefuseAnIdThatStandsTwice)
{
    EXPECT_THAT(verdictOf(relationshipsWith("<Relationship Id=\"rId1\" Type=\"t\" Target=\"x\"/>"
                                            "<Relationship Id=\"rId1\" Type=\"t\" Target=\"y\"/>")),
                IsRefused(OpcError::duplicateRelationshipId, "M1.26"));
}

TEST(Relationships, DistinguishIdsByCase)
{
    EXPECT_THAT(verdictOf(relationshipsWith("<Relationship Id=\"rid1\" Type=\"t\" Target=\"x\"/>"
                                            "<Relationship Id=\"rId1\" Type=\"t\" Target=\"y\"/>")),
                IsOk());
}

TEST(Relationships, RefuseAMissingIdAndOneThatIsNoXmlId)
{
    EXPECT_THAT(verdictOf(one("Type=\"t\" Target=\"x\"")), IsRefused(OpcError::invalidRelationships, "M1.26"));
    for (const char* id : {"", "1", "a b", "a:b", "-a", "{a}"})
        EXPECT_THAT(verdictOf(one("Id=\""s + id + "\" Type=\"t\" Target=\"x\"")),
                    IsRefused(OpcError::invalidRelationships, "M1.26"))
            << id;
}

TEST(Relationships, RefuseAMissingTypeAndOneThatIsNoUri)
{
    EXPECT_THAT(verdictOf(one("Id=\"a\" Target=\"x\"")), IsRefused(OpcError::invalidRelationships, "M1.27"));
    for (const char* type : {"", " ", "a b", "a\\b", "%zz", "{x}"})
        EXPECT_THAT(verdictOf(one("Id=\"a\" Target=\"x\" Type=\""s + type + "\"")),
                    IsRefused(OpcError::invalidRelationships, "M1.27"))
            << type;
}

TEST(Relationships, RefuseAMissingTarget)
{
    EXPECT_THAT(verdictOf(one("Id=\"a\" Type=\"t\"")), IsRefused(OpcError::invalidRelationships, "M1.28"));
    EXPECT_THAT(verdictOf(one("Id=\"a\" Type=\"t\" TargetMode=\"External\"")),
                IsRefused(OpcError::invalidRelationships, "M1.28"));
}

TEST(Relationships, RefuseAnInternalTargetOutsideOfThePackage)
{
    for (const char* target : {"http://x/y", "//host/x", "file:///x", "\\\\host\\x"}) {
        EXPECT_THAT(verdictOf(one("Id=\"a\" Type=\"t\" Target=\""s + target + "\"")),
                    IsRefused(OpcError::invalidRelationships, "M1.29"))
            << target;
        EXPECT_THAT(verdictOf(one("Id=\"a\" Type=\"t\" Target=\""s + target + "\""), "/part.xml"),
                    IsRefused(OpcError::invalidRelationships, "M1.29"));
        EXPECT_THAT(verdictOf(one("Id=\"a\" Type=\"t\" TargetMode=\"External\" Target=\""s + target + "\"")), IsOk());
    }
}

TEST(Relationships, RefuseATargetThatIsARelationshipsPart)
{
    for (const char* target :
         {"/_rels/.rels", "_rels/a.xml.rels", "/b/_RELS/c.RELS", "x/../_rels/.rels", "%5Frels/.rels"})
        EXPECT_THAT(verdictOf(one("Id=\"a\" Type=\"t\" Target=\""s + target + "\"")),
                    IsRefused(OpcError::invalidRelationships, "M1.25"))
            << target;
}

TEST(Relationships, RefuseASourceThatIsARelationshipsPart)
{
    EXPECT_THAT(verdictOf(relationshipsWith(""), "/_rels/.rels"), IsRefused(OpcError::invalidRelationships, "M1.25"));
}

TEST(Relationships, RefuseATargetModeThatTheSchemaDoesNotKnow)
{
    for (const char* mode : {"external", "EXTERNAL", "", "Other", "Internal "})
        EXPECT_THAT(verdictOf(one("Id=\"a\" Type=\"t\" Target=\"x\" TargetMode=\""s + mode + "\"")),
                    IsRefused(OpcError::invalidXml, "M1.20"))
            << mode;
}

TEST(Relationships, RefuseWhatTheSchemaDoesNotKnow)
{
    for (const auto& document :
         {relationshipsWith("<relationship Id=\"a\" Type=\"t\" Target=\"x\"/>"), relationshipsWith("<Other/>"),
          relationshipsWith("text"), one("Id=\"a\" Type=\"t\" Target=\"x\" More=\"y\""),
          one("id=\"a\" Type=\"t\" Target=\"x\""), relationshipsWith("", " a=\"b\""),
          relationshipsWith("<Relationship Id=\"a\" Type=\"t\" Target=\"x\"><Relationship/></Relationship>"),
          "<Relationships/>"s, "<Relationship xmlns=\"" + std::string{relationshipsNamespace} + "\"/>",
          "<Relationships xmlns=\"http://schemas.microsoft.com/package/2005/06/relationships\"/>"s})
        EXPECT_THAT(verdictOf(document), IsRefused(OpcError::invalidXml, "M1.20")) << document;
}

TEST(Relationships, RefuseAttributesOfXmlAndOfSchemaInstances)
{
    EXPECT_THAT(verdictOf(one("Id=\"a\" Type=\"t\" Target=\"x\" xml:lang=\"en\"")),
                IsRefused(OpcError::invalidXml, "M1.21"));
    EXPECT_THAT(verdictOf(relationshipsWith("", " xml:base=\"/a/\"")), IsRefused(OpcError::invalidXml, "M1.21"));
    EXPECT_THAT(
        verdictOf(relationshipsWith("", " xmlns:i=\"" + std::string{schemaInstanceNamespace} + "\" i:type=\"x\"")),
        IsRefused(OpcError::invalidXml, "M1.21"));
}

TEST(Relationships, LeaveExternalTargetsAsTheyAreWhateverTheyHold)
{
    for (const char* target : {"mailto:one@", "mailto:a@b.uk\xC2\xA0", "C:\\a b\\c.txt", "100%", "http://[x", "",
                               "NULL", "file:///D:\\chan-chan.mp3", "../../&amp;&amp;%5baccess%5d#'A B'!A5"}) {
        const std::string document = one("Id=\"a\" Type=\"t\" TargetMode=\"External\" Target=\""s + target + "\"");
        auto relationships = read(document);
        EXPECT_THAT(relationships.diagnostics(), IsEmpty()) << target;
        add(relationships, "/new.xml");
        EXPECT_THAT(relationships.serialised(), HasSubstr("Target=\""s + target + "\"/>"));
    }
}

TEST(Relationships, OpenWithTargetsThatAreNoUriOrNoPartNameAndTellSo)
{
    const auto relationships =
        read(relationshipsWith("<Relationship Id=\"a\" Type=\"t\" Target=\"#'Another Sheet'!A1\"/>"
                               "<Relationship Id=\"b\" Type=\"t\" Target=\"x\\y.xml\"/>"
                               "<Relationship Id=\"c\" Type=\"t\" Target=\"x//y.xml\"/>"
                               "<Relationship Id=\"d\" Type=\"t\" Target=\"fine.xml\"/>"),
             "/s.xml");
    EXPECT_THAT(relationships.diagnostics(),
                ElementsAre(HasSubstr("'a': ISO/IEC 29500-2 M1.28"), HasSubstr("'b': ISO/IEC 29500-2 M1.28"),
                            HasSubstr("'c': ISO/IEC 29500-2 M1.3")));
}

TEST(Relationships, TellOfAHundredOddTargetsAndThatThereAreMore)
{
    std::string content;
    for (int i = 0; i < 1000; ++i)
        content += "<Relationship Id=\"a" + std::to_string(i) + "\" Type=\"t\" Target=\"a b\"/>";
    EXPECT_EQ(read(relationshipsWith(content)).diagnostics().size(), 101U);
}

TEST(Relationships, GiveNewOnesTheFirstFreeId)
{
    auto relationships = read(relationshipsWith("<Relationship Id=\"rId2\" Type=\"t\" Target=\"x\"/>"
                                                "<Relationship Id=\"other\" Type=\"t\" Target=\"x\"/>"));
    EXPECT_EQ(add(relationships, "/a"), "rId1");
    EXPECT_EQ(add(relationships, "/b"), "rId3");
    relationships.remove("rId2");
    EXPECT_EQ(add(relationships, "/c"), "rId2");
    EXPECT_EQ(add(relationships, "/d"), "rId4");
}

TEST(Relationships, OfANewSourceAreWrittenInOrder)
{
    Relationships relationships;
    EXPECT_FALSE(relationships.isChanged());
    add(relationships, "/a&b.xml");
    add(relationships, "http://x/\"<y>", OpcTargetMode::external);
    EXPECT_TRUE(relationships.isChanged());
    EXPECT_EQ(
        relationships.serialised(),
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
        "<Relationship Id=\"rId1\" Type=\"http://t\" Target=\"/a&amp;b.xml\"/>"
        "<Relationship Id=\"rId2\" Type=\"http://t\" Target=\"http://x/&quot;&lt;y&gt;\" TargetMode=\"External\"/>"
        "</Relationships>");
}

TEST(Relationships, RefuseToAddWhatTheyWouldNotRead)
{
    Relationships relationships;
    const auto refusal = [&](std::string_view type, std::string_view target, OpcTargetMode mode) {
        const auto added = relationships.add("/", type, target, mode);
        return added ? 0 : added.error().value();
    };
    constexpr int invalid = static_cast<int>(OpcError::invalidRelationships);
    EXPECT_EQ(refusal("no uri", "/a", OpcTargetMode::internal), invalid);
    EXPECT_EQ(refusal("", "/a", OpcTargetMode::internal), invalid);
    EXPECT_EQ(refusal("t", "http://x", OpcTargetMode::internal), invalid);
    EXPECT_EQ(refusal("t", "/_rels/.rels", OpcTargetMode::internal), invalid);
    EXPECT_EQ(refusal("t", "/a//b", OpcTargetMode::internal), invalid);
    EXPECT_EQ(refusal("t", "a b", OpcTargetMode::internal), invalid);
    EXPECT_EQ(refusal("t", "/", OpcTargetMode::internal), invalid);
    EXPECT_EQ(refusal("t", "a\1", OpcTargetMode::external), invalid);
    EXPECT_EQ(refusal("t", "\xFF", OpcTargetMode::external), invalid);
    EXPECT_THAT(relationships.all(), IsEmpty());
    EXPECT_FALSE(relationships.isChanged());
}

TEST(Relationships, KeepWhatWasReadAsItStoodWhenOneIsAddedAndAnotherRemoved)
{
    const std::string kept =
        "\n\t<r:Relationship  Target = 'b&#x2E;xml'\n Id='b' Type='t'></r:Relationship ><!-- c -->";
    const std::string begin = "<r:Relationships xmlns:r='" + std::string{relationshipsNamespace} + "'>";
    auto relationships = read(begin + "<r:Relationship Id='a' Type='t' Target='x'/>" + kept + "\n</r:Relationships>\n");
    add(relationships, "/new.xml");
    relationships.remove("a");
    relationships.remove("never");
    const std::string expected =
        begin + kept + "\n<r:Relationship Id=\"rId1\" Type=\"http://t\" Target=\"/new.xml\"/>" + "</r:Relationships>\n";
    EXPECT_EQ(relationships.serialised(), expected);
    EXPECT_THAT(idsOf(read(expected)), ElementsAre("b", "rId1"));
}

TEST(Relationships, ForgetANewOneThatIsRemoved)
{
    auto relationships = read(relationshipsWith(""));
    relationships.remove(add(relationships, "/a"));
    EXPECT_EQ(relationships.serialised(), relationshipsWith(""));
    EXPECT_EQ(relationships.find("rId1"), nullptr);
}

TEST(Relationships, FindTheOthersAfterOneIsRemoved)
{
    Relationships relationships;
    for (const char* target : {"/a", "/b", "/c"})
        add(relationships, target);
    relationships.remove("rId1");
    ASSERT_NE(relationships.find("rId3"), nullptr);
    EXPECT_EQ(relationships.find("rId3")->target, "/c");
    EXPECT_EQ(relationships.find("rId1"), nullptr);
}

TEST(Relationships, StayInOrderAndAreFoundWhenManyAreRemoved)
{
    Relationships relationships;
    for (int i = 1; i <= 60; ++i)
        add(relationships, "/part" + std::to_string(i));
    std::vector<std::string> left;
    for (int i = 1; i <= 60; ++i) {
        const std::string id = "rId" + std::to_string(i);
        if (i % 5 == 0)
            left.push_back(id);
        else
            relationships.remove(id);
    }
    EXPECT_EQ(idsOf(relationships), left);
    for (const std::string& id : left) {
        ASSERT_NE(relationships.find(id), nullptr) << id;
        EXPECT_EQ(relationships.find(id)->target, "/part" + id.substr(3));
    }
    EXPECT_EQ(relationships.find("rId1"), nullptr);
    EXPECT_EQ(add(relationships, "/new"), "rId1");
}

TEST(Relationships, OfSixtyThousandPartsAreReadAndWrittenInTime)
{
    Relationships relationships;
    for (int i = 0; i < 60'000; ++i)
        add(relationships, "/content/" + std::to_string(i));
    const auto again = read(relationships.serialised());
    ASSERT_EQ(again.all().size(), 60'000U);
    EXPECT_EQ(again.find("rId60000")->target, "/content/59999");
}

} // namespace
