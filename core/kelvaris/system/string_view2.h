#pragma once

#include <cstddef>

namespace Kelvaris::System {

/// A view of UTF-8 text that somebody else owns.
class StringView2
{
public:
    /// @param length  in bytes
    StringView2(const char8_t* data, std::size_t length) noexcept : m_data{data}, m_length{length} {}
    ~StringView2() = default;

    const char8_t* data() const noexcept { return m_data; }
    std::size_t length() const noexcept { return m_length; }

private:
    const char8_t* m_data;
    std::size_t m_length;
};

} // namespace Kelvaris::System
