#pragma once

#include "host/support/function_registry.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace HostShell {

/// What a user wants to know of a function while writing a call.
struct FunctionHelp
{
    QString name;
    QString signature;    ///< "_create_example(files, output, title[, description])"
    QStringList required; ///< the names of the arguments that every call has
    QString markdown;     ///< the documentation, empty for a function that has none
};

/// The help for a function. One that the document of the functions does not tell about gets arguments with numbers for
/// names.
FunctionHelp helpOf(const Kelvaris::RegisteredFunction& function);

/// The help for every registered function, in their order, and for what the host adds to the language.
std::vector<FunctionHelp> helpOfAll();

} // namespace HostShell
