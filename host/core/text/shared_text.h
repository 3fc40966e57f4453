#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace Kelvaris::System::Text {

/// A text that stands in memory once, however many hold it: what a package says of each of its parts is often the same.
class SharedText
{
public:
    SharedText() = default;

    explicit SharedText(std::string_view text) : SharedText{SharedText{}, text} {}

    /// The same text as `known` where they are equal.
    SharedText(const SharedText& known, std::string_view text) : m_text{known.m_text}, m_size{known.m_size}
    {
        if (std::string_view{known} != text)
            *this = copyOf(text);
    }

    operator std::string_view() const noexcept { return {m_text.get(), m_size}; }

    bool operator==(const SharedText& other) const noexcept
    {
        return std::string_view{*this} == std::string_view{other};
    }

    bool operator==(std::string_view other) const noexcept { return std::string_view{*this} == other; }

    /// Whether there is but one text, so that what was found out of the other holds for this one.
    bool isSharedWith(const SharedText& other) const noexcept { return m_text != nullptr && m_text == other.m_text; }

private:
    static SharedText copyOf(std::string_view text)
    {
        SharedText copy;
        const auto characters = std::make_shared_for_overwrite<char[]>(text.size());
        std::ranges::copy(text, characters.get());
        copy.m_text = characters;
        copy.m_size = text.size();
        return copy;
    }

    std::shared_ptr<const char[]> m_text;
    std::size_t m_size = 0;
};

} // namespace Kelvaris::System::Text
