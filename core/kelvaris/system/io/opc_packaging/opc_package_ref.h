#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/io/opc_packaging/opc_package_properties.h"

#include <memory>

namespace Kelvaris::System::IO::OpcPackaging {

namespace detail {
class PackageReference;
struct PackageAccess;
} // namespace detail

/// The reference to a package that every part of a bundle holds. Copies refer to the same package, which is opened when
/// it is first asked for.
class KELVARIS_CORE_API OpcPackageRef
{
public:
    OpcPackageRef(const OpcPackageRef&);
    OpcPackageRef(OpcPackageRef&&) noexcept;
    OpcPackageRef& operator=(const OpcPackageRef&);
    OpcPackageRef& operator=(OpcPackageRef&&) noexcept;
    ~OpcPackageRef();

    /// The core properties, owned by the package and alive as long as a reference to it is. Unlike the operation of
    /// this name on `OpcPackage` it can fail, and is to be tested.
    Expected<OpcPackageProperties*, ErrorCode2> packageProperties();

private:
    friend struct detail::PackageAccess;

    explicit OpcPackageRef(std::shared_ptr<detail::PackageReference> reference) noexcept;

    std::shared_ptr<detail::PackageReference> m_reference;
};

} // namespace Kelvaris::System::IO::OpcPackaging
