#pragma once

#include "host/core/bundle/bundle_kind.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Kelvaris::System::IO::Bundle::detail {

/// What "/bundle.xml" tells. Elements that nobody here knows are left alone, and stay when the document is changed.
struct BundleProperties
{
    std::string kindName;
    std::optional<std::string> manufacturer;
};

/// @param subject  what an error is about: "file: /bundle.xml"
/// @return  bundle 2, with the reason
Expected<BundleProperties, ErrorCode2> parseBundleProperties(std::span<const std::byte> bytes,
                                                             std::string_view subject);

/// The document of a new bundle.
std::string bundlePropertiesText(BundleKind kind);

/// The document `bytes` with another manufacturer; the empty text removes it.
/// @return  bundle 2 when `bytes` is no such document, or XML cannot hold the text
Expected<std::string, ErrorCode2> withManufacturer(std::span<const std::byte> bytes, std::string_view manufacturer,
                                                   std::string_view subject);

} // namespace Kelvaris::System::IO::Bundle::detail
