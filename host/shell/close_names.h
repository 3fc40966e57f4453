#pragma once

#include <string>
#include <vector>

namespace HostShell {

/// Those of `names` that a mistyped `name` may have meant, best first: few letters differ, or one holds the other.
std::vector<std::string> closeNames(const std::string& name, const std::vector<std::string>& names);

} // namespace HostShell
