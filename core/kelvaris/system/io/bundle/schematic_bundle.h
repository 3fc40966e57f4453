#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/bundle/abstract_bundle.h"

#include <memory>

namespace Kelvaris::System::IO::Bundle {

/// A schematic hierarchy: a root schematic and its descendants, each as one part, however often it is used.
///
/// Part names follow the files' places below the root schematic's directory: "/schematics/top.kvsch",
/// "/schematics/filters/stage.kvsch". A schematic from outside that directory gets a name of its own under
/// "/schematics/external/".
class KELVARIS_CORE_API SchematicBundle : public AbstractBundle
{
public:
    /// A new, empty bundle, which may be written as it is.
    SchematicBundle();
    ~SchematicBundle() override;

    /// Adds the root schematic's file, or takes another one for the root. The bytes are taken in now.
    /// @return  the root's part, or the error of reading the file
    Expected<OpcPackaging::OpcPackagePart, ErrorCode2> setRootSchematic(const FilePath2& schematic);

    /// Adds a descendant below a parent. A schematic that is in the bundle already answers its part, and gets a
    /// relationship from this parent as well.
    /// @param schematic        the descendant's file; relative paths are resolved against the working directory
    /// @param parentSchematic  the parent's file
    /// @param parentPart       the parent's part
    /// @return  the descendant's part, or bundle 9 when no root is set, or the error of reading the file
    Expected<OpcPackaging::OpcPackagePart, ErrorCode2> addDescendantSchematic(const FilePath2& schematic,
                                                                              const FilePath2& parentSchematic,
                                                                              OpcPackaging::OpcPackagePart& parentPart);

private:
    struct Files;

    std::unique_ptr<Files> m_files;
};

} // namespace Kelvaris::System::IO::Bundle
