#pragma once

#include "host/core/opc/package_data.h"
#include "host/core/opc/result.h"

#include <memory>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// What the references of typed parts share: a package, opened when it is first asked for.
class PackageReference
{
public:
    /// To an open package.
    explicit PackageReference(PackagePtr package) noexcept;

    /// To the package that a part of `outer` is. When its bytes are no package, an empty one stands for it: a barrel
    /// with one broken example can be shown.
    PackageReference(PackagePtr outer, PartPtr part) noexcept;

    /// @return  the system's error when the bytes cannot be read at all
    Result<PackagePtr> package();

private:
    PackagePtr m_outer;
    PartPtr m_part;
    PackagePtr m_package; ///< null until it is opened
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
