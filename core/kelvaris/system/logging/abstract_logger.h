#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/string.h"
#include "kelvaris/system/string2.h"

#include <string_view>

namespace Kelvaris::System::Logging {

enum class LogLevel : int {
    diagnostic = 0,
    error = 1,
};

/// Takes lines of a category and a message. All text is UTF-8; `const char*` is NUL-terminated and not null.
class KELVARIS_CORE_API AbstractLogger
{
public:
    AbstractLogger(const AbstractLogger&) = delete;
    AbstractLogger& operator=(const AbstractLogger&) = delete;

    void diagnostic(const String& category, const String& message);

    void error(const String& category, const String& message);
    void error(const char* category, const char* message);

    /// The message is the code's.
    void error(const char* category, const ErrorCode2& code);
    void error(const String2& category, const ErrorCode2& code);

    /// A line without a category.
    void error(const ErrorCode2& code);

protected:
    AbstractLogger() = default;
    virtual ~AbstractLogger();

    /// Puts one line where lines go. Throws nothing.
    virtual void write(LogLevel level, std::u8string_view category, std::u8string_view message) noexcept = 0;
};

} // namespace Kelvaris::System::Logging
