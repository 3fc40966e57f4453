#include "host/core/opc/package_parts.h"

#include "host/core/errors/make_error.h"
#include "host/core/errors/rollback.h"
#include "host/core/opc/limits.h"
#include "host/core/opc/markup/media_type_text.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

namespace {

constexpr std::size_t shownOfLongName = 80;

bool belongsToRelationships(const PartRecord& part)
{
    // the source ends as relationships do, where it is a part of relationships
    if (!Text::endsWithAsciiCase(part.name, ".rels.rels"))
        return false;
    const auto source = Markup::sourceOfRelationshipsPart(part.name);
    return source && Markup::isRelationshipsPartName(*source);
}

/// @param part     one whose name is of that form
/// @param subject  returns the part, for messages
template <class Subject>
Result<> checkRelationshipsPart(const PartRecord& part, const Subject& subject)
{
    if (!Markup::isSameMediaType(part.mediaType, Markup::relationshipsMediaType))
        return Errors::makeError(OpcError::invalidRelationships, subject(),
                                 "the content type is not that of relationships (M1.30)");
    if (belongsToRelationships(part))
        return Errors::makeError(OpcError::invalidRelationships, subject(),
                                 "relationships have no relationships of their own (M1.25)");
    return {};
}

} // namespace

PackageParts::PackageParts()
    : m_table{std::make_unique<Table>(CopyOnWrite<Markup::ContentTypes>{}, std::make_shared<PackageItem>())}
{
    m_table->typesItem->itemName = Markup::contentTypesItemName;
    m_items.add(m_table->typesItem);
}

PackageParts::PackageParts(std::string displayName, PackageItems items, FaultLog* faults) noexcept
    : m_displayName{std::move(displayName)}, m_items{std::move(items)}, m_faults{faults}
{
}

Result<const std::vector<PartPtr>*> PackageParts::all()
{
    if (auto loaded = load(); !loaded)
        return loaded.error();
    return &m_table->parts;
}

Result<PartPtr> PackageParts::find(std::string_view name)
{
    auto part = findIfThere(name);
    if (part && *part == nullptr)
        return Errors::makeError(OpcError::noSuchPart, subjectOf(name));
    return part;
}

Result<PartPtr> PackageParts::findIfThere(std::string_view name)
{
    if (auto loaded = load(); !loaded)
        return loaded.error();
    return m_table->find(Markup::partNameKey(name));
}

Result<PartPtr> PackageParts::create(std::string_view name, std::string_view mediaType, Typing typing)
{
    if (auto loaded = load(); !loaded)
        return loaded.error();
    auto part = std::make_shared<PartRecord>(std::string{name});
    if (auto reserved = reserveName(*part); !reserved)
        return reserved.error();
    Errors::Rollback forgetName{[&] { names().remove(name); }};
    const bool isFree =
        typing == Typing::byExtension && !m_table->otherExtensions.contains(Markup::extensionOf(part->key()));
    using ExtensionUse = Markup::ContentTypes::ExtensionUse;
    auto type = m_table->types.toChange().set(name, mediaType, isFree ? ExtensionUse::free : ExtensionUse::taken);
    if (!type)
        return type.error();
    Errors::Rollback forgetRest{[&] {
        m_table->types.toChange().remove(name);
        m_items.remove(part);
    }};
    part->mediaType = *std::move(type);
    part->itemName = std::string_view{part->name}.substr(1);
    m_items.add(part);
    m_table->add(part);
    forgetRest.dismiss();
    forgetName.dismiss();
    return part;
}

Result<> PackageParts::reserveName(const PartRecord& part)
{
    const std::string_view name = part.name;
    if (const std::string fault = Markup::partNameFault(name); !fault.empty())
        return Errors::makeError(OpcError::invalidPartName, Text::displayed(name), fault);
    if (name.size() > Limits::partNameBytes)
        return Errors::makeError(OpcError::invalidPartName, Text::displayed(name.substr(0, shownOfLongName)) + "...",
                                 "it is too long for a ZIP file (M3.8)");
    if (m_table->otherItems.contains(part.key()))
        return Errors::makeError(OpcError::partExists, subjectOf(name),
                                 "an item of the file that is no part has this name");
    return names().addKey(part.key(), name, [&] { return subjectOf(name); });
}

void PackageParts::remove(const PartPtr& part)
{
    m_table->types.toChange().remove(part->name);
    if (m_table->names)
        m_table->names->remove(part->name);
    m_table->remove(*part);
    m_items.remove(part);
}

Result<std::vector<std::string>> PackageParts::typedNamesWithoutPart()
{
    if (auto loaded = load(); !loaded)
        return loaded.error();
    std::vector<std::string> names = m_table->types->overriddenNames();
    std::erase_if(names, [this](const std::string& name) { return m_table->find(name) != nullptr; });
    return names;
}

