#pragma once

#include "kelvaris/system/expected.h"

#include <QtCore/QLibrary>
#include <QtCore/QString>

#include <memory>
#include <string>

namespace HostShell {

/// Why a plug-in was not loaded, as one sentence with its path.
struct PluginError
{
    std::string text;
};

/// A loaded plug-in: its functions are registered for as long as this lives.
class PluginLibrary
{
public:
    /// @param path  empty for "../lib/hollerwick/hollerwick.so" beside the program
    static Kelvaris::System::Expected<std::unique_ptr<PluginLibrary>, PluginError> load(const QString& path);

    /// Unloads the plug-in; none of its objects may be left.
    ~PluginLibrary();

    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

private:
    explicit PluginLibrary(const QString& path);

    QLibrary m_library;
};

/// The directory that the running program lies in.
QString programDirectory();

} // namespace HostShell
