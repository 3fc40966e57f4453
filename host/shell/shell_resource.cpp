#include "host/shell/shell_resource.h"

#include <QtCore/QDir>

// the macro declares a function of the global namespace
static void initializeShellResource()
{
    Q_INIT_RESOURCE(shell);
}

namespace HostShell {

void loadShellResource()
{
    initializeShellResource();
}

} // namespace HostShell
