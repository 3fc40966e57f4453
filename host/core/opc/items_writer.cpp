#include "host/core/opc/items_writer.h"

#include "host/core/opc/growth_hint.h"

#include <algorithm>
#include <cassert>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// What becomes of each entry of the opened file when it is saved.
class EntryFates
{
public:
    enum class Fate { copied, dropped, rewritten };

    explicit EntryFates(std::size_t entries) : m_fates(entries, Fate::copied) {}

    void drop(const PackageItem& item)
    {
        for (const std::uint32_t entry : item.entries())
            m_fates[entry] = Fate::dropped;
    }

    /// The item is written in the place of its first entry.
    void rewrite(const PackageItem& item)
    {
        drop(item);
        const std::uint32_t first = *std::ranges::min_element(item.entries());
        m_fates[first] = Fate::rewritten;
        m_rewritten[first] = &item;
    }

    Fate of(std::size_t entry) const { return m_fates[entry]; }
    const PackageItem& rewrittenAt(std::size_t entry) const { return *m_rewritten.at(entry); }

private:
    std::vector<Fate> m_fates;
    std::unordered_map<std::size_t, const PackageItem*> m_rewritten;
};

Result<> ItemsWriter::packGenerated()
{
    for (const auto& [item, document] : m_generated) {
        auto payload = m_store.take(std::as_bytes(std::span{document}), Zip::Effort::normal);
        if (!payload)
            return payload.error();
        m_packed.emplace(item, *std::move(payload));
    }
    m_store.packAll();
    return {};
}

Result<> ItemsWriter::writeEntries(const Zip::Archive& archive, const Zip::ByteSource& source,
                                   const std::vector<ItemPtr>& changed)
{
    const EntryFates fates = fatesOf(archive, changed);
    for (std::size_t entry = 0; entry < archive.entries().size(); ++entry) {
        Result<> written;
        if (fates.of(entry) == EntryFates::Fate::copied)
            written = m_writer.copyEntry(archive, entry);
        if (fates.of(entry) == EntryFates::Fate::rewritten)
            written = add(fates.rewrittenAt(entry), growthHintOf(source, archive.entries()[entry]));
        if (!written)
            return written;
    }
    return {};
}

Result<> ItemsWriter::writeNew(const std::vector<ItemPtr>& items)
{
    for (const ItemPtr& item : items) {
        if (auto written = add(*item, {}); !written)
            return written;
    }
    return {};
}

EntryFates ItemsWriter::fatesOf(const Zip::Archive& archive, const std::vector<ItemPtr>& changed) const
{
    EntryFates fates{archive.entries().size()};
    for (const ItemPtr& item : changed) {
        if (item->isRemoved)
            fates.drop(*item);
        else
            fates.rewrite(*item);
    }
    for (const auto& [item, bytes] : m_generated) {
        if (!item->entries().empty())
            fates.rewrite(*item);
    }
    return fates;
}

Result<> ItemsWriter::add(const PackageItem& item, std::span<const std::byte> extra)
{
    return m_writer.add(item.itemName, payloadOf(item), extra);
}

const Zip::Payload& ItemsWriter::payloadOf(const PackageItem& item) const
{
    const auto generated = m_packed.find(&item);
    assert(generated != m_packed.end() || item.payload != nullptr);
    return generated == m_packed.end() ? *item.payload : *generated->second;
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
