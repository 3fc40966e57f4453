#pragma once

#include "kelvaris/system/io/opc_packaging/opc_package.h"

#include <string>
#include <vector>

/// The names of a collection's parts, in their order.
std::vector<std::string> partNames(const Kelvaris::System::IO::OpcPackaging::OpcPackagePartCollection& parts);
std::vector<std::string> partNames(const Kelvaris::System::IO::OpcPackaging::OpcPackage& package);

/// "id type-behind-the-last-slash target" of each relationship, in their order.
std::vector<std::string>
relationshipLines(const Kelvaris::System::IO::OpcPackaging::OpcPackageRelationshipCollection& relationships);

/// The name of a part.
std::string nameOf(const Kelvaris::System::IO::OpcPackaging::OpcPackagePart& part);

/// The bytes of a part.
std::string bytesOf(const Kelvaris::System::IO::OpcPackaging::OpcPackagePart& part);
