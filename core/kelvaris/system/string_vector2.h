#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/string2.h"

#include <cstddef>
#include <vector>

namespace Kelvaris::System {

/// An owning sequence of texts.
class KELVARIS_CORE_API StringVector2
{
public:
    StringVector2() = default;
    StringVector2(const StringVector2&) = default;
    StringVector2(StringVector2&&) noexcept = default;
    StringVector2& operator=(const StringVector2&) = default;
    StringVector2& operator=(StringVector2&&) noexcept = default;
    ~StringVector2();

    std::size_t size() const noexcept { return m_texts.size(); }

    /// The first text; the others follow it. Valid until the next change.
    const String2* data() const noexcept { return m_texts.data(); }

    /// @return  generic ENOMEM when there is no room
    Expected<void, ErrorCode2> reserve(std::size_t count);

    /// @return  generic ENOMEM when there is no room
    Expected<void, ErrorCode2> push_back(String2&& text);

    /// The texts in order with `separator` between them; empty for no text.
    /// @return  generic ENOMEM when there is no room
    Expected<String2, ErrorCode2> join(char8_t separator) const;

    friend bool operator==(const StringVector2&, const StringVector2&) = default;

private:
    std::vector<String2> m_texts;
};

} // namespace Kelvaris::System
