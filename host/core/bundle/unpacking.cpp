#include "host/core/bundle/unpacking.h"

#include "host/core/bundle/bundle_layout.h"
#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/paths/disk/output_tree.h"
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
        package.relationships().recordsByType(OpcPackaging::Markup::packageSource, Layout::contentRelationship);
    if (!relationships)
        return relationships.error();
    std::vector<PartPtr> parts;
    std::unordered_set<const PartRecord*> seen;
    for (const auto& relationship : *relationships) {
        auto part = package.findTarget(*relationship);
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

/// Where a part goes: a part name has no encoded "/", so that every name of the path is one segment of it.
Result<Disk::OutputTree::Destination> destinationOf(const PartRecord& part, const std::string& subject)
{
    const Url url{Text::toString2(std::string_view{part.name})};
    auto path = url.toLocalFile(UrlLocalFileOptions::relativePath).andThen(Disk::nativePath);
    if (!path)
        return Errors::makeError(OpcError::unsafeDestination, subject, Text::narrow(path.error().message()));
    return splitAtSlashes(*path);
}

Result<std::vector<Disk::OutputTree::Destination>> destinationsOf(PackageData& package,
                                                                  const std::vector<PartPtr>& parts)
{
    std::vector<Disk::OutputTree::Destination> destinations;
    destinations.reserve(parts.size());
    for (const PartPtr& part : parts) {
        auto destination = destinationOf(*part, package.parts().subjectOf(part->name));
        if (!destination)
            return destination.error();
        destinations.push_back(std::move(*destination));
    }
    return destinations;
}

} // namespace

Result<> unpackContent(PackageData& package, const FilePath2& directory)
{
    auto parts = contentParts(package);
    if (!parts)
        return parts.error();
    auto destinations = destinationsOf(package, *parts);
    if (!destinations)
        return destinations.error();
    auto tree = Disk::OutputTree::plan(directory, std::move(*destinations));
    if (!tree)
        return tree.error();
    for (std::size_t index = 0; index < parts->size(); ++index) {
        auto written = tree->write(
            index, [&](const Disk::ByteSink& sink) { return package.parts().stream(*(*parts)[index], sink); });
        if (!written)
            return written;
    }
    return tree->keep();
}

} // namespace Kelvaris::System::IO::Bundle::detail
