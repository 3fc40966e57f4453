#pragma once

#include <cstddef>
#include <cstdint>
#include <future>
#include <span>
#include <vector>

namespace Kelvaris::System::Disk {

/// Writes a file's pieces while the next ones are put together, each on a thread that lives no longer than that takes.
///
/// On a machine of one processor, and where no thread is to be had, the caller's thread does it.
class WriteBehind
{
public:
    WriteBehind() = default;
    WriteBehind(WriteBehind&&) noexcept = default;
    WriteBehind& operator=(WriteBehind&&) = delete;

    /// As `finish`.
    ~WriteBehind() { (void)finish(); }

    /// When the piece before is written, begins with the next one, and then has the system write to the disk what
    /// stands from `startFrom` to the end of the piece.
    ///
    /// @param file   stays open until the piece is written
    /// @param piece  taken; empty afterwards, with room for another
    /// @return  0, or the value of `errno` for the piece before; then nothing has begun
    int begin(int file, std::vector<std::byte>& piece, std::uint64_t offset, std::uint64_t startFrom);

    /// Waits until all is written. No thread runs afterwards.
    /// @return  0, or the value of `errno` for the last piece
    int finish() noexcept;

private:
    std::vector<std::byte> m_piece;
    std::future<int> m_written; ///< of `m_piece`
};

/// @return  0 when all bytes are written, otherwise the value of `errno`
int writeAll(int file, std::span<const std::byte> bytes, std::uint64_t offset) noexcept;

} // namespace Kelvaris::System::Disk
