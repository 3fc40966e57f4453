#include "host/core/opc/zip/payload_store.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/limits.h"
#include "host/core/opc/zip/packing_job.h"
#include "host/core/opc/zip/payload_memory.h"
#include "host/core/opc/zip/workers.h"
#include "host/core/paths/disk/scratch_file.h"

#include <libdeflate.h>

#include <algorithm>
#include <deque>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

using Bytes = std::span<const std::byte>;

/// Up to here a whole file is compressed in one piece; "maximum" may take more room for its work.
constexpr std::size_t blockSize = std::size_t{4} << 20;
constexpr std::size_t maximumBlockSize = std::size_t{8} << 20;
static_assert(maximumBlockSize <= Limits::inflateGrace, "larger blocks could shrink beyond what a reader believes");

/// How much the threads may be behind: enough that none of them waits while the next file is read.
constexpr std::size_t backlogSize = std::size_t{8} << 20;

/// Files up to this size are read into one place after the other.
constexpr std::size_t smallFile = std::size_t{64} << 10;

constexpr std::size_t pieceSize = std::size_t{1} << 20;

/// Of each MiB so much is tried. When a fiftieth or less of that can be saved, all is stored, at a tenth of the time.
/// Otherwise the whole shrinks too: what does not is let through by isa-l with a ten thousandth more.
constexpr std::size_t sampleSize = std::size_t{16} << 10;
constexpr std::size_t worthwhileShare = 50;

std::size_t blockSizeFor(Effort effort)
{
    return effort == Effort::maximum ? maximumBlockSize : blockSize;
}

/// Bytes that a `ScratchFile` holds.
class ScratchSource final : public ByteSource
{
public:
    ScratchSource(std::shared_ptr<const Disk::ScratchFile> file, std::uint64_t offset, std::uint64_t size)
        : ByteSource{size, {}}, m_file{std::move(file)}, m_offset{offset}
    {
    }

    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        return m_file->readAt(m_offset + offset, target);
    }

private:
    std::shared_ptr<const Disk::ScratchFile> m_file;
    std::uint64_t m_offset;
};

/// Bytes to be taken in: read piece by piece, in order, and in samples before.
class Input
{
public:
    virtual ~Input() = default;

    /// How many bytes there are, as far as it is known.
    virtual std::uint64_t expectedSize() const = 0;

    /// Fewer bytes than `target` has room for only at the end.
    virtual Expected<std::size_t, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const = 0;
};

class MemoryInput final : public Input
{
public:
    explicit MemoryInput(Bytes bytes) : m_bytes{bytes} {}

    std::uint64_t expectedSize() const override { return m_bytes.size(); }

    Expected<std::size_t, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        const std::size_t count = std::min<std::uint64_t>(target.size(), m_bytes.size() - offset);
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(offset), count, target.begin());
        return count;
    }

private:
    Bytes m_bytes;
};

class FileInput final : public Input
{
public:
    explicit FileInput(const Disk::InputFile& file) : m_file{file} {}

    std::uint64_t expectedSize() const override { return m_file.size(); }

    /// A file may have grown since it was opened, but bytes that it had must not be missing.
    Expected<std::size_t, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        auto count = m_file.readUpTo(offset, target);
        if (count && *count < target.size() && offset + *count < m_file.size())
            return Errors::makeError(CoreError::fileTruncated, m_file.displayName());
        return count;
    }

private:
    const Disk::InputFile& m_file;
};

} // namespace

class PayloadStore::Data
{
public:
    using Buffer = std::unique_ptr<const std::byte[]>;

    Expected<PayloadPtr, ErrorCode2> takeBlock(Bytes bytes, Effort effort);
    Expected<PayloadPtr, ErrorCode2> handOver(Buffer bytes, std::size_t size, Effort effort);
    Expected<PayloadPtr, ErrorCode2> takeStream(const Input& input, Effort effort);

    /// Whether a thread compresses the bytes while the caller reads the next ones.
    bool isHandedOver(std::size_t size, Effort effort) const noexcept
    {
        return effort != Effort::store && size >= Workers::worthHandingOver && m_workers.canHelp();
    }

    /// For one small file after the other.
    std::span<std::byte> smallRoom();

    void packAll() noexcept;

    Workers& workers() noexcept { return m_workers; }

private:
    /// The piece of the temporary file that is being written.
    struct Packed
    {
        std::uint64_t begin = 0;
        std::uint64_t size = 0; ///< of the bytes that were taken in
        std::uint32_t crc = 0;
    };

