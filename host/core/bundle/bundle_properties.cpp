#include "host/core/bundle/bundle_properties.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/errors/error_words.h"
#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/text_edits.h"
#include "host/core/opc/markup/xml_document.h"
#include "host/core/text/text_view.h"

#include <memory>

namespace Kelvaris::System::IO::Bundle::detail {

namespace {

namespace Markup = OpcPackaging::Markup;

/// The document with the elements of it that are known here. Elements refer to it, so that it must not move.
struct Document
{
    std::unique_ptr<Markup::XmlDocument> xml;
    std::optional<Markup::XmlElement> kind;
    std::optional<Markup::XmlElement> manufacturer;
};

ErrorCode2 invalid(std::string_view subject, std::string_view reason)
{
    return Errors::makeError(BundleError::invalidProperties, subject, reason);
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

/// @return  false when the element stands there twice
bool findElements(Document& document)
{
    for (auto child = document.xml->root().firstChild(); child; child = child->nextSibling()) {
        std::optional<Markup::XmlElement>* known = nullptr;
        if (child->is(Layout::propertiesNamespace, "kind"))
            known = &document.kind;
        if (child->is(Layout::propertiesNamespace, "manufacturer"))
            known = &document.manufacturer;
        if (known == nullptr)
            continue;
        if (known->has_value())
            return false;
        *known = child;
    }
    return true;
}

Expected<Document, ErrorCode2> parse(std::span<const std::byte> bytes, std::string_view subject)
{
    auto xml = Markup::parseXml(bytes, {});
    if (!xml)
        return invalid(subject, Errors::reasonFrom(xml.error()));
    if (!xml->root().is(Layout::propertiesNamespace, "bundle"))
        return invalid(subject, "the document is of another schema");
    Document document{std::make_unique<Markup::XmlDocument>(std::move(*xml)), std::nullopt, std::nullopt};
    if (!findElements(document))
        return invalid(subject, "an element stands there twice");
    if (!document.kind)
        return invalid(subject, "the kind of the bundle is missing");
    return document;
}

} // namespace

Expected<BundleProperties, ErrorCode2> parseBundleProperties(std::span<const std::byte> bytes, std::string_view subject)
{
    auto document = parse(bytes, subject);
    if (!document)
        return document.error();
    BundleProperties properties{std::string{trimmed(document->kind->text())}, std::nullopt};
    if (document->manufacturer)
        properties.manufacturer = document->manufacturer->text();
    return properties;
}

std::string bundlePropertiesText(BundleKind kind)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<bundle xmlns=\"";
    text += Layout::propertiesNamespace;
    text += "\">\n  <kind>";
    text += kindName(kind);
    return text + "</kind>\n</bundle>\n";
}

Expected<std::string, ErrorCode2> withManufacturer(std::span<const std::byte> bytes, std::string_view manufacturer,
                                                   std::string_view subject)
{
    auto document = parse(bytes, subject);
    if (!document)
        return document.error();
    if (!Markup::isXmlText(manufacturer))
        return invalid(subject, "the manufacturer's name holds a character that XML cannot hold");
    const Markup::XmlElement root = document->xml->root();
    const std::string prefix = root.prefix().empty() ? std::string{} : std::string{root.prefix()} + ':';
    std::string element;
    if (!manufacturer.empty())
        element = '<' + prefix + "manufacturer>" + Markup::escapedText(manufacturer) + "</" + prefix + "manufacturer>";
    Markup::TextEdits edits;
    if (document->manufacturer)
        edits.replace(document->manufacturer->range(), element);
    else if (!element.empty())
        edits.insert(root.endTag().begin, "  " + element + '\n');
    return edits.appliedTo(document->xml->text());
}

} // namespace Kelvaris::System::IO::Bundle::detail
