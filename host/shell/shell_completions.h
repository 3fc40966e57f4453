#pragma once

#include <string>

/// Scripts that complete the program's command line in shells, made from the table of commands and the document of the
/// functions.
namespace HostShell {

std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();

} // namespace HostShell
