#pragma once

#include "host/core/opc/fault_log.h"
#include "host/core/opc/part_record.h"
#include "host/core/opc/result.h"
#include "host/core/opc/zip/archive.h"

#include <string>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// What stands in an archive, pieces put together (ISO/IEC 29500-2, M2.11 to M2.18, M3.2 to M3.7).
struct ItemScan
{
    ItemPtr contentTypes;       ///< null when there are none
    std::vector<PartPtr> named; ///< items whose names make part names; parts, if they have a content type as well
    bool areUnrelated = true;   ///< whether no name can be derived from another (M1.11); false: perhaps some are
    std::vector<std::string> incomplete;  ///< part names of which there are only some pieces
    std::vector<std::string> diagnostics; ///< a sentence for each entry that is left alone
};

/// @return  opc 4   two items of equivalent names (M2.14, M3.3)
///          opc 27  pieces and an item of one name, or two pieces of one number
/// @param faults  where they go instead; the item is left out then
Result<ItemScan> scanItems(const Zip::Archive& archive, FaultLog* faults = nullptr);

/// Whether there is a content-types stream, whole or in pieces: what tells a package from any other archive.
bool hasContentTypes(const Zip::Archive& archive);

} // namespace Kelvaris::System::IO::OpcPackaging::detail
