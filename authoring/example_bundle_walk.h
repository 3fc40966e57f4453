#pragma once

#include "authoring/prototype_examples_entry.h"
#include "kelvaris/system/file_path2.h"

#include <vector>

namespace Authoring {

/// Finds the example bundles in `directory` and everywhere below it, links to directories excepted.
///
/// A regular file whose path ends in ".kvbdl.zip", in these letters, is taken for one. A file that cannot be opened as
/// an example bundle is passed over in silence, one without a title with a line in Qt's debug log.
///
/// @return  one entry for each bundle, in the order in which the file system gives them
/// @throws std::filesystem::filesystem_error  the directory, or one below it, cannot be read
/// @throws bad_expected_access<ErrorCode2>  a text of a bundle is not valid UTF-8
std::vector<PrototypeExamplesEntry> findExampleBundles(const Kelvaris::System::FilePath2& directory);

} // namespace Authoring
