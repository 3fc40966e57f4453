#pragma once

#include <QtCore/QString>

#include <optional>
#include <string>
#include <vector>

namespace HostShell {

/// The call that opens a window.
struct WindowCall
{
    std::string function;
    std::vector<std::vector<std::string>> arguments;
};

/// How a file is opened that a user gives to the program.
struct FileOpening
{
    bool isScript = false;
    std::optional<WindowCall> call = {}; ///< the window that fits; none for a script, and for what cannot be opened
    QString failure = {};                ///< why it cannot be opened, as one sentence
};

/// An example and a scriptable bundle go to their editors, a barrel to the one for barrels, any other package to the
/// viewer, and a directory to the browser of loose examples. What is in a file counts, not its name; only a script is
/// known by ".js".
FileOpening openingOf(const QString& path);

} // namespace HostShell
