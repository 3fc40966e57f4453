#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/application_settings.h"
#include "kelvaris/system/logging/application_logger.h"

namespace Kelvaris::System {

/// The process's application object.
class KELVARIS_CORE_API Application
{
public:
    /// Never null: made on first use, alive until the process ends.
    static Application* instance();

    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    const ApplicationSettings& settings() const noexcept { return m_settings; }

    /// For the host's own use.
    ApplicationSettings& settings() noexcept { return m_settings; }

    Logging::ApplicationLogger& logger() noexcept { return m_logger; }

private:
    Application();
    ~Application();

    ApplicationSettings m_settings;
    Logging::ApplicationLogger m_logger;
};

} // namespace Kelvaris::System
