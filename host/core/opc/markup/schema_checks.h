#pragma once

#include "host/core/opc/fault_log.h"
#include "host/core/opc/markup/xml_document.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <initializer_list>
#include <string>
#include <string_view>

/// What the schemas of the package's own documents have in common (M1.20, M1.21).
namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// Why a document is not of a schema: for errors that a reader carries up until it knows the subject.
struct SchemaFault
{
    OpcError error = OpcError::invalidXml;
    std::string_view rule = "M1.20"; ///< empty when `what` names it, or there is none
    std::string what;                ///< empty when there is no fault

    bool isNone() const noexcept { return what.empty(); }
    ErrorCode2 onSubject(std::string_view subject) const;
};

/// For readers of documents: where faults go when all of them are wanted.
struct SchemaFaultLog
{
    FaultLog* log = nullptr; ///< null when the first fault ends the reading
    std::string_view subject = {};

    /// @return  no fault when it was logged and the reader goes on behind it
    SchemaFault passOver(SchemaFault fault) const;
};

SchemaFault rootFault(const XmlElement& root, std::string_view namespaceUri, std::string_view name);

/// Attributes in no namespace other than `allowed`, and all that are in one.
SchemaFault attributeFault(const XmlElement& element, std::initializer_list<std::string_view> allowed);
SchemaFault unexpectedAttribute(const XmlElement& element, const XmlAttribute& attribute);

SchemaFault unexpectedElement(const XmlElement& element);

/// Anything but white space directly in the element.
SchemaFault textFault(const XmlElement& element);

/// The prefix of an element's name with its colon, as new elements beside it are written.
std::string prefixWithColon(const XmlElement& element);

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
