#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace Kelvaris::System {

/// An owning sequence of bytes.
class ByteArray2
{
public:
    ByteArray2() = default;
    explicit ByteArray2(std::vector<std::byte> bytes) noexcept : m_bytes{std::move(bytes)} {}

    std::size_t length() const noexcept { return m_bytes.size(); }
    const std::byte* data() const noexcept { return m_bytes.data(); }

private:
    std::vector<std::byte> m_bytes;
};

} // namespace Kelvaris::System
