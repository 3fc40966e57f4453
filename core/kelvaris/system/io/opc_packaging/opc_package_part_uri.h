#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package_uri.h"

namespace Kelvaris::System::IO::OpcPackaging {

/// The name of a part (ISO/IEC 29500-2, part names).
///
/// Text that begins with "/" is a part name as it stands, percent-encoded already: what `toString` gave finds the same
/// part again. Any other text is a raw path: "\" and "/" both separate, "." segments are dropped, and each segment is
/// percent-encoded in full, "%" included.
///
/// A name that cannot become a valid part name (an empty or ".." segment, a dot at the end of a segment, a control
/// character, text that is not valid Unicode) is carried along, and every operation on it answers opc 3 with the name.
class KELVARIS_CORE_API OpcPackagePartUri : public OpcPackageUri
{
public:
    /// @param text  NUL-terminated, not null
    explicit OpcPackagePartUri(const wchar_t* text);

    /// @param path  relative; its components become the segments, in the grammar of the platform's paths
    explicit OpcPackagePartUri(const FilePath2& path);

    /// For the host's own use: UTF-8 text by the rule of the wide one.
    explicit OpcPackagePartUri(const String2& text);
};

} // namespace Kelvaris::System::IO::OpcPackaging
