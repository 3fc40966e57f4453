#pragma once

#include "kelvaris/system/io/bundle/abstract_bundle.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"

#include <QtCore/QJsonObject>

#include <string>
#include <vector>

namespace HostShell {

/// The texts that describe a bundle, as they stand in it; empty where there is none.
struct BundleTexts
{
    std::string title;
    std::string description;
    std::vector<std::string> keywords;
};

/// @return  the error of a package whose core properties cannot be read
Kelvaris::System::Expected<BundleTexts, Kelvaris::System::ErrorCode2>
textsOf(Kelvaris::System::IO::OpcPackaging::OpcPackage& package);

QJsonObject toJson(const BundleTexts& texts);

std::string joined(const std::vector<std::string>& texts);

} // namespace HostShell
