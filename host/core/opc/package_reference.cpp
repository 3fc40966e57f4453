#include "host/core/opc/package_reference.h"

#include "kelvaris/system/io/opc_packaging/opc_error.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

PackageReference::PackageReference(PackagePtr package) noexcept : m_package{std::move(package)} {}

PackageReference::PackageReference(PackagePtr outer, PartPtr part) noexcept
    : m_outer{std::move(outer)}, m_part{std::move(part)}
{
}

Result<PackagePtr> PackageReference::package()
{
    if (m_package != nullptr)
        return m_package;
    auto opened = m_outer->openNested(*m_part);
    if (!opened && &opened.error().category() != &opc_error_category())
        return opened;
    m_package = opened ? *opened : PackageData::create();
    return m_package;
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
