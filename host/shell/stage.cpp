#include "host/shell/stage.h"

#include "host/shell/host_application.h"
#include "host/shell/log_output.h"
#include "host/shell/program_words.h"
#include "host/shell/typed_keys.h"
#include "host/shell/window_grabber.h"

#include <QtCore/QDir>

namespace HostShell {

using Kelvaris::System::Expected;

Stage::Stage() = default;

Stage::~Stage() = default;

Expected<std::unique_ptr<Stage>, StageError> Stage::withoutWindows()
{
    std::unique_ptr<Stage> stage{new Stage};
    stage->m_plain = std::make_unique<QCoreApplication>(programWordCount, programWords);
    return stage;
}

Expected<std::unique_ptr<Stage>, StageError> Stage::withWindows(const CommandLine& line)
{
    auto keys = parseKeys(QString::fromStdString(line.keys));
    if (!keys)
        return StageError{"--keys: " + keys.error().text};
    std::unique_ptr<Stage> stage{new Stage};
    if (line.grabDirectory.empty()) {
        stage->m_windows = HostApplication::connect();
        return stage;
    }
    const QString directory = QString::fromStdString(line.grabDirectory);
    if (!QDir{}.mkpath(directory))
        return StageError{"--grab: cannot make the directory " + line.grabDirectory};
    if (!displayIsNamed())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    stage->m_windows = HostApplication::connect();
    stage->m_grabber = std::make_unique<WindowGrabber>(directory, std::move(*keys));
    return stage;
}

int Stage::finish(int status)
{
    if (m_windows != nullptr)
        m_windows->runUntilWindowsAreClosed();
    if (m_grabber == nullptr || m_grabber->failure().isEmpty())
        return status;
    complain(m_grabber->failure().toStdString());
    return 1;
}

} // namespace HostShell
