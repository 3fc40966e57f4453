#pragma once

#include "host/core/opc/zip/archive.h"
#include "kelvaris/export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <typeindex>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// What packages that lie side by side in one package have read lately.
///
/// The examples of a barrel differ in their titles and designs, but most have the same content types, byte for byte,
/// and many the same relationships and maker. What was made of such bytes once holds for all of them, so that they are
/// neither inflated nor parsed again.
///
/// Packages that were opened from one package may be used by several threads, each by one.
class KELVARIS_CORE_API SiblingReadings
{
public:
    /// @param itemName  equal bytes of other items are other readings
    /// @return  what was made of these bytes, not to be changed; null when they are not known
    template <class Document>
    std::shared_ptr<Document> find(std::string_view itemName, const Zip::PackedEntry& packed) const
    {
        return std::static_pointer_cast<Document>(findAny(typeid(Document), itemName, packed));
    }

    /// Forgets an older reading in its place. Large ones are not kept.
    template <class Document>
    void keep(std::string_view itemName, const Zip::PackedEntry& packed, std::shared_ptr<Document> document)
    {
        keepAny(typeid(Document), itemName, packed, std::move(document));
    }

private:
    struct Reading
    {
        std::type_index type = typeid(void);
        std::string itemName;
        std::vector<std::byte> bytes;
        Zip::PackedEntry packed; ///< a view of `bytes`
        std::shared_ptr<void> document;
    };

    std::shared_ptr<void> findAny(std::type_index type, std::string_view itemName,
                                  const Zip::PackedEntry& packed) const;
    void keepAny(std::type_index type, std::string_view itemName, const Zip::PackedEntry& packed,
                 std::shared_ptr<void> document);

    mutable std::mutex m_mutex;
    std::array<Reading, 24> m_readings;
    std::size_t m_next = 0; ///< the oldest
};

using SiblingReadingsPtr = std::shared_ptr<SiblingReadings>;

} // namespace Kelvaris::System::IO::OpcPackaging::detail
