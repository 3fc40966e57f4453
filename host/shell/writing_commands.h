#pragma once

#include "host/shell/command_line.h"

/// The verbs that write bundles and what is in them. They answer the program's exit status.
namespace HostShell {

int extractBundle(const CommandLine& line);
int packExample(const CommandLine& line);
int packBarrel(const CommandLine& line);

} // namespace HostShell
