#include "host/core/opc/markup/content_types.h"
#include "host/core/opc/markup/opc_names.h"
#include "tests/host/core/opc/markup/markup_verdict.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using namespace MarkupTest;
using namespace std::string_literals;
using Use = ContentTypes::ExtensionUse;

std::string typesWith(std::string_view content, std::string_view attributes = {})
{
    return "<?xml version=\"1.0\"?><Types xmlns=\"" + std::string{contentTypesNamespace} + "\"" +
           std::string{attributes} + ">" + std::string{content} + "</Types>";
}

Verdict verdictOf(std::string_view document)
{
    return verdictOn(ContentTypes::parse(bytesOf(document), subject));
}

ContentTypes read(std::string_view document)
{
    return ContentTypes::parse(bytesOf(document), subject).value();
}

std::string typeOf(const ContentTypes& types, std::string_view name)
{
    const auto type = types.typeOf(name);
    return type ? std::string{std::string_view{*type}} : "none";
}

void set(ContentTypes& types, std::string_view name, std::string_view type, Use use = Use::taken)
{
    ASSERT_THAT(verdictOn(types.set(name, type, use)), IsOk());
}

const std::string xmlDefault = "<Default Extension=\"xml\" ContentType=\"application/xml\"/>";
const std::string compatibility = " xmlns:mc=\"" + std::string{markupCompatibilityNamespace} + "\"";

TEST(ContentTypes, LetsAnOverrideWinOverTheDefaultOfTheExtension)
{
    const auto types = read(typesWith(xmlDefault + "<Override PartName=\"/a.xml\" ContentType=\"a/b\"/>"));
    EXPECT_EQ(typeOf(types, "/a.xml"), "a/b");
    EXPECT_EQ(typeOf(types, "/b.xml"), "application/xml");
}

TEST(ContentTypes, LooksUpNamesAndExtensionsInAnyCase)
{
    const auto types = read(typesWith("<Default Extension=\"XmL\" ContentType=\"a/x\"/>"
                                      "<Override PartName=\"/A/b.BIN\" ContentType=\"a/y\"/>"));
    EXPECT_EQ(typeOf(types, "/c.xML"), "a/x");
    EXPECT_EQ(typeOf(types, "/a/B.bin"), "a/y");
}

TEST(ContentTypes, LookAtTheExtensionOfTheLastSegmentAlone)
{
    const auto types = read(typesWith(xmlDefault));
    EXPECT_EQ(typeOf(types, "/a.xml/b"), "none");
    EXPECT_EQ(typeOf(types, "/a.xml.gz"), "none");
    EXPECT_EQ(typeOf(types, "/a/.xml"), "application/xml");
}

TEST(ContentTypes, HaveNoneForAnItemThatIsNoPart)
{
    EXPECT_EQ(typeOf(read(typesWith("")), "/unknown.bin"), "none");
    EXPECT_EQ(typeOf(read("<Types xmlns='" + std::string{contentTypesNamespace} + "'/>"), "/a.xml"), "none");
}

TEST(ContentTypes, MayNamePartsThatAreNotThereAndHaveParametersInTypes)
{
    EXPECT_THAT(verdictOf(typesWith("<Override PartName=\"/not/there\" ContentType=\"a/b;c=&quot;d e&quot;\"/>")),
                IsOk());
}

TEST(ContentTypes, AreReadAsUtf16AndWithAnyPrefix)
{
    const std::string document = "<t:Types xmlns:t='" + std::string{contentTypesNamespace} +
                                 "'><t:Default Extension='x' ContentType='a/b'/></t:Types>";
    EXPECT_EQ(typeOf(read("\xFF\xFE" + utf16(document, ByteOrder::little)), "/a.x"), "a/b");
}

TEST(ContentTypes, RefuseTwoDefaultsOfOneExtension)
{
    EXPECT_THAT(verdictOf(typesWith(xmlDefault + "<Default Extension=\"XML\" ContentType=\"application/xml\"/>")),
                IsRefused(OpcError::invalidContentTypes, "M2.5"));
}

TEST(ContentTypes, RefuseTwoOverridesOfOnePart)
{
    EXPECT_THAT(verdictOf(typesWith("<Override PartName=\"/a\" ContentType=\"a/b\"/>"
                                    "<Override PartName=\"/A\" ContentType=\"a/c\"/>")),
                IsRefused(OpcError::invalidContentTypes, "M2.5"));
}

