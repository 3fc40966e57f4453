#include "host/core/opc/markup/xml_document.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/limits.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/schema_checks.h"
#include "host/core/opc/markup/xml_builder.h"
#include "host/core/opc/markup/xml_characters.h"
#include "host/core/opc/markup/xml_declaration.h"
#include "host/core/opc/markup/xml_document_data.h"

#include <algorithm>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

std::string atLine(std::string_view text, std::size_t position, const std::string& what)
{
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(position), '\n');
    return "line " + std::to_string(line) + ": " + what;
}

/// Up to this size each list of a document is left to the next one: a barrel has four small documents in each of its
/// thousands of examples.
constexpr std::size_t keptBytes = std::size_t{64} << 10;

thread_local std::unique_ptr<XmlDocument::Data> s_spare;

template <class List>
bool isSmall(const List& list) noexcept
{
    return list.capacity() * sizeof(typename List::value_type) <= keptBytes;
}

std::unique_ptr<XmlDocument::Data> emptyData()
{
    return s_spare == nullptr ? std::make_unique<XmlDocument::Data>() : std::move(s_spare);
}

void leaveToNext(std::unique_ptr<XmlDocument::Data> data) noexcept
{
    if (data == nullptr || !isSmall(data->text) || !isSmall(data->nodes) || !isSmall(data->attributes) ||
        !isSmall(data->declarations) || !isSmall(data->texts))
        return;
    data->text.clear();
    data->nodes.clear();
    data->attributes.clear();
    data->declarations.clear();
    data->texts.clear();
    data->resolved.clear();
    s_spare = std::move(data);
}

} // namespace

std::optional<std::string_view> XmlDocument::Data::namespaceOf(std::uint32_t node,
                                                               std::string_view prefix) const noexcept
{
    for (; node != noIndex; node = nodes[node].parent) {
        const auto first = declarations.begin() + nodes[node].firstDeclaration;
        const auto last = first + nodes[node].declarationCount;
        const auto found = std::find_if(first, last, [&](const Declaration& one) { return one.prefix == prefix; });
        if (found != last)
            return found->uri;
    }
    if (prefix == "xml")
        return xmlNamespace;
    return prefix.empty() ? std::optional{std::string_view{}} : std::nullopt;
}

std::string_view XmlElement::namespaceUri() const noexcept
{
    return m_data->nodes[m_index].namespaceUri;
}

std::string_view XmlElement::prefix() const noexcept
{
    const auto& node = m_data->nodes[m_index];
    return node.writtenName.substr(0, node.prefixLength == 0 ? 0 : node.prefixLength - 1);
}

std::string_view XmlElement::name() const noexcept
{
    const auto& node = m_data->nodes[m_index];
    return node.writtenName.substr(node.prefixLength);
}

std::string_view XmlElement::writtenName() const noexcept
{
    return m_data->nodes[m_index].writtenName;
}

std::span<const XmlAttribute> XmlElement::attributes() const noexcept
{
    const auto& data = *m_data;
    const auto& node = data.nodes[m_index];
    return std::span{data.attributes}.subspan(node.firstAttribute, node.attributeCount);
}

const XmlAttribute* XmlElement::attribute(std::string_view wantedNamespace, std::string_view wantedName) const noexcept
{
    const auto all = attributes();
    const auto found = std::find_if(all.begin(), all.end(), [&](const XmlAttribute& attribute) {
        return attribute.is(wantedNamespace, wantedName);
    });
    return found == all.end() ? nullptr : &*found;
}

std::optional<XmlElement> XmlElement::firstChild() const noexcept
{
    const std::uint32_t child = m_data->nodes[m_index].firstChild;
    return child == noIndex ? std::nullopt : std::optional{XmlElement{*m_data, child}};
}

