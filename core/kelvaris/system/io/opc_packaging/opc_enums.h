#pragma once

namespace Kelvaris::System::IO::OpcPackaging {

enum class OpcPackageOpenFlag : int {
    readOnDemand = 0, ///< the archive's directory now, everything else when it is first used
    verify = 1,       ///< all of it is read and checked now
};

/// How hard to try. Whatever is asked for, bytes that do not shrink are stored.
enum class OpcPackageCompressionType : int {
    none = 0,
    normal = 1,
    maximum = 2,
    fast = 3,
};

enum class OpcTargetMode : int {
    internal = 0, ///< the target is a part of the same package
    external = 1, ///< the target lies outside
};

enum class OpcPackagePartWriteContentMode : int {
    replace = 0, ///< the bytes take the place of what the part held
};

} // namespace Kelvaris::System::IO::OpcPackaging
