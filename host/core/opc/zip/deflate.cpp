#include "host/core/opc/zip/deflate.h"

#include <isa-l.h>
#include <libdeflate.h>

#include <cassert>
#include <new>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

constexpr int probeLevel = 1;
constexpr int fastLevel = 1;
constexpr int normalLevel = 6;

/// 10 to 12 cost many times as much for a hundredth of the bytes.
constexpr int maximumLevel = 9;

constexpr std::size_t outputSize = std::size_t{256} << 10;

} // namespace

void BlockDeflater::Deleter::operator()(libdeflate_compressor* compressor) const noexcept
{
    libdeflate_free_compressor(compressor);
}

BlockDeflater::BlockDeflater() = default;
BlockDeflater::~BlockDeflater() = default;

libdeflate_compressor* BlockDeflater::prepared(Compressor& compressor, int level)
{
    if (!compressor)
        compressor.reset(libdeflate_alloc_compressor(level));
    if (!compressor)
        throw std::bad_alloc{};
    return compressor.get();
}

std::vector<std::byte> BlockDeflater::deflate(std::span<const std::byte> bytes, Effort effort)
{
    if (effort == Effort::store || bytes.empty())
        return {};
    libdeflate_compressor* compressor = effort == Effort::fast      ? prepared(m_fast, fastLevel)
                                        : effort == Effort::maximum ? prepared(m_maximum, maximumLevel)
                                                                    : prepared(m_normal, normalLevel);
    const std::size_t room = bytes.size() - 1; // what needs all of it does not shrink
    const auto output = std::make_unique_for_overwrite<std::byte[]>(room);
    const std::size_t size = libdeflate_deflate_compress(compressor, bytes.data(), bytes.size(), output.get(), room);
    return {output.get(), output.get() + size};
}

std::size_t BlockDeflater::probe(std::span<const std::byte> sample)
{
    const auto output = std::make_unique_for_overwrite<std::byte[]>(sample.size());
    const std::size_t size = libdeflate_deflate_compress(prepared(m_probe, probeLevel), sample.data(), sample.size(),
                                                         output.get(), sample.size());
    return size == 0 ? sample.size() : size;
}

StreamDeflater::StreamDeflater(Effort effort, const Disk::ByteSink& sink)
    : m_sink{sink}, m_stream{std::make_unique<isal_zstream>()},
      m_tables(effort == Effort::fast ? ISAL_DEF_LVL1_DEFAULT : ISAL_DEF_LVL3_DEFAULT), m_output(outputSize)
{
    isal_deflate_init(m_stream.get());
    m_stream->level = effort == Effort::fast ? 1 : 3;
    m_stream->level_buf = reinterpret_cast<std::uint8_t*>(m_tables.data());
    m_stream->level_buf_size = static_cast<std::uint32_t>(m_tables.size());
}

StreamDeflater::~StreamDeflater() = default;

Expected<void, ErrorCode2> StreamDeflater::run(std::span<const std::byte> bytes, bool isLast)
{
    // the library takes a pointer to bytes that it does not change
    m_stream->next_in = reinterpret_cast<std::uint8_t*>(const_cast<std::byte*>(bytes.data()));
    m_stream->avail_in = static_cast<std::uint32_t>(bytes.size());
    m_stream->end_of_stream = isLast ? 1 : 0;
    do {
        m_stream->next_out = reinterpret_cast<std::uint8_t*>(m_output.data());
        m_stream->avail_out = static_cast<std::uint32_t>(m_output.size());
        [[maybe_unused]] const int result = isal_deflate(m_stream.get());
        assert(result == COMP_OK); // only wrong arguments are answered otherwise
        const auto made = std::span<const std::byte>{m_output}.first(m_output.size() - m_stream->avail_out);
        if (made.empty())
            continue;
        if (auto sunk = m_sink(made); !sunk)
            return sunk;
    } while (m_stream->avail_out == 0 || m_stream->avail_in > 0);
    return {};
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
