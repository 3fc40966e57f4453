#include "kelvaris/system/file_path2.h"

#include "host/core/errors/make_error.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

#include <filesystem>
#include <string_view>

namespace Kelvaris::System {

namespace {

constexpr auto preferredSeparator = static_cast<wchar_t>(std::filesystem::path::preferred_separator);

/// "/" everywhere, and the platform's own.
constexpr wchar_t separators[] = {L'/', preferredSeparator, L'\0'};

} // namespace

FilePath2::FilePath2(const wchar_t* text, std::size_t length) : m_text(text, length) {}

FilePath2::FilePath2(const char8_t* text, std::size_t length)
    : m_text{Text::toWide(Text::narrow(std::u8string_view{text, length}))}
{
}

FilePath2::FilePath2(const String2& text) : FilePath2{text.data(), text.length()} {}

FilePath2::~FilePath2() = default;

FilePath2& FilePath2::operator/=(const FilePath2& component)
{
    if (m_text.empty())
        return *this = component;
    const std::size_t begin = component.m_text.find_first_not_of(separators);
    if (begin == std::wstring::npos)
        return *this;
    // a copy, since the component may be this path itself
    const std::wstring relative = component.m_text.substr(begin);
    if (std::wstring_view{separators}.find(m_text.back()) == std::wstring_view::npos)
        m_text += preferredSeparator;
    m_text += relative;
    return *this;
}

Expected<FilePath2, ErrorCode2> FilePath2::filename() const
{
    const std::size_t separator = m_text.find_last_of(separators);
    std::wstring_view name = m_text;
    if (separator != std::wstring::npos)
        name.remove_prefix(separator + 1);
    return Text::withinMemory([&]() -> Expected<FilePath2, ErrorCode2> {
        if (name.empty())
            return Errors::makeError(CoreError::noFileName, Text::displayed(m_text));
        return FilePath2{name.data(), name.size()};
    });
}

} // namespace Kelvaris::System
