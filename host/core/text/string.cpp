#include "kelvaris/system/string.h"

#include "host/core/text/text_view.h"

namespace Kelvaris::System {

namespace {

std::u8string bytesOf(std::string_view text)
{
    return {reinterpret_cast<const char8_t*>(text.data()), text.size()};
}

} // namespace

String::String(const char* text) : m_text{bytesOf(text)} {}

String::String(const char8_t* text) : m_text{text} {}

String::String(const std::u8string& text) : m_text{text} {}

String::String(const std::string& text) : m_text{bytesOf(text)} {}

String::String(const std::wstring& text) : m_text{bytesOf(Text::toUtf8(text))} {}

String::~String() = default;

ByteArrayView String::byteView() const noexcept
{
    return {reinterpret_cast<const std::byte*>(m_text.data()), m_text.size()};
}

std::wstring String::toStdWString() const
{
    return Text::toWide(Text::narrow(m_text));
}

std::string String::toLegacyUtf8() const
{
    return std::string{Text::narrow(m_text)};
}

String& String::append(std::u8string_view text)
{
    m_text.append(text);
    return *this;
}

} // namespace Kelvaris::System
