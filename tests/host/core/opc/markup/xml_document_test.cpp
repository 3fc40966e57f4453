#include "host/core/opc/limits.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/xml_document.h"
#include "tests/host/core/opc/markup/markup_verdict.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace Kelvaris::System::IO::OpcPackaging;
using namespace Kelvaris::System::IO::OpcPackaging::Markup;
using namespace MarkupTest;
using namespace std::string_literals;

Verdict verdictOf(std::string_view text)
{
    return verdictOn(parseXml(bytesOf(text), subject));
}

XmlDocument documentOf(std::string_view text)
{
    return parseXml(bytesOf(text), subject).value();
}

std::string dump(const XmlElement& element)
{
    std::string text = "(" + std::string{element.namespaceUri()} + "|" + std::string{element.name()};
    for (const XmlAttribute& attribute : element.attributes()) {
        text += " " + std::string{attribute.namespaceUri} + "|" + std::string{attribute.name};
        text += "=" + std::string{attribute.value};
    }
    const auto runs = element.textRuns();
    text += ":" + runs[0];
    std::size_t i = 1;
    for (auto child = element.firstChild(); child; child = child->nextSibling())
        text += dump(*child) + runs[i++];
    return text + ")";
}

auto isNotWellFormed()
{
    return IsRefused(OpcError::invalidXml, "M1.20");
}

std::string nested(std::size_t depth)
{
    std::string text;
    for (std::size_t i = 0; i < depth; ++i)
        text += "<a>";
    for (std::size_t i = 0; i < depth; ++i)
        text += "</a>";
    return text;
}

TEST(XmlDocument, ReadsElementsAttributesAndTextsInOrder)
{
    const auto document = documentOf("<?xml version='1.0'?>\n<!-- c --><a x='1' y=\"2\">t<b/>u<c>v</c>w</a>\n<?p i?>");
    EXPECT_EQ(dump(document.root()), "(|a |x=1 |y=2:t(|b:)u(|c:v)w)");
}

TEST(XmlDocument, ResolvesNamespacesOfElementsAndAttributesButNoDefaultForAttributes)
{
    const auto document =
        documentOf("<r xmlns='u:a' xmlns:p='u:b' x='1' p:x='2'><p:c xmlns:p='u:c'/><d xmlns=''/></r>");
    EXPECT_EQ(dump(document.root()), "(u:a|r |x=1 u:b|x=2:(u:c|c:)(|d:))");
}

TEST(XmlDocument, KnowsThePrefixXmlWithoutADeclaration)
{
    EXPECT_EQ(dump(documentOf("<a xml:lang='de'/>").root()), "(|a " + std::string{xmlNamespace} + "|lang=de:)");
}

TEST(XmlDocument, ResolvesReferencesAndCdataSections)
{
    EXPECT_EQ(documentOf("<a>&lt;&#65;&#x42;&amp;<![CDATA[<&amp;]]]]>&gt;&quot;&apos;</a>").root().text(),
              "<AB&<&amp;]]>\"'");
}

TEST(XmlDocument, MakesAllLineEndsOne)
{
    EXPECT_EQ(documentOf("<a>1\r\n2\r3\n4<![CDATA[\r\n\r]]>&#13;</a>").root().text(), "1\n2\n3\n4\n\n\r");
}

TEST(XmlDocument, NormalisesWhiteSpaceOfAttributesButNotWhatReferencesStandFor)
{
    const auto document = documentOf("<a x='1\t2\r\n3\n4&#10;5&#9;6'/>");
    EXPECT_EQ(document.root().attribute({}, "x")->value, "1 2 3 4\n5\t6");
}

TEST(XmlDocument, ReadsUtf8WithAndWithoutAByteOrderMark)
{
    EXPECT_EQ(documentOf("<a>\xC3\xA9</a>").root().text(), "\xC3\xA9");
    EXPECT_EQ(documentOf("\xEF\xBB\xBF<a>\xC3\xA9</a>").root().text(), "\xC3\xA9");
}

TEST(XmlDocument, ReadsUtf16OfBothByteOrdersWithAndWithoutAMark)
{
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a b='c'>d</a>";
    for (const auto& bytes : {"\xFF\xFE" + utf16(text, ByteOrder::little), "\xFE\xFF" + utf16(text, ByteOrder::big),
                              utf16(text, ByteOrder::little), utf16(text, ByteOrder::big)})
        EXPECT_EQ(dump(documentOf(bytes).root()), "(|a |b=c:d)");
}

