#include "tests/support/log_capture.h"

#include <utility>

using namespace Kelvaris::System;

LogCapture::LogCapture() : m_lines{std::make_shared<std::vector<std::string>>()}
{
    m_before = Logging::setLogSink(
        [lines = m_lines](const Logging::LogLine& line) { lines->push_back(Logging::toText(line)); });
}

LogCapture::~LogCapture()
{
    Logging::setLogSink(std::move(m_before));
}
