#pragma once

#include <string_view>

/// The names by which bundles are laid out; see docs/format.md.
namespace Kelvaris::System::IO::Bundle::Layout {

inline constexpr std::string_view contentRelationship =
    "http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content";
inline constexpr std::string_view primaryFileRelationship =
    "http://schemas.kelvaris.example/package/2025/relationships/example-bundle/primary-file";
inline constexpr std::string_view documentationRelationship =
    "http://schemas.kelvaris.example/package/2025/relationships/example-bundle/documentation";
inline constexpr std::string_view exampleRelationship =
    "http://schemas.kelvaris.example/package/2025/relationships/barrel-of-examples/example";
inline constexpr std::string_view rootSchematicRelationship =
    "http://schemas.kelvaris.example/package/2025/relationships/schematic-bundle/root";
inline constexpr std::string_view descendantSchematicRelationship =
    "http://schemas.kelvaris.example/package/2025/relationships/schematic-bundle/descendant";
inline constexpr std::string_view scriptRelationship =
    "http://schemas.kelvaris.example/package/2025/relationships/scriptable-bundle/script";
inline constexpr std::string_view propertiesRelationship =
    "http://schemas.kelvaris.example/package/2025/relationships/bundle/properties";

inline constexpr std::string_view propertiesPartName = "/bundle.xml";
inline constexpr std::string_view propertiesNamespace = "http://schemas.kelvaris.example/package/2025/bundle";
inline constexpr std::string_view propertiesMediaType = "application/vnd.kelvaris.bundle-properties+xml";

inline constexpr std::string_view exampleMediaType = "application/vnd.kelvaris.example-bundle+zip";

inline constexpr std::string_view scriptPartName = "/script.kvscr";
inline constexpr std::string_view schematicsFolder = "/schematics/";
inline constexpr std::string_view externalSchematicsFolder = "/schematics/external/";

/// Where the documentation page is looked for when no relationship names it, in this order.
inline constexpr std::string_view documentationPartNames[] = {
    "/content/documentation.html",
    "/content/readme.html",
    "/content/index.html",
};

} // namespace Kelvaris::System::IO::Bundle::Layout
