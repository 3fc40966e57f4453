#pragma once

#include "host/core/bundle/bundle_package.h"

#include <filesystem>
#include <map>

namespace Kelvaris::System::IO::Bundle::detail {

/// Which part of a schematic bundle each schematic's file is.
class SchematicFiles
{
public:
    bool hasRoot() const noexcept { return m_root != nullptr; }

    /// Makes a file the root, in the place of the one before, and takes its bytes in. The part of the one before goes,
    /// unless other schematics belong to it or use it.
    /// @return  the error of reading the file, or opc 3 when its name makes no part name
    Result<PartPtr> setRoot(PackageData& package, const FilePath2& schematic);

    /// The part of a schematic, which is taken in when it is not there yet.
    /// @return  as `setRoot`
    Result<PartPtr> findOrAdd(PackageData& package, const FilePath2& schematic);

private:
    PartPtr find(const std::filesystem::path& file) const;
    void dropRoot(PackageData& package);
    bool isUsed(PackageData& package, const std::string& name) const;

    std::map<std::filesystem::path, PartPtr> m_parts; ///< by canonical path
    std::filesystem::path m_rootDirectory;
    PartPtr m_root;
};

/// Relates a schematic to one that it uses; does nothing when that has been told before.
Result<> relateDescendant(PackageData& package, const std::string& parent, const std::string& descendant);

} // namespace Kelvaris::System::IO::Bundle::detail
