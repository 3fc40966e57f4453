#include "host/shell/shell_icons.h"

#include "host/shell/shell_resource.h"

namespace HostShell {

QIcon shellIcon(const QString& name)
{
    loadShellResource();
    return QIcon::fromTheme(name, QIcon{QStringLiteral(":/hollerwick/host/icons/%1.svg").arg(name)});
}

} // namespace HostShell
