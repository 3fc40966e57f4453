#include "kelvaris/system/core_error.h"

#include "host/core/errors/table_category.h"

namespace Kelvaris::System {

namespace {

using Errors::sentence;

constexpr Errors::Sentence sentences[] = {
    sentence(CoreError::cancelled, u8"cancelled by the user"),
    sentence(CoreError::noFileName, u8"the path has no file name"),
    sentence(CoreError::notALocalFile, u8"the address is not that of a local file"),
    sentence(CoreError::invalidDateTime, u8"not a date and time that exists"),
    sentence(CoreError::invalidText, u8"not valid Unicode text"),
    sentence(CoreError::invalidMediaType, u8"not a media type"),
    sentence(CoreError::notARegularFile, u8"not a regular file"),
    sentence(CoreError::fileTruncated, u8"the file became shorter while it was open"),
};

} // namespace

const ErrorCategory2& core_error_category()
{
    static const Errors::TableCategory category{"core", sentences};
    return category;
}

} // namespace Kelvaris::System
