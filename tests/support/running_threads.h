#pragma once

#include <cstddef>

/// Of this process.
std::ptrdiff_t runningThreads();

/// Waits until no more threads run than that. One that has been joined stands in the system's list a moment longer.
bool onlyRun(std::ptrdiff_t threads);
