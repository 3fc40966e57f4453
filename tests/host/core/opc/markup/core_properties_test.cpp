#include "host/core/opc/markup/core_properties.h"
#include "host/core/opc/markup/opc_names.h"
#include "tests/host/core/opc/markup/markup_verdict.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using namespace MarkupTest;
using namespace std::string_literals;
using testing::HasSubstr;

const std::string begin = "<cp:coreProperties xmlns:cp=\"" + std::string{corePropertiesNamespace} + "\" xmlns:dc=\"" +
                          std::string{dublinCoreNamespace} + "\" xmlns:dcterms=\"" +
                          std::string{dublinCoreTermsNamespace} + "\" xmlns:xsi=\"" +
                          std::string{schemaInstanceNamespace} + "\">";
const std::string end = "</cp:coreProperties>";
const std::string declareCompatibility = " xmlns:mc=\"" + std::string{markupCompatibilityNamespace} + "\"";

std::string core(std::string_view content)
{
    return begin + std::string{content} + end;
}

std::string coreWithRoot(std::string_view attributes)
{
    return "<cp:coreProperties xmlns:cp=\"" + std::string{corePropertiesNamespace} + "\" " + std::string{attributes} +
           "/>";
}

Verdict verdictOf(std::string_view document)
{
    return verdictOn(CoreProperties::parse(bytesOf(document), subject));
}

CoreProperties read(std::string_view document)
{
    return CoreProperties::parse(bytesOf(document), subject).value();
}

std::string textOf(const CoreProperties& properties, CoreProperty property)
{
    return properties.text(property).value_or("none");
}

std::string keywordsOf(std::string_view content)
{
    return textOf(read(core("<cp:keywords>" + std::string{content} + "</cp:keywords>")), CoreProperty::keywords);
}

std::string created(std::string_view attributes, std::string_view text = "2026-03-01T12:30:00Z")
{
    return core("<dcterms:created " + std::string{attributes} + ">" + std::string{text} + "</dcterms:created>");
}

auto isInvalid(const char* rule)
{
    return IsRefused(OpcError::invalidCoreProperties, rule);
}

TEST(CoreProperties, AreAllReadAndThoseOfTheFirstEditionToo)
{
    const auto properties = read(core(
        "<cp:category>1</cp:category><cp:contentStatus>2</cp:contentStatus><cp:contentType>3</cp:contentType>"
        "<dcterms:created xsi:type=\"dcterms:W3CDTF\">2026-01-04T00:00:00Z</dcterms:created><dc:creator>5</dc:creator>"
        "<dc:description>6</dc:description><dc:identifier>7</dc:identifier><cp:keywords>8</cp:keywords>"
        "<dc:language>9</dc:language><cp:lastModifiedBy>10</cp:lastModifiedBy>"
        "<cp:lastPrinted>2026-01-11T00:00:00Z</cp:lastPrinted>"
        "<dcterms:modified xsi:type=\"dcterms:W3CDTF\">2026-01-12T00:00:00Z</dcterms:modified>"
        "<cp:revision>13</cp:revision><dc:subject>14</dc:subject><dc:title>15</dc:title><cp:version>16</cp:version>"));
    std::string all;
    for (std::size_t i = 0; i < corePropertyCount; ++i)
        all += textOf(properties, static_cast<CoreProperty>(i)) + " ";
    EXPECT_EQ(all, "1 2 3 2026-01-04T00:00:00Z 5 6 7 8 9 10 2026-01-11T00:00:00Z 2026-01-12T00:00:00Z 13 14 15 16 ");
    EXPECT_FALSE(properties.isChanged());
}

TEST(CoreProperties, TellEmptyElementsFromMissingOnes)
{
    const auto properties = read(core("<dc:title/><dc:subject></dc:subject>"
                                      "<dcterms:created xsi:type=\"dcterms:W3CDTF\"/><cp:lastPrinted/><cp:keywords/>"));
    for (const auto property : {CoreProperty::title, CoreProperty::subject, CoreProperty::created,
                                CoreProperty::lastPrinted, CoreProperty::keywords})
        EXPECT_EQ(properties.text(property), "");
    EXPECT_EQ(properties.text(CoreProperty::creator), std::nullopt);
}

