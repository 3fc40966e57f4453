#include "host/core/bundle/numbered_parts.h"

#include "host/core/opc/markup/part_name.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

namespace Kelvaris::System::IO::Bundle::detail {

namespace {

using OpcPackaging::OpcError;

bool isNameTaken(const ErrorCode2& error)
{
    if (&error.category() != &OpcPackaging::opc_error_category())
        return false;
    return error.value() == static_cast<int>(OpcError::partExists) ||
           error.value() == static_cast<int>(OpcError::derivedPartName);
}

} // namespace

std::string numberedPartName(const std::string& partName, int number)
{
    const std::string_view extension = OpcPackaging::Markup::extensionOf(partName);
    const std::size_t end = partName.size() - (extension.empty() ? 0 : extension.size() + 1);
    return partName.substr(0, end) + '-' + std::to_string(number) + partName.substr(end);
}

Result<PartPtr> createNumberedPart(PackageData& package, const std::string& name, std::string_view mediaType,
                                   const PayloadPtr& bytes)
{
    auto part = package.createPart(name, mediaType, bytes);
    for (int number = 2; !part && isNameTaken(part.error()); ++number)
        part = package.createPart(numberedPartName(name, number), mediaType, bytes);
    return part;
}

} // namespace Kelvaris::System::IO::Bundle::detail
