#include "kelvaris/system/io/bundle/schematic_bundle.h"

#include "host/core/bundle/bundle_package.h"
#include "host/core/bundle/schematic_files.h"
#include "host/core/errors/make_error.h"
#include "host/core/opc/package_access.h"
#include "host/core/text/memory_guard.h"

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackagePart;
using OpcPackaging::detail::PackageAccess;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PartPtr;
using OpcPackaging::detail::Result;

struct SchematicBundle::Files : detail::SchematicFiles
{
};

namespace {

Result<> requireParent(PackageData& package, const OpcPackagePart& parent)
{
    const PartPtr& record = PackageAccess::record(parent);
    if (PackageAccess::data(parent).get() == &package && !record->isRemoved)
        return {};
    return Errors::makeError(OpcPackaging::OpcError::noSuchPart, package.parts().subjectOf(record->name),
                             "the parent is no part of this bundle");
}

} // namespace

SchematicBundle::SchematicBundle()
    : AbstractBundle{detail::createBundle(detail::BundleKind::schematic).value()}, m_files{std::make_unique<Files>()}
{
}

SchematicBundle::~SchematicBundle() = default;

Expected<OpcPackagePart, ErrorCode2> SchematicBundle::setRootSchematic(const FilePath2& schematic)
{
    return Text::withinMemory([&]() -> Expected<OpcPackagePart, ErrorCode2> {
        const detail::PackagePtr& data = PackageAccess::data(package());
        auto part = m_files->setRoot(*data, schematic);
        if (!part)
            return part.error();
        return PackageAccess::part(data, *part);
    });
}

/// The parent's file takes no part in it: its part is at hand, and paths are relative to the working directory.
Expected<OpcPackagePart, ErrorCode2>
SchematicBundle::addDescendantSchematic(const FilePath2& schematic, [[maybe_unused]] const FilePath2& parentSchematic,
                                        OpcPackagePart& parentPart)
{
    return Text::withinMemory([&]() -> Expected<OpcPackagePart, ErrorCode2> {
        const detail::PackagePtr& data = PackageAccess::data(package());
        if (!m_files->hasRoot())
            return Errors::makeError(BundleError::noRoot, data->displayName());
        if (auto required = requireParent(*data, parentPart); !required)
            return required.error();
        auto part = m_files->findOrAdd(*data, schematic);
        if (!part)
            return part.error();
        auto related = detail::relateDescendant(*data, PackageAccess::record(parentPart)->name, (*part)->name);
        if (!related)
            return related.error();
        return PackageAccess::part(data, *part);
    });
}

} // namespace Kelvaris::System::IO::Bundle
