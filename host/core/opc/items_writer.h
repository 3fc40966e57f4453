#pragma once

#include "host/core/opc/package_items.h"
#include "host/core/opc/result.h"
#include "host/core/opc/zip/archive_writer.h"

#include <span>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

class EntryFates;

/// Writes the items of a package to a file.
class ItemsWriter
{
public:
    /// @param file       empty
    /// @param generated  the documents of items that are made anew; outlives this object, as `file` does
    ItemsWriter(Disk::ReplacementFile& file, const PackageItems::Generated& generated)
        : m_writer{file}, m_generated{generated}
    {
    }

    /// Compresses what is made anew, on several processors: most of it stands at the front of the file.
    Result<> packGenerated();

    /// Writes the entries of the opened file, in their order: those of `changed` and of generated items anew or not at
    /// all, every other as it stands.
    Result<> writeEntries(const Zip::Archive& archive, const Zip::ByteSource& source,
                          const std::vector<ItemPtr>& changed);

    Result<> writeNew(const std::vector<ItemPtr>& items);

    Result<> finish(std::string_view comment) { return m_writer.finish(comment); }

private:
    EntryFates fatesOf(const Zip::Archive& archive, const std::vector<ItemPtr>& changed) const;
    Result<> add(const PackageItem& item, std::span<const std::byte> extra);
    const Zip::Payload& payloadOf(const PackageItem& item) const;

    Zip::ArchiveWriter m_writer;
    const PackageItems::Generated& m_generated;
    Zip::PayloadStore m_store; ///< of its own, so that saving again and again takes no room
    std::unordered_map<const PackageItem*, Zip::PayloadPtr> m_packed; ///< of `m_generated`
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
