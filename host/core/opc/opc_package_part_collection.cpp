#include "kelvaris/system/io/opc_packaging/opc_package_part_collection.h"

namespace Kelvaris::System::IO::OpcPackaging {

OpcPackagePartCollection::OpcPackagePartCollection(Parts parts) noexcept : m_parts{std::move(parts)} {}

OpcPackagePartCollectionIterator OpcPackagePartCollection::begin() const
{
    return OpcPackagePartCollectionIterator{m_parts};
}

OpcPackagePartCollectionIterator::OpcPackagePartCollectionIterator(Parts parts) : m_parts{std::move(parts)}
{
    readCurrent();
}

OpcPackagePartCollectionIterator& OpcPackagePartCollectionIterator::operator++()
{
    ++m_position;
    readCurrent();
    return *this;
}

/// A copy: the caller may move out of it, and a second walk must find it all the same.
void OpcPackagePartCollectionIterator::readCurrent()
{
    m_current.reset();
    if (m_position < m_parts->size())
        m_current.emplace((*m_parts)[m_position]);
}

} // namespace Kelvaris::System::IO::OpcPackaging
