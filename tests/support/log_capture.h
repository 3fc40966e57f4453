#pragma once

#include "host/core/logging/log_sink.h"

#include <memory>
#include <string>
#include <vector>

/// Collects what the process's logger says for as long as it lives; then the sink before is back.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();

    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// In order, each as "error [ui] text".
    std::vector<std::string> lines() const { return *m_lines; }

private:
    std::shared_ptr<std::vector<std::string>> m_lines;
    Kelvaris::System::Logging::LogSink m_before;
};
