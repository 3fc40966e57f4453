#pragma once

#include "kelvaris/export.h"

#include <cstddef>

namespace Kelvaris::System {

/// A view of bytes that somebody else owns.
class KELVARIS_CORE_API ByteArrayView
{
public:
    ByteArrayView(const std::byte* data, std::size_t length) noexcept : m_data{data}, m_length{length} {}

    const std::byte* data() const noexcept { return m_data; }
    std::size_t length() const noexcept { return m_length; }

    /// Copies the first `size` bytes of the view to `target` and returns `target`.
    /// `size` is at most `length()`; `target` has room for it and does not overlap the view.
    void* memcpy(void* target, std::size_t size) const;

private:
    const std::byte* m_data;
    std::size_t m_length;
};

} // namespace Kelvaris::System
