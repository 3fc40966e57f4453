#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/string.h"
#include "kelvaris/system/string2.h"
#include "script/func_call_frame.h"

#include <optional>
#include <vector>

namespace Script {

/// The first text of argument `index`.
/// @throws std::out_of_range  the argument has none: "argument index out of range"
Kelvaris::System::String textArgument(const FuncCallFrame& frame, int index);

/// All texts of argument `index`; there may be none.
std::vector<Kelvaris::System::String> textsArgument(const FuncCallFrame& frame, int index);

/// The first text of argument `index`, or the empty text when the argument has none.
Kelvaris::System::String textArgumentOrEmpty(const FuncCallFrame& frame, int index);

/// The one text of argument 0 of a function that opens a window. With none, and with several, there is nothing to open
/// and the window asks or starts empty.
std::optional<Kelvaris::System::String> oneTextArgument(const FuncCallFrame& frame);

/// @throws SystemError  with core 5 when the text is not valid UTF-8
Kelvaris::System::FilePath2 toFilePath2(const Kelvaris::System::String& text);
std::vector<Kelvaris::System::FilePath2> toFilePaths(const std::vector<Kelvaris::System::String>& texts);

Kelvaris::System::String2 toString2(const Kelvaris::System::String& text);

} // namespace Script
