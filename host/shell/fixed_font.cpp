#include "host/shell/fixed_font.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QFontInfo>

namespace HostShell {

QFont fixedFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    // a platform that knows no desktop names its only font here
    if (!QFontInfo{font}.fixedPitch())
        font.setFamily(QStringLiteral("monospace"));
    return font;
}

} // namespace HostShell
