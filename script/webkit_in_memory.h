#pragma once

namespace Script {

/// Has WebKit stay in memory when the module goes: what it leaves behind in the process ends the host as soon as a page
/// is shown after it was unloaded and loaded again. Without WebKit there is nothing to do.
void keepWebKitInMemory();

} // namespace Script
