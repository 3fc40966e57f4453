#include "host/core/opc/markup/content_types.h"

#include "host/core/errors/make_error.h"
#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/content_types_reader.h"
#include "host/core/opc/markup/media_type_text.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

constexpr std::string_view newDocument =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "</Types>";
constexpr std::size_t endTagLength = std::string_view{"</Types>"}.size();

std::string elementText(const std::string& prefix, bool isDefault, std::string_view name, std::string_view type)
{
    std::string text = "<" + prefix + (isDefault ? "Default Extension=\"" : "Override PartName=\"");
    text.append(escapedAttribute(name)).append("\" ContentType=\"").append(escapedAttribute(type)).append("\"/>");
    return text;
}

} // namespace

ContentTypes::ContentTypes()
    : m_text{newDocument}, m_endTag{newDocument.size() - endTagLength, newDocument.size()}, m_isChanged{true}
{
    addNew(m_defaults, "rels", relationshipsMediaType);
}

Expected<ContentTypes, ErrorCode2> ContentTypes::parse(std::span<const std::byte> bytes, std::string_view subject,
                                                       FaultLog* faults)
{
    auto document = parseXml(bytes, subject);
    if (!document)
        return std::move(document).error();
    ContentTypes types{Empty{}};
    types.m_overrides.reserve(document->elementCount());
    const XmlElement root = document->root();
    if (const SchemaFault fault = ContentTypesReader{types, {faults, subject}}.read(root); !fault.isNone())
        return fault.onSubject(subject);
    types.m_prefix = prefixWithColon(root);
    types.m_endTag = root.endTag();
    types.m_text = std::move(*document).takeText();
    return types;
}

std::optional<MediaType> ContentTypes::typeOf(std::string_view partName) const
{
    return typeOfKey(partNameKey(partName));
}

std::optional<MediaType> ContentTypes::typeOfKey(std::string_view key) const
{
    if (!m_overrides.empty()) {
        if (const auto found = m_overrides.find(key); found != m_overrides.end())
            return found->second.type;
    }
    const auto found = m_defaults.find(extensionOf(key));
    return found == m_defaults.end() ? std::nullopt : std::optional<MediaType>{found->second.type};
}

Expected<void, ErrorCode2> ContentTypes::set(std::string_view partName, std::string_view type, ExtensionUse use)
{
    if (const std::string fault = mediaTypeFault(type); !fault.empty())
        return Errors::makeError(OpcError::invalidMediaType, inQuotes(partName), fault);
    if (const auto known = typeOf(partName); known && isSameMediaType(*known, type))
        return {};
    remove(partName);
    const std::string_view extension = extensionOf(partName);
    const auto byExtension = m_defaults.find(partNameKey(extension));
    if (byExtension != m_defaults.end() && isSameMediaType(byExtension->second.type, type))
        return {};
    if (byExtension == m_defaults.end() && use == ExtensionUse::free && isDefaultExtension(extension))
        addNew(m_defaults, extension, type);
    else
        addNew(m_overrides, partName, type);
    return {};
}

void ContentTypes::remove(std::string_view partName)
{
    const auto found = m_overrides.find(partNameKey(partName));
    if (found == m_overrides.end())
        return;
    const Entry& entry = found->second;
    if (entry.range.isEmpty())
        m_added.erase(entry.order);
    else
        m_erased.push_back(entry.range);
    m_overrides.erase(found);
    m_isChanged = true;
}

std::vector<std::string> ContentTypes::overriddenNames() const
{
    std::vector<std::string> names;
    names.reserve(m_overrides.size());
    for (const auto& [name, entry] : m_overrides)
        names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

bool ContentTypes::enterRead(Entries& entries, std::string_view name, const XmlElement& element)
{
    const std::string_view type = element.attribute({}, "ContentType")->value;
    return entries.try_emplace(partNameKey(name), Entry{MediaType{type}, element.range(), 0}).second;
}

void ContentTypes::addNew(Entries& entries, std::string_view name, std::string_view type)
{
    m_added.emplace(++m_lastOrder, elementText(m_prefix, &entries == &m_defaults, name, type));
    Errors::Rollback takeBack{[this] { m_added.erase(m_lastOrder); }};
    entries.try_emplace(partNameKey(name), Entry{MediaType{type}, {}, m_lastOrder});
    takeBack.dismiss();
    m_isChanged = true;
}

std::string ContentTypes::serialised() const
{
    TextEdits edits;
    for (const TextRange& range : m_erased)
        edits.erase(range);
    std::string added;
    for (const auto& [order, text] : m_added)
        added += text;
    if (!added.empty())
        edits.insertBeforeEnd(m_endTag, m_prefix + "Types", std::move(added));
    return edits.appliedTo(m_text);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
