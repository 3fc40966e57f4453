#include "host/core/opc/zip/packed_data.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/limits.h"

#include <isa-l.h>
#include <libdeflate.h>

#include <algorithm>
#include <memory>
#include <new>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

/// Up to here one call of libdeflate, which is the fastest there is; beyond, pieces.
constexpr std::uint64_t wholeSize = std::uint64_t{4} << 20;
constexpr std::uint64_t pieceSize = std::uint64_t{256} << 10;

struct DecompressorDeleter
{
    void operator()(libdeflate_decompressor* decompressor) const noexcept
    {
        libdeflate_free_decompressor(decompressor);
    }
};

libdeflate_decompressor* decompressor()
{
    thread_local std::unique_ptr<libdeflate_decompressor, DecompressorDeleter> instance;
    if (!instance) // for the first time, or after a time without memory
        instance.reset(libdeflate_alloc_decompressor());
    if (!instance)
        throw std::bad_alloc{};
    return instance.get();
}

ErrorCode2 damaged(const PackedData& data, std::string_view reason)
{
    return Errors::makeError(OpcError::damagedEntry, data.subject(), reason);
}

Expected<void, ErrorCode2> checkRatio(const PackedData& data)
{
    if (data.size <= Limits::inflateGrace || data.size / Limits::inflateRatio <= data.compressedSize)
        return {};
    return Errors::makeError(OpcError::limitExceeded, data.subject(), "it inflates to more than 1000 times its size");
}

Expected<void, ErrorCode2> checkCrc(const PackedData& data, std::uint32_t crc)
{
    if (crc == data.crc)
        return {};
    return Errors::makeError(OpcError::checksumMismatch, data.subject(), "CRC-32 (ZIP application note 4.4.7)");
}

Expected<void, ErrorCode2> inflateWhole(const PackedData& data, std::span<const std::byte> compressed,
                                        std::span<std::byte> target)
{
    std::size_t used = 0;
    std::size_t made = 0;
    const auto result = libdeflate_deflate_decompress_ex(decompressor(), compressed.data(), compressed.size(),
                                                         target.data(), target.size(), &used, &made);
    if (result == LIBDEFLATE_BAD_DATA)
        return damaged(data, "the compressed bytes are no deflate stream (RFC 1951)");
    if (result != LIBDEFLATE_SUCCESS || made != target.size())
        return damaged(data,
                       "the compressed bytes do not inflate to the size that is told (ZIP application note 4.4.9)");
    if (used != compressed.size())
        return damaged(data, "bytes follow the end of the deflate stream (RFC 1951)");
    return {};
}

/// Reads a stretch piece by piece.
template <class Consumer>
Expected<void, ErrorCode2> readPieces(const PackedData& data, Consumer consume)
{
    std::vector<std::byte> buffer(std::min(data.compressedSize, pieceSize));
    for (std::uint64_t done = 0; done < data.compressedSize;) {
        const auto piece = std::span{buffer}.first(std::min(data.compressedSize - done, pieceSize));
        auto consumed = data.source.readAt(data.offset + done, piece).andThen([&] { return consume(piece); });
        if (!consumed)
            return consumed;
        done += piece.size();
    }
    return {};
}

Expected<void, ErrorCode2> streamStored(const PackedData& data, const Disk::ByteSink& sink)
{
    std::uint32_t crc = 0;
    auto streamed = readPieces(data, [&](std::span<const std::byte> piece) {
        crc = libdeflate_crc32(crc, piece.data(), piece.size());
        return sink(piece);
    });
    return streamed.andThen([&] { return checkCrc(data, crc); });
}

/// Inflates in pieces with isa-l.
class Inflater
{
public:
    Inflater(const PackedData& data, const Disk::ByteSink& sink)
        : m_data{data}, m_sink{sink}, m_state{std::make_unique<inflate_state>()}, m_output(pieceSize)
    {
        isal_inflate_init(m_state.get());
    }

    Expected<void, ErrorCode2> feed(std::span<std::byte> piece)
    {
        if (isEnded())
            return damaged(m_data, "bytes follow the end of the deflate stream (RFC 1951)");
        m_state->next_in = reinterpret_cast<std::uint8_t*>(piece.data());
        m_state->avail_in = static_cast<std::uint32_t>(piece.size());
        do {
            if (auto stepped = step(); !stepped)
                return stepped;
        } while (!isEnded() && (m_state->avail_in > 0 || m_state->avail_out == 0));
        if (isEnded() && unusedBytes() > 0)
            return damaged(m_data, "bytes follow the end of the deflate stream (RFC 1951)");
        return {};
    }

