#include "script/webkit_in_memory.h"

#ifdef HOLLERWICK_HAVE_WEBKIT

#include <QtCore/QLibrary>

namespace Script {

void keepWebKitInMemory()
{
    QLibrary webKit{QStringLiteral("Qt5WebKitWidgets"), 5};
    webKit.setLoadHints(QLibrary::PreventUnloadHint);
    // It is loaded already, since the module needs it. Should it not be found by this name, pages show all the same.
    (void)webKit.load();
}

} // namespace Script

#else

namespace Script {

void keepWebKitInMemory() {}

} // namespace Script

#endif
