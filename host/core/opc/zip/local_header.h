#pragma once

#include "host/core/opc/zip/entry.h"
#include "host/core/opc/zip/records.h"

#include <cstddef>
#include <optional>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// An entry's record in front of its data, compared with the one in the directory (ISO/IEC 29500-2 M3.14).
class LocalHeader
{
public:
    /// @param bytes  from the header on, at least `RecordSize::localHeader`
    /// @return  bytes of the header with name and extra field
    static std::size_t sizeOf(Bytes bytes) noexcept;

    /// @param bytes  `sizeOf` of them
    LocalHeader(const Entry& entry, Bytes bytes) noexcept;

    /// @return  what differs, as a reason for a message; null when nothing does
    const char* difference() const noexcept;

    /// Finds the data descriptor, which comes with and without a signature and with sizes of 4 and 8 bytes.
    /// @param behind  what follows the data, as far as the entry may reach
    /// @return  its bytes; none when nothing there agrees with the directory
    std::optional<std::size_t> descriptorSize(Bytes behind) const noexcept;

private:
    bool sizesAgree() const noexcept;

    const Entry& m_entry;
    Bytes m_bytes;
    Bytes m_zip64; ///< the content of that extra field
};

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