TEST(ContentTypes, RefuseADefaultWithoutExtensionOrType)
{
    for (const char* element :
         {"<Default Extension=\"\" ContentType=\"a/b\"/>", "<Default ContentType=\"a/b\"/>",
          "<Default Extension=\"x\"/>", "<Default Extension=\"a.b\" ContentType=\"a/b\"/>",
          "<Default Extension=\"a b\" ContentType=\"a/b\"/>", "<Default Extension=\".x\" ContentType=\"a/b\"/>"})
        EXPECT_THAT(verdictOf(typesWith(element)), IsRefused(OpcError::invalidContentTypes, "M2.6")) << element;
}

TEST(ContentTypes, RefuseAnOverrideWithoutAValidNameOrAType)
{
    for (const char* element :
         {"<Override ContentType=\"a/b\"/>", "<Override PartName=\"/a\"/>",
          "<Override PartName=\"a.xml\" ContentType=\"a/b\"/>", "<Override PartName=\"//a.xml\" ContentType=\"a/b\"/>",
          "<Override PartName=\"\" ContentType=\"a/b\"/>", "<Override PartName=\"/a/../b\" ContentType=\"a/b\"/>",
          "<Override PartName=\"/[Content_Types].xml\" ContentType=\"a/b\"/>"})
        EXPECT_THAT(verdictOf(typesWith(element)), IsRefused(OpcError::invalidContentTypes, "M2.7")) << element;
}

TEST(ContentTypes, TakeAPartNameWithLettersBeyondAsciiForItsEncodedForm)
{
    const auto types = read(typesWith("<Override PartName=\"/\xD1\x86.xml\" ContentType=\"a/b\"/>"));
    EXPECT_EQ(typeOf(types, "/%D1%86.xml"), "a/b");
}

TEST(ContentTypes, RefuseMediaTypesThatAreNone)
{
    const auto verdictOnType = [](const std::string& type) {
        return verdictOf(typesWith("<Default Extension=\"x\" ContentType=\"" + type + "\"/>"));
    };
    EXPECT_THAT(verdictOnType("nonsense"), IsRefused(OpcError::invalidMediaType, "M1.13"));
    EXPECT_THAT(verdictOnType(""), IsRefused(OpcError::invalidMediaType, "M1.13"));
    EXPECT_THAT(verdictOnType("application/ xml"), IsRefused(OpcError::invalidMediaType, "M1.14"));
    EXPECT_THAT(verdictOnType("application/xml "), IsRefused(OpcError::invalidMediaType, "M1.14"));
    EXPECT_THAT(verdictOnType("application/xml(c)"), IsRefused(OpcError::invalidMediaType, "M1.15"));
    EXPECT_THAT(verdictOnType(std::string{relationshipsMediaType} + ";a=b"),
                IsRefused(OpcError::invalidMediaType, "M1.22"));
}

TEST(ContentTypes, RefuseMarkupCompatibilityWhereverItStands)
{
    EXPECT_THAT(verdictOf(typesWith(xmlDefault, compatibility + " xmlns:x=\"u\" mc:Ignorable=\"x\"")),
                IsRefused(OpcError::invalidContentTypes, "M2.10"));
    for (const auto& content :
         {"<mc:AlternateContent" + compatibility + "/>",
          "<Default" + compatibility + " mc:Ignorable=\"\" Extension=\"x\" ContentType=\"a/b\"/>",
          "<Default" + compatibility + " Extension=\"x\" ContentType=\"a/b\"><mc:AlternateContent/></Default>"})
        EXPECT_THAT(verdictOf(typesWith(content)), IsRefused(OpcError::invalidContentTypes, "M2.10")) << content;
}

TEST(ContentTypes, MayDeclareTheNamespaceOfMarkupCompatibilityWithoutUse)
{
    EXPECT_THAT(verdictOf(typesWith(xmlDefault, compatibility)), IsOk());
}

TEST(ContentTypes, RefuseWhatTheSchemaDoesNotKnow)
{
    for (const auto& document :
         {typesWith("<Unknown/>"), typesWith("<default Extension=\"x\" ContentType=\"a/b\"/>"), typesWith("text"),
          typesWith("<Default Extension=\"x\" ContentType=\"a/b\" More=\"1\"/>"), typesWith("", " a=\"b\""),
          typesWith("<Default Extension=\"x\" ContentType=\"a/b\">text</Default>"),
          typesWith("<Default Extension=\"x\" ContentType=\"a/b\"><Default/></Default>"),
          typesWith("<Default xmlns=\"u:other\" Extension=\"x\" ContentType=\"a/b\"/>"),
          typesWith("<Override PartName=\"/a\" Extension=\"x\" ContentType=\"a/b\"/>"), "<Types/>"s,
          "<Types xmlns=\"http://schemas.microsoft.com/package/2005/06/content-types\"/>"s,
          "<types xmlns=\"" + std::string{contentTypesNamespace} + "\"/>"})
        EXPECT_THAT(verdictOf(document), IsRefused(OpcError::invalidXml, "M1.20")) << document;
}

