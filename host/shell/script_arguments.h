#pragma once

#include "kelvaris/system/expected.h"

#include <QtQml/QJSValue>

#include <string>
#include <vector>

namespace HostShell {

/// Why a script's values are no arguments of a function, as the end of a sentence that begins with its name.
struct ScriptArgumentError
{
    std::string text;
};

/// The arguments of a script function from what a script passed: texts, or arrays of texts.
/// @param values  an array
Kelvaris::System::Expected<std::vector<std::vector<std::string>>, ScriptArgumentError>
toCallArguments(const QJSValue& values);

} // namespace HostShell
