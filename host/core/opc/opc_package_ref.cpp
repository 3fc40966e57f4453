#include "kelvaris/system/io/opc_packaging/opc_package_ref.h"

#include "host/core/opc/package_reference.h"
#include "host/core/text/memory_guard.h"

namespace Kelvaris::System::IO::OpcPackaging {

OpcPackageRef::OpcPackageRef(std::shared_ptr<detail::PackageReference> reference) noexcept
    : m_reference{std::move(reference)}
{
}

OpcPackageRef::OpcPackageRef(const OpcPackageRef&) = default;
OpcPackageRef::OpcPackageRef(OpcPackageRef&&) noexcept = default;
OpcPackageRef& OpcPackageRef::operator=(const OpcPackageRef&) = default;
OpcPackageRef& OpcPackageRef::operator=(OpcPackageRef&&) noexcept = default;
OpcPackageRef::~OpcPackageRef() = default;

Expected<OpcPackageProperties*, ErrorCode2> OpcPackageRef::packageProperties()
{
    return Text::withinMemory([this]() -> Expected<OpcPackageProperties*, ErrorCode2> {
        auto package = m_reference->package();
        if (!package)
            return package.error();
        return &(*package)->properties();
    });
}

} // namespace Kelvaris::System::IO::OpcPackaging
