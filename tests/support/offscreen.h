#pragma once

#include <QtCore/QtGlobal>

/// Lets windows do without a display, unless the environment names a platform. For main functions, ahead of the
/// application: CTest lists the tests of a program without the environment of its tests.
inline void showWindowsOffscreen()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}
