#pragma once

// Included ahead of everything else in the sources of the module, by a switch of the compiler.

#include <QtCore/QByteArray>
#include <QtCore/QString>

// Qt's literals point into the module. Qt keeps some texts for longer than the window that they were for, the style its
// last drawn item for one, and would reach for them when the module is out of memory. So they are copied here.

#undef QStringLiteral
#define QStringLiteral(text) QString::fromUtf16(u"" text)

#undef QByteArrayLiteral
#define QByteArrayLiteral(text) QByteArray("" text, sizeof(text) - 1)
