#include "host/core/opc/markup/part_name.h"
#include "host/core/text/text_view.h"

#include <charconv>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

bool takeSuffix(std::string_view& text, std::string_view suffix) noexcept
{
    if (!Text::endsWithAsciiCase(text, suffix))
        return false;
    text.remove_suffix(suffix.size());
    return true;
}

} // namespace

std::optional<PieceName> pieceNameOf(std::string_view itemName) noexcept
{
    std::string_view rest = itemName;
    if (!takeSuffix(rest, ".piece"))
        return std::nullopt;
    PieceName piece;
    piece.isLast = takeSuffix(rest, ".last");
    const std::size_t bracket = rest.rfind("/[");
    if (bracket == std::string_view::npos || bracket == 0 || !takeSuffix(rest, "]"))
        return std::nullopt;
    const std::string_view digits = rest.substr(bracket + 2);
    if (digits.empty() || (digits.size() > 1 && digits.front() == '0'))
        return std::nullopt;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), piece.number);
    if (error != std::errc{} || end != digits.data() + digits.size())
        return std::nullopt;
    piece.itemName = rest.substr(0, bracket);
    return piece;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
