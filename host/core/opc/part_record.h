#pragma once

#include "host/core/opc/markup/content_types.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/package_items.h"
#include "host/core/text/text_view.h"

#include <memory>
#include <string>
#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// A part of an open package: an item of its file that has a name and a media type. Handles share it.
struct PartRecord : PackageItem
{
    explicit PartRecord(std::string partName)
        : name{std::move(partName)}, foldedName{Text::isAsciiLower(name) ? std::string{} : Markup::partNameKey(name)}
    {
    }

    /// Of the name; valid as long as the part.
    std::string_view key() const noexcept { return foldedName.empty() ? name : foldedName; }

    bool holdsRelationships() const noexcept { return Markup::isRelationshipsPartName(name); }

    const std::string name;
    const std::string foldedName; ///< empty when the name is its own key
    Markup::MediaType mediaType;
    OpcPackageCompressionType compression = OpcPackageCompressionType::normal; ///< for what is written into it
};

using PartPtr = std::shared_ptr<PartRecord>;

} // namespace Kelvaris::System::IO::OpcPackaging::detail
