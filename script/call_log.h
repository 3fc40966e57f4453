#pragma once

#include <string>

namespace Script {

/// Writes the diagnostic line of a call, if the host's settings ask for such lines now.
void logCall(const std::string& functionName);

/// Write why a call failed, whatever the settings. Without memory for the line there is none.
void logFailure(const std::string& functionName, const char* reason) noexcept;
void logUnknownFailure(const std::string& functionName) noexcept;

} // namespace Script