std::optional<XmlElement> XmlElement::nextSibling() const noexcept
{
    const std::uint32_t sibling = m_data->nodes[m_index].nextSibling;
    return sibling == noIndex ? std::nullopt : std::optional{XmlElement{*m_data, sibling}};
}

std::string XmlElement::text() const
{
    const auto& data = *m_data;
    std::string text;
    for (std::uint32_t i = data.nodes[m_index].firstText; i != noIndex; i = data.texts[i].next)
        text += data.texts[i].text;
    return text;
}

std::vector<std::string> XmlElement::textRuns() const
{
    const auto& data = *m_data;
    std::vector<std::string> runs(1);
    std::uint32_t child = noIndex;
    const auto nextChild = [&] {
        child = child == noIndex ? data.nodes[m_index].firstChild : data.nodes[child].nextSibling;
        runs.emplace_back();
    };
    for (std::uint32_t i = data.nodes[m_index].firstText; i != noIndex; i = data.texts[i].next) {
        while (child != data.texts[i].behind)
            nextChild();
        runs.back() += data.texts[i].text;
    }
    while (child != data.nodes[m_index].lastChild)
        nextChild();
    return runs;
}

bool XmlElement::hasText() const noexcept
{
    const auto& data = *m_data;
    for (std::uint32_t i = data.nodes[m_index].firstText; i != noIndex; i = data.texts[i].next) {
        if (!isXmlSpace(data.texts[i].text))
            return true;
    }
    return false;
}

std::optional<std::string_view> XmlElement::namespaceOf(std::string_view prefix) const noexcept
{
    return m_data->namespaceOf(m_index, prefix);
}

std::optional<std::string_view> XmlElement::declaredPrefixOf(std::string_view namespaceUri) const noexcept
{
    const auto& data = *m_data;
    const auto& node = data.nodes[m_index];
    const auto declared = std::span{data.declarations}.subspan(node.firstDeclaration, node.declarationCount);
    const auto found = std::find_if(declared.rbegin(), declared.rend(),
                                    [&](const auto& one) { return one.uri == namespaceUri && !one.prefix.empty(); });
    return found == declared.rend() ? std::nullopt : std::optional{found->prefix};
}

TextRange XmlElement::range() const noexcept
{
    const auto& node = m_data->nodes[m_index];
    return {node.begin, node.end};
}

TextRange XmlElement::endTag() const noexcept
{
    const auto& node = m_data->nodes[m_index];
    return {node.endTag, node.end};
}

XmlDocument::XmlDocument(std::unique_ptr<Data> data) noexcept : m_data{std::move(data)} {}
XmlDocument::XmlDocument(XmlDocument&&) noexcept = default;
XmlDocument& XmlDocument::operator=(XmlDocument&&) noexcept = default;

XmlDocument::~XmlDocument()
{
    leaveToNext(std::move(m_data));
}

XmlElement XmlDocument::root() const noexcept
{
    return {*m_data, 0};
}

std::size_t XmlDocument::elementCount() const noexcept
{
    return m_data->nodes.size();
}

std::string_view XmlDocument::text() const noexcept
{
    return m_data->text;
}

std::string XmlDocument::takeText() &&
{
    return std::move(m_data->text);
}

Expected<XmlDocument, ErrorCode2> parseXml(std::span<const std::byte> bytes, std::string_view subject)
{
    if (bytes.size() > Limits::xmlBytes)
        return Errors::makeError(OpcError::limitExceeded, subject,
                                 "more than " + std::to_string(Limits::xmlBytes) + " bytes of XML");
    auto data = emptyData();
    std::size_t bodyBegin = 0;
    XmlFault fault = readXmlText(bytes, data->text, bodyBegin);
    if (fault.isNone())
        fault = XmlBuilder{*data}.build(bodyBegin);
    if (fault.isNone())
        return XmlDocument{std::move(data)};
    const std::string what = atLine(data->text, fault.position, fault.what);
    return SchemaFault{fault.error, fault.rule, what}.onSubject(subject);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
