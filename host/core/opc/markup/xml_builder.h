#pragma once

#include "host/core/opc/markup/xml_document_data.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// Reads markup in one pass and builds the document, or says at which place it is not well-formed.
///
/// The text is valid UTF-8 of characters that XML allows; so no NUL stands in it, and the one behind its end stops
/// every loop.
class XmlBuilder
{
public:
    explicit XmlBuilder(XmlDocument::Data& data) noexcept;

    /// @param begin  where the document begins behind its declaration
    XmlFault build(std::size_t begin);

private:
    using Node = XmlDocument::Data::Node;

    bool readAll();
    bool readMarkup();
    bool readDeclared();
    bool readComment();
    bool readCharacterData();
    bool readProcessingInstruction();
    bool readText();
    bool readStartTag();
    bool readAttributes();
    bool readAttribute();
    bool readValue(std::string_view& value);
    bool readEndTag();
    bool readReference(std::string& resolved);
    bool readCharacterReference(std::string_view reference, std::string& resolved);
    bool readQualifiedName(std::string_view& written, std::size_t& prefixLength);

    void openElement(const char* begin, std::string_view writtenName, std::size_t prefixLength);
    void closeElement(const char* endTag);
    bool addAttribute(std::string_view writtenName, std::size_t prefixLength, std::string_view value);
    bool addDeclaration(std::string_view prefix, std::string_view uri);
    void addText(std::string_view text);
    bool resolveNamespaces();
    bool checkAttributes();

    /// The text between two places with line ends made one, and, outside CDATA sections, references resolved.
    bool resolve(const char* begin, const char* end, bool isValue, std::string_view& resolved);

    bool skipSpace();
    bool isAtEnd() const noexcept { return m_at == m_end; }
    std::string_view rest() const noexcept { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }
    std::uint32_t offsetOf(const char* at) const noexcept { return static_cast<std::uint32_t>(at - m_begin); }
    Node& openNode() noexcept { return m_data.nodes[m_open]; }

    bool fail(std::string what, OpcError error = OpcError::invalidXml, std::string_view rule = "M1.20");
    bool failLimit(std::string what);

    XmlDocument::Data& m_data;
    const char* m_begin;
    const char* m_end;
    const char* m_at;
    std::uint32_t m_open = noIndex; ///< the innermost element that is not closed yet
    std::size_t m_depth = 0;
    XmlFault m_fault;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
