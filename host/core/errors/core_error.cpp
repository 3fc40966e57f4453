#include "kelvaris/system/core_error.h"

#include "host/core/errors/table_category.h"

namespace Kelvaris::System {

namespace {

using Errors::sentence;

constexpr Errors::Sentence sentences[] = {
    sentence(CoreError::cancelled, u8"cancelled by the user", u8"start again when you want it after all"),
    sentence(CoreError::noFileName, u8"the path has no file name", u8"put a name at the end of the path"),
    sentence(CoreError::notALocalFile, u8"the address is not that of a local file",
             u8"copy the file to this computer first"),
    sentence(CoreError::invalidDateTime, u8"not a date and time that exists", u8"write it as 2025-12-31T23:59:59Z"),
    sentence(CoreError::invalidText, u8"not valid Unicode text", u8"write the text in UTF-8"),
    sentence(CoreError::invalidMediaType, u8"not a media type", u8"write it as \"type/subtype\", without blanks"),
    sentence(CoreError::notARegularFile, u8"not a regular file", u8"choose a file, not a directory or a device"),
    sentence(CoreError::fileTruncated, u8"the file became shorter while it was open",
             u8"try again when nothing writes to it any more"),
    sentence(CoreError::malformedAddress, u8"the address is malformed",
             u8"write a \"%\" as \"%25\", and a \"/\" as it is"),
};

} // namespace

const ErrorCategory2& core_error_category()
{
    static const Errors::TableCategory category{"core", sentences};
    return category;
}

} // namespace Kelvaris::System
