#pragma once

namespace HostShell {

/// What Qt's application objects get in the place of the command line: Qt keeps references to both, and must not take
/// words such as "-style" out of what a user has given to a script.
inline char programName[] = "hollerwick-host";
inline char* programWords[] = {programName, nullptr};
inline int programWordCount = 1;

} // namespace HostShell
