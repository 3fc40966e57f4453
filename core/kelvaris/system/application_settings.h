#pragma once

#include "kelvaris/export.h"

namespace Kelvaris::System {

/// The host's settings, as far as libraries ask for them.
class KELVARIS_CORE_API ApplicationSettings
{
public:
    /// Whether each script call writes diagnostic lines. Read afresh on each use: it may change at any time.
    bool logScriptCalls() const noexcept { return m_logScriptCalls; }

    /// For the host's own use.
    void setLogScriptCalls(bool log) noexcept { m_logScriptCalls = log; }

private:
    bool m_logScriptCalls = false;
};

} // namespace Kelvaris::System
