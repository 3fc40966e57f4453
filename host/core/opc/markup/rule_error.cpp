#include "host/core/opc/markup/rule_error.h"

#include "host/core/errors/make_error.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

// Long enough for any name that people make, short enough for a message box.
constexpr std::size_t shownBytes = 240;

std::string_view cut(std::string_view text)
{
    std::size_t length = shownBytes;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        --length;
    return text.substr(0, length);
}

} // namespace

std::string inQuotes(std::string_view text)
{
    if (text.size() <= shownBytes)
        return "'" + Text::displayed(text) + "'";
    return "'" + Text::displayed(cut(text)) + "...' (" + std::to_string(text.size()) + " bytes)";
}

std::string ruleReason(std::string_view rule, std::string_view what)
{
    std::string reason{"ISO/IEC 29500-2 "};
    reason.append(rule).append(": ").append(what);
    return reason;
}

ErrorCode2 ruleError(OpcError error, std::string_view subject, std::string_view rule, std::string_view what)
{
    return Errors::makeError(error, subject, ruleReason(rule, what));
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
