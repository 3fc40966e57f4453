#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Authoring {

/// Puts a flat list of a hierarchy's schematics into an order in which they can be added to a bundle, parents first.
///
/// A hierarchical name is a dotted list that begins with the schematic's own instance and goes on with its ancestors:
/// "X2.X1" is the instance X2 inside of X1. A name of one component has the root as its parent.
///
/// @param root     the root schematic's path
/// @param records  "path;hierarchical name", one for each schematic below the root; what follows a second semicolon
///                 is ignored, and a record without one is a path without a name, which gets no answer
/// @return  "path;parent's path" for each record whose parent is in the list, by the length of the names; names of the
///          same length keep their order. A record without a parent in the list is dropped.
QStringList identifyDescendants(const QString& root, const QStringList& records);

} // namespace Authoring
