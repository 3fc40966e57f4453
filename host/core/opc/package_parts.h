#pragma once

#include "host/core/opc/item_scan.h"
#include "host/core/opc/markup/content_types.h"
#include "host/core/opc/markup/part_name_set.h"
#include "host/core/opc/part_record.h"
#include "host/core/text/name_hash.h"
#include "host/core/text/name_index.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// The parts of a package with their content types, read on first use: which names are parts, and which bytes they
/// have.
///
/// Every operation may answer what makes the set of parts invalid: opc 4, 5, 12 to 16, 17, 23 and 27.
class PackageParts
{
public:
    /// Whether a new extension may stand for a part's media type from now on.
    enum class Typing { byExtension, byName };

    /// Of a new package.
    PackageParts();

    /// Of an opened one.
    /// @param faults  where broken rules go that can be passed over; null when the first one is the answer
    PackageParts(std::string displayName, PackageItems items, FaultLog* faults) noexcept;

    /// In the order of the archive, new ones behind; relationship parts are among them.
    Result<const std::vector<PartPtr>*> all();

    /// @param name  in any ASCII case
    /// @return  opc 1 when there is none
    Result<PartPtr> find(std::string_view name);

    /// @return  null when there is none
    Result<PartPtr> findIfThere(std::string_view name);

    /// A new part. Its item has no bytes yet.
    /// @return  opc 3, 4, 5 for the name, opc 14 for the type
    Result<PartPtr> create(std::string_view name, std::string_view mediaType, Typing typing);

    void remove(const PartPtr& part);

    /// The names to which the content types give a type, and which no part has; folded.
    Result<std::vector<std::string>> typedNamesWithoutPart();

    Result<std::vector<std::byte>> read(const PartRecord& part) const;

    /// As `PackageItems::readAs`.
    template <class Document, class Parse>
    Result<CopyOnWrite<Document>> readAs(const PartRecord& part, const Parse& parse) const
    {
        return m_items.readAs<Document>(
            part, [&] { return subjectOf(part.name); }, parse);
    }

    Result<> stream(const PartRecord& part, const Disk::ByteSink& sink) const;
    Result<Zip::ByteSourcePtr> openNested(const PartRecord& part) const;

    PackageItems& items() noexcept { return m_items; }
    const PackageItems& items() const noexcept { return m_items; }

    /// Adds the content types to what a save must write anew, if they have changed.
    void generateContentTypes(PackageItems::Generated& generated) const;

    /// "file: /part", for messages.
    std::string subjectOf(std::string_view name) const;
    const std::string& displayName() const noexcept { return m_displayName; }
    FaultLog* faults() const noexcept { return m_faults; }

    /// A sentence for each entry that is left alone; complete once the parts were read.
    const std::vector<std::string>& diagnostics() const noexcept { return m_diagnostics; }

private:
    struct Table
    {
        Table(CopyOnWrite<Markup::ContentTypes> readTypes, ItemPtr readFrom)
            : types{std::move(readTypes)}, typesItem{std::move(readFrom)}
        {
        }

        /// @return  null when there is none
        PartPtr find(std::string_view key) const;

        void add(PartPtr part);
        void remove(const PartRecord& part);

        auto keyAt() const noexcept
        {
            return [this](Text::NameIndex::Place place) { return parts[place]->key(); };
        }

        CopyOnWrite<Markup::ContentTypes> types;
        ItemPtr typesItem;
        std::vector<PartPtr> parts;
        Text::NameIndex index;                    ///< of their keys
        std::optional<Markup::PartNameSet> names; ///< made when it is needed, at the latest by the first new name
        Text::NameTable otherItems;               ///< keys of items that are no parts
        Text::NameTable otherExtensions;
        std::vector<std::string> diagnostics;
    };

    Result<> load();
    Result<Table> readTable() const;
    Result<CopyOnWrite<Markup::ContentTypes>> readContentTypes(const ItemPtr& item) const;
    Result<> enter(Table& table, PartPtr part) const;
    Result<> reserveName(const PartRecord& part);
    static void addOther(Table& table, std::string_view partName);
    Markup::PartNameSet& names();

    std::string m_displayName;
    PackageItems m_items;
    FaultLog* m_faults = nullptr;
    std::unique_ptr<Table> m_table;
    std::vector<std::string> m_diagnostics;
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
