#pragma once

#include "host/core/opc/zip/archive.h"
#include "host/core/opc/zip/payload.h"
#include "host/core/paths/disk/replacement_file.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// Writes an archive front to back. The same calls give the same bytes: new entries carry no time (1980-01-01), no
/// owner and no attributes. ZIP64 records stand only where they are needed.
///
///     auto file = Disk::ReplacementFile::create(path);
///     ArchiveWriter writer{*file};
///     ... writer.add(name, payload) ... writer.copyEntry(archive, index) ...
///     writer.finish({}) and then file->commit()
class KELVARIS_CORE_API ArchiveWriter
{
public:
    /// @param file  empty; must live as long as the writer
    explicit ArchiveWriter(Disk::ReplacementFile& file);
    ArchiveWriter(const ArchiveWriter&) = delete;
    ArchiveWriter& operator=(const ArchiveWriter&) = delete;
    ~ArchiveWriter();

    /// @param name   bytes; marked as UTF-8 when they are not ASCII. Nobody looks whether there is one like it
    /// @param extra  the extra field, of both headers
    /// @return  opc 3 when name and extra field are too long for a ZIP file (M3.8), or the error of writing
    Expected<void, ErrorCode2> add(std::string_view name, const Payload& payload,
                                   std::span<const std::byte> extra = {});

    /// Copies an entry with all that belongs to it; only its place in the file changes.
    /// @return  as `Archive::verify`, or the error of reading or writing
    Expected<void, ErrorCode2> copyEntry(const Archive& archive, std::size_t index);

    /// Writes the directory and the end record. Nothing can be added afterwards.
    /// @param comment  at most 65,535 bytes
    Expected<void, ErrorCode2> finish(std::string_view comment = {});

private:
    ErrorCode2 tooLong(std::string_view name) const;
    void addToDirectory(std::span<const std::byte> record);

    Disk::ReplacementFile& m_file;
    std::vector<std::byte> m_directory;
    std::uint64_t m_entries = 0;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
