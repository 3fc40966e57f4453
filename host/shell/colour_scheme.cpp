#include "host/shell/colour_scheme.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

namespace HostShell {

namespace {

/// What differs from one scheme to the other; everything else follows from these.
struct Colours
{
    QRgb window;
    QRgb base;
    QRgb alternateBase;
    QRgb button;
    QRgb text;
    QRgb faintText; ///< disabled, or a placeholder
    QRgb highlight;
    QRgb link;
};

constexpr Colours light{0xffefefef, 0xffffffff, 0xfff6f6f6, 0xffefefef, 0xff141414, 0xff6e6e6e, 0xff2f6fb5, 0xff0b57a4};
constexpr Colours dark{0xff2b2d30, 0xff1e1f22, 0xff26282b, 0xff3a3d41, 0xffe6e6e6, 0xff9a9da1, 0xff3671b8, 0xff7fb3f0};

QPalette paletteOf(const Colours& colours)
{
    QPalette palette{QColor{colours.button}, QColor{colours.window}};
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, colours.text);
    palette.setColor(QPalette::Base, colours.base);
    palette.setColor(QPalette::AlternateBase, colours.alternateBase);
    palette.setColor(QPalette::ToolTipBase, colours.alternateBase);
    palette.setColor(QPalette::PlaceholderText, colours.faintText);
    palette.setColor(QPalette::Highlight, colours.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colours.link);
    palette.setColor(QPalette::LinkVisited, colours.link);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, colours.faintText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colours.button);
    return palette;
}

} // namespace

void applyColourScheme(QApplication& application)
{
    const QByteArray wanted = qgetenv(colourSchemeVariable);
    if (wanted != "light" && wanted != "dark")
        return;
    // a desktop's own style may take its colours from elsewhere
    QApplication::setStyle(QStringLiteral("Fusion"));
    application.setPalette(paletteOf(wanted == "dark" ? dark : light));
}

} // namespace HostShell
