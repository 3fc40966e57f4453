#include "tests/host/core/opc/package_walks.h"

#include "host/core/opc/package_access.h"
#include "tests/host/core/opc/package_file.h"

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;

std::vector<std::string> partNames(const OpcPackagePartCollection& parts)
{
    std::vector<std::string> names;
    for (auto it = parts.begin(); it != OpcPackaging::detail::OpcPackagePartCollectionIteratorSentinel{}; ++it)
        names.push_back(nameOf(*it));
    return names;
}

std::vector<std::string> partNames(const OpcPackage& package)
{
    return partNames(package.parts().value());
}

std::vector<std::string> relationshipLines(const OpcPackageRelationshipCollection& relationships)
{
    std::vector<std::string> lines;
    for (auto it = relationships.begin();
         it != OpcPackaging::detail::OpcPackageRelationshipCollectionIteratorSentinel{}; ++it) {
        const std::string type = toStdString((*it).type());
        lines.push_back(toStdString((*it).id()) + ' ' + type.substr(type.rfind('/') + 1) + ' ' +
                        toStdString((*it).targetUri().value().text()));
    }
    return lines;
}

std::string nameOf(const OpcPackagePart& part)
{
    return toStdString(part.uri().value().toString().value());
}

std::string bytesOf(const OpcPackagePart& part)
{
    const auto bytes = OpcPackaging::detail::PackageAccess::data(part)
                           ->parts()
                           .read(*OpcPackaging::detail::PackageAccess::record(part))
                           .value();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}
