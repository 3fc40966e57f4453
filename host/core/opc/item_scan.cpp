#include "host/core/opc/item_scan.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/zip_attributes.h"
#include "host/core/text/name_hash.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <optional>

namespace Kelvaris::System::IO::OpcPackaging::detail {

namespace {

struct Piece
{
    std::uint32_t number;
    std::uint32_t entry;
    bool isLast;
};

/// All entries that make up one item.
struct Group
{
    std::string itemName;
    Markup::PartName partName;
    std::string_view key; ///< in the table of places
    std::optional<std::uint32_t> whole;
    std::vector<Piece> pieces;
};

bool isContentTypesName(std::string_view itemName)
{
    return Text::equalsAsciiCase(itemName, Markup::contentTypesItemName);
}

/// Equal for items of equivalent names. Names of parts begin with "/"; no other key does.
std::string keyOf(std::string_view itemName, const Markup::PartName& partName)
{
    if (partName.isValid())
        return Markup::partNameKey(partName.text);
    return ':' + Text::toAsciiLower(itemName);
}

bool isComplete(const std::vector<Piece>& sorted)
{
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        if (sorted[index].number != index || sorted[index].isLast != (index + 1 == sorted.size()))
            return false;
    }
    return true;
}

class ItemScanner
{
public:
    ItemScanner(const Zip::Archive& archive, FaultLog* faults) : m_archive{archive}, m_faults{faults}
    {
        m_groups.reserve(archive.entries().size());
        m_places.reserve(archive.entries().size());
    }

    Result<ItemScan> scan()
    {
        for (std::uint32_t entry = 0; entry < m_archive.entries().size(); ++entry) {
            if (auto entered = enter(entry); !entered)
                return entered.error();
        }
        for (Group& group : m_groups) {
            if (auto added = add(group); !added)
                return added.error();
        }
        return std::move(m_scan);
    }

private:
    Result<> enter(std::uint32_t entry)
    {
        const Zip::Entry& record = m_archive.entries()[entry];
        if (!isFile(record)) {
            leaveAlone(record.name, "a directory, a link or a label of a disk is no part (M3.7)");
            return {};
        }
        if (const auto piece = Markup::pieceNameOf(record.name)) {
            groupOf(piece->itemName, record).pieces.push_back({piece->number, entry, piece->isLast});
            return {};
        }
        Group& group = groupOf(record.name, record);
        if (group.whole)
            return passOver(m_faults,
                            Errors::makeError(OpcError::partExists, m_archive.describe(entry),
                                              "an item of that name stands in the file already (M2.14, M3.3)"));
        group.whole = entry;
        return {};
    }

    Group& groupOf(std::string_view itemName, const Zip::Entry& record)
    {
        Markup::PartName partName = Markup::partNameFromItemName(itemName, record.hasUtf8Name());
        const auto [place, isNew] = m_places.try_emplace(keyOf(itemName, partName), m_groups.size());
        if (isNew)
            m_groups.push_back({std::string{itemName}, std::move(partName), place->first, std::nullopt, {}});
        return m_groups[place->second];
    }

    Result<> add(Group& group)
    {
        if (group.whole && !group.pieces.empty())
            return passOver(m_faults,
                            Errors::makeError(OpcError::invalidPieces, m_archive.describe(group.pieces.front().entry),
                                              "an item and pieces have one name (M2.11)"));
        if (group.whole)
            addItem(group, {*group.whole});
        else
            return addPieces(group);
        return {};
    }

    Result<> addPieces(Group& group)
    {
        std::ranges::stable_sort(group.pieces, {}, &Piece::number);
        const auto twin = std::ranges::adjacent_find(group.pieces, {}, &Piece::number);
        if (twin != group.pieces.end())
            return passOver(m_faults,
                            Errors::makeError(OpcError::invalidPieces, m_archive.describe(std::next(twin)->entry),
                                              "two pieces of one item have one number (M2.15)"));
        if (!isComplete(group.pieces)) {
            leaveAlone(group.itemName, "pieces are missing, so that it is no part (M2.18)");
            if (group.partName.isValid())
                m_scan.incomplete.push_back(group.partName.text);
            return {};
        }
        std::vector<std::uint32_t> entries;
        std::ranges::transform(group.pieces, std::back_inserter(entries), &Piece::entry);
        addItem(group, std::move(entries));
        return {};
    }

    void addItem(Group& group, std::vector<std::uint32_t> entries)
    {
        auto item = std::make_shared<PackageItem>();
        item->name = std::move(group.itemName);
        item->entries = std::move(entries);
        if (isContentTypesName(item->name))
            m_scan.contentTypes = std::move(item);
        else if (group.partName.isValid())
            m_scan.named.push_back({std::move(item), std::move(group.partName.text), std::string{group.key}});
        else
            leaveAlone(item->name, "the name makes no part name: " + group.partName.fault);
    }

    void leaveAlone(std::string_view itemName, const std::string& reason)
    {
        m_scan.diagnostics.push_back(Text::displayed(itemName) + ": " + reason);
    }

    const Zip::Archive& m_archive;
    FaultLog* m_faults;
    std::vector<Group> m_groups;
    Text::NameMap<std::size_t> m_places;
    ItemScan m_scan;
};

} // namespace

Result<ItemScan> scanItems(const Zip::Archive& archive, FaultLog* faults)
{
    return ItemScanner{archive, faults}.scan();
}

bool hasContentTypes(const Zip::Archive& archive)
{
    return std::ranges::any_of(archive.entries(), [](const Zip::Entry& entry) {
        const auto piece = Markup::pieceNameOf(entry.name);
        return isContentTypesName(piece ? piece->itemName : entry.name);
    });
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
