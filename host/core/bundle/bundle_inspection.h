#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"

#include <cstdint>
#include <string>
#include <vector>

/// Bundles as the host's own tools see them: what the classes of bundles do not show. All text is UTF-8.
namespace Kelvaris::System::IO::Bundle {

struct BundleDescription
{
    std::string kind;         ///< as it stands in the file: "example"; empty for a package that does not say
    std::string kindInWords;  ///< "an example bundle"
    std::string manufacturer; ///< empty when none is named
    std::string primaryFile;  ///< the part's name; empty when there is none
};

/// @return  bundle 2 when the properties cannot be read, or what `OpcPackage` answers
KELVARIS_CORE_API Expected<BundleDescription, ErrorCode2> describeBundle(const OpcPackaging::OpcPackage& package);

struct PlannedFile
{
    std::string path; ///< below the directory
    std::uint64_t size = 0;
};

/// What `ContentBundle::unpack` would write below `directory`; checks the same, and writes nothing.
KELVARIS_CORE_API Expected<std::vector<PlannedFile>, ErrorCode2> plannedFiles(const OpcPackaging::OpcPackage& package,
                                                                              const FilePath2& directory);

struct CheckReport
{
    std::vector<ErrorCode2> faults;   ///< every rule of the package standard and of the bundle format that is broken
    std::vector<std::string> remarks; ///< a sentence for each thing that is unusual and put up with
};

/// Reads all of a file, packages in it too.
/// @return  the system's error, core 7 or opc 6 when there is nothing to check: no file that can be read, no ZIP file
KELVARIS_CORE_API Expected<CheckReport, ErrorCode2> checkBundle(const FilePath2& path);

} // namespace Kelvaris::System::IO::Bundle
