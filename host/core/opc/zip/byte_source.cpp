#include "host/core/opc/zip/byte_source.h"

#include "host/core/paths/disk/replacement_file.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

constexpr std::uint64_t copyChunk = std::uint64_t{1} << 20;

class FileSource final : public ByteSource
{
public:
    explicit FileSource(Disk::InputFile file) : ByteSource{file.size(), file.displayName()}, m_file{std::move(file)} {}

    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        return m_file.readAt(offset, target);
    }

    Expected<void, ErrorCode2> copyTo(Disk::ReplacementFile& file, std::uint64_t offset,
                                      std::uint64_t length) const override
    {
        return file.append(m_file, offset, length);
    }

private:
    Disk::InputFile m_file;
};

class MemorySource final : public ByteSource
{
public:
    MemorySource(std::vector<std::byte> bytes, std::string displayName)
        : ByteSource{bytes.size(), std::move(displayName)}, m_bytes{std::move(bytes)}
    {
    }

    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        assert(offset <= m_bytes.size() && target.size() <= m_bytes.size() - offset);
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(offset), target.size(), target.begin());
        return {};
    }

    std::span<const std::byte> inMemory(std::uint64_t offset, std::uint64_t length) const noexcept override
    {
        return std::span{m_bytes}.subspan(offset, length);
    }

private:
    std::vector<std::byte> m_bytes;
};

class WindowSource final : public ByteSource
{
public:
    WindowSource(ByteSourcePtr parent, std::uint64_t offset, std::uint64_t length, std::string displayName)
        : ByteSource{length, std::move(displayName)}, m_parent{std::move(parent)}, m_offset{offset}
    {
        assert(offset <= m_parent->size() && length <= m_parent->size() - offset);
    }

    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        assert(offset <= size() && target.size() <= size() - offset);
        return m_parent->readAt(m_offset + offset, target);
    }

    std::span<const std::byte> inMemory(std::uint64_t offset, std::uint64_t length) const noexcept override
    {
        return m_parent->inMemory(m_offset + offset, length);
    }

    Expected<void, ErrorCode2> copyTo(Disk::ReplacementFile& file, std::uint64_t offset,
                                      std::uint64_t length) const override
    {
        return m_parent->copyTo(file, m_offset + offset, length);
    }

private:
    ByteSourcePtr m_parent;
    std::uint64_t m_offset;
};

} // namespace

ByteSource::ByteSource(std::uint64_t size, std::string displayName) noexcept
    : m_size{size}, m_displayName{std::move(displayName)}
{
}

ByteSource::~ByteSource() = default;

std::span<const std::byte> ByteSource::inMemory(std::uint64_t, std::uint64_t) const noexcept
{
    return {};
}

Expected<void, ErrorCode2> ByteSource::copyTo(Disk::ReplacementFile& file, std::uint64_t offset,
                                              std::uint64_t length) const
{
    if (const auto present = inMemory(offset, length); !present.empty())
        return file.write(present);
    std::vector<std::byte> buffer(std::min(length, copyChunk));
    while (length > 0) {
        const auto piece = std::span{buffer}.first(std::min(length, copyChunk));
        auto copied = readAt(offset, piece).andThen([&] { return file.write(piece); });
        if (!copied)
            return copied;
        offset += piece.size();
        length -= piece.size();
    }
    return {};
}

Expected<ByteSourcePtr, ErrorCode2> openFileSource(const FilePath2& path)
{
    auto file = Disk::InputFile::open(path);
    if (!file)
        return file.error();
    return fileSource(*std::move(file));
}

ByteSourcePtr fileSource(Disk::InputFile file)
{
    return std::make_shared<FileSource>(std::move(file));
}

ByteSourcePtr memorySource(std::vector<std::byte> bytes, std::string displayName)
{
    return std::make_shared<MemorySource>(std::move(bytes), std::move(displayName));
}

ByteSourcePtr windowSource(ByteSourcePtr parent, std::uint64_t offset, std::uint64_t length, std::string displayName)
{
    return std::make_shared<WindowSource>(std::move(parent), offset, length, std::move(displayName));
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
