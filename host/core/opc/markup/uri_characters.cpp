#include "host/core/opc/markup/uri_characters.h"

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

/// -1 for what is no hexadecimal digit.
int hexValue(char digit) noexcept
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char letter = static_cast<char>(digit | 0x20);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

} // namespace

int percentDecoded(std::string_view text) noexcept
{
    if (text.size() < 3 || text[0] != '%')
        return -1;
    const int high = hexValue(text[1]);
    const int low = hexValue(text[2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

void appendPercentEncoded(std::string& text, char byte)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    text += '%';
    text += digits[value >> 4U];
    text += digits[value & 0xFU];
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
