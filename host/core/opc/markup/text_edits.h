#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// A stretch of a text, in bytes; `end` is one past the last.
struct TextRange
{
    std::size_t begin = 0;
    std::size_t end = 0;

    bool isEmpty() const noexcept { return begin == end; }
    std::string_view of(std::string_view text) const noexcept { return text.substr(begin, end - begin); }
};

/// Changes to a text that leave all the rest of it as it stands, byte for byte.
class TextEdits
{
public:
    /// Ranges must not overlap; an empty range inserts. Several insertions at one place keep their order.
    void replace(TextRange range, std::string text);
    void erase(TextRange range) { replace(range, {}); }
    void insert(std::size_t position, std::string text) { replace({position, position}, std::move(text)); }

    /// Inserts at the end of an element's content; "<a/>" becomes "<a>...</a>".
    /// @param endTag  see `XmlElement::endTag`
    /// @param name    the element's, as it is written
    void insertBeforeEnd(TextRange endTag, std::string_view name, std::string text);

    std::string appliedTo(std::string_view text) const;

private:
    struct Edit
    {
        TextRange range;
        std::string text;
    };

    std::vector<Edit> m_edits;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
