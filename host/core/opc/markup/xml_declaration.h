#pragma once

#include "host/core/opc/markup/xml_document_data.h"

#include <cstddef>
#include <span>
#include <string>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// The first step of reading: `bytes` as UTF-8 without a byte order mark, whose characters XML allows, and its
/// declaration, which must say the encoding that the bytes have (M1.17).
///
/// Where UTF-16 was declared, the text says UTF-8 from here on: that is what it is written as.
///
/// @param bodyBegin  where the document goes on behind its declaration
XmlFault readXmlText(std::span<const std::byte> bytes, std::string& text, std::size_t& bodyBegin);

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
