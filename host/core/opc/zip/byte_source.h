#pragma once

#include "host/core/paths/disk/input_file.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Kelvaris::System::Disk {
class ReplacementFile;
}

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// Where an archive's bytes are: a file, memory, or a stretch of another source. It keeps alive what it reads from.
class KELVARIS_CORE_API ByteSource
{
public:
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource();

    std::uint64_t size() const noexcept { return m_size; }

    /// For messages: "path", or "barrel.kvexs: /examples/a.kvbdl.zip" for what lies in a package.
    const std::string& displayName() const noexcept { return m_displayName; }

    /// Fills all of `target`, which lies within the source.
    virtual Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const = 0;

    /// A stretch, which lies within the source, as it stands in memory; empty when it does not.
    virtual std::span<const std::byte> inMemory(std::uint64_t offset, std::uint64_t length) const noexcept;

    /// Appends a stretch, which lies within the source, to `file`; in bounded memory.
    virtual Expected<void, ErrorCode2> copyTo(Disk::ReplacementFile& file, std::uint64_t offset,
                                              std::uint64_t length) const;

protected:
    ByteSource(std::uint64_t size, std::string displayName) noexcept;

private:
    std::uint64_t m_size;
    std::string m_displayName;
};

using ByteSourcePtr = std::shared_ptr<const ByteSource>;

/// Packages within a package up to this size are read in one piece when they are opened. Looking for the end record
/// would read as much.
inline constexpr std::uint64_t smallPackage = std::uint64_t{8} << 10;

/// @return  as `Disk::InputFile::open`
KELVARIS_CORE_API Expected<ByteSourcePtr, ErrorCode2> openFileSource(const FilePath2& path);

KELVARIS_CORE_API ByteSourcePtr fileSource(Disk::InputFile file);

KELVARIS_CORE_API ByteSourcePtr memorySource(std::vector<std::byte> bytes, std::string displayName);

/// `offset` and `length` lie within `parent`.
KELVARIS_CORE_API ByteSourcePtr windowSource(ByteSourcePtr parent, std::uint64_t offset, std::uint64_t length,
                                             std::string displayName);

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
