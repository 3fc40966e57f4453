#pragma once

#include "kelvaris/system/expected.h"

#include <string>
#include <vector>

namespace HostShell {

/// Why a word is no argument, as the end of a sentence that begins with "argument 2".
struct ArgumentError
{
    std::string text;
};

/// The texts of one argument of a script function, from one word of the command line.
///
/// A word that begins with "[" is a JSON array of texts; any other word is a text, the argument an array of one.
/// @param word  valid UTF-8
/// @return  valid UTF-8 without any NUL
Kelvaris::System::Expected<std::vector<std::string>, ArgumentError> parseCallArgument(const std::string& word);

} // namespace HostShell
