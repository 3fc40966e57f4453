#pragma once

#include <string>
#include <vector>

namespace HostShell {

/// `["a","b"]`
std::string toJson(const std::vector<std::string>& texts);

} // namespace HostShell
