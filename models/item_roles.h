#pragma once

#include <QtCore/Qt>

/// What the trees over packages answer besides their texts.
namespace ItemRoles {

inline constexpr int itemType = Qt::UserRole; ///< the item's type as `int`, one of the numbers below
inline constexpr int path = Qt::UserRole + 1; ///< the item's path in the bundle as `QString`, without a root

} // namespace ItemRoles

namespace ItemTypes {

inline constexpr int part = 0;
inline constexpr int directory = 1;
inline constexpr int relationshipDirectory = 2;

} // namespace ItemTypes
