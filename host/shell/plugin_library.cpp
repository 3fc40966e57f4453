#include "host/shell/plugin_library.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <filesystem>

namespace HostShell {

using Kelvaris::System::Expected;

PluginLibrary::PluginLibrary(const QString& path) : m_library{path}
{
    // every symbol at once: a plug-in that does not fit this host is refused here and not in the middle of a call
    m_library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
}

PluginLibrary::~PluginLibrary()
{
    m_library.unload();
}

Expected<std::unique_ptr<PluginLibrary>, PluginError> PluginLibrary::load(const QString& path)
{
    const QString wanted =
        path.isEmpty() ? programDirectory() + QStringLiteral("/../lib/hollerwick/hollerwick.so") : path;
    const QString file = QDir::cleanPath(QFileInfo{wanted}.absoluteFilePath());
    if (!QFileInfo{file}.isFile())
        return PluginError{"there is no plug-in " + file.toStdString()};
    std::unique_ptr<PluginLibrary> plugin{new PluginLibrary{file}};
    if (!plugin->m_library.load())
        return PluginError{plugin->m_library.errorString().toStdString()};
    return plugin;
}

QString programDirectory()
{
    std::error_code ignored; // an unreadable link gives the empty path, under which no plug-in is found
    const auto program = std::filesystem::read_symlink("/proc/self/exe", ignored);
    return QString::fromStdString(program.parent_path().string());
}

} // namespace HostShell
