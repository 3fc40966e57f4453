#pragma once

#include "host/shell/command_line.h"

namespace HostShell {

/// Does what the command line asks for.
/// @return  the program's exit status
int runCommand(const CommandLine& line);

} // namespace HostShell
