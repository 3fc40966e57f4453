#include "host/core/bundle/unpacking.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/errors/error_words.h"
#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/part_read_ahead.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/url.h"

#include <unordered_set>
#include <vector>

namespace Kelvaris::System::IO::Bundle::detail {

using OpcPackaging::OpcError;
using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PartPtr;
using OpcPackaging::detail::PartRecord;
using OpcPackaging::detail::Result;

namespace {

/// Each content part once, in the order of the relationships.
Result<std::vector<PartPtr>> contentParts(PackageData& package)
{
    auto relationships =
        package.relationships().ofType(OpcPackaging::Markup::packageSource, Layout::contentRelationship);
    if (!relationships)
        return relationships.error();
    std::vector<PartPtr> parts;
    std::unordered_set<const PartRecord*> seen;
    for (const auto& relationship : *relationships) {
        auto part = package.findTarget(OpcPackaging::Markup::packageSource, *relationship);
        if (!part)
            return part.error();
        if (seen.insert(part->get()).second)
            parts.push_back(std::move(*part));
    }
    return parts;
}

Disk::OutputTree::Destination splitAtSlashes(std::string_view path)
{
    Disk::OutputTree::Destination names;
    std::size_t begin = 0;
    for (std::size_t end = path.find('/'); end != std::string_view::npos; end = path.find('/', begin)) {
        names.emplace_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    names.emplace_back(path.substr(begin));
    return names;
}

} // namespace

/// Where a part goes: a part name has no encoded "/", so that every name of the path is one segment of it.
Result<Disk::OutputTree::Destination> destinationOf(const PartRecord& part, const std::string& subject)
{
    const Url url{Text::toString2(std::string_view{part.name})};
    auto path = url.toLocalFile(UrlLocalFileOptions::relativePath).andThen(Disk::nativePath);
    if (!path && path.error() == Text::lackOfMemory()) // no fault of the name
        return path.error();
    if (!path)
        return Errors::makeError(OpcError::unsafeDestination, subject, Errors::reasonFrom(path.error()));
    return splitAtSlashes(*path);
}

Result<UnpackPlan> planUnpacking(PackageData& package)
{
    auto parts = contentParts(package);
    if (!parts)
        return parts.error();
    UnpackPlan plan{std::move(*parts), {}};
    plan.destinations.reserve(plan.parts.size());
    for (const PartPtr& part : plan.parts) {
        auto destination = destinationOf(*part, package.parts().subjectOf(part->name));
        if (!destination)
            return destination.error();
        plan.destinations.push_back(std::move(*destination));
    }
    return plan;
}

Result<> unpackContent(PackageData& package, const FilePath2& directory)
{
    auto plan = planUnpacking(package);
    if (!plan)
        return plan.error();
    auto tree = Disk::OutputTree::plan(directory, std::move(plan->destinations));
    if (!tree)
        return tree.error();
    const std::size_t count = plan->parts.size();
    OpcPackaging::detail::PartReadAhead parts{package.parts(), std::move(plan->parts)};
    for (std::size_t index = 0; index < count; ++index) {
        auto written = tree->write(index, [&](const Disk::ByteSink& sink) { return parts.next(sink); });
        if (!written)
            return written;
    }
    return tree->keep();
}

} // namespace Kelvaris::System::IO::Bundle::detail
