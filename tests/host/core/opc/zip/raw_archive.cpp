#include "tests/host/core/opc/zip/raw_archive.h"

#include <libdeflate.h>

namespace {

std::string little(std::uint64_t value, int width)
{
    std::string bytes;
    for (int i = 0; i < width; ++i, value >>= 8U)
        bytes += static_cast<char>(value & 0xffU);
    return bytes;
}

std::string localHeader(const RawEntry& entry)
{
    const std::string name = entry.localName.value_or(entry.name);
    return le32(entry.localSignature.value_or(0x04034b50)) + le16(entry.version) +
           le16(entry.localFlags.value_or(entry.flags)) + le16(entry.localMethod.value_or(entry.method)) +
           le16(0x6c20) + le16(0x5a6f) + le32(entry.localCrc.value_or(entry.crc)) +
           le32(entry.localCompressedSize.value_or(static_cast<std::uint32_t>(entry.data.size()))) +
           le32(entry.localSize.value_or(static_cast<std::uint32_t>(entry.size))) + le16(name.size()) +
           le16(entry.localExtra.size()) + name + entry.localExtra;
}

std::string directoryHeader(const RawEntry& entry, std::uint64_t offset)
{
    return le32(0x02014b50) + le16(0x031e) + le16(entry.version) + le16(entry.flags) + le16(entry.method) +
           le16(0x6c20) + le16(0x5a6f) + le32(entry.crc) +
           le32(entry.centralCompressedSize.value_or(static_cast<std::uint32_t>(entry.data.size()))) +
           le32(entry.centralSize.value_or(static_cast<std::uint32_t>(entry.size))) + le16(entry.name.size()) +
           le16(entry.extra.size()) + le16(entry.comment.size()) + le16(entry.disk) + le16(1) + le32(0x81a40000) +
           le32(entry.centralOffset.value_or(static_cast<std::uint32_t>(offset))) + entry.name + entry.extra +
           entry.comment;
}

} // namespace

std::string le16(std::uint64_t value)
{
    return little(value, 2);
}

std::string le32(std::uint64_t value)
{
    return little(value, 4);
}

std::string le64(std::uint64_t value)
{
    return little(value, 8);
}

std::string deflated(const std::string& data)
{
    libdeflate_compressor* compressor = libdeflate_alloc_compressor(6);
    std::string packed(libdeflate_deflate_compress_bound(compressor, data.size()), '\0');
    packed.resize(libdeflate_deflate_compress(compressor, data.data(), data.size(), packed.data(), packed.size()));
    libdeflate_free_compressor(compressor);
    return packed;
}

RawEntry storedEntry(std::string name, std::string data)
{
    RawEntry entry;
    entry.name = std::move(name);
    entry.crc = libdeflate_crc32(0, data.data(), data.size());
    entry.size = data.size();
    entry.data = std::move(data);
    return entry;
}

RawEntry deflatedEntry(std::string name, const std::string& data)
{
    RawEntry entry = storedEntry(std::move(name), data);
    entry.method = 8;
    entry.data = deflated(data);
    return entry;
}

std::string RawArchive::bytes() const
{
    std::string body;
    std::string directory;
    for (const RawEntry& entry : entries) {
        body += entry.between;
        directory += directoryHeader(entry, body.size());
        body += localHeader(entry) + entry.data + entry.descriptor;
    }
    const std::uint64_t offset = directoryOffset.value_or(body.size());
    const std::uint64_t size = directorySize.value_or(directory.size());
    const std::uint64_t total = count.value_or(entries.size());
    const std::uint64_t onDisk = countOnDisk.value_or(total);
    body += directory + behindDirectory;
    if (zip64) {
        const std::uint64_t record = zip64RecordOffset.value_or(body.size());
        body += le32(0x06064b50) + le64(zip64RecordSize) + le16(45) + le16(zip64Version) + le32(disk) +
                le32(directoryDisk) + le64(onDisk) + le64(total) + le64(size) + le64(offset);
        body += le32(0x07064b50) + le32(0) + le64(record) + le32(disks);
    }
    const std::string values = saturated ? le16(0xffff) + le16(0xffff) + le32(0xffffffff) + le32(0xffffffff)
                                         : le16(onDisk) + le16(total) + le32(size) + le32(offset);
    return prefix + body + le32(0x06054b50) + le16(disk) + le16(directoryDisk) + values + le16(comment.size()) +
           comment + suffix;
}