TEST(XmlDocument, SaysUtf8InTheTextThatItMakesOfUtf16)
{
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>";
    EXPECT_EQ(documentOf("\xFF\xFE" + utf16(text, ByteOrder::little)).text(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>");
}

TEST(XmlDocument, ReadsSurrogatePairsOfUtf16AndRefusesHalfOnes)
{
    const std::string begin = "\xFF\xFE" + utf16("<a>", ByteOrder::little);
    const std::string end = utf16("</a>", ByteOrder::little);
    EXPECT_EQ(documentOf(begin + "\x3D\xD8\x00\xDE"s + end).root().text(), "\xF0\x9F\x98\x80");
    EXPECT_THAT(verdictOf(begin + "\x3D\xD8"s + end), IsRefused(OpcError::invalidXml, "M1.17"));
    EXPECT_THAT(verdictOf(begin + end + "x"), IsRefused(OpcError::invalidXml, "M1.17"));
}

TEST(XmlDocument, RefusesEveryOtherEncoding)
{
    for (const char* encoding : {"ISO-8859-1", "latin1", "US-ASCII", "windows-1252", "UTF-16", "UTF-32", "utf8", ""}) {
        const std::string text = "<?xml version='1.0' encoding='"s + encoding + "'?><a/>";
        EXPECT_THAT(verdictOf(text), IsRefused(OpcError::invalidXml, "M1.17")) << encoding;
    }
    EXPECT_THAT(verdictOf("<?xml version='1.0' encoding='utf-8'?><a/>"), IsOk());
}

TEST(XmlDocument, RefusesUtf16ThatIsDeclaredAsUtf8)
{
    EXPECT_THAT(verdictOf("\xFF\xFE" + utf16("<?xml version='1.0' encoding='UTF-8'?><a/>", ByteOrder::little)),
                IsRefused(OpcError::invalidXml, "M1.17"));
}

TEST(XmlDocument, RefusesEveryDocumentTypeWhateverItDeclares)
{
    for (const char* type : {"<!DOCTYPE a>", "<!DOCTYPE a SYSTEM 'http://x/'>", "<!DOCTYPE a [<!ENTITY e 'x'>]>",
                             "<!DOCTYPE", "<!-- c --><!DOCTYPE a>"}) {
        EXPECT_THAT(verdictOf(type + "<a/>"s), IsRefused(OpcError::documentTypeDeclared, "M1.18")) << type;
        EXPECT_THAT(verdictOf("<?xml version='1.0'?>\n"s + type + "<a/>"),
                    IsRefused(OpcError::documentTypeDeclared, "M1.18"));
    }
    EXPECT_THAT(verdictOf("\xFF\xFE" + utf16("<!DOCTYPE a><a/>", ByteOrder::little)),
                IsRefused(OpcError::documentTypeDeclared, "M1.18"));
}

TEST(XmlDocument, TakesWhatLooksLikeADocumentTypeInsideTextAsText)
{
    EXPECT_EQ(documentOf("<a><!-- <!DOCTYPE a> --><![CDATA[<!DOCTYPE a>]]></a>").root().text(), "<!DOCTYPE a>");
}

TEST(XmlDocument, RefusesADeclarationThatIsNotWrittenAsItMust)
{
    for (const char* text :
         {"<?xml?><a/>", "<?xml version='1.1'?><a/>", "<?xml encoding='UTF-8'?><a/>", "<?xml version='1.0'><a/>",
          "<?xml version='1.0' standalone='maybe'?><a/>", "<?xml version='1.0' standalone='yes' encoding='UTF-8'?><a/>",
          " <?xml version='1.0'?><a/>", "<a/><?xml version='1.0'?>", "<?XML version='1.0'?><a/>",
          "<?xml version='1.0'encoding='UTF-8'?><a/>", "<?xml version=\"1.0'?><a/>", "<?xml "})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
}

TEST(XmlDocument, RefusesAnEmptyDocumentAndOneWithoutAnElement)
{
    for (const char* text : {"", " ", "<!-- c -->", "<?xml version='1.0'?>", "\xEF\xBB\xBF"})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
}

TEST(XmlDocument, RefusesASecondRootAndTextOutsideTheRoot)
{
    for (const char* text :
         {"<a/><b/>", "<a></a><a/>", "x<a/>", "<a/>x", "<a/>&amp;", "<a/><![CDATA[x]]>", "<a/>&#32;"})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
}

TEST(XmlDocument, RefusesTagsThatDoNotMatch)
{
    for (const char* text : {"<a>", "<a><b></a></b>", "<a></b>", "<a></ab>", "<ab></a>", "</a>", "<a></a></a>", "<a",
                             "<a ", "<a/", "<a></a", "<", "<a></A>", "<a><b></a>"})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
}

TEST(XmlDocument, RefusesAnAttributeThatStandsTwice)
{
    EXPECT_THAT(verdictOf("<a b='1' b='2'/>"), isNotWellFormed());
    EXPECT_THAT(verdictOf("<a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/>"), isNotWellFormed());
    EXPECT_THAT(verdictOf("<a xmlns:p='u' xmlns:p='v'/>"), isNotWellFormed());
    EXPECT_THAT(verdictOf("<a xmlns='u' xmlns='u'/>"), isNotWellFormed());
    EXPECT_THAT(verdictOf("<a xmlns:p='u' b='1' p:b='2'/>"), IsOk());
}

TEST(XmlDocument, RefusesAttributesThatAreNotWrittenAsTheyMust)
{
    for (const char* text : {"<a b/>", "<a b=/>", "<a b=c/>", "<a b='c/>", "<a b='c\"/>", "<a b='1'c='2'/>",
                             "<a ='1'/>", "<a b='<'/>", "<a b='&'/>", "<a b='1' / >"})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
}

TEST(XmlDocument, RefusesEntitiesThatAreNotDeclaredAndReferencesToNoCharacter)
{
    for (const char* reference :
         {"&nbsp;", "&", "&;", "&amp", "&AMP;", "&#;", "&#x;", "&#0;", "&#x0;", "&#8;", "&#xB;", "&#xD800;", "&#xFFFE;",
          "&#x110000;", "&#99999999999999999999;", "&#12a;", "&#xG;", "&# 65;", "&#-1;"}) {
        EXPECT_THAT(verdictOf("<a>"s + reference + "</a>"), isNotWellFormed()) << reference;
        EXPECT_THAT(verdictOf("<a b='"s + reference + "'/>"), isNotWellFormed()) << reference;
    }
}

TEST(XmlDocument, RefusesCharactersThatXmlForbids)
{
    for (const auto& character : {"\0"s, "\1"s, "\x8"s, "\xB"s, "\xC"s, "\x1F"s, "\xEF\xBF\xBE"s, "\xEF\xBF\xBF"s}) {
        EXPECT_THAT(verdictOf("<a>" + character + "</a>"), isNotWellFormed());
        EXPECT_THAT(verdictOf("<abcdefgh b='" + character + "'/>"), isNotWellFormed());
        EXPECT_THAT(verdictOf("<a><!--" + character + "--></a>"), isNotWellFormed());
    }
    EXPECT_THAT(verdictOf("<a>\t\r\n\x7F\xEF\xBF\xBD</a>"), IsOk());
}

TEST(XmlDocument, RefusesBytesThatAreNoUtf8)
{
    for (const char* bytes : {"\x80", "\xFF", "\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                              "\xF8\x88\x80\x80\x80"})
        EXPECT_THAT(verdictOf("<a>"s + bytes + "</a>"), isNotWellFormed());
}

TEST(XmlDocument, RefusesNamesThatAreNone)
{
    for (const char* text :
         {"<1/>", "<-a/>", "<.a/>", "< a/>", "<a 1='x'/>", "<a:/>", "<:a/>", "<a xmlns:a='u' a:='x'/>",
          "<a:b:c xmlns:a='u'/>", "<a xmlns:='u'/>", "<a$/>", "<\xC3\x97/>", "<?1 ?><a/>", "<? a?><a/>"})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
    EXPECT_THAT(verdictOf("<\xC3\xA9.-_9 \xE4\xBA\xBA='1'/>"), IsOk());
}

TEST(XmlDocument, RefusesPrefixesThatAreNotDeclared)
{
    for (const char* text : {"<p:a/>", "<a p:b='1'/>", "<a><b xmlns:p='u'/><p:c/></a>", "<xmlns:a/>"})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
}

TEST(XmlDocument, RefusesDeclarationsOfReservedPrefixesAndNamespaces)
{
    for (const char* text :
         {"<a xmlns:p=''/>", "<a xmlns:xmlns='u'/>", "<a xmlns:xml='u'/>",
          "<a xmlns:p='http://www.w3.org/XML/1998/namespace'/>", "<a xmlns='http://www.w3.org/XML/1998/namespace'/>",
          "<a xmlns:p='http://www.w3.org/2000/xmlns/'/>", "<a xmlns='http://www.w3.org/2000/xmlns/'/>"})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
    EXPECT_THAT(verdictOf("<a xmlns:xml='http://www.w3.org/XML/1998/namespace'/>"), IsOk());
}

TEST(XmlDocument, RefusesCommentsSectionsAndInstructionsThatAreNotWrittenAsTheyMust)
{
    for (const char* text :
         {"<a><!-- -- --></a>", "<a><!-- --->", "<a><!--></a>", "<a><!--", "<a><![CDATA[x</a>", "<a>]]></a>",
          "<a><![cdata[x]]></a>", "<a><?p", "<a><?p?x?></a>", "<a><?\?></a>", "<a><!x></a>", "<a><?a:b c?></a>"})
        EXPECT_THAT(verdictOf(text), isNotWellFormed()) << text;
    EXPECT_THAT(verdictOf("<a><!----><?p?><?p ?\?><![CDATA[]]>]] ></a>"), IsOk());
}

TEST(XmlDocument, TellsTheLineOfAFault)
{
    EXPECT_THAT(verdictOf("<a>\n\n<b c='1' c='2'/></a>").message, testing::HasSubstr("line 3: the attribute 'c'"));
}

TEST(XmlDocument, RefusesElementsThatAreTooDeep)
{
    EXPECT_THAT(verdictOf(nested(Limits::xmlDepth)), IsOk());
    EXPECT_THAT(verdictOf(nested(Limits::xmlDepth + 1)), IsTooMuch());
    EXPECT_THAT(verdictOf(nested(100'000)), IsTooMuch());
}

TEST(XmlDocument, RefusesMoreBytesThanTheLimitWithoutReadingThem)
{
    const std::string text = "<a>" + std::string(Limits::xmlBytes, ' ') + "</a>";
    EXPECT_THAT(verdictOf(text), IsTooMuch());
}

TEST(XmlDocument, RefusesElementsWithMoreAttributesOrNamespacesThanAnyoneWrites)
{
    std::string attributes;
    std::string namespaces;
    for (int i = 0; i < 300; ++i) {
        attributes += " a" + std::to_string(i) + "=''";
        namespaces += " xmlns:a" + std::to_string(i) + "='u'";
    }
    EXPECT_THAT(verdictOf("<a" + attributes + "/>"), IsTooMuch());
    EXPECT_THAT(verdictOf("<a" + namespaces + "/>"), IsTooMuch());
}

TEST(XmlDocument, KnowsWhereItsElementsStand)
{
    const auto document = documentOf("\xEF\xBB\xBF<a><b x='1' /><c>t</c ></a>");
    const XmlElement b = *document.root().firstChild();
    const XmlElement c = *b.nextSibling();
    EXPECT_EQ(b.range().of(document.text()), "<b x='1' />");
    EXPECT_TRUE(b.endTag().isEmpty());
    EXPECT_EQ(c.range().of(document.text()), "<c>t</c >");
    EXPECT_EQ(c.endTag().of(document.text()), "</c >");
}

TEST(XmlDocument, KeepsItsElementsWhenItIsMoved)
{
    XmlDocument document = documentOf("<a><b x='1'>t</b></a>");
    const XmlElement root = document.root();
    const XmlElement b = *root.firstChild();
    const XmlDocument moved = std::move(document);
    document = documentOf("<other/>");
    EXPECT_EQ(moved.root().name(), "a");
    EXPECT_EQ(dump(root), "(|a:(|b |x=1:t))");
    EXPECT_EQ(b.text(), "t");
    EXPECT_EQ(b.range().of(moved.text()), "<b x='1'>t</b>");
}

TEST(XmlDocument, SpeaksOfTextsOnlyWhenThereIsMoreThanWhiteSpace)
{
    EXPECT_FALSE(documentOf("<a> \n<b>x</b>\t</a>").root().hasText());
    EXPECT_TRUE(documentOf("<a> \n<b/>x</a>").root().hasText());
}

TEST(XmlEscapes, ReadBackAsTheTextThatTheyWereMadeOf)
{
    const std::string text = "<&>\"'\t\r\n]]> \xC3\xA9 &amp;";
    std::string attribute;
    appendEscapedAttribute(attribute, text);
    const auto document = documentOf("<a b=\"" + attribute + "\">" + escapedText(text) + "</a>");
    EXPECT_EQ(document.root().attribute({}, "b")->value, text);
    EXPECT_EQ(document.root().text(), text);
}

TEST(XmlNames, AreThoseOfNamespacesInXml)
{
    for (const char* name : {"a", "rId1", "_", "a.b-c", "\xC3\xA9"})
        EXPECT_TRUE(isNcName(name)) << name;
    for (const char* name : {"", "1", "-a", "a:b", "a b", "a ", "\xFF", "a\xC3"})
        EXPECT_FALSE(isNcName(name)) << name;
}

} // namespace
