#pragma once

#include "kelvaris/system/error_code2.h"

#include <QtCore/QString>

class QMenu;
class QWidget;

/// What the editors of bundles ask and tell in the same words.
namespace EditorDialogs {

/// The name of a directory to add; empty when the user cancelled or left the field empty.
QString askForDirectoryName(QWidget* parent);

/// The path of a file to add; empty when the user cancelled.
QString askForFileToAdd(QWidget* parent);

/// Tells why a save failed.
/// @throws bad_expected_access<ErrorCode2>  the message is not valid UTF-8
void warnOfFailedSave(QWidget* parent, const Kelvaris::System::ErrorCode2& error);

} // namespace EditorDialogs