TEST(CoreProperties, TakeNoDateOfPrintingWithoutATimeToTheSecond)
{
    CoreProperties properties;
    for (const char* date : {"2026", "2026-03", "2026-03-01", "2026-03-01T12:30Z", "2026-03-01T12:30+01:00"}) {
        EXPECT_TRUE(properties.set(CoreProperty::created, date)) << date;
        EXPECT_THAT(verdictOn(properties.set(CoreProperty::lastPrinted, date)).message,
                    testing::HasSubstr("tells no time to the second"))
            << date;
    }
    EXPECT_EQ(properties.text(CoreProperty::lastPrinted), std::nullopt);
    for (const char* date : {"2026-03-01T12:30:00", "2026-03-01T12:30:00.5+01:00", "-0044-03-15T12:00:00Z"})
        EXPECT_THAT(verdictOn(properties.set(CoreProperty::lastPrinted, date)), IsOk()) << date;
}

TEST(CoreProperties, MayBeNone)
{
    EXPECT_THAT(verdictOf(coreWithRoot("")), IsOk());
    EXPECT_THAT(verdictOf(core("\n<!-- c -->\n")), IsOk());
}

TEST(CoreProperties, KeepWhiteSpaceOfTextsAndResolveReferences)
{
    EXPECT_EQ(textOf(read(core("<dc:title>  a &amp;\n b<![CDATA[<c>]]> </dc:title>")), CoreProperty::title),
              "  a &\n b<c> ");
}

TEST(CoreProperties, JoinKeywordsAndTheirValuesInOrder)
{
    EXPECT_EQ(keywordsOf("filter; low pass"), "filter; low pass");
    EXPECT_EQ(keywordsOf("\n\t\tdice die\n\t\t<cp:value xml:lang=\"fr-FR\">d\xC3\xA9s</cp:value>\n"),
              "dice die; d\xC3\xA9s");
    EXPECT_EQ(keywordsOf("<cp:value>a</cp:value><cp:value> b </cp:value>c<cp:value/>"), "a; b; c");
    EXPECT_EQ(keywordsOf(" "), "");
}

TEST(CoreProperties, MayTellLanguagesOfKeywordsAndTheirValuesAlone)
{
    EXPECT_THAT(verdictOf(core("<cp:keywords xml:lang=\"en\">a<cp:value xml:lang=\"de\">b</cp:value></cp:keywords>")),
                IsOk());
    for (const auto& document : {core("<dc:title xml:lang=\"en\">a</dc:title>"), coreWithRoot("xml:lang=\"en\""),
                                 created("xsi:type=\"dcterms:W3CDTF\" xml:lang=\"en\"")})
        EXPECT_THAT(verdictOf(document), isInvalid("M4.4")) << document;
}

TEST(CoreProperties, RefuseMarkupCompatibilityWhereverItStands)
{
    for (const auto& document : {coreWithRoot("mc:Ignorable=\"cp\"" + declareCompatibility),
                                 coreWithRoot(declareCompatibility + " mc:MustUnderstand=\"cp\""),
                                 core("<dc:title" + declareCompatibility + " mc:Ignorable=\"cp\">a</dc:title>"),
                                 core("<dc:title>a</dc:title><mc:AlternateContent" + declareCompatibility + "/>"),
                                 core("<dc:title" + declareCompatibility + "><mc:AlternateContent/></dc:title>")})
        EXPECT_THAT(verdictOf(document), isInvalid("M4.2")) << document;
}

TEST(CoreProperties, RefuseRefinementsOfTheDublinCore)
{
    for (const char* element : {"<dcterms:creator>a</dcterms:creator>", "<dcterms:alternative>a</dcterms:alternative>",
                                "<dcterms:issued xsi:type=\"dcterms:W3CDTF\">2026</dcterms:issued>"})
        EXPECT_THAT(verdictOf(core(element)), isInvalid("M4.3")) << element;
}

