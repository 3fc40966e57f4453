#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part.h"

/// The path at which a tree shows a part: relative, decoded, "content/a b.txt" for "/content/a%20b.txt".
///
/// @return  what `OpcPackagePart::uri`, `OpcPackageUri::toUri` or `Url::toLocalFile` answers when one of them fails
Kelvaris::System::Expected<Kelvaris::System::FilePath2, Kelvaris::System::ErrorCode2>
localPath(const Kelvaris::System::IO::OpcPackaging::OpcPackagePart& part);
