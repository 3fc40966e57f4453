#pragma once

#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/string_vector2.h"

#include <filesystem>
#include <string>
#include <vector>

/// What tests want to know of a bundle, in the types in which it is quickly compared.

std::string text(const Kelvaris::System::String2& text);
std::vector<std::string> texts(const Kelvaris::System::StringVector2& texts);

/// The names of all parts under `folder`, in the package's order.
std::vector<std::string> partNames(const Kelvaris::System::IO::OpcPackaging::OpcPackage& package,
                                   const std::string& folder);

/// The files below a directory, relative to it and sorted.
std::vector<std::string> filesBelow(const std::filesystem::path& directory);
