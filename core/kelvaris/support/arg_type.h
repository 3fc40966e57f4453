#pragma once

namespace Kelvaris {

/// The kind of one declared argument of a script function.
enum argType : int {
    argTypeNone = 0,        ///< an empty place of the declaration array
    argTypeStringArray = 1, ///< an array of strings; a single text is an array of one
};

} // namespace Kelvaris
