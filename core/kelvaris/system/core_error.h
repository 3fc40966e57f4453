#pragma once

namespace Kelvaris::System {

/// The values of `core_error_category()`.
enum class CoreError : int {
    cancelled = 1,        ///< the user cancelled a dialog
    noFileName = 2,       ///< a path has no last component
    notALocalFile = 3,    ///< a URL denotes no local file
    invalidDateTime = 4,  ///< a text is no XML Schema dateTime
    invalidText = 5,      ///< bytes or wide characters are not valid Unicode
    invalidMediaType = 6, ///< a text is no media type
    notARegularFile = 7,  ///< a directory, a device or a pipe stands where a file is wanted
    fileTruncated = 8,    ///< a file is shorter than it was when it was opened
    malformedAddress = 9, ///< a URL cannot be decoded
};

} // namespace Kelvaris::System