TEST(CoreProperties, RefuseDatesWithoutTheirTypeAndWithAnother)
{
    EXPECT_THAT(verdictOf(created("")), isInvalid("M4.5"));
    for (const char* type :
         {"dcterms:Period", "dc:W3CDTF", "W3CDTF", "none:W3CDTF", "", "dcterms:", "dcterms:w3cdtf", "xsi:W3CDTF"})
        EXPECT_THAT(verdictOf(created("xsi:type=\""s + type + "\"")), isInvalid("M4.5")) << type;
}

TEST(CoreProperties, RefuseATypeOnAnythingButDates)
{
    for (const char* element : {"<dc:title xsi:type=\"dcterms:W3CDTF\">a</dc:title>",
                                "<cp:lastPrinted xsi:type=\"dcterms:W3CDTF\">2026-01-01T00:00:00Z</cp:lastPrinted>",
                                "<cp:keywords xsi:type=\"dcterms:W3CDTF\"/>"})
        EXPECT_THAT(verdictOf(core(element)), isInvalid("M4.5")) << element;
}

TEST(CoreProperties, TakeTheTypeOfDatesByItsNamespaceWhateverThePrefix)
{
    const std::string terms = std::string{dublinCoreTermsNamespace};
    const std::string date = "2026-03-01T12:30:00Z";
    for (const auto& element :
         {"<t:created xmlns:t=\"" + terms + "\" xsi:type=\"t:W3CDTF\">" + date + "</t:created>",
          "<created xmlns=\"" + terms + "\" xsi:type=\" W3CDTF \">" + date + "</created>",
          "<dcterms:created xmlns:u=\"" + terms + "\" xsi:type=\"u:W3CDTF\">" + date + "</dcterms:created>"})
        EXPECT_EQ(textOf(read(core(element)), CoreProperty::created), date) << element;
    EXPECT_THAT(verdictOf(core("<t:created xmlns:t=\"" + terms +
                               "\" xmlns:dcterms=\"u:other\" xsi:type=\"dcterms:W3CDTF\">" + date + "</t:created>")),
                isInvalid("M4.5"));
}

TEST(CoreProperties, KeepDatesInTheWordsInWhichTheyWereRead)
{
    for (const char* date : {"2008-06-19T20:00:00.123Z", "2008-06-19T22:00:00+02:00", "2008-06-19T20:00Z", "2008-06-19",
                             "2008-06", "2008"})
        EXPECT_EQ(textOf(read(created("xsi:type=\"dcterms:W3CDTF\"", date)), CoreProperty::created), date);
}

TEST(CoreProperties, RefuseDatesThatAreNone)
{
    for (const char* date :
         {"2014aaa-10-28T11:34:00Z", "yesterday", "2014-13-01T00:00:00Z", "2014-02-30", "20140228"}) {
        EXPECT_THAT(verdictOf(created("xsi:type=\"dcterms:W3CDTF\"", date)), isInvalid("M1.20")) << date;
        EXPECT_THAT(verdictOf(core("<cp:lastPrinted>"s + date + "</cp:lastPrinted>")), isInvalid("M1.20")) << date;
    }
}

TEST(CoreProperties, RefuseAPropertyThatStandsTwice)
{
    EXPECT_THAT(verdictOf(core("<dc:title>a</dc:title><dc:title>a</dc:title>")), isInvalid("M1.20"));
    EXPECT_THAT(verdictOf(core("<cp:keywords/><cp:keywords/>")), isInvalid("M1.20"));
}

TEST(CoreProperties, RefuseElementsInsideOfProperties)
{
    for (const char* element :
         {"<dc:title><dc:subject>a</dc:subject></dc:title>", "<cp:keywords><dc:title/></cp:keywords>",
          "<cp:keywords><cp:value><cp:value/></cp:value></cp:keywords>", "<dc:title><cp:value/></dc:title>"})
        EXPECT_THAT(verdictOf(core(element)), isInvalid("M1.20")) << element;
}

