#pragma once

#include "host/core/logging/log_sink.h"
#include "host/shell/command_line.h"

#include <string>

namespace HostShell {

/// From now on the log's lines stand on standard error, those below `threshold` left out, and what Qt has to say is
/// part of the log.
void startLog(LogThreshold threshold);

/// One sentence on standard error, behind the program's name.
void complain(const std::string& sentence);

/// Sees every line of the log, before the threshold, and passes it on to where lines went until then. Taps end in the
/// reverse order of their beginning.
class LogTap
{
public:
    explicit LogTap(Kelvaris::System::Logging::LogSink see);
    ~LogTap();

    LogTap(const LogTap&) = delete;
    LogTap& operator=(const LogTap&) = delete;

private:
    Kelvaris::System::Logging::LogSink m_before;
};

} // namespace HostShell
