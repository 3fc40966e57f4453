#pragma once

#include "kelvaris/system/io/opc_packaging/opc_package_properties.h"

#include <QtCore/QString>

/// The core properties of a package as a table of texts, in the order in which the properties model shows them.
namespace CoreProperties {

inline constexpr int count = 15;

/// @param key  0 to `count` - 1
QString name(int key);

/// The property's text; that of an empty value for a property that is absent or cannot be read. Keywords come joined
/// with a blank.
/// @throws bad_expected_access<ErrorCode2>  the value has no text
QString read(const Kelvaris::System::IO::OpcPackaging::OpcPackageProperties& properties, int key);

/// Sets the property to what `text` says; keywords are separated by semicolons. What the package itself refuses goes
/// unnoticed.
/// @throws bad_expected_access<ErrorCode2>  `text` is no value of the property's type; nothing is set then
void write(Kelvaris::System::IO::OpcPackaging::OpcPackageProperties& properties, int key, const QString& text);

} // namespace CoreProperties
