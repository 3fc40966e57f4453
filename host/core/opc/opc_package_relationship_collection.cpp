#include "kelvaris/system/io/opc_packaging/opc_package_relationship_collection.h"

namespace Kelvaris::System::IO::OpcPackaging {

OpcPackageRelationshipCollection::OpcPackageRelationshipCollection(Relationships relationships) noexcept
    : m_relationships{std::move(relationships)}
{
}

OpcPackageRelationshipCollectionIterator OpcPackageRelationshipCollection::begin() const
{
    return OpcPackageRelationshipCollectionIterator{m_relationships};
}

OpcPackageRelationshipCollectionIterator::OpcPackageRelationshipCollectionIterator(Relationships relationships)
    : m_relationships{std::move(relationships)}
{
    readCurrent();
}

OpcPackageRelationshipCollectionIterator& OpcPackageRelationshipCollectionIterator::operator++()
{
    ++m_position;
    readCurrent();
    return *this;
}

/// A copy: the caller may move out of it, and a second walk must find it all the same.
void OpcPackageRelationshipCollectionIterator::readCurrent()
{
    m_current.reset();
    if (m_position < m_relationships->size())
        m_current.emplace((*m_relationships)[m_position]);
}

} // namespace Kelvaris::System::IO::OpcPackaging
