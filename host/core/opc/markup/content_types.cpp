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
#include <iterator>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

constexpr std::string_view newDocument =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "</Types>";
constexpr std::size_t endTagLength = std::string_view{"</Types>"}.size();

} // namespace

ContentTypes::ContentTypes()
    : m_text{newDocument}, m_endTag{newDocument.size() - endTagLength, newDocument.size()}, m_isChanged{true}
{
    addNew(true, "rels", "rels", MediaType{relationshipsMediaType});
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

const ContentTypes::Entry* ContentTypes::Entries::find(std::string_view key) const
{
    const auto place = m_index.find(key, keyAt());
    return place == Text::NameIndex::none ? nullptr : &m_entries[place];
}

bool ContentTypes::Entries::add(Entry entry)
{
    m_entries.push_back(std::move(entry));
    Errors::Rollback forget{[this] { m_entries.pop_back(); }};
    if (m_index.add(keyAt()) != Text::NameIndex::none)
        return false;
    forget.dismiss();
    return true;
}

void ContentTypes::Entries::remove(const Entry& entry)
{
    const auto place = static_cast<Text::NameIndex::Place>(&entry - m_entries.data());
    m_index.removeBy(place, [this](Text::NameIndex::Place at) { return Text::NameHash{}(m_entries[at].key); });
    if (&entry != &m_entries.back())
        m_entries[place] = std::move(m_entries.back());
    m_entries.pop_back();
}

void ContentTypes::Entries::reserve(std::size_t count)
{
    m_entries.reserve(count);
    m_index.reserve(count);
}

std::optional<MediaType> ContentTypes::typeOf(std::string_view partName) const
{
    return typeOfKey(partNameKey(partName));
}

std::optional<MediaType> ContentTypes::typeOfKey(std::string_view key) const
{
    const Entry* entry = m_overrides.find(key);
    if (entry == nullptr)
        entry = m_defaults.find(extensionOf(key));
    return entry == nullptr ? std::nullopt : std::optional{entry->type};
}

Expected<MediaType, ErrorCode2> ContentTypes::set(std::string_view partName, std::string_view type, ExtensionUse use)
{
    if (type.empty() || m_lastType != type) {
        if (const std::string fault = mediaTypeFault(type); !fault.empty())
            return Errors::makeError(OpcError::invalidMediaType, inQuotes(partName), fault);
        m_lastType = MediaType{type};
    }
    const std::string key = partNameKey(partName);
    if (const Entry* const own = m_overrides.find(key)) {
        if (isSameMediaType(own->type, type))
            return m_lastType;
        removeOverride(*own);
    }
    const std::string_view extensionKey = extensionOf(key);
    const Entry* const byExtension = m_defaults.find(extensionKey);
    if (byExtension != nullptr && isSameMediaType(byExtension->type, type))
        return m_lastType;
    const std::string_view extension = extensionOf(partName);
    if (byExtension == nullptr && use == ExtensionUse::free && isDefaultExtension(extension))
        addNew(true, extension, extensionKey, m_lastType);
    else
        addNew(false, partName, key, m_lastType);
    return m_lastType;
}

void ContentTypes::remove(std::string_view partName)
{
    if (const Entry* const entry = m_overrides.find(partNameKey(partName)))
        removeOverride(*entry);
}

void ContentTypes::removeOverride(const Entry& entry)
{
    if (entry.range.isEmpty())
        takeBack(entry.added);
    else
        m_erased.push_back(entry.range);
    m_overrides.remove(entry);
    m_isChanged = true;
}

std::vector<std::string> ContentTypes::overriddenNames() const
{
    std::vector<std::string> names;
    std::ranges::transform(m_overrides.all(), std::back_inserter(names), &Entry::key);
    std::ranges::sort(names);
    return names;
}

bool ContentTypes::enterRead(Entries& entries, std::string_view name, const XmlElement& element)
{
    const std::string_view type = element.attribute({}, "ContentType")->value;
    return entries.add({partNameKey(name), MediaType{type}, element.range(), 0});
}

void ContentTypes::addNew(bool isDefault, std::string_view name, std::string_view key, const MediaType& type)
{
    const auto place = static_cast<std::uint32_t>(m_added.size());
    m_added.push_back({std::string{name}, type, isDefault});
    Errors::Rollback forget{[&] { takeBack(place); }};
    (isDefault ? m_defaults : m_overrides).add({std::string{key}, type, {}, place});
    forget.dismiss();
    m_isChanged = true;
}

/// The places of the others stay.
void ContentTypes::takeBack(std::uint32_t place) noexcept
{
    m_added[place].name.clear();
    while (!m_added.empty() && m_added.back().name.empty())
        m_added.pop_back();
}

std::string ContentTypes::serialised() const
{
    TextEdits edits;
    for (const TextRange& range : m_erased)
        edits.erase(range);
    std::string added;
    RepeatedAttribute type;
    for (const Added& each : m_added) {
        if (!each.name.empty())
            appendElement(added, each, type);
    }
    if (!added.empty())
        edits.insertBeforeEnd(m_endTag, m_prefix + "Types", std::move(added));
    return edits.appliedTo(m_text);
}

void ContentTypes::appendElement(std::string& text, const Added& added, RepeatedAttribute& type) const
{
    text.append("<").append(m_prefix).append(added.isDefault ? "Default Extension=\"" : "Override PartName=\"");
    appendEscapedAttribute(text, added.name);
    text += "\" ContentType=\"";
    type.append(text, added.type);
    text += "\"/>";
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
