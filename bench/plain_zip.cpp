#include "bench/plain_zip.h"

#include <libdeflate.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

namespace Bench {

namespace {

constexpr std::size_t endRecordSize = 22;
constexpr std::size_t directoryHeaderSize = 46;
constexpr std::size_t localHeaderSize = 30;

std::uint64_t number(std::string_view bytes, std::size_t offset, std::size_t width)
{
    std::uint64_t value = 0;
    for (std::size_t i = width; i > 0; --i)
        value = value << 8U | static_cast<unsigned char>(bytes[offset + i - 1]);
    return value;
}

std::string readAt(int file, std::uint64_t offset, std::size_t size)
{
    std::string bytes(size, '\0');
    if (::pread(file, bytes.data(), size, static_cast<off_t>(offset)) != static_cast<ssize_t>(size))
        bytes.assign(size, '\0');
    return bytes;
}

struct Deleter
{
    void operator()(libdeflate_decompressor* decompressor) const { libdeflate_free_decompressor(decompressor); }
};

} // namespace

PlainZip::PlainZip(int file, std::uint64_t offset, std::uint64_t size) : m_file{file}, m_offset{offset}
{
    const std::string end = readAt(file, offset + size - endRecordSize, endRecordSize);
    m_directory = readAt(file, offset + number(end, 16, 4), number(end, 12, 4));
    m_entries.reserve(number(end, 10, 2));
    std::string_view rest = m_directory;
    while (rest.size() >= directoryHeaderSize) {
        const std::size_t nameSize = number(rest, 28, 2);
        m_entries.push_back({.name = rest.substr(directoryHeaderSize, nameSize),
                             .size = number(rest, 24, 4),
                             .compressedSize = number(rest, 20, 4),
                             .headerOffset = number(rest, 42, 4),
                             .isDeflated = number(rest, 10, 2) != 0});
        rest.remove_prefix(directoryHeaderSize + nameSize + number(rest, 30, 2) + number(rest, 32, 2));
    }
}

std::uint64_t PlainZip::dataOffset(const PlainEntry& entry) const
{
    const std::string header = readAt(m_file, m_offset + entry.headerOffset, localHeaderSize);
    return m_offset + entry.headerOffset + localHeaderSize + number(header, 26, 2) + number(header, 28, 2);
}

std::string PlainZip::read(const PlainEntry& entry) const
{
    std::string packed = readAt(m_file, dataOffset(entry), entry.compressedSize);
    if (!entry.isDeflated)
        return packed;
    thread_local const std::unique_ptr<libdeflate_decompressor, Deleter> decompressor{libdeflate_alloc_decompressor()};
    std::string bytes(entry.size, '\0');
    libdeflate_deflate_decompress(decompressor.get(), packed.data(), packed.size(), bytes.data(), bytes.size(),
                                  nullptr);
    return bytes;
}

std::string PlainZip::read(std::string_view name) const
{
    const auto entry = std::ranges::find(m_entries, name, &PlainEntry::name);
    return entry == m_entries.end() ? std::string{} : read(*entry);
}

} // namespace Bench
