#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_enums.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"

#include <memory>

namespace Kelvaris::System::IO::OpcPackaging {

namespace detail {
class PackageData;
struct PackageAccess;
struct PartRecord;
} // namespace detail

/// A part of a package. A handle: it keeps alive what it reads from, so that it stays usable after its package object
/// is gone.
class KELVARIS_CORE_API OpcPackagePart
{
public:
    OpcPackagePart(const OpcPackagePart&);
    OpcPackagePart(OpcPackagePart&&) noexcept;
    OpcPackagePart& operator=(const OpcPackagePart&);
    OpcPackagePart& operator=(OpcPackagePart&&) noexcept;
    ~OpcPackagePart();

    /// The part's name, in the letters in which it stands in the package.
    Expected<OpcPackagePartUri, ErrorCode2> uri() const;

    /// Fills the part with a file's bytes, which are taken in now: later changes to the file do not matter.
    ///
    /// @param source  a regular file, read to its end
    /// @return  the system's error, or core 7, when `source` cannot be read; the part is as it was then
    Expected<void, ErrorCode2> writeContentFromFile(const FilePath2& source, OpcPackagePartWriteContentMode mode);

private:
    friend struct detail::PackageAccess;

    OpcPackagePart(std::shared_ptr<detail::PackageData> package, std::shared_ptr<detail::PartRecord> record) noexcept;

    std::shared_ptr<detail::PackageData> m_package;
    std::shared_ptr<detail::PartRecord> m_record;
};

} // namespace Kelvaris::System::IO::OpcPackaging
