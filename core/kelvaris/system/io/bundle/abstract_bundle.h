#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/string_vector2.h"

namespace Kelvaris::System::IO::Bundle {

/// A package with a purpose: the base of all bundles. It owns the package.
class KELVARIS_CORE_API AbstractBundle
{
public:
    AbstractBundle(const AbstractBundle&) = delete;
    AbstractBundle(AbstractBundle&&) noexcept;
    AbstractBundle& operator=(const AbstractBundle&) = delete;
    AbstractBundle& operator=(AbstractBundle&&) noexcept;
    virtual ~AbstractBundle();

    OpcPackaging::OpcPackage& package() noexcept { return m_package; }
    const OpcPackaging::OpcPackage& package() const noexcept { return m_package; }

    /// The core property of that name; opc 21 when the bundle has none.
    Expected<String2, ErrorCode2> title() const;
    Expected<String2, ErrorCode2> description() const;
    Expected<StringVector2, ErrorCode2> keywords() const;

    /// Set the core property in memory; an empty value removes it.
    Expected<void, ErrorCode2> setTitle(const String2& title);
    Expected<void, ErrorCode2> setDescription(const String2& description);
    Expected<void, ErrorCode2> setKeywords(const StringVector2& keywords);

    /// The part that a relationship leads to; opc 1 when there is none, opc 22 when the target lies outside.
    Expected<OpcPackaging::OpcPackagePart, ErrorCode2>
    part(const OpcPackaging::OpcPackageRelationship& relationship) const;

    /// Saves the whole bundle to `path`, also when that is the file it was opened from.
    ///
    /// The file is replaced in one step after all bytes have reached the disk: whatever happens, the old file or the
    /// new one is there, whole. The same bundle gives the same bytes each time.
    ///
    /// @return  the system's error with the path; the file and the bundle in memory are as they were then
    Expected<void, ErrorCode2> writeToFile(const FilePath2& path);

protected:
    explicit AbstractBundle(OpcPackaging::OpcPackage package) noexcept;

private:
    OpcPackaging::OpcPackage m_package;
};

} // namespace Kelvaris::System::IO::Bundle
