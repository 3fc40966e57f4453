#include "host/shell/log_output.h"

#include "kelvaris/system/application.h"

#include <QtCore/QString>

#include <cstdio>
#include <utility>

namespace HostShell {

namespace {

using namespace Kelvaris::System;
using Logging::LogLevel;
using Logging::LogLine;

bool isShown(LogThreshold threshold, LogLevel level)
{
    if (threshold == LogThreshold::off)
        return false;
    return threshold == LogThreshold::diagnostic || level == LogLevel::error;
}

// What Qt says about its surroundings when all is as it should be, for each window anew.
bool isNoise(const QString& message)
{
    return message.startsWith(QLatin1String{"This plugin does not support "}) ||
           message.startsWith(QLatin1String{"QStandardPaths: XDG_RUNTIME_DIR not set"});
}

void logQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (isNoise(message))
        return;
    auto& logger = Application::instance()->logger();
    const std::string category = std::string{"qt/"} + (context.category == nullptr ? "default" : context.category);
    if (type == QtCriticalMsg || type == QtFatalMsg)
        logger.error(category.c_str(), message.toUtf8().constData());
    else
        logger.diagnostic(category, message.toStdString());
}

} // namespace

void startLog(LogThreshold threshold)
{
    Logging::setLogSink([threshold](const LogLine& line) {
        if (isShown(threshold, line.level))
            std::fprintf(stderr, "%s\n", Logging::toText(line).c_str());
    });
    qInstallMessageHandler(logQtMessage);
}

void complain(const std::string& sentence)
{
    std::fprintf(stderr, "hollerwick-host: %s\n", sentence.c_str());
}

LogTap::LogTap(Logging::LogSink see)
{
    m_before = Logging::setLogSink({});
    Logging::setLogSink([see = std::move(see), before = m_before](const LogLine& line) {
        see(line);
        if (before)
            before(line);
    });
}

LogTap::~LogTap()
{
    Logging::setLogSink(std::move(m_before));
}

} // namespace HostShell
