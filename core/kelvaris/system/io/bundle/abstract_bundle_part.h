#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/byte_array2.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"
#include "kelvaris/system/io/opc_packaging/opc_package_ref.h"

namespace Kelvaris::System::IO::Bundle {

/// The base of the typed parts. A handle: it keeps alive what it reads from, so that it stays usable after its bundle
/// is gone.
class KELVARIS_CORE_API AbstractBundlePart
{
public:
    AbstractBundlePart(const AbstractBundlePart&);
    AbstractBundlePart(AbstractBundlePart&&) noexcept;
    AbstractBundlePart& operator=(const AbstractBundlePart&);
    AbstractBundlePart& operator=(AbstractBundlePart&&) noexcept;
    virtual ~AbstractBundlePart();

    /// The part's name.
    Expected<OpcPackaging::OpcPackagePartUri, ErrorCode2> uri() const;

    /// The part's bytes, read anew.
    Expected<ByteArray2, ErrorCode2> content() const;

    /// The package that the part belongs to; for an example in a barrel, the package of the example itself.
    OpcPackaging::OpcPackageRef& package() const noexcept { return m_package; }

protected:
    AbstractBundlePart(OpcPackaging::OpcPackagePart part, OpcPackaging::OpcPackageRef package) noexcept;

    const OpcPackaging::OpcPackagePart& part() const noexcept { return m_part; }

private:
    OpcPackaging::OpcPackagePart m_part;
    mutable OpcPackaging::OpcPackageRef m_package;
};

} // namespace Kelvaris::System::IO::Bundle
