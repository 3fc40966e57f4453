#include "host/core/opc/item_scan.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/zip_attributes.h"
#include "host/core/text/name_index.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <array>
#include <memory_resource>
#include <optional>
#include <vector>

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
    std::string_view itemName; ///< in the archive
    PartPtr part;              ///< null when the name makes no part name
    std::string otherKey;      ///< of such an item
    std::string fault;         ///< why it makes none
    std::optional<std::uint32_t> whole = {};
    std::vector<Piece> pieces = {};

    /// Equal for items of equivalent names.
    std::string_view key() const noexcept { return part == nullptr ? std::string_view{otherKey} : part->key(); }
};

/// Each directory of a name is looked up by all that stands before its end: of a deeper name the tree of names takes
/// less.
constexpr std::ptrdiff_t mostDirectories = 8;

/// Room on the stack for the groups of a usual example.
constexpr std::size_t usualGroups = 4096;

bool isContentTypesName(std::string_view itemName)
{
    return Text::equalsAsciiCase(itemName, Markup::contentTypesItemName);
}

/// Names of parts begin with "/"; no other key does.
Group otherGroup(std::string_view itemName, std::string fault)
{
    return {itemName, nullptr, ':' + Text::toAsciiLower(itemName), std::move(fault)};
}

Group newGroup(std::string_view itemName, bool isUtf8)
{
    if (isContentTypesName(itemName))
        return otherGroup(itemName, {});
    Markup::PartName partName = Markup::partNameFromItemName(itemName, isUtf8);
    if (!partName.isValid())
        return otherGroup(itemName, std::move(partName.fault));
    return {itemName, std::make_shared<PartRecord>(std::move(partName.text)), {}, {}};
}

/// "/a" for "/a/b"; empty for "/a" and for what is no part's name.
std::string_view directoryOf(std::string_view key)
{
    const std::size_t end = key.rfind('/');
    return key.front() == '/' && end != std::string_view::npos ? key.substr(0, end) : std::string_view{};
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
        m_index.reserve(archive.entries().size());
        m_scan.named.reserve(archive.entries().size());
    }

    Result<ItemScan> scan()
    {
        for (std::uint32_t entry = 0; entry < m_archive.entries().size(); ++entry) {
            if (auto entered = enter(entry); !entered)
                return entered.error();
        }
        m_scan.areUnrelated = areUnrelated();
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

    auto keyAt() const noexcept
    {
        return [this](Text::NameIndex::Place place) { return m_groups[place].key(); };
    }

    Group& groupOf(std::string_view itemName, const Zip::Entry& record)
    {
        Group& group = m_groups.emplace_back(newGroup(itemName, record.hasUtf8Name()));
        const auto known = m_index.add(keyAt());
        if (known == Text::NameIndex::none)
            return group;
        m_groups.pop_back();
        return m_groups[known];
    }

    /// Keys of items that are no parts do not begin with "/", as every directory of a part does.
    bool areUnrelated() const
    {
        std::string_view lastDirectory;
        return std::ranges::all_of(m_groups, [&](const Group& group) {
            std::string_view directory = directoryOf(group.key());
            if (directory == lastDirectory)
                return true;
            lastDirectory = directory;
            if (std::ranges::count(directory, '/') > mostDirectories)
                return false;
            for (; !directory.empty(); directory = directoryOf(directory)) {
                if (m_index.find(directory, keyAt()) != Text::NameIndex::none)
                    return false;
            }
            return true;
        });
    }

    Result<> add(Group& group)
    {
        if (group.whole && !group.pieces.empty())
            return passOver(m_faults,
                            Errors::makeError(OpcError::invalidPieces, m_archive.describe(group.pieces.front().entry),
                                              "an item and pieces have one name (M2.11)"));
        if (!group.whole)
            return addPieces(group);
        addItem(group, *group.whole, {});
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
            if (group.part != nullptr)
                m_scan.incomplete.push_back(group.part->name);
            return {};
        }
        std::vector<std::uint32_t> entries;
        std::ranges::transform(group.pieces, std::back_inserter(entries), &Piece::entry);
        addItem(group, PackageItem::noEntry, std::move(entries));
        return {};
    }

    void addItem(Group& group, std::uint32_t entry, std::vector<std::uint32_t> pieces)
    {
        const bool isContentTypes = isContentTypesName(group.itemName);
        if (group.part == nullptr && !isContentTypes) {
            leaveAlone(group.itemName, "the name makes no part name: " + group.fault);
            return;
        }
        const ItemPtr item = isContentTypes ? std::make_shared<PackageItem>() : ItemPtr{group.part};
        item->itemName = group.itemName;
        item->entry = entry;
        item->pieces = std::move(pieces);
        if (isContentTypes)
            m_scan.contentTypes = item;
        else
            m_scan.named.push_back(std::move(group.part));
    }

    void leaveAlone(std::string_view itemName, const std::string& reason)
    {
        m_scan.diagnostics.push_back(Text::displayed(itemName) + ": " + reason);
    }

    const Zip::Archive& m_archive;
    FaultLog* m_faults;
    std::array<std::byte, usualGroups> m_room;
    std::pmr::monotonic_buffer_resource m_memory{m_room.data(), m_room.size()};
    std::pmr::vector<Group> m_groups{&m_memory}; ///< does not grow beyond the room that it has from the beginning
    Text::NameIndex m_index;                     ///< of their keys
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