TEST(ContentTypes, RefuseAttributesOfXmlAndOfSchemaInstances)
{
    for (const auto& document :
         {typesWith("", " xml:lang=\"en\""), typesWith("<Default xml:base=\"/\" Extension=\"x\" ContentType=\"a/b\"/>"),
          typesWith("", " xmlns:i=\"" + std::string{schemaInstanceNamespace} + "\" i:schemaLocation=\"a b\"")})
        EXPECT_THAT(verdictOf(document), IsRefused(OpcError::invalidXml, "M1.21")) << document;
}

TEST(ContentTypes, RefuseADocumentType)
{
    EXPECT_THAT(verdictOf("<!DOCTYPE Types>" + typesWith("")), IsRefused(OpcError::documentTypeDeclared, "M1.18"));
}

TEST(ContentTypes, OfANewPackageKnowRelationshipsAlone)
{
    const ContentTypes types;
    EXPECT_TRUE(types.isChanged());
    EXPECT_EQ(typeOf(types, "/_rels/.rels"), relationshipsMediaType);
    EXPECT_EQ(typeOf(types, "/a.xml"), "none");
    EXPECT_EQ(types.serialised(), "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                                  "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
                                  "<Default Extension=\"rels\" "
                                  "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/></Types>");
}

TEST(ContentTypes, ReuseADefaultThatFits)
{
    auto types = read(typesWith(xmlDefault));
    set(types, "/a.xml", "application/xml");
    set(types, "/b.XML", "Application/XML");
    EXPECT_FALSE(types.isChanged());
    EXPECT_EQ(types.serialised(), typesWith(xmlDefault));
}

TEST(ContentTypes, AddOneDefaultForTwoPartsOfANewExtension)
{
    ContentTypes types;
    set(types, "/a.xml", "application/xml", Use::free);
    set(types, "/b.xml", "application/xml", Use::free);
    EXPECT_THAT(types.serialised(), testing::HasSubstr(xmlDefault + "</Types>"));
}

TEST(ContentTypes, AddAnOverrideWhenTheExtensionIsTakenAnotherOrMissing)
{
    auto types = read(typesWith(xmlDefault));
    set(types, "/a.xml", "a/b", Use::free);
    set(types, "/a.bin", "a/c", Use::taken);
    set(types, "/noextension", "a/d", Use::free);
    EXPECT_EQ(types.serialised(), typesWith(xmlDefault + "<Override PartName=\"/a.xml\" ContentType=\"a/b\"/>"
                                                         "<Override PartName=\"/a.bin\" ContentType=\"a/c\"/>"
                                                         "<Override PartName=\"/noextension\" ContentType=\"a/d\"/>"));
    EXPECT_EQ(typeOf(types, "/A.xml"), "a/b");
    EXPECT_EQ(typeOf(types, "/other.bin"), "none");
}

// the schema's pattern for extensions leaves the semicolon out, which names may hold
TEST(ContentTypes, AddAnOverrideForAnExtensionThatNoDefaultCanName)
{
    auto types = read(typesWith(xmlDefault));
    set(types, "/a.b;c", "a/d", Use::free);
    EXPECT_EQ(types.serialised(), typesWith(xmlDefault + "<Override PartName=\"/a.b;c\" ContentType=\"a/d\"/>"));
    EXPECT_THAT(verdictOf(typesWith("<Default Extension=\"b;c\" ContentType=\"a/d\"/>")),
                IsRefused(OpcError::invalidContentTypes, "M2.6"));
}

TEST(ContentTypes, ListTheNamesThatHaveAnOverride)
{
    auto types = read(typesWith(xmlDefault + "<Override PartName=\"/B.xml\" ContentType=\"a/b\"/>"));
    set(types, "/a", "a/b");
    EXPECT_THAT(types.overriddenNames(), testing::ElementsAre("/a", "/b.xml"));
}

