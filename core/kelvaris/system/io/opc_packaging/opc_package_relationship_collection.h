#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/opc_packaging/opc_package_relationship.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging {

namespace detail {

/// The end of every walk over relationships.
struct OpcPackageRelationshipCollectionIteratorSentinel
{
};

} // namespace detail

/// Walks the relationships of a collection:
///
///     for (auto it = relationships.begin(); it != Sentinel{}; ++it)
///         show(*it);
class KELVARIS_CORE_API OpcPackageRelationshipCollectionIterator
{
public:
    using Sentinel = detail::OpcPackageRelationshipCollectionIteratorSentinel;

    bool operator==(const Sentinel&) const noexcept { return !m_current.has_value(); }
    bool operator!=(const Sentinel&) const noexcept { return m_current.has_value(); }

    /// The current relationship, valid until the next step; it may be moved from.
    OpcPackageRelationship& operator*() noexcept { return *m_current; }

    OpcPackageRelationshipCollectionIterator& operator++();

private:
    friend class OpcPackageRelationshipCollection;

    using Relationships = std::shared_ptr<const std::vector<OpcPackageRelationship>>;

    explicit OpcPackageRelationshipCollectionIterator(Relationships relationships);

    void readCurrent();

    Relationships m_relationships;
    std::size_t m_position = 0;
    std::optional<OpcPackageRelationship> m_current;
};

/// Relationships in their order, as they were when the collection was asked for.
class KELVARIS_CORE_API OpcPackageRelationshipCollection
{
public:
    OpcPackageRelationshipCollectionIterator begin() const;

private:
    friend struct detail::PackageAccess;

    using Relationships = std::shared_ptr<const std::vector<OpcPackageRelationship>>;

    explicit OpcPackageRelationshipCollection(Relationships relationships) noexcept;

    Relationships m_relationships;
};

} // namespace Kelvaris::System::IO::OpcPackaging
