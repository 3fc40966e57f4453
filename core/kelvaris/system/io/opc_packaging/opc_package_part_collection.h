#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging {

namespace detail {

/// The end of every walk over parts.
struct OpcPackagePartCollectionIteratorSentinel
{
};

} // namespace detail

/// Walks the parts of a collection, as the iterator of relationships does.
class KELVARIS_CORE_API OpcPackagePartCollectionIterator
{
public:
    using Sentinel = detail::OpcPackagePartCollectionIteratorSentinel;

    bool operator==(const Sentinel&) const noexcept { return !m_current.has_value(); }
    bool operator!=(const Sentinel&) const noexcept { return m_current.has_value(); }

    /// The current part, valid until the next step; it may be moved from.
    OpcPackagePart& operator*() noexcept { return *m_current; }

    OpcPackagePartCollectionIterator& operator++();

private:
    friend class OpcPackagePartCollection;

    using Parts = std::shared_ptr<const std::vector<OpcPackagePart>>;

    explicit OpcPackagePartCollectionIterator(Parts parts);

    void readCurrent();

    Parts m_parts;
    std::size_t m_position = 0;
    std::optional<OpcPackagePart> m_current;
};

/// Parts in the order of the archive, later additions behind them, as they were when the collection was asked for.
/// Relationship parts are not among them.
class KELVARIS_CORE_API OpcPackagePartCollection
{
public:
    OpcPackagePartCollectionIterator begin() const;

private:
    friend struct detail::PackageAccess;

    using Parts = std::shared_ptr<const std::vector<OpcPackagePart>>;

    explicit OpcPackagePartCollection(Parts parts) noexcept;

    Parts m_parts;
};

} // namespace Kelvaris::System::IO::OpcPackaging
