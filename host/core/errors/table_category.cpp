#include "host/core/errors/table_category.h"

#include "host/core/text/text_view.h"

#include <algorithm>
#include <string>

namespace Kelvaris::System::Errors {

TableCategory::TableCategory(const char* name, std::span<const Sentence> sentences) noexcept
    : m_name{name}, m_sentences{sentences}
{
}

String2 TableCategory::message(int value) const
{
    const auto found = std::ranges::find(m_sentences, value, &Sentence::value);
    if (found != m_sentences.end())
        return found->text;
    return Text::toString2("unknown " + std::string{m_name} + " error " + std::to_string(value));
}

std::u8string_view TableCategory::advice(int value) const noexcept
{
    const auto found = std::ranges::find(m_sentences, value, &Sentence::value);
    return found == m_sentences.end() ? std::u8string_view{} : found->advice;
}

} // namespace Kelvaris::System::Errors
