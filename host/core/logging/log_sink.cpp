#include "host/core/logging/log_sink.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <memory>
#include <mutex>
#include <utility>

namespace Kelvaris::System::Logging {

namespace {

struct Destination
{
    std::mutex mutex;
    LogSink sink;
    LogLevel least = LogLevel::diagnostic;
};

Destination& destination()
{
    // never destroyed: a library that is unloaded at the very end may still have something to say
    static Destination* const destination = new Destination;
    return *destination;
}

std::pair<LogSink, LogLevel> settings()
{
    const std::lock_guard lock{destination().mutex};
    return {destination().sink, destination().least};
}

std::unique_ptr<spdlog::logger> makeStandardError()
{
    auto logger = std::make_unique<spdlog::logger>("kelvaris", std::make_shared<spdlog::sinks::stderr_sink_mt>());
    logger->set_pattern("%v");
    logger->set_level(spdlog::level::trace);
    // a line is worth most when the program is about to crash
    logger->flush_on(spdlog::level::trace);
    return logger;
}

void writeToStandardError(const LogLine& line)
{
    static spdlog::logger* const logger = makeStandardError().release();
    const auto level = line.level == LogLevel::error ? spdlog::level::err : spdlog::level::debug;
    logger->log(level, toText(line));
}

} // namespace

LogSink setLogSink(LogSink sink)
{
    const std::lock_guard lock{destination().mutex};
    return std::exchange(destination().sink, std::move(sink));
}

void setLogLevel(LogLevel level)
{
    const std::lock_guard lock{destination().mutex};
    destination().least = level;
}

std::string toText(const LogLine& line)
{
    const std::string level = line.level == LogLevel::error ? "error " : "diagnostic ";
    if (line.category.empty())
        return level + line.message;
    return level + "[" + line.category + "] " + line.message;
}

void deliver(const LogLine& line)
{
    // a copy, since a sink may set another one while it runs
    const auto [sink, least] = settings();
    if (line.level < least)
        return;
    if (sink)
        return sink(line);
    writeToStandardError(line);
}

} // namespace Kelvaris::System::Logging
