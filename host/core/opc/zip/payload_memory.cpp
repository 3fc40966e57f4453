#include "host/core/opc/zip/payload_memory.h"

#include <sys/mman.h>

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <new>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

/// What is larger is kept where it is.
constexpr std::size_t mostShared = std::size_t{64} << 10;

/// Most packages need no more than the first block. Where there are more, each is a page of the largest size that
/// processors commonly have, which is given out at a stroke.
constexpr std::size_t firstBlock = mostShared;
constexpr std::size_t laterBlock = std::size_t{2} << 20;

/// What all payloads of a store may hold in memory.
constexpr std::size_t budget = firstBlock + 8 * laterBlock;

struct Deleter
{
    void operator()(std::byte* bytes) const noexcept { std::free(bytes); }
};

using Room = std::unique_ptr<std::byte[], Deleter>;

Room allocate(std::size_t size)
{
    Room room{static_cast<std::byte*>(std::aligned_alloc(size, size))};
    if (room == nullptr)
        throw std::bad_alloc{};
    // a hint: small pages do as well
    if (size == laterBlock)
        (void)::madvise(room.get(), size, MADV_HUGEPAGE);
    return room;
}

} // namespace

/// Grows at its end and never moves. Gives its share of the budget back with its last payload.
class PayloadMemory::Block final : public ByteSource
{
public:
    Block(std::size_t size, std::shared_ptr<std::size_t> used)
        : ByteSource{size, {}}, m_room{allocate(size)}, m_used{std::move(used)}
    {
        *m_used += size;
    }

    ~Block() override { *m_used -= static_cast<std::size_t>(size()); }

    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    std::size_t left() const noexcept { return static_cast<std::size_t>(size()) - m_filled; }

    std::size_t append(std::span<const std::byte> bytes)
    {
        assert(bytes.size() <= left());
        std::copy_n(bytes.data(), bytes.size(), m_room.get() + m_filled);
        m_filled += bytes.size();
        return m_filled - bytes.size();
    }

    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        std::ranges::copy(inMemory(offset, target.size()), target.begin());
        return {};
    }

    std::span<const std::byte> inMemory(std::uint64_t offset, std::uint64_t length) const noexcept override
    {
        assert(offset + length <= m_filled);
        return {m_room.get() + offset, static_cast<std::size_t>(length)};
    }

private:
    Room m_room;
    std::size_t m_filled = 0;
    std::shared_ptr<std::size_t> m_used;
};

PayloadMemory::PayloadMemory() = default;
PayloadMemory::~PayloadMemory() = default;

bool PayloadMemory::addBlock(std::size_t least)
{
    const std::size_t size = m_last == nullptr && least <= firstBlock ? firstBlock : laterBlock;
    if (!hasRoom(size))
        return false;
    m_last = std::make_shared<Block>(size, m_used);
    return true;
}

bool PayloadMemory::hasRoom(std::uint64_t size) const noexcept
{
    return size <= budget - *m_used;
}

ByteSourcePtr PayloadMemory::keepInBlock(std::span<const std::byte> bytes)
{
    if ((m_last == nullptr || m_last->left() < bytes.size()) && !addBlock(bytes.size()))
        return nullptr;
    const std::size_t offset = m_last->append(bytes);
    return windowSource(m_last, offset, bytes.size(), {});
}

ByteSourcePtr PayloadMemory::keep(std::span<const std::byte> bytes)
{
    if (bytes.size() <= mostShared)
        return keepInBlock(bytes);
    return hasRoom(bytes.size()) ? keep(memorySource({bytes.begin(), bytes.end()}, {})) : nullptr;
}

ByteSourcePtr PayloadMemory::keep(const ByteSourcePtr& bytes)
{
    if (bytes->size() <= mostShared)
        return keepInBlock(bytes->inMemory(0, bytes->size()));
    if (!hasRoom(bytes->size()))
        return nullptr;
    *m_used += bytes->size();
    // the last one who uses the bytes gives their share of the budget back
    return {bytes.get(), [bytes, used = m_used](const ByteSource* kept) { *used -= kept->size(); }};
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