TEST(ContentTypes, ReplaceATypeThatStaysBehindFromAPartThatWasNotThere)
{
    auto types = read(typesWith(xmlDefault + "<Override PartName=\"/A.xml\" ContentType=\"a/old\"/>"));
    set(types, "/a.xml", "a/new");
    EXPECT_EQ(types.serialised(), typesWith(xmlDefault + "<Override PartName=\"/a.xml\" ContentType=\"a/new\"/>"));
    set(types, "/a.xml", "application/xml");
    EXPECT_EQ(types.serialised(), typesWith(xmlDefault));
    EXPECT_EQ(typeOf(types, "/a.xml"), "application/xml");
}

TEST(ContentTypes, RefuseToSetWhatIsNoMediaType)
{
    ContentTypes types;
    for (const char* type : {"", "nonsense", "", "a/"}) {
        const auto result = types.set("/a.xml", type, Use::free);
        ASSERT_FALSE(result) << type;
        EXPECT_EQ(result.error().value(), static_cast<int>(OpcError::invalidMediaType));
        EXPECT_EQ(typeOf(types, "/a.xml"), "none");
    }
}

TEST(ContentTypes, KeepTheOrderOfManyOverridesWhenSomeAreForgotten)
{
    for (const int count : {6, 60}) {
        auto types = read(typesWith(xmlDefault));
        const auto nameOf = [](int i) { return "/Part" + std::to_string(i); };
        const auto typeNumber = [](int i) { return "a/t" + std::to_string(i % 4); };
        const auto isForgotten = [&](int i) { return i % 3 == 1 || i + 1 == count; };
        for (int i = 0; i < count; ++i)
            set(types, nameOf(i), typeNumber(i));
        for (int i = 0; i < count; ++i) {
            if (isForgotten(i))
                types.remove(nameOf(i));
        }
        set(types, "/last", "a/t0");
        std::string expected = xmlDefault;
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(typeOf(types, nameOf(i)), isForgotten(i) ? "none" : typeNumber(i)) << i;
            if (!isForgotten(i))
                expected += "<Override PartName=\"" + nameOf(i) + "\" ContentType=\"" + typeNumber(i) + "\"/>";
        }
        EXPECT_EQ(types.serialised(), typesWith(expected + "<Override PartName=\"/last\" ContentType=\"a/t0\"/>"));
    }
}

TEST(ContentTypes, ForgetTheOverrideOfAPartAndKeepDefaults)
{
    auto types = read(typesWith(" " + xmlDefault + " <Override PartName=\"/a.xml\" ContentType=\"a/b\"/> "));
    types.remove("/A.XML");
    types.remove("/never.xml");
    EXPECT_TRUE(types.isChanged());
    EXPECT_EQ(typeOf(types, "/a.xml"), "application/xml");
    EXPECT_EQ(types.serialised(), typesWith(" " + xmlDefault + "  "));
}

TEST(ContentTypes, KeepWhatWasReadAsItStoodWhenOneIsAdded)
{
    const std::string document =
        "<?xml version='1.0'?>\n<!-- ours -->\n<t:Types xmlns:t='" + std::string{contentTypesNamespace} +
        "'>\n  <t:Default ContentType='a/b'\tExtension = 'x' ></t:Default>\n</t:Types>\n<!-- end -->";
    auto types = read(document);
    EXPECT_EQ(types.serialised(), document);
    set(types, "/a.y", "a/&");
    std::string expected = document;
    expected.insert(expected.find("</t:Types>"), "<t:Override PartName=\"/a.y\" ContentType=\"a/&amp;\"/>");
    EXPECT_EQ(types.serialised(), expected);
    EXPECT_EQ(typeOf(read(types.serialised()), "/a.y"), "a/&");
}

TEST(ContentTypes, OpenAnEmptyRootForANewElement)
{
    auto types = read("<Types xmlns=\"" + std::string{contentTypesNamespace} + "\" />");
    set(types, "/a", "a/b");
    EXPECT_EQ(types.serialised(), "<Types xmlns=\"" + std::string{contentTypesNamespace} +
                                      "\" ><Override PartName=\"/a\" ContentType=\"a/b\"/></Types>");
}

TEST(ContentTypes, OfManyPartsAreReadAndLookedUpInTime)
{
    std::string content;
    for (int i = 0; i < 50'000; ++i)
        content += "<Override PartName=\"/p" + std::to_string(i) + "\" ContentType=\"a/b\"/>";
    const auto types = read(typesWith(content));
    EXPECT_EQ(typeOf(types, "/p49999"), "a/b");
    EXPECT_EQ(typeOf(types, "/p50000"), "none");
}

} // namespace
