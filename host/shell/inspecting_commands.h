#pragma once

#include "host/shell/command_line.h"

/// The verbs that look into files and write none. They answer the program's exit status.
namespace HostShell {

int showInfo(const CommandLine& line);
int listExamples(const CommandLine& line);
int checkFiles(const CommandLine& line);

} // namespace HostShell
