#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/logging/abstract_logger.h"

#include <string_view>

namespace Kelvaris::System::Logging {

/// The logger of the process. A line goes to whatever the host program has set as its sink, standard error at first.
class KELVARIS_CORE_API ApplicationLogger : public AbstractLogger
{
public:
    ApplicationLogger();
    ~ApplicationLogger() override;

protected:
    void write(LogLevel level, std::u8string_view category, std::u8string_view message) noexcept override;
};

} // namespace Kelvaris::System::Logging
