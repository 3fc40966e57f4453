#pragma once

#include "kelvaris/system/file_path2.h"

#include <QtCore/QString>

/// The first free place for a new design: `title` below `targetDirectory`, otherwise the same with "_1", "_2" and so on
/// behind it. That with "_1000" is the last one tried and is given whether it is free or not.
///
/// No character of the title is replaced: a separator in it makes the place lie deeper. Nothing is created.
/// @return  lexically normal, in native separators
/// @throws std::filesystem::filesystem_error  "exists": a place cannot be looked at
QString proposeLocation(const Kelvaris::System::FilePath2& targetDirectory, const QString& title);

/// Whether `location` is there and holds something.
/// @throws std::filesystem::filesystem_error  "exists": it cannot be looked at;
///                                            "directory_iterator::directory_iterator": it is no directory, or must not
///                                            be read; "directory_iterator::operator++": reading it failed on the way
bool holdsEntries(const QString& location);

/// `path` with "." and ".." folded and native separators.
QString normalLocation(const Kelvaris::System::FilePath2& path);
