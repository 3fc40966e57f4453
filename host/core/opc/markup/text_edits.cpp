#include "host/core/opc/markup/text_edits.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

void TextEdits::replace(TextRange range, std::string text)
{
    m_edits.push_back({range, std::move(text)});
}

void TextEdits::insertBeforeEnd(TextRange endTag, std::string_view name, std::string text)
{
    if (!endTag.isEmpty()) {
        insert(endTag.begin, std::move(text));
        return;
    }
    replace({endTag.begin - 2, endTag.begin}, ">" + text + "</" + std::string{name} + ">");
}

std::string TextEdits::appliedTo(std::string_view text) const
{
    std::vector<const Edit*> inOrder(m_edits.size());
    std::transform(m_edits.begin(), m_edits.end(), inOrder.begin(), [](const Edit& edit) { return &edit; });
    std::stable_sort(inOrder.begin(), inOrder.end(),
                     [](const Edit* left, const Edit* right) { return left->range.begin < right->range.begin; });
    std::string result;
    result.reserve(std::accumulate(m_edits.begin(), m_edits.end(), text.size(),
                                   [](std::size_t sum, const Edit& edit) { return sum + edit.text.size(); }));
    std::size_t at = 0;
    for (const Edit* edit : inOrder) {
        assert(edit->range.begin >= at);
        result.append(text, at, edit->range.begin - at).append(edit->text);
        at = edit->range.end;
    }
    return result.append(text, at, std::string_view::npos);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
