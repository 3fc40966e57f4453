#include "kelvaris/system/logging/application_logger.h"

#include "host/core/logging/log_sink.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::Logging {

ApplicationLogger::ApplicationLogger() = default;

ApplicationLogger::~ApplicationLogger() = default;

void ApplicationLogger::write(LogLevel level, std::u8string_view category, std::u8string_view message) noexcept
{
    try {
        deliver({level, std::string{Text::narrow(category)}, std::string{Text::narrow(message)}});
    } catch (...) {
        // lines tell of failures, often from inside a handler of one: where a line cannot go, there is no better place
        // to say so, and the failure that it tells of matters more
    }
}

} // namespace Kelvaris::System::Logging
