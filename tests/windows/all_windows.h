#pragma once

#include "host/shell/plugin_library.h"
#include "tests/support/temporary_folder.h"

#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The plug-in, and bundles of two samples: a design with a short title and one whose title is longer than any window.
class Samples
{
public:
    Samples();
    ~Samples();

    std::string example() const { return path("rc_lowpass.kvbdl.zip"); }
    std::string barrel() const { return path("samples.kvexs"); }
    std::string directory() const { return m_folder.path().string(); }
    std::string path(const char* name) const { return (m_folder / name).string(); }

private:
    TemporaryFolder m_folder;
    std::unique_ptr<HostShell::PluginLibrary> m_plugin;
};

/// One window in one state.
struct WindowCase
{
    const char* name;

    /// Opens the window, brings it into its state, hands it over and closes it.
    void (*withWindow)(const Samples& samples, const std::function<void(QWidget& window)>& look);
};

void PrintTo(const WindowCase& window, std::ostream* out);

/// Every window of the plug-in and of the host, and the dialogs that they open.
const std::vector<WindowCase>& allWindows();

/// Calls a function of the plug-in and hands over the window that it has opened, closing it afterwards.
void withWindowOf(const char* function, const std::vector<std::vector<std::string>>& arguments,
                  const std::function<void(QWidget& window)>& look);

/// The same for a function that returns when its dialog is closed.
void withDialogOf(const char* function, const std::vector<std::vector<std::string>>& arguments,
                  const std::function<void(QWidget& dialog)>& look);

/// A window that is open; null when none is.
QWidget* anyOpenWindow();

/// Waits until the window is the active one and nothing more happens in it.
void settle(QWidget& window);

/// The visible child of that class, the first of them.
template <class Widget>
Widget& visibleChild(QWidget& window)
{
    for (Widget* child : window.findChildren<Widget*>()) {
        if (child->isVisible())
            return *child;
    }
    throw std::runtime_error{std::string{"no visible "} + Widget::staticMetaObject.className()};
}
