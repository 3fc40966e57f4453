#pragma once

#include "host/core/opc/zip/effort.h"
#include "host/core/paths/disk/byte_sink.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

struct libdeflate_compressor;
struct isal_zstream;

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// Compresses what fits one buffer. Keeps its tables for the next time.
class BlockDeflater
{
public:
    BlockDeflater();
    ~BlockDeflater();

    /// @return  nothing when the bytes do not shrink
    std::vector<std::byte> deflate(std::span<const std::byte> bytes, Effort effort);

    /// How many bytes a sample shrinks to, at the lowest price; its size when it does not.
    std::size_t probe(std::span<const std::byte> sample);

private:
    struct Deleter
    {
        void operator()(libdeflate_compressor* compressor) const noexcept;
    };
    using Compressor = std::unique_ptr<libdeflate_compressor, Deleter>;

    static libdeflate_compressor* prepared(Compressor& compressor, int level);

    Compressor m_probe;
    Compressor m_fast;
    Compressor m_normal;
    Compressor m_maximum;
};

/// Compresses a stream of any length in bounded memory. Even zeros shrink to no less than a 600th, far from what our
/// own reader would not believe.
class StreamDeflater
{
public:
    /// @param sink  gets the compressed bytes; outlives this object
    StreamDeflater(Effort effort, const Disk::ByteSink& sink);
    ~StreamDeflater();

    Expected<void, ErrorCode2> write(std::span<const std::byte> bytes) { return run(bytes, false); }

    /// Ends the stream.
    Expected<void, ErrorCode2> finish() { return run({}, true); }

private:
    Expected<void, ErrorCode2> run(std::span<const std::byte> bytes, bool isLast);

    const Disk::ByteSink& m_sink;
    std::unique_ptr<isal_zstream> m_stream;
    std::vector<std::byte> m_tables;
    std::vector<std::byte> m_output;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
