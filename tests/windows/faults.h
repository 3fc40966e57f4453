#pragma once

#include <QtWidgets/QWidget>

#include <string>
#include <vector>

/// What is wrong with a window, each fault as one line that names the widget. An empty list is a good window.
namespace Faults {

using Lines = std::vector<std::string>;

/// Texts of labels, buttons, tabs, headers, menus and placeholders that have less room than they need.
Lines cutOffTexts(const QWidget& window);

/// Widgets of one layout that lie over each other.
Lines overlaps(const QWidget& window);

/// Widgets whose text stands out from its background less than four and a half times.
Lines faintTexts(const QWidget& window);

/// Widgets that take the keyboard and have no name for assistive tools.
Lines namelessWidgets(const QWidget& window);

/// Labels of controls whose mnemonic leads nowhere.
Lines labelsWithoutBuddy(const QWidget& window);

/// Mnemonics that two controls of the window share.
Lines sharedMnemonics(const QWidget& window);

/// Goes round the window by Tab: controls that the keyboard does not reach, and steps that go back against the order in
/// which one reads.
Lines tabOrderFaults(QWidget& window);

/// Buttons that only a mouse can press, without a menu entry of the same effect.
Lines buttonsForTheMouseAlone(const QWidget& window);

} // namespace Faults