    Expected<ByteSourcePtr, ErrorCode2> keep(const ByteSourcePtr& packed);
    Expected<ByteSourcePtr, ErrorCode2> keep(Bytes packed);
    Expected<ByteSourcePtr, ErrorCode2> writeOut(Bytes packed);
    Expected<void, ErrorCode2> settle(std::size_t room);
    Expected<void, ErrorCode2> settleOldest();
    Expected<void, ErrorCode2> openScratch();
    Expected<bool, ErrorCode2> isWorthwhile(const Input& input);
    Expected<Packed, ErrorCode2> pack(const Input& input, Method method, Effort effort);
    PayloadPtr payload(const Packed& packed, Method method) const;

    struct Unsettled
    {
        std::weak_ptr<Payload> payload;
        std::size_t size = 0;
    };

    std::shared_ptr<BlockDeflater> m_deflater = std::make_shared<BlockDeflater>();
    PayloadMemory m_memory;
    std::shared_ptr<Disk::ScratchFile> m_scratch;
    std::deque<Unsettled> m_backlog; ///< what was handed over, and is not kept yet
    std::size_t m_backlogSize = 0;
    std::unique_ptr<std::byte[]> m_smallRoom;
    Workers m_workers;
};

std::span<std::byte> PayloadStore::Data::smallRoom()
{
    if (m_smallRoom == nullptr)
        m_smallRoom = std::make_unique_for_overwrite<std::byte[]>(smallFile);
    return {m_smallRoom.get(), smallFile};
}

Expected<void, ErrorCode2> PayloadStore::Data::openScratch()
{
    if (m_scratch)
        return {};
    auto file = Disk::ScratchFile::create();
    if (!file)
        return file.error();
    m_scratch = std::make_shared<Disk::ScratchFile>(*std::move(file));
    return {};
}

Expected<ByteSourcePtr, ErrorCode2> PayloadStore::Data::keep(const ByteSourcePtr& packed)
{
    auto kept = m_memory.keep(packed);
    return kept == nullptr ? writeOut(packed->inMemory(0, packed->size())) : std::move(kept);
}

Expected<ByteSourcePtr, ErrorCode2> PayloadStore::Data::keep(Bytes packed)
{
    auto kept = m_memory.keep(packed);
    return kept == nullptr ? writeOut(packed) : std::move(kept);
}

Expected<ByteSourcePtr, ErrorCode2> PayloadStore::Data::writeOut(Bytes packed)
{
    if (auto opened = openScratch(); !opened)
        return opened.error();
    const auto offset = m_scratch->append(packed);
    if (!offset)
        return offset.error();
    return ByteSourcePtr{std::make_shared<ScratchSource>(m_scratch, *offset, packed.size())};
}

Expected<void, ErrorCode2> PayloadStore::Data::settleOldest()
{
    if (const auto payload = m_backlog.front().payload.lock()) {
        auto kept = keep(payload->packedBytes());
        if (!kept)
            return kept.error(); // it stays in memory, where it can still be read; the next call tries again
        payload->moveTo(*std::move(kept));
    }
    m_backlogSize -= m_backlog.front().size;
    m_backlog.pop_front();
    return {};
}

/// Makes room in the backlog, and keeps what is done anyway.
Expected<void, ErrorCode2> PayloadStore::Data::settle(std::size_t room)
{
    const auto isOldestDone = [this] {
        const auto payload = m_backlog.front().payload.lock();
        return payload == nullptr || payload->isPacked();
    };
    while (!m_backlog.empty()) {
        const bool isDone = isOldestDone();
        if (!isDone && m_backlogSize + room <= backlogSize)
            break;
        // whoever waits for the thread that has the oldest in hand leaves all work to that thread
        if (!isDone && m_workers.help(*m_deflater))
            continue;
        if (auto settled = settleOldest(); !settled)
            return settled;
    }
    return {};
}

void PayloadStore::Data::packAll() noexcept
{
    while (m_workers.help(*m_deflater)) {
    }
}

Expected<PayloadPtr, ErrorCode2> PayloadStore::Data::takeBlock(Bytes bytes, Effort effort)
{
    const PackedBytes packed = packBlock(bytes, effort, *m_deflater);
    auto kept = packed.bytes == nullptr ? keep(bytes) : keep(packed.bytes);
    if (!kept)
        return kept.error();
    return PayloadPtr{std::make_shared<Payload>(*std::move(kept), packed.method, packed.crc, bytes.size())};
}

Expected<PayloadPtr, ErrorCode2> PayloadStore::Data::handOver(Buffer bytes, std::size_t size, Effort effort)
{
    if (auto settled = settle(size); !settled)
        return settled.error();
    const auto job = std::make_shared<PackingJob>(std::move(bytes), size, effort, m_deflater);
    auto payload = std::make_shared<Payload>(job);
    m_backlog.push_back({payload, size});
    m_backlogSize += size;
    m_workers.add(job);
    return PayloadPtr{std::move(payload)};
}

