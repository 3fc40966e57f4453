#pragma once

#include <string_view>

/// The fixed names of ISO/IEC 29500-2.
namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// The item that holds the content types; not a part, and no part may take its name (M2.1).
inline constexpr std::string_view contentTypesItemName = "[Content_Types].xml";
inline constexpr std::string_view packageRelationshipsPartName = "/_rels/.rels";

/// The source of the package's own relationships.
inline constexpr std::string_view packageSource = "/";

inline constexpr std::string_view relationshipsMediaType = "application/vnd.openxmlformats-package.relationships+xml";
inline constexpr std::string_view corePropertiesMediaType =
    "application/vnd.openxmlformats-package.core-properties+xml";

inline constexpr std::string_view corePropertiesRelationshipType =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";

/// Parts and relationships of digital signatures.
inline constexpr std::string_view signatureOriginMediaType =
    "application/vnd.openxmlformats-package.digital-signature-origin";
inline constexpr std::string_view signatureMediaType =
    "application/vnd.openxmlformats-package.digital-signature-xmlsignature+xml";
inline constexpr std::string_view certificateMediaType =
    "application/vnd.openxmlformats-package.digital-signature-certificate";
inline constexpr std::string_view signatureOriginRelationshipType =
    "http://schemas.openxmlformats.org/package/2006/relationships/digital-signature/origin";
inline constexpr std::string_view signatureRelationshipType =
    "http://schemas.openxmlformats.org/package/2006/relationships/digital-signature/signature";
inline constexpr std::string_view certificateRelationshipType =
    "http://schemas.openxmlformats.org/package/2006/relationships/digital-signature/certificate";

inline constexpr std::string_view contentTypesNamespace =
    "http://schemas.openxmlformats.org/package/2006/content-types";
inline constexpr std::string_view relationshipsNamespace =
    "http://schemas.openxmlformats.org/package/2006/relationships";
inline constexpr std::string_view corePropertiesNamespace =
    "http://schemas.openxmlformats.org/package/2006/metadata/core-properties";

inline constexpr std::string_view xmlNamespace = "http://www.w3.org/XML/1998/namespace";
inline constexpr std::string_view schemaInstanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr std::string_view markupCompatibilityNamespace =
    "http://schemas.openxmlformats.org/markup-compatibility/2006";
inline constexpr std::string_view dublinCoreNamespace = "http://purl.org/dc/elements/1.1/";
inline constexpr std::string_view dublinCoreTermsNamespace = "http://purl.org/dc/terms/";

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
