#pragma once

#include "host/core/opc/markup/content_types.h"
#include "host/core/opc/markup/schema_checks.h"

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// Fills content types from their document.
class ContentTypesReader
{
public:
    ContentTypesReader(ContentTypes& types, SchemaFaultLog faults) noexcept : m_types{types}, m_faults{faults} {}

    SchemaFault read(const XmlElement& root);

private:
    SchemaFault readEntry(const XmlElement& element);
    SchemaFault readDefault(const XmlElement& element);
    SchemaFault readOverride(const XmlElement& element);

    ContentTypes& m_types;
    SchemaFaultLog m_faults;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
