#pragma once

#include "host/core/opc/fault_log.h"
#include "host/core/opc/zip/end_record.h"
#include "host/core/opc/zip/entry.h"
#include "host/core/opc/zip/records.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <optional>
#include <string>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// Reads the records of a directory, and checks that each entry is one that a package may hold, lies within the file
/// and shares no byte with another.
class DirectoryReader
{
public:
    /// @param directory  outlives the entries, which are views into it
    /// @param faults     null when the first fault of an entry ends the reading
    DirectoryReader(const std::string& displayName, const EndRecord& place, Bytes directory, FaultLog* faults) noexcept
        : m_displayName{displayName}, m_place{place}, m_rest{directory}, m_faults{faults}
    {
    }

    /// @return  opc 7, 8 and 9 as `Archive::open`
    Expected<std::vector<Entry>, ErrorCode2> read();

private:
    Expected<std::optional<Entry>, ErrorCode2> readEntry();
    Expected<void, ErrorCode2> checkSupported(const Entry& entry) const;
    Expected<void, ErrorCode2> resolveZip64(Entry& entry, Bytes extra) const;
    Expected<void, ErrorCode2> checkEnd() const;
    Expected<void, ErrorCode2> placeEntries(std::vector<Entry>& entries) const;
    Expected<void, ErrorCode2> checkRegion(const Entry& entry) const;

    ErrorCode2 failure(OpcError error, std::string_view reason) const;
    ErrorCode2 failure(OpcError error, const Entry& entry, std::string_view reason) const;

    const std::string& m_displayName;
    const EndRecord& m_place;
    Bytes m_rest;
    FaultLog* m_faults;
};

/// "archive: entry", for messages.
std::string describeEntry(const std::string& archive, const Entry& entry);

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
