#include "kelvaris/system/logging/abstract_logger.h"

#include "host/core/text/text_view.h"

namespace Kelvaris::System::Logging {

AbstractLogger::~AbstractLogger() = default;

void AbstractLogger::diagnostic(const String& category, const String& message)
{
    write(LogLevel::diagnostic, category.toStdStringView(), message.toStdStringView());
}

void AbstractLogger::error(const String& category, const String& message)
{
    write(LogLevel::error, category.toStdStringView(), message.toStdStringView());
}

void AbstractLogger::error(const char* category, const char* message)
{
    error(String{category}, String{message});
}

void AbstractLogger::error(const char* category, const ErrorCode2& code)
{
    const String2 message = code.message();
    write(LogLevel::error, String{category}.toStdStringView(), Text::view(message));
}

void AbstractLogger::error(const String2& category, const ErrorCode2& code)
{
    const String2 message = code.message();
    write(LogLevel::error, Text::view(category), Text::view(message));
}

void AbstractLogger::error(const ErrorCode2& code)
{
    error(String2{}, code);
}

} // namespace Kelvaris::System::Logging
