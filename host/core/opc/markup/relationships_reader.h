#pragma once

#include "host/core/opc/markup/markup_compatibility.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/relationships.h"
#include "host/core/opc/markup/schema_checks.h"

#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// What is wrong with a relationship's type and target, whether it was read or is to be written (M1.25 to M1.29).
/// @param known  the type of another, which is right
SchemaFault relationshipFault(std::string_view source, const Relationship& relationship, const Text::SharedText& known,
                              std::string& diagnostic);

/// Fills relationships from their document.
class RelationshipsReader
{
public:
    RelationshipsReader(Relationships& relationships, std::string_view source, SchemaFaultLog faults) noexcept
        : m_relationships{relationships}, m_source{source}, m_faults{faults}, m_compatibility{relationshipsNamespace}
    {
    }

    SchemaFault read(const XmlElement& root);

    /// Whether markup compatibility took part.
    bool isCompatibilityUsed() const noexcept { return m_compatibility.isUsed(); }

private:
    SchemaFault readRoot(const XmlElement& root);
    SchemaFault readRelationship(const XmlElement& element);
    void note(const Relationship& relationship, const std::string& diagnostic);

    Relationships& m_relationships;
    std::string_view m_source;
    SchemaFaultLog m_faults;
    MarkupCompatibility m_compatibility;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
