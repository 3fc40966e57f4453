#include "host/core/bundle/bundle_inspection.h"

#include "host/core/bundle/bundle_check.h"
#include "host/core/bundle/bundle_layout.h"
#include "host/core/bundle/bundle_package.h"
#include "host/core/bundle/unpacking.h"
#include "host/core/opc/package_access.h"
#include "host/core/text/memory_guard.h"

namespace Kelvaris::System::IO::Bundle {

using detail::PackageData;
using detail::PartPtr;
using detail::Result;
using OpcPackaging::detail::PackageAccess;

namespace {

std::string joined(const Disk::OutputTree::Destination& names)
{
    std::string path;
    for (const std::string& name : names)
        path += (path.empty() ? "" : "/") + name;
    return path;
}

std::uint64_t sizeOf(PackageData& package, const PartPtr& part)
{
    std::uint64_t size = 0;
    for (const std::uint32_t entry : part->entries())
        size += package.parts().items().archive()->entries()[entry].size;
    return size;
}

Result<BundleDescription> described(PackageData& package)
{
    auto properties = detail::readProperties(package);
    if (!properties)
        return properties.error();
    BundleDescription description{{}, "a package", {}, {}};
    if (*properties) {
        description.kind = (*properties)->values->kindName;
        description.kindInWords = detail::describedKind(description.kind);
        description.manufacturer = (*properties)->values->manufacturer.value_or(std::string{});
    }
    if (auto primary = detail::relatedPart(package, Layout::primaryFileRelationship); primary && *primary != nullptr)
        description.primaryFile = (*primary)->name;
    return description;
}

Result<std::vector<PlannedFile>> planned(PackageData& package, const FilePath2& directory)
{
    auto plan = detail::planUnpacking(package);
    if (!plan)
        return plan.error();
    if (auto tree = Disk::OutputTree::plan(directory, plan->destinations); !tree)
        return tree.error();
    std::vector<PlannedFile> files;
    for (std::size_t index = 0; index < plan->parts.size(); ++index)
        files.push_back({joined(plan->destinations[index]), sizeOf(package, plan->parts[index])});
    return files;
}

} // namespace

Expected<BundleDescription, ErrorCode2> describeBundle(const OpcPackaging::OpcPackage& package)
{
    return Text::withinMemory([&] { return described(*PackageAccess::data(package)); });
}

Expected<std::vector<PlannedFile>, ErrorCode2> plannedFiles(const OpcPackaging::OpcPackage& package,
                                                            const FilePath2& directory)
{
    return Text::withinMemory([&] { return planned(*PackageAccess::data(package), directory); });
}

Expected<CheckReport, ErrorCode2> checkBundle(const FilePath2& path)
{
    return Text::withinMemory([&] { return detail::BundleCheck{}.check(path); });
}

} // namespace Kelvaris::System::IO::Bundle