Expected<bool, ErrorCode2> PayloadStore::Data::isWorthwhile(const Input& input)
{
    std::vector<std::byte> sample(sampleSize);
    std::uint64_t tried = 0;
    std::uint64_t left = 0;
    for (std::uint64_t offset = 0; offset < input.expectedSize(); offset += pieceSize) {
        const auto count = input.readAt(offset, sample);
        if (!count)
            return count.error();
        tried += *count;
        left += m_deflater->probe(std::span{sample}.first(*count));
    }
    return left < tried - tried / worthwhileShare;
}

Expected<PayloadStore::Data::Packed, ErrorCode2> PayloadStore::Data::pack(const Input& input, Method method,
                                                                          Effort effort)
{
    Packed packed{.begin = m_scratch->size()};
    const Disk::ByteSink toScratch = [this](Bytes bytes) -> Expected<void, ErrorCode2> {
        const auto offset = m_scratch->append(bytes);
        return offset ? Expected<void, ErrorCode2>{} : offset.error();
    };
    StreamDeflater deflater{effort, toScratch};
    std::vector<std::byte> buffer(pieceSize);
    for (std::size_t count = buffer.size(); count == buffer.size();) {
        const auto read = input.readAt(packed.size, buffer);
        if (!read)
            return read.error();
        count = *read;
        const auto piece = Bytes{buffer}.first(count);
        packed.size += count;
        packed.crc = libdeflate_crc32(packed.crc, piece.data(), piece.size());
        if (auto done = method == Method::stored ? toScratch(piece) : deflater.write(piece); !done)
            return done.error();
    }
    if (method == Method::stored)
        return packed;
    if (auto finished = deflater.finish(); !finished)
        return finished.error();
    return packed;
}

PayloadPtr PayloadStore::Data::payload(const Packed& packed, Method method) const
{
    auto source = std::make_shared<ScratchSource>(m_scratch, packed.begin, m_scratch->size() - packed.begin);
    return std::make_shared<Payload>(std::move(source), method, packed.crc, packed.size);
}

Expected<PayloadPtr, ErrorCode2> PayloadStore::Data::takeStream(const Input& input, Effort effort)
{
    if (auto opened = openScratch(); !opened)
        return opened.error();
    const auto worthwhile = effort == Effort::store ? false : isWorthwhile(input);
    if (!worthwhile)
        return worthwhile.error();
    const Method method = *worthwhile ? Method::deflated : Method::stored;
    const std::uint64_t before = m_scratch->size();
    const auto packed = pack(input, method, effort);
    if (packed)
        return payload(*packed, method);
    m_scratch->truncate(before);
    return packed.error();
}

PayloadStore::PayloadStore() : m_data{std::make_unique<Data>()} {}
PayloadStore::~PayloadStore() = default;

Expected<PayloadPtr, ErrorCode2> PayloadStore::take(std::span<const std::byte> bytes, Effort effort)
{
    if (bytes.size() > blockSizeFor(effort))
        return m_data->takeStream(MemoryInput{bytes}, effort);
    if (!m_data->isHandedOver(bytes.size(), effort))
        return m_data->takeBlock(bytes, effort);
    auto copy = std::make_unique_for_overwrite<std::byte[]>(bytes.size());
    std::copy_n(bytes.data(), bytes.size(), copy.get());
    return m_data->handOver(std::move(copy), bytes.size(), effort);
}

Expected<PayloadPtr, ErrorCode2> PayloadStore::take(const Disk::InputFile& file, Effort effort)
{
    const FileInput input{file};
    const std::size_t limit = blockSizeFor(effort);
    // one byte more than there should be shows whether the file has grown
    const std::size_t room = std::min<std::uint64_t>(file.size(), limit) + 1;
    const bool isHandedOver = m_data->isHandedOver(room - 1, effort);
    std::unique_ptr<std::byte[]> own;
    std::span<std::byte> buffer;
    if (!isHandedOver && room <= smallFile) {
        buffer = m_data->smallRoom().first(room);
    } else {
        own = std::make_unique_for_overwrite<std::byte[]>(room);
        buffer = {own.get(), room};
    }
    const auto count = input.readAt(0, buffer);
    if (!count)
        return count.error();
    if (*count == room)
        return m_data->takeStream(input, effort);
    if (isHandedOver)
        return m_data->handOver(std::move(own), *count, effort);
    return m_data->takeBlock(buffer.first(*count), effort);
}

void PayloadStore::packAll() noexcept
{
    m_data->packAll();
}

void PayloadStore::rest() noexcept
{
    m_data->workers().finish();
}

void PayloadStore::setThreads(unsigned threads) noexcept
{
    m_data->workers().setLimit(threads);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
