#include "host/core/bundle/schematic_names.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/opc/markup/part_name.h"

namespace Kelvaris::System::IO::Bundle::detail {

namespace {

namespace Markup = OpcPackaging::Markup;

bool isBelow(const std::filesystem::path& relative)
{
    return !relative.empty() && *relative.begin() != "..";
}

} // namespace

std::string schematicPartName(const std::filesystem::path& file, const std::filesystem::path& rootDirectory)
{
    const std::filesystem::path relative = file.lexically_relative(rootDirectory);
    const bool isInside = isBelow(relative);
    const std::string_view folder = isInside ? Layout::schematicsFolder : Layout::externalSchematicsFolder;
    const std::filesystem::path place = isInside ? relative : file.filename();
    constexpr auto separator = static_cast<char>(std::filesystem::path::preferred_separator);
    return Markup::partNameFromFilePath(std::string{folder.substr(1)} + place.string(), separator).text;
}

} // namespace Kelvaris::System::IO::Bundle::detail
