#pragma once

#include "kelvaris/export.h"

#include <utility>

namespace Kelvaris::System::Disk {

/// Owns an open file of the system.
class KELVARIS_CORE_API FileHandle
{
public:
    FileHandle() = default;

    /// Takes over `descriptor`; a negative one means "none".
    explicit FileHandle(int descriptor) noexcept : m_descriptor{descriptor} {}

    FileHandle(FileHandle&& other) noexcept : m_descriptor{std::exchange(other.m_descriptor, -1)} {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileHandle() { reset(); }

    explicit operator bool() const noexcept { return m_descriptor >= 0; }
    int get() const noexcept { return m_descriptor; }

    void reset() noexcept;

private:
    int m_descriptor = -1;
};

} // namespace Kelvaris::System::Disk
