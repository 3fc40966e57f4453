#pragma once

#include "host/core/opc/markup/relationships.h"
#include "host/core/opc/markup/target_reference.h"
#include "kelvaris/system/io/opc_packaging/opc_enums.h"
#include "kelvaris/system/string2.h"

#include <memory>
#include <string>
#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// A relationship as it was when a handle was made of it.
struct RelationshipRecord
{
    std::string source; ///< "/" for the package, otherwise the name of a part
    String2 id;
    String2 type;
    std::string target; ///< as it is written
    OpcTargetMode mode = OpcTargetMode::internal;
    std::shared_ptr<const std::string> packageName; ///< for messages; null when it has none

    /// "file: relationship rId1 of /", for messages.
    std::string subject() const;

    /// Where an internal one leads.
    Markup::ResolvedTarget resolved() const { return Markup::resolveTarget(source, target); }
};

using RelationshipPtr = std::shared_ptr<const RelationshipRecord>;

/// The same for one of which there is no record.
std::string relationshipSubject(std::string_view packageName, std::string_view id, std::string_view source);

} // namespace Kelvaris::System::IO::OpcPackaging::detail
