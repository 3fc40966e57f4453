#pragma once

namespace HostShell {

/// How the program ends. A script may end it with any other number.
namespace ExitStatus {

inline constexpr int done = 0;
inline constexpr int failed = 1;
inline constexpr int usage = 2;
inline constexpr int badInput = 3;
inline constexpr int outputExists = 4;
inline constexpr int faultsFound = 5;

} // namespace ExitStatus

} // namespace HostShell
