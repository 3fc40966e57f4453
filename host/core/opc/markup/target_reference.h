#pragma once

#include "kelvaris/export.h"

#include <string>
#include <string_view>

/// Where the target of a relationship leads (RFC 3986, 5; M1.23, M1.24, M1.28, M1.29, M1.32, M1.33).
namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// Where an internal target leads.
struct ResolvedTarget
{
    std::string uri;      ///< "/dir/part.xml?query#fragment": the reference against its source, as a URI
    std::string partName; ///< the valid name of the part, without query and fragment; empty when the target cannot
                          ///< be a part's name
    std::string fault;    ///< why there is no part name; empty when there is one
    std::string warning;  ///< what was put up with; empty when the target is a URI reference by the letter

    bool isPartName() const noexcept { return fault.empty(); }
};

/// Why a target can be no internal one: an absolute URI, or one with an authority (M1.29). Empty when it can.
KELVARIS_CORE_API std::string internalTargetFault(std::string_view target);

/// Resolves an internal target. Letters beyond ASCII and characters that no URI has are percent-encoded (M1.33), "\" is
/// read as "/", with a warning; ".." above the root stays at the root.
///
/// @param source  the name of the part that the relationship belongs to; "/" for the package
/// @param target  as it was read; one for which `internalTargetFault` says nothing
KELVARIS_CORE_API ResolvedTarget resolveTarget(std::string_view source, std::string_view target);

/// What to write for an internal target: the part's name as it stands, which is right whatever the source is.
KELVARIS_CORE_API std::string targetText(std::string_view partName);

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
