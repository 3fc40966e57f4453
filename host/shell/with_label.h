#pragma once

#include <QtCore/QString>

class QWidget;

namespace HostShell {

/// A pane below its label, whose mnemonic leads to it. The label's text is the pane's name for assistive tools.
QWidget* withLabel(const QString& text, QWidget* pane);

} // namespace HostShell
