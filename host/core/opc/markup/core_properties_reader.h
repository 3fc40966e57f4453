#pragma once

#include "host/core/opc/markup/core_properties.h"
#include "host/core/opc/markup/schema_checks.h"

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// Fills core properties from their document.
class CorePropertiesReader
{
public:
    CorePropertiesReader(CoreProperties& properties, SchemaFaultLog faults) noexcept
        : m_properties{properties}, m_faults{faults}
    {
    }

    SchemaFault read(const XmlElement& root);

private:
    SchemaFault readProperty(const XmlElement& element);
    void readPrefixes(const XmlElement& root);

    CoreProperties& m_properties;
    SchemaFaultLog m_faults;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
