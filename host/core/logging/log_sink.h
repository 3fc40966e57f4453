#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/logging/abstract_logger.h"

#include <functional>
#include <string>

/// Where the lines of the process's logger go, for the host program and for tests. All text is UTF-8.
namespace Kelvaris::System::Logging {

struct LogLine
{
    LogLevel level;
    std::string category; ///< empty for a line without one
    std::string message;
};

using LogSink = std::function<void(const LogLine&)>;

/// Sends lines to `sink` from now on; the empty sink stands for standard error. What a sink throws is dropped. A line
/// reaches the sink on the thread that wrote it: a script may run on a thread of its own.
/// @return  the sink before
KELVARIS_CORE_API LogSink setLogSink(LogSink sink);

/// Drops lines below `level` from now on, whatever the sink; at first nothing is dropped.
KELVARIS_CORE_API void setLogLevel(LogLevel level);

/// "error [ui] message", or "error message" for a line without a category.
KELVARIS_CORE_API std::string toText(const LogLine& line);

/// Puts one line into the sink, unless its level is dropped.
void deliver(const LogLine& line);

} // namespace Kelvaris::System::Logging
