#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Bench {

struct PlainEntry
{
    std::string_view name; ///< valid as long as the archive
    std::uint64_t size = 0;
    std::uint64_t compressedSize = 0;
    std::uint64_t headerOffset = 0;
    bool isDeflated = false;
};

/// A ZIP file below 4 GiB without a comment, read with no check of anything: the limit that a reader is measured
/// against, and of no use for files from elsewhere.
class PlainZip
{
public:
    /// @param file    stays open as long as this
    /// @param offset  where the archive begins in it
    PlainZip(int file, std::uint64_t offset, std::uint64_t size);

    const std::vector<PlainEntry>& entries() const noexcept { return m_entries; }

    /// Where the bytes of an entry begin in the file.
    std::uint64_t dataOffset(const PlainEntry& entry) const;

    std::string read(const PlainEntry& entry) const;
    std::string read(std::string_view name) const;

private:
    int m_file;
    std::uint64_t m_offset;
    std::string m_directory;
    std::vector<PlainEntry> m_entries;
};

} // namespace Bench
