#pragma once

#include <string>
#include <string_view>

namespace Authoring {

/// The last component of a path: what stands behind the last separator, empty for a path that ends in one.
///
/// Text only, nothing on disk is looked at. The grammar is that of Windows on every platform, since scripts and the
/// paths that they hold move between platforms: "/" and "\" both separate, "C:" is a drive, "\\server" a host.
std::wstring_view pathFilename(std::wstring_view path);

/// The path without its last component and the separators before that; the root stays. Separators are those of `path`.
/// Text only and in the grammar of Windows, as above.
std::wstring_view pathParent(std::wstring_view path);

} // namespace Authoring