    Expected<void, ErrorCode2> finish() const
    {
        if (!isEnded() || m_made != m_data.size)
            return damaged(m_data,
                           "the compressed bytes do not inflate to the size that is told (ZIP application note 4.4.9)");
        return checkCrc(m_data, m_crc);
    }

private:
    bool isEnded() const noexcept { return m_state->block_state == ISAL_BLOCK_FINISH; }

    /// The library reads ahead: whole bytes in its bit buffer have not been used either.
    std::uint32_t unusedBytes() const noexcept
    {
        return m_state->avail_in + static_cast<std::uint32_t>(m_state->read_in_length) / 8U;
    }

    Expected<void, ErrorCode2> step()
    {
        m_state->next_out = reinterpret_cast<std::uint8_t*>(m_output.data());
        m_state->avail_out = static_cast<std::uint32_t>(m_output.size());
        const std::uint32_t inputBefore = m_state->avail_in;
        const int result = isal_inflate(m_state.get());
        if (result != ISAL_DECOMP_OK && result != ISAL_END_INPUT && result != ISAL_OUT_OVERFLOW)
            return damaged(m_data, "the compressed bytes are no deflate stream (RFC 1951)");
        const auto made = std::span<const std::byte>{m_output}.first(m_output.size() - m_state->avail_out);
        if (made.empty() && m_state->avail_in == inputBefore && inputBefore > 0 && !isEnded())
            return damaged(m_data, "the compressed bytes are no deflate stream (RFC 1951)");
        if (made.size() > m_data.size - m_made)
            return damaged(m_data,
                           "the compressed bytes do not inflate to the size that is told (ZIP application note 4.4.9)");
        m_made += made.size();
        m_crc = libdeflate_crc32(m_crc, made.data(), made.size());
        return made.empty() ? Expected<void, ErrorCode2>{} : m_sink(made);
    }

    const PackedData& m_data;
    const Disk::ByteSink& m_sink;
    std::unique_ptr<inflate_state> m_state;
    std::vector<std::byte> m_output;
    std::uint64_t m_made = 0;
    std::uint32_t m_crc = 0;
};

} // namespace

Expected<std::vector<std::byte>, ErrorCode2> unpackBytes(const PackedData& data, std::span<const std::byte> compressed)
{
    if (data.size > Limits::partInMemory)
        return Errors::makeError(OpcError::limitExceeded, data.subject(), "it is too large for memory");
    if (auto checked = checkRatio(data); !checked)
        return checked.error();
    std::vector<std::byte> bytes;
    if (data.method == Method::stored) {
        bytes.assign(compressed.begin(), compressed.end());
    } else {
        bytes.resize(data.size);
        if (auto inflated = inflateWhole(data, compressed, bytes); !inflated)
            return inflated.error();
    }
    if (auto checked = checkCrc(data, libdeflate_crc32(0, bytes.data(), bytes.size())); !checked)
        return checked.error();
    return bytes;
}

Expected<std::vector<std::byte>, ErrorCode2> readPacked(const PackedData& data)
{
    if (std::max(data.size, data.compressedSize) > Limits::partInMemory)
        return Errors::makeError(OpcError::limitExceeded, data.subject(), "it is too large for memory");
    std::vector<std::byte> compressed(data.compressedSize);
    if (auto done = data.source.readAt(data.offset, compressed); !done)
        return done.error();
    return unpackBytes(data, compressed);
}

Expected<void, ErrorCode2> streamPacked(const PackedData& data, const Disk::ByteSink& sink)
{
    if (data.method == Method::stored)
        return streamStored(data, sink);
    if (auto checked = checkRatio(data); !checked)
        return checked;
    if (std::max(data.size, data.compressedSize) <= wholeSize) {
        const auto bytes = readPacked(data);
        if (!bytes)
            return bytes.error();
        return bytes->empty() ? Expected<void, ErrorCode2>{} : sink(*bytes);
    }
    Inflater inflater{data, sink};
    auto inflated = readPieces(data, [&](std::span<std::byte> piece) { return inflater.feed(piece); });
    return inflated.andThen([&] { return inflater.finish(); });
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
