#include "kelvaris/system/application.h"

namespace Kelvaris::System {

Application::Application() = default;

Application::~Application() = default;

Application* Application::instance()
{
    // never destroyed: libraries ask for it while the process takes them down
    static Application* const application = new Application;
    return application;
}

} // namespace Kelvaris::System
