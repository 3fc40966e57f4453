#pragma once

#include "host/shell/command_line.h"
#include "kelvaris/system/expected.h"

#include <QtCore/QCoreApplication>

#include <memory>
#include <string>

namespace HostShell {

class HostApplication;
class WindowGrabber;

/// Why nothing can be run, as one sentence.
struct StageError
{
    std::string text;
};

/// What a command runs on: the application object, with windows or without, and who serves the windows.
///
/// Without windows there is no display connection, which is most of what starting costs.
class Stage
{
public:
    static Kelvaris::System::Expected<std::unique_ptr<Stage>, StageError> withoutWindows();

    /// Without a display in the environment, windows that are only photographed go to the offscreen platform; others go
    /// nowhere: ask `displayIsNamed` before.
    static Kelvaris::System::Expected<std::unique_ptr<Stage>, StageError> withWindows(const CommandLine& line);

    /// Deletes the windows that are left.
    ~Stage();

    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// Waits for the last window to be closed.
    /// @return  `status`, or 1 when a picture could not be saved
    int finish(int status);

private:
    Stage();

    std::unique_ptr<QCoreApplication> m_plain;
    std::unique_ptr<HostApplication> m_windows;
    std::unique_ptr<WindowGrabber> m_grabber;
};

} // namespace HostShell
