#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/string_vector2.h"

#include <vector>

namespace Authoring {

/// The texts that describe an example; an empty one leaves the property out.
struct ExampleTexts
{
    Kelvaris::System::String2 title;
    Kelvaris::System::String2 description;
    Kelvaris::System::String2 manufacturer;
    Kelvaris::System::StringVector2 keywords;
};

/// Packs a design and the files that go with it into one example bundle.
///
/// The files stand under "content" in the package, at their places relative to the first one, which becomes the
/// primary file. All places are worked out before any file is read.
///
/// @param files   the primary file, then the others
/// @param output  used as it is: no extension is appended
/// @return  what writing the bundle gave
/// @throws RuntimeError, std::filesystem::filesystem_error  as `bundlePartUris`
/// @throws bad_expected_access<ErrorCode2>  a file cannot be added; nothing was written
Kelvaris::System::Expected<void, Kelvaris::System::ErrorCode2>
createExample(const std::vector<Kelvaris::System::FilePath2>& files, const Kelvaris::System::FilePath2& output,
              const ExampleTexts& texts);

} // namespace Authoring
