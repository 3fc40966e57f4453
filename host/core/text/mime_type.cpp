#include "kelvaris/system/io/mime_type.h"

#include "host/core/text/file_kinds.h"
#include "host/core/text/text_view.h"

#include <algorithm>

namespace Kelvaris::System::IO {

namespace {

std::string_view mediaTypeOf(FileType type)
{
    const auto kinds = Text::fileKinds();
    const auto kind = std::ranges::find(kinds, type, &Text::FileKind::type);
    return kind == kinds.end() ? "application/octet-stream" : kind->mediaType;
}

} // namespace

MIMEType::MIMEType(FileType type) : m_text{Text::toString2(mediaTypeOf(type))} {}

MIMEType::MIMEType(const String2& text) : m_text{text} {}

MIMEType::~MIMEType() = default;

} // namespace Kelvaris::System::IO
