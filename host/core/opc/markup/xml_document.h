#pragma once

#include "host/core/opc/markup/text_edits.h"
#include "host/core/text/shared_text.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

class XmlElement;

/// All views of an attribute or an element are valid as long as their document, wherever that is moved to.
struct XmlAttribute
{
    std::string_view namespaceUri; ///< empty for none: the default namespace does not count for attributes
    std::string_view prefix;
    std::string_view name;  ///< without the prefix
    std::string_view value; ///< with references resolved and white space normalised

    bool is(std::string_view wantedNamespace, std::string_view wantedName) const noexcept
    {
        return name == wantedName && namespaceUri == wantedNamespace;
    }
};

/// An XML document that holds to XML 1.0 and Namespaces in XML 1.0 to the letter, without a document type (M1.17,
/// M1.18).
class KELVARIS_CORE_API XmlDocument
{
public:
    XmlDocument(XmlDocument&&) noexcept;
    XmlDocument& operator=(XmlDocument&&) noexcept;
    ~XmlDocument();

    XmlElement root() const noexcept;

    /// Of all depths.
    std::size_t elementCount() const noexcept;

    /// The document as UTF-8 without a byte order mark.
    std::string_view text() const noexcept;

    /// The same, as the document's last deed: its elements are gone then.
    std::string takeText() &&;

    /// How a document is kept; for those that read one.
    struct Data;

private:
    friend Expected<XmlDocument, ErrorCode2> parseXml(std::span<const std::byte> bytes, std::string_view subject);

    explicit XmlDocument(std::unique_ptr<Data> data) noexcept;

    std::unique_ptr<Data> m_data;
};

/// One element of a document; cheap to copy. It is valid as long as its document, wherever that is moved to.
class KELVARIS_CORE_API XmlElement
{
public:
    std::string_view namespaceUri() const noexcept;
    std::string_view prefix() const noexcept;
    std::string_view name() const noexcept;

    bool is(std::string_view wantedNamespace, std::string_view wantedName) const noexcept
    {
        return name() == wantedName && namespaceUri() == wantedNamespace;
    }

    /// Those that stand on the element, without namespace declarations, in order.
    std::span<const XmlAttribute> attributes() const noexcept;

    /// @return  null when there is none of that name
    const XmlAttribute* attribute(std::string_view wantedNamespace, std::string_view wantedName) const noexcept;

    std::optional<XmlElement> firstChild() const noexcept;
    std::optional<XmlElement> nextSibling() const noexcept;

    /// The characters that stand directly in the element, with references resolved and without those of its children.
    std::string text() const;

    /// The same in stretches: in front of the first child, behind the first, behind the second, ...
    std::vector<std::string> textRuns() const;

    /// Whether anything but white space stands directly in the element.
    bool hasText() const noexcept;

    /// The namespace that `prefix` stands for at this element; the empty prefix for the default one.
    std::optional<std::string_view> namespaceOf(std::string_view prefix) const noexcept;

    /// A prefix, not the empty one, that the element itself declares for a namespace.
    std::optional<std::string_view> declaredPrefixOf(std::string_view namespaceUri) const noexcept;

    /// Where the element stands in `XmlDocument::text`, its tags included.
    TextRange range() const noexcept;

    /// Where its end tag stands; empty at the end of "<a/>".
    TextRange endTag() const noexcept;

    /// For messages: the name with its prefix, as it is written.
    std::string_view writtenName() const noexcept;

private:
    friend class XmlDocument;
    XmlElement(const XmlDocument::Data& data, std::uint32_t index) noexcept : m_data{&data}, m_index{index} {}

    const XmlDocument::Data* m_data;
    std::uint32_t m_index;
};

/// Reads `bytes`: UTF-8 or UTF-16, with or without a byte order mark.
///
/// @param subject  what an error is about: "file: /part"
/// @return  opc 15  not well-formed, or of another encoding
///          opc 16  there is a document type declaration
///          opc 23  larger or deeper than the limits
KELVARIS_CORE_API Expected<XmlDocument, ErrorCode2> parseXml(std::span<const std::byte> bytes,
                                                             std::string_view subject);

/// `text` as the content of an element, or as the value of an attribute in double quotes. Everything that a reader
/// would take for something else, line ends and tabs of attributes included, becomes a reference.
KELVARIS_CORE_API std::string escapedText(std::string_view text);
KELVARIS_CORE_API void appendEscapedAttribute(std::string& target, std::string_view text);

/// Values of attributes of which most are the one before: that is escaped once.
class RepeatedAttribute
{
public:
    void append(std::string& target, const Text::SharedText& text)
    {
        if (!text.isSharedWith(m_text)) {
            m_escaped.clear();
            appendEscapedAttribute(m_escaped, text);
            m_text = text;
        }
        target += m_escaped;
    }

private:
    Text::SharedText m_text;
    std::string m_escaped;
};

/// Whether `text` is UTF-8 of characters that XML 1.0 can hold.
KELVARIS_CORE_API bool isXmlText(std::string_view text) noexcept;

/// Whether `text` is a name without a colon (Namespaces in XML, NCName), as xsd:ID asks.
KELVARIS_CORE_API bool isNcName(std::string_view text) noexcept;

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
