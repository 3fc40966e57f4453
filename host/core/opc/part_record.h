#pragma once

#include "host/core/opc/markup/content_types.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/package_items.h"

#include <memory>
#include <string>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// A part of an open package; handles share it.
struct PartRecord
{
    std::string name;
    std::string key; ///< of the name, folded
    Markup::MediaType mediaType;
    ItemPtr item;
    OpcPackageCompressionType compression = OpcPackageCompressionType::normal; ///< for what is written into it
    bool isRemoved = false;

    bool holdsRelationships() const noexcept { return Markup::isRelationshipsPartName(name); }
};

using PartPtr = std::shared_ptr<PartRecord>;

} // namespace Kelvaris::System::IO::OpcPackaging::detail
