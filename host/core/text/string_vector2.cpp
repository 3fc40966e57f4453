#include "kelvaris/system/string_vector2.h"

#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

#include <utility>

namespace Kelvaris::System {

StringVector2::~StringVector2() = default;

Expected<void, ErrorCode2> StringVector2::reserve(std::size_t count)
{
    return Text::withinMemory([&]() -> Expected<void, ErrorCode2> {
        m_texts.reserve(count);
        return {};
    });
}

Expected<void, ErrorCode2> StringVector2::push_back(String2&& text)
{
    return Text::withinMemory([&]() -> Expected<void, ErrorCode2> {
        m_texts.push_back(std::move(text));
        return {};
    });
}

Expected<String2, ErrorCode2> StringVector2::join(char8_t separator) const
{
    return Text::withinMemory([&]() -> Expected<String2, ErrorCode2> {
        std::u8string joined;
        for (const String2& text : m_texts) {
            if (&text != m_texts.data())
                joined.push_back(separator);
            joined.append(Text::view(text));
        }
        return Text::toString2(joined);
    });
}

} // namespace Kelvaris::System
