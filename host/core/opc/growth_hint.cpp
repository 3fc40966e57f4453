#include "host/core/opc/growth_hint.h"

#include <array>
#include <cstdint>
#include <span>

namespace Kelvaris::System::IO::OpcPackaging::detail {

namespace {

constexpr std::size_t localHeaderSize = 30;
constexpr std::size_t nameLengthAt = 26;
constexpr std::size_t extraLengthAt = 28;
constexpr unsigned growthHintId = 0xA220;
constexpr unsigned growthHintSignature = 0xA028;

unsigned word(std::span<const std::byte> bytes, std::size_t at)
{
    return std::to_integer<unsigned>(bytes[at]) | std::to_integer<unsigned>(bytes[at + 1]) << 8U;
}

/// All of `target`, or false when the source ends before or cannot be read.
bool readAt(const Zip::ByteSource& source, std::uint64_t offset, std::span<std::byte> target)
{
    if (offset > source.size() || target.size() > source.size() - offset)
        return false;
    return source.readAt(offset, target).hasValue();
}

std::vector<std::byte> localExtraFields(const Zip::ByteSource& source, const Zip::Entry& entry)
{
    std::array<std::byte, localHeaderSize> header{};
    if (!readAt(source, entry.headerOffset, header))
        return {};
    std::vector<std::byte> fields(word(header, extraLengthAt));
    if (!readAt(source, entry.headerOffset + localHeaderSize + word(header, nameLengthAt), fields))
        return {};
    return fields;
}

bool isGrowthHint(std::span<const std::byte> field)
{
    constexpr std::size_t smallest = 6;
    return field.size() >= smallest && word(field, 0) == growthHintId && word(field, 4) == growthHintSignature;
}

} // namespace

std::vector<std::byte> growthHintOf(const Zip::ByteSource& source, const Zip::Entry& entry)
{
    constexpr std::size_t headSize = 4;
    const std::vector<std::byte> fields = localExtraFields(source, entry);
    std::span<const std::byte> rest{fields};
    while (rest.size() >= headSize) {
        const std::size_t size = headSize + word(rest, 2);
        if (size > rest.size())
            return {};
        const std::span<const std::byte> field = rest.first(size);
        if (isGrowthHint(field))
            return {field.begin(), field.end()};
        rest = rest.subspan(size);
    }
    return {};
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
