#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// An entry as the bytes say it. What is not set follows from the data; what is set may be a lie.
struct RawEntry
{
    std::string name = {};
    std::string data = {}; ///< as it stands in the file
    std::uint16_t method = 0;
    std::uint16_t flags = 0;
    std::uint16_t version = 20;
    std::uint32_t crc = 0;
    std::uint64_t size = 0;
    std::uint16_t disk = 0;
    std::string extra = {}; ///< of the directory
    std::string localExtra = {};
    std::string comment = {};
    std::string descriptor = {}; ///< behind the data
    std::string between = {};    ///< junk before the local header

    // of the directory alone
    std::optional<std::uint32_t> centralCompressedSize = {};
    std::optional<std::uint32_t> centralSize = {};
    std::optional<std::uint32_t> centralOffset = {};

    // of the local header alone
    std::optional<std::string> localName = {};
    std::optional<std::uint16_t> localMethod = {};
    std::optional<std::uint16_t> localFlags = {};
    std::optional<std::uint32_t> localCrc = {};
    std::optional<std::uint32_t> localCompressedSize = {};
    std::optional<std::uint32_t> localSize = {};
    std::optional<std::uint32_t> localSignature = {};
};

/// A ZIP file, put together byte by byte with none of our own code, so that each test can break one thing.
struct RawArchive
{
    std::vector<RawEntry> entries = {};
    std::string comment = {};
    std::string prefix = {}; ///< before everything; the offsets do not count it
    std::string suffix = {}; ///< behind the comment
    std::string behindDirectory = {};
    bool zip64 = false; ///< with the 64-bit end records

    std::optional<std::uint64_t> count = {};
    std::optional<std::uint64_t> countOnDisk = {};
    std::optional<std::uint64_t> directorySize = {};
    std::optional<std::uint64_t> directoryOffset = {};
    std::uint16_t disk = 0;
    std::uint16_t directoryDisk = 0;
    std::optional<std::uint64_t> zip64RecordOffset = {};
    std::uint64_t zip64RecordSize = 44;
    std::uint16_t zip64Version = 45;
    std::uint32_t disks = 1;
    bool saturated = false; ///< whether the end record leaves its values to the ZIP64 record

    std::string bytes() const;
};

RawEntry storedEntry(std::string name, std::string data);
RawEntry deflatedEntry(std::string name, const std::string& data);

/// Little-endian numbers.
std::string le16(std::uint64_t value);
std::string le32(std::uint64_t value);
std::string le64(std::uint64_t value);

/// A raw deflate stream.
std::string deflated(const std::string& data);