TEST(CoreProperties, RefuseWhatTheSchemaDoesNotKnow)
{
    for (const auto& document :
         {core("<cp:unknown/>"), core("<dc:date>2026</dc:date>"), core("<cp:Title/>"), core("text"),
          core("<cp:value/>"), core("<cp:title>a</cp:title>"), core("<title>a</title>"),
          core("<dc:title more=\"1\">a</dc:title>"), coreWithRoot("a=\"b\""), "<coreProperties/>"s,
          "<cp:CoreProperties xmlns:cp=\"" + std::string{corePropertiesNamespace} + "\"/>"})
        EXPECT_THAT(verdictOf(document), IsRefused(OpcError::invalidXml, "M1.20")) << document;
}

TEST(CoreProperties, RefuseOtherAttributesOfXmlAndOfSchemaInstances)
{
    for (const auto& document : {core("<dc:title xml:space=\"preserve\"> a</dc:title>"),
                                 core("<dc:title xsi:nil=\"true\"/>"), coreWithRoot("xml:base=\"/\"")})
        EXPECT_THAT(verdictOf(document), IsRefused(OpcError::invalidXml, "M1.21")) << document;
}

TEST(CoreProperties, RefuseADocumentType)
{
    EXPECT_THAT(verdictOf("<!DOCTYPE x [<!ENTITY a 'b'>]>" + core("<dc:title>&a;</dc:title>")),
                IsRefused(OpcError::documentTypeDeclared, "M1.18"));
}

