#pragma once

#include "kelvaris/system/error_category2.h"
#include "kelvaris/system/string2.h"

#include <span>
#include <string_view>

namespace Kelvaris::System::Errors {

/// A code of a domain with the sentence for it, without a full stop, since it may stand between a subject and a reason;
/// and what somebody can do about it, which stands behind both.
struct Sentence
{
    int value;
    const char8_t* text;
    const char8_t* advice;
};

/// A domain whose sentences stand in one table.
class TableCategory final : public ErrorCategory2
{
public:
    /// @param name       one word, NUL-terminated; outlives the category, as the table does
    TableCategory(const char* name, std::span<const Sentence> sentences) noexcept;

    const char* name() const noexcept override { return m_name; }
    String2 message(int value) const override;

    /// Empty for a value that the table does not hold.
    std::u8string_view advice(int value) const noexcept;

private:
    const char* m_name;
    std::span<const Sentence> m_sentences;
};

template <class Enumerator>
constexpr Sentence sentence(Enumerator value, const char8_t* text, const char8_t* advice)
{
    return {static_cast<int>(value), text, advice};
}

} // namespace Kelvaris::System::Errors