Result<std::vector<std::byte>> PackageParts::read(const PartRecord& part) const
{
    return m_items.read(part, subjectOf(part.name));
}

Result<> PackageParts::stream(const PartRecord& part, const Disk::ByteSink& sink) const
{
    return m_items.stream(part, subjectOf(part.name), sink);
}

Result<Zip::ByteSourcePtr> PackageParts::openNested(const PartRecord& part) const
{
    return m_items.openNested(part, subjectOf(part.name));
}

void PackageParts::generateContentTypes(PackageItems::Generated& generated) const
{
    if (m_table == nullptr || (m_table->typesItem->hasBytes() && !m_table->types->isChanged()))
        return;
    generated[m_table->typesItem.get()] = m_table->types->serialised();
}

std::string PackageParts::subjectOf(std::string_view name) const
{
    if (m_displayName.empty())
        return Text::displayed(name);
    return Text::displayedIn(m_displayName, name);
}

Result<> PackageParts::load()
{
    if (m_table != nullptr)
        return {};
    auto table = readTable();
    if (!table)
        return table.error();
    m_diagnostics = std::move(table->diagnostics);
    m_table = std::make_unique<Table>(std::move(*table));
    return {};
}

Result<PackageParts::Table> PackageParts::readTable() const
{
    auto scan = scanItems(*m_items.archive(), m_faults);
    if (!scan)
        return scan.error();
    auto types = readContentTypes(scan->contentTypes);
    if (!types)
        return types.error();
    Table table{std::move(*types), std::move(scan->contentTypes)};
    table.diagnostics = std::move(scan->diagnostics);
    table.parts.reserve(scan->named.size());
    table.index.reserve(scan->named.size());
    // names are rarely derived from others: that none are is told sooner than the tree of names is made
    if (!scan->areUnrelated)
        table.names.emplace();
    for (const std::string& name : scan->incomplete)
        addOther(table, name);
    for (PartPtr& part : scan->named) {
        auto entered = enter(table, std::move(part));
        if (!entered)
            entered = passOver(m_faults, entered.error());
        if (!entered)
            return entered.error();
    }
    return table;
}

Result<CopyOnWrite<Markup::ContentTypes>> PackageParts::readContentTypes(const ItemPtr& item) const
{
    if (item == nullptr)
        return Errors::makeError(OpcError::noContentTypes, m_displayName, "ISO/IEC 29500-2 M3.10");
    return m_items.readAs<Markup::ContentTypes>(
        *item, [this] { return subjectOf(Markup::contentTypesItemName); },
        [this](std::span<const std::byte> bytes, std::string_view subject) {
            return Markup::ContentTypes::parse(bytes, subject, m_faults);
        });
}

Result<> PackageParts::enter(Table& table, PartPtr part) const
{
    auto type = table.types->typeOfKey(part->key());
    if (!type) {
        table.diagnostics.push_back(Text::displayed(part->itemName) +
                                    ": an item without a content type is no part (M3.5)");
        addOther(table, part->name);
        return {};
    }
    part->mediaType = *std::move(type);
    const auto subject = [&] { return subjectOf(part->name); };
    if (table.names) {
        if (auto added = table.names->addKey(part->key(), part->name, subject); !added)
            return added;
    }
    if (part->holdsRelationships()) {
        if (auto checked = checkRelationshipsPart(*part, subject); !checked)
            return checked;
    }
    table.add(std::move(part));
    return {};
}

void PackageParts::addOther(Table& table, std::string_view partName)
{
    table.otherItems.insert(Markup::partNameKey(partName));
    table.otherExtensions.insert(Text::toAsciiLower(Markup::extensionOf(partName)));
}

Markup::PartNameSet& PackageParts::names()
{
    if (!m_table->names) {
        Markup::PartNameSet names;
        names.reserve(m_table->parts.size());
        for (const PartPtr& part : m_table->parts)
            (void)names.addKey(part->key(), part->name, nullptr); // they are known not to be in each other's way
        m_table->names = std::move(names);
    }
    return *m_table->names;
}

PartPtr PackageParts::Table::find(std::string_view key) const
{
    const auto place = index.find(key, keyAt());
    return place == Text::NameIndex::none ? PartPtr{} : parts[place];
}

void PackageParts::Table::add(PartPtr part)
{
    parts.push_back(std::move(part));
    Errors::Rollback forget{[this] { parts.pop_back(); }};
    index.add(keyAt());
    forget.dismiss();
}

void PackageParts::Table::remove(const PartRecord& part)
{
    const auto place = index.find(part.key(), keyAt());
    if (place == Text::NameIndex::none || parts[place].get() != &part)
        return;
    index.removeInOrder(place, keyAt());
    parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(place));
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
