#pragma once

#include "kelvaris/export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Part names (ISO/IEC 29500-2, M1.1 to M1.12). All text is UTF-8; a valid name is ASCII.
namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// A part name, or what was given in its place and what is wrong with that.
struct PartName
{
    std::string text;  ///< the name, "/..."; what was given when it makes no name
    std::string fault; ///< the rule that is broken, a phrase for the reason of an error; empty for a valid name

    bool isValid() const noexcept { return fault.empty(); }
};

/// What is wrong with `name` as a part name; empty when nothing is. Allocates nothing for a valid name.
KELVARIS_CORE_API std::string partNameFault(std::string_view name);

/// Valid at a glance: nothing is percent-encoded, no segment is empty or ends with a dot. Nearly every name is.
bool isPlainPartName(std::string_view name) noexcept;

/// The name as it stands.
KELVARIS_CORE_API PartName partNameFromText(std::string_view text);

/// A relative path that is not percent-encoded: "\" and "/" both separate, "." segments are dropped, and each segment
/// is percent-encoded in full, "%" included.
KELVARIS_CORE_API PartName partNameFromRawPath(std::string_view path);

/// The same for a path in the grammar of a platform's paths.
/// @param separator  the platform's preferred one: "/" leaves the backslash an ordinary character, which no name can
/// hold
KELVARIS_CORE_API PartName partNameFromFilePath(std::string_view path, char separator);

/// The name as it stands, but for letters beyond ASCII, which are percent-encoded: later editions let names be IRIs.
KELVARIS_CORE_API PartName partNameFromIri(std::string text);

/// The name of an archive's item, without its first "/"; M3.2, M3.4. What is beyond ASCII is percent-encoded when the
/// archive says that the name is UTF-8. An item whose name makes no part name is no part (M2.16).
KELVARIS_CORE_API PartName partNameFromItemName(std::string_view itemName, bool isUtf8);

/// Equal for equivalent names, and for those alone: ASCII letters in lower case (M1.12).
KELVARIS_CORE_API std::string partNameKey(std::string_view name);

/// What stands behind the last dot of the last segment, as it is written; empty when there is none.
KELVARIS_CORE_API std::string_view extensionOf(std::string_view partName) noexcept;

/// Whether a Default of the content types may name that extension: the schema's pattern is a segment's characters
/// without the dot, and without the semicolon.
KELVARIS_CORE_API bool isDefaultExtension(std::string_view text) noexcept;

/// Whether a part of that name holds relationships: "/_rels/.rels", "/a/_rels/b.xml.rels", in any ASCII case (M1.30).
KELVARIS_CORE_API bool isRelationshipsPartName(std::string_view partName) noexcept;

/// "/_rels/.rels" for "/", "/a/_rels/b.xml.rels" for "/a/b.xml".
/// @param source  "/" or a valid part name
KELVARIS_CORE_API std::string relationshipsPartNameOf(std::string_view source);

/// The way back: "/" for "/_rels/.rels"; nothing when the name is none of a relationships part.
///
/// The source of a relationships part must not be one itself (M1.25): test the result with `isRelationshipsPartName`.
KELVARIS_CORE_API std::optional<std::string> sourceOfRelationshipsPart(std::string_view partName);

/// One piece of an interleaved part (M2.11 to M2.18).
struct PieceName
{
    std::string_view itemName; ///< the name of the item that the pieces make up
    std::uint32_t number = 0;
    bool isLast = false;
};

/// The piece that an item's name tells of: "a.xml/[0].piece", "a.xml/[1].last.piece", compared in any ASCII case.
/// Numbers have no leading zeros. Nothing for the name of a whole item. The view lies in `itemName`.
KELVARIS_CORE_API std::optional<PieceName> pieceNameOf(std::string_view itemName) noexcept;

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
