#pragma once

#include "host/support/call_function.h"

#include <optional>
#include <string>
#include <vector>

namespace HostShell {

/// One registered function, for the list.
std::string arityOf(const Kelvaris::RegisteredFunction& function);

/// Why a function of this name cannot be called with that many arguments, as one sentence; nothing when it can.
std::optional<std::string> refusalOf(const std::string& name, std::size_t argumentCount);

/// What a call left behind, with the line that the log got when it failed.
struct CallOutcome
{
    Kelvaris::CallResult result;
    std::string failure; ///< such as "_filename failed: argument index out of range"
};

/// @param name  of a registered function, which `refusalOf` lets pass with these arguments
CallOutcome callByName(const std::string& name, const std::vector<std::vector<std::string>>& arguments);

} // namespace HostShell