TEST(CoreProperties, OfANewDocumentAreWrittenWhenTheyAreSet)
{
    CoreProperties properties;
    EXPECT_FALSE(properties.isChanged());
    ASSERT_TRUE(properties.set(CoreProperty::title, "A & <B>"));
    ASSERT_TRUE(properties.set(CoreProperty::created, "2026-03-01T12:30:00Z"));
    ASSERT_TRUE(properties.set(CoreProperty::keywords, "a; b"));
    EXPECT_TRUE(properties.isChanged());
    EXPECT_EQ(properties.serialised(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n" + begin +
                  "<dcterms:created xsi:type=\"dcterms:W3CDTF\">2026-03-01T12:30:00Z</dcterms:created>"
                  "<cp:keywords>a; b</cp:keywords><dc:title>A &amp; &lt;B&gt;</dc:title>" +
                  end);
    EXPECT_EQ(textOf(read(properties.serialised()), CoreProperty::title), "A & <B>");
}

TEST(CoreProperties, ThatCanBeSetAreAllReadBack)
{
    CoreProperties properties;
    for (std::size_t i = 0; i < corePropertyCount; ++i) {
        const auto property = static_cast<CoreProperty>(i);
        if (property == CoreProperty::contentType)
            continue;
        ASSERT_TRUE(
            properties.set(property, isDate(property) ? "2026-01-01T00:00:00Z" : "\xC3\xA9 " + std::to_string(i)));
    }
    const auto again = read(properties.serialised());
    for (std::size_t i = 0; i < corePropertyCount; ++i)
        EXPECT_EQ(again.text(static_cast<CoreProperty>(i)), properties.text(static_cast<CoreProperty>(i)));
}

TEST(CoreProperties, KeepTheOthersAsTheyStandWhenOneIsSet)
{
    const std::string before = "\n  <dc:title >a&#x20;b</dc:title >\n  ";
    const std::string behind = "\n  <cp:keywords xml:lang='en'>k<cp:value>l</cp:value></cp:keywords><!-- c -->\n";
    auto properties = read(core(before + "<dc:subject>old</dc:subject>" + behind));
    ASSERT_TRUE(properties.set(CoreProperty::subject, "new"));
    EXPECT_EQ(properties.serialised(), core(before + "<dc:subject>new</dc:subject>" + behind));
    properties.remove(CoreProperty::subject);
    EXPECT_EQ(properties.text(CoreProperty::subject), std::nullopt);
    EXPECT_EQ(properties.serialised(), core(before + behind));
}

TEST(CoreProperties, AreNotChangedByTheValueThatTheyHave)
{
    auto properties = read(core("<cp:keywords xml:lang='en'>a<cp:value>b</cp:value></cp:keywords>"));
    ASSERT_TRUE(properties.set(CoreProperty::keywords, "a; b"));
    properties.remove(CoreProperty::title);
    EXPECT_FALSE(properties.isChanged());
}

TEST(CoreProperties, LoseTheLanguagesOfOldKeywordsWithThem)
{
    auto properties = read(core("<cp:keywords xml:lang='en'>a<cp:value>b</cp:value></cp:keywords>"));
    ASSERT_TRUE(properties.set(CoreProperty::keywords, "c"));
    EXPECT_EQ(properties.serialised(), core("<cp:keywords>c</cp:keywords>"));
}

TEST(CoreProperties, RefuseToSetWhatTheyWouldNotRead)
{
    CoreProperties properties;
    const auto refusal = [&](CoreProperty property, std::string_view text) {
        const auto result = properties.set(property, text);
        return result ? 0 : result.error().value();
    };
    constexpr int invalid = static_cast<int>(OpcError::invalidCoreProperties);
    EXPECT_EQ(refusal(CoreProperty::created, "yesterday"), invalid);
    EXPECT_EQ(refusal(CoreProperty::title, "a\1"), invalid);
    EXPECT_EQ(refusal(CoreProperty::title, "\xFF"), invalid);
    EXPECT_EQ(refusal(CoreProperty::contentType, "a/b"), invalid);
    EXPECT_FALSE(properties.isChanged());
}

TEST(CoreProperties, CarryTheContentTypeOfTheFirstEditionThroughAChange)
{
    auto properties = read(core("<cp:contentType>a/b</cp:contentType>"));
    ASSERT_TRUE(properties.set(CoreProperty::title, "t"));
    EXPECT_EQ(properties.serialised(), core("<cp:contentType>a/b</cp:contentType><dc:title>t</dc:title>"));
}

TEST(CoreProperties, DeclareNamespacesThatTheDocumentDoesNotHave)
{
    auto properties = read("<coreProperties xmlns=\"" + std::string{corePropertiesNamespace} + "\" />");
    for (const auto property : {CoreProperty::title, CoreProperty::category, CoreProperty::modified})
        ASSERT_TRUE(properties.set(property, "2026-01-01T00:00:00Z"));
    const auto again = read(properties.serialised());
    for (const auto property : {CoreProperty::title, CoreProperty::category, CoreProperty::modified})
        EXPECT_EQ(textOf(again, property), "2026-01-01T00:00:00Z");
}

TEST(CoreProperties, DeclareTheirOwnWhereAPrefixStandsForSomethingElse)
{
    auto properties = read(coreWithRoot("xmlns:dc=\"u:other\" xmlns:dcterms=\"u:another\" xmlns:xsi=\"u:third\""));
    ASSERT_TRUE(properties.set(CoreProperty::title, "t"));
    ASSERT_TRUE(properties.set(CoreProperty::created, "2026-01-01T00:00:00Z"));
    const auto again = read(properties.serialised());
    EXPECT_EQ(textOf(again, CoreProperty::title), "t");
    EXPECT_EQ(textOf(again, CoreProperty::created), "2026-01-01T00:00:00Z");
}

TEST(CoreProperties, ReadAsUtf16AreWrittenAsUtf8)
{
    const std::string document = "<?xml version=\"1.0\" encoding=\"utf-16\"?>" + core("<dc:title>a</dc:title>");
    auto properties = read("\xFF\xFE" + utf16(document, ByteOrder::little));
    ASSERT_TRUE(properties.set(CoreProperty::subject, "\xC3\xA9"));
    EXPECT_THAT(properties.serialised(), HasSubstr("encoding=\"UTF-8\""));
    const auto again = read(properties.serialised());
    EXPECT_EQ(textOf(again, CoreProperty::title), "a");
    EXPECT_EQ(textOf(again, CoreProperty::subject), "\xC3\xA9");
}

} // namespace
