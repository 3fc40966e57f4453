#pragma once

#include "host/core/opc/markup/xml_document.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <cstdint>
#include <forward_list>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// Why a document is not read; no `what` for one that is.
struct XmlFault
{
    OpcError error = OpcError::invalidXml;
    std::string_view rule = "M1.20"; ///< empty for a limit of ours
    std::size_t position = 0;        ///< in the text
    std::string what;

    bool isNone() const noexcept { return what.empty(); }
};

inline constexpr std::uint32_t noIndex = std::numeric_limits<std::uint32_t>::max();

/// A document in flat lists, so that reading a small one takes a handful of allocations. Offsets have 32 bits: the
/// limit on the size of a document is far below that.
struct XmlDocument::Data
{
    struct Node
    {
        std::string_view writtenName;
        std::string_view namespaceUri;
        std::uint32_t prefixLength = 0; ///< with the colon
        std::uint32_t parent = noIndex;
        std::uint32_t firstChild = noIndex;
        std::uint32_t lastChild = noIndex;
        std::uint32_t nextSibling = noIndex;
        std::uint32_t firstAttribute = 0;
        std::uint32_t attributeCount = 0;
        std::uint32_t firstDeclaration = 0;
        std::uint32_t declarationCount = 0;
        std::uint32_t declarationsInForce = 0;
        std::uint32_t firstText = noIndex;
        std::uint32_t lastText = noIndex;
        std::uint32_t begin = 0;
        std::uint32_t endTag = 0;
        std::uint32_t end = 0;
    };

    struct Declaration
    {
        std::string_view prefix;
        std::string_view uri;
    };

    struct TextPiece
    {
        std::string_view text;
        std::uint32_t behind = noIndex; ///< the child in front of it
        std::uint32_t next = noIndex;
    };

    std::optional<std::string_view> namespaceOf(std::uint32_t node, std::string_view prefix) const noexcept;

    std::string text;
    std::vector<Node> nodes;
    std::vector<XmlAttribute> attributes;
    std::vector<Declaration> declarations;
    std::vector<TextPiece> texts;
    /// Values and texts in which something was resolved; all others lie in `text`.
    std::forward_list<std::string> resolved;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
