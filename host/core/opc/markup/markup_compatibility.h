#pragma once

#include "host/core/opc/markup/schema_checks.h"
#include "host/core/opc/markup/xml_document.h"

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// A document as markup compatibility (ISO/IEC 29500-3) has it seen by one who understands a single namespace: what is
/// ignorable is dropped, alternatives are chosen, and what must be understood and is not is an error (M1.19, M1.31).
class MarkupCompatibility
{
public:
    using Visitor = std::function<SchemaFault(const XmlElement&)>;

    explicit MarkupCompatibility(std::string_view understood) noexcept : m_understood{understood} {}

    /// Calls `visit` for each understood child of `element`, wherever in alternatives and dissolved elements it stands.
    SchemaFault children(const XmlElement& element, const Visitor& visit);

    /// Attributes on `element` other than `allowed`, which are in no namespace, and those of compatibility.
    /// Called by a visitor on its own element, or on the root inside `within`.
    SchemaFault attributes(const XmlElement& element, std::initializer_list<std::string_view> allowed);

    /// Takes what `element` says of compatibility as said, for as long as `step` runs.
    template <class Step>
    SchemaFault within(const XmlElement& element, const Step& step)
    {
        const std::size_t ignorable = m_ignorable.size();
        const std::size_t dissolved = m_dissolved.size();
        SchemaFault fault = enter(element);
        if (fault.isNone())
            fault = step();
        m_ignorable.resize(ignorable);
        m_dissolved.resize(dissolved);
        return fault;
    }

    /// Whether anything of the document is not what it would be without compatibility.
    bool isUsed() const noexcept { return m_isUsed; }

private:
    struct Name
    {
        std::string_view namespaceUri;
        std::string_view name; ///< "*" for all
    };

    SchemaFault enter(const XmlElement& element);
    SchemaFault enterAttribute(const XmlElement& element, const XmlAttribute& attribute);
    SchemaFault enterProcessContent(const XmlElement& element, std::string_view words);
    SchemaFault namespacesOf(const XmlElement& element, std::string_view prefixes,
                             std::vector<std::string_view>& namespaces) const;
    SchemaFault child(const XmlElement& element, const Visitor& visit);
    SchemaFault alternatives(const XmlElement& element, const Visitor& visit);
    SchemaFault requirements(const XmlElement& choice, bool& areMet);
    bool isUnderstood(std::string_view namespaceUri) const noexcept;
    bool isIgnorable(std::string_view namespaceUri) const noexcept;
    bool isDissolved(const XmlElement& element) const noexcept;

    std::string_view m_understood;
    std::vector<std::string_view> m_ignorable;
    std::vector<Name> m_dissolved;
    bool m_isUsed = false;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
