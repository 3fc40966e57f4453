#include "kelvaris/system/string2.h"

#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/string_vector2.h"

namespace Kelvaris::System {

String2::String2(const char8_t* text) : m_text{text} {}

String2::~String2() = default;

String2& String2::assign(const char8_t* text, std::size_t length)
{
    m_text.assign(text, length);
    return *this;
}

Expected<StringVector2, ErrorCode2> String2::split(char8_t separator) const
{
    return Text::withinMemory([&]() -> Expected<StringVector2, ErrorCode2> {
        StringVector2 pieces;
        std::u8string_view rest = m_text;
        while (!rest.empty()) {
            const std::size_t end = rest.find(separator);
            const std::u8string_view piece = Text::trimmed(rest.substr(0, end));
            rest.remove_prefix(end == std::u8string_view::npos ? rest.size() : end + 1);
            if (piece.empty())
                continue;
            if (const auto added = pieces.push_back(Text::toString2(piece)); !added)
                return added.error();
        }
        return pieces;
    });
}

} // namespace Kelvaris::System
