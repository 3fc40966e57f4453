#pragma once

#include <QtCore/QSize>
#include <QtWidgets/QWidget>

#include <memory>

/// What a window that says nothing of its size begins with: its views show usual names and values without cutting them.
inline constexpr QSize workingSize{960, 640};

/// Shows a modeless window that deletes itself when it is closed. A window that could not be filled never gets here:
/// its owner drops it on the way out.
template <class Window>
void showAndRelease(std::unique_ptr<Window> window)
{
    Window* const shown = window.release();
    shown->setAttribute(Qt::WA_DeleteOnClose);
    shown->show();
}
