#pragma once

#include <string>

namespace HostShell {

/// hollerwick-host(1) in troff, made from the table of commands.
std::string manPage();

} // namespace HostShell
